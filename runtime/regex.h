/* Regular expressions in the ECMAScript grammar of the C++ standard library, on bytes. An invalid
   pattern, one of more than 100,000 states (which that library refuses) or one too complex for the
   text is no error: each function says what it gives then. Null arguments are empty. Results are
   new and the caller's. Backtracking may take exponential time on patterns made for it, such as
   (a*)*b. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 1 when the whole text matches, else 0; 0 for an invalid pattern. To look anywhere in a text
   surround the pattern with [\s\S]*. */
int qor_regex_match(const char* pattern, const char* text);

/* The text with every match replaced; the replacement may hold $& (the match), $1, $2, ... (its
   groups), $` and $' (what is before and behind it) and $$. The text unchanged for an invalid
   pattern. */
char* qor_regex_replace(const char* pattern, const char* text, const char* replacement);

/* The matches in order, not overlapping, as a string array; empty for an invalid pattern. */
QorArray* qor_regex_findall(const char* pattern, const char* text);

#ifdef __cplusplus
}
#endif
