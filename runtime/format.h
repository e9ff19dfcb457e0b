/* Text with placeholders.

   In the format text {} stands for the next argument, and {options} for the next argument
   written as the options say; {{ is one brace; a { without a } behind it is copied.
   The options are, each of them optional and in this order (62 bytes of it are read):

     :              skipped
     [fill]align    < left, > right (the default), ^ centre; fill is any byte, else a space
     width          the least number of bytes
     .precision     the number of decimals
     #              0x in front of hexadecimal
     type           d integer, x X hexadecimal of the 64-bit integer, f fixed (six decimals unless
                    a precision is given); any other: fixed with a precision, else "%g"

   Numbers are truncated toward zero for d, x and X. A placeholder without argument formats 0. One
   placeholder gives at most 255 bytes, the whole text at most 4090; both are cut silently. All
   results are new strings for the caller. */
#pragma once

#include "runtime/value.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The elements of `arguments` (null: none) in the places of `format`. Strings in a string or
   tagged array are written as text. */
char* qor_format(const char* format, const QorArray* arguments);

/* The same with one to four numbers. */
char* qor_format1(const char* format, double a);
char* qor_format2(const char* format, double a, double b);
char* qor_format3(const char* format, double a, double b, double c);
char* qor_format4(const char* format, double a, double b, double c, double d);

/* The same with arguments of the kinds that the letters of `types` name, in order: s a string,
   h a host value, i a 64-bit integer, any other (and a missing letter) a double. A host value is
   asked for its number when the type among the options is one of X d e f g x, else for its text. */
char* qor_format1_t(const char* format, const char* types, qor_slot a);
char* qor_format2_t(const char* format, const char* types, qor_slot a, qor_slot b);
char* qor_format3_t(const char* format, const char* types, qor_slot a, qor_slot b, qor_slot c);
char* qor_format4_t(const char* format, const char* types, qor_slot a, qor_slot b, qor_slot c,
                    qor_slot d);

#ifdef __cplusplus
}
#endif
