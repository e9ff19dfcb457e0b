/* SHA-256 and Base64, as text. Results are new strings for the caller. The processor's own
   instructions do the work where it has them. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* SHA-256 (FIPS 180-4) of the bytes up to the first NUL, in 64 lower-case hexadecimal digits. Null
   is the empty string. */
char* qor_sha256(const char* s);

/* Base64 (RFC 4648, section 4: with padding, without line breaks) of the bytes, a byte string
   whole; "" for null. */
char* qor_base64_encode(const char* s);

/* The bytes that Base64 text stands for; a byte string when one of them is NUL. ASCII white space
   is skipped and the padding may be missing; any other byte outside the alphabet, wrong padding or
   a single left-over digit gives "", as does null. None of it is an error. */
char* qor_base64_decode(const char* s);

#ifdef __cplusplus
}
#endif
