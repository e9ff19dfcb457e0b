/* Chance, bits, types and the running system. Strings are new and the caller's. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Seeds the C library's rand, which all of these draw from; the low 32 bits count. */
void qor_randomseed(int64_t seed);

/* A number in [0, 1): from one draw (31 bits), and from two (53 bits). */
double qor_rnd(void);
double qor_random2(void);

/* A random identifier in the shape of a version-4 UUID. Only as unpredictable as rand. */
char* qor_uuid(void);

/* `value` rotated left / right by `count` bits (modulo the width; negative turns the other way):
   all 64 bits, and for the names with 2 the low 32. */
uint64_t qor_rotl(uint64_t value, int64_t count);
uint64_t qor_rotr(uint64_t value, int64_t count);
uint64_t qor_rotl2(uint64_t value, int64_t count);
uint64_t qor_rotr2(uint64_t value, int64_t count);

/* The greatest common divisor, never negative (0 of two zeros), and the least common multiple (0
   when either is 0). A result above the 64-bit range is its upper end. */
int64_t qor_gcd(int64_t a, int64_t b);
int64_t qor_lcm(int64_t a, int64_t b);

/* `a` when the condition is non-zero, else `b`. */
double qor_iif(int64_t condition, double a, double b);

/* The name of a value tag: INT64, FLOAT64, STRING, ARRAY, OBJECT, FUNCREF or UNKNOWN. */
char* qor_typeof_tag(uint32_t tag);

/* "NONE" for NaN, which is "no value", else "FLOAT64". */
char* qor_typeof_f64(double x);

/* Always 1: compiled code knows its types, so the question is settled. */
int qor_isnum(double value);
int qor_isstr(const char* value);

/* The name of the system family that programs are told, always "MACOS". */
char* qor_os_getos(void);

/* The machine's host name, "" when it has none. */
char* qor_os_hostname(void);

/* 1 for the features NATIVEC and LLVMC, in any case of ASCII letters, else 0. The first 63 bytes
   of the name count. */
int qor_os_feature(const char* name);

#ifdef __cplusplus
}
#endif
