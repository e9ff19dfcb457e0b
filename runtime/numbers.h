/* Numbers: conversions to integers and the small mathematical helpers. All are total: NaN, the
   infinities and values out of range are harmless. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Truncation toward zero (-2.5 gives -2), saturating at the ends of the 64-bit and of the signed
   32-bit range; NaN gives 0. */
int64_t qor_int(double x);
int64_t qor_cint(double x);

/* `x` rounded to the nearest 32-bit float. */
double qor_csng(double x);

/* 1 when `x` is not zero (NaN is not), else 0. */
int qor_cbool(double x);

/* Magnitude, square root (NaN below zero), sine and cosine of radians. */
double qor_abs(double x);
double qor_sqr(double x);
double qor_sin(double radians);
double qor_cos(double radians);

/* Down, up, to nearest with ties away from zero, and toward zero. */
double qor_floor(double x);
double qor_ceil(double x);
double qor_round(double x);
double qor_trunc(double x);

/* `x` to `places` decimals, ties away from zero: round(x * 10^places) / 10^places. Negative places
   round to tens, hundreds, ...; `x` comes back as it is when it has no such decimals left. */
double qor_round_p(double x, int64_t places);

#ifdef __cplusplus
}
#endif
