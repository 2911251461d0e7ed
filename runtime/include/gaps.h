/// What libc++'s headers name and the C library's headers lack: declared so that they compile. Included
/// before every source. No library has these functions, so a call of one is an error of the linker.
#ifndef LM_RUNTIME_GAPS_H
#define LM_RUNTIME_GAPS_H

#include <corecrt.h>

#ifdef __cplusplus
extern "C" {
#endif

// clang-format off
#define LM_GAPS(GAP) \
  GAP(acos) GAP(acosh) GAP(asin) GAP(asinh) GAP(atan) GAP(atanh) GAP(cbrt) GAP(ceil) GAP(cos) GAP(cosh) \
  GAP(erf) GAP(erfc) GAP(exp) GAP(exp2) GAP(expm1) GAP(fabs) GAP(floor) GAP(lgamma) GAP(log) GAP(log10) \
  GAP(log1p) GAP(log2) GAP(logb) GAP(nearbyint) GAP(sin) GAP(sinh) GAP(sqrt) GAP(tan) GAP(tanh) GAP(tgamma)
#define LM_GAPS_OF_TWO(GAP) \
  GAP(atan2) GAP(fdim) GAP(fmax) GAP(fmin) GAP(fmod) GAP(hypot) GAP(nextafter) GAP(nexttoward) GAP(pow) \
  GAP(remainder)
// clang-format on

#define LM_GAP(NAME) long double NAME##l(long double);
#define LM_GAP_OF_TWO(NAME) long double NAME##l(long double, long double);
LM_GAPS(LM_GAP)
LM_GAPS_OF_TWO(LM_GAP_OF_TWO)
#undef LM_GAP
#undef LM_GAP_OF_TWO
#undef LM_GAPS
#undef LM_GAPS_OF_TWO

long double frexpl(long double, int*);
long double ldexpl(long double, int);
long double modfl(long double, long double*);
long double remquol(long double, long double, int*);
long double scalblnl(long double, long);
long double scalbnl(long double, int);
int ilogbl(long double);
float erfcf(float);
float nexttowardf(float, long double);

int _islower_l(int, _locale_t);
int _isupper_l(int, _locale_t);
#define MB_CUR_MAX 1

struct timespec {
  long long tv_sec;
  long tv_nsec;
};

#ifdef __cplusplus
}
#endif

/// The C library's headers define what the compiler has built in.
#define _InterlockedCompareExchange128 lmInterlockedCompareExchange128

#endif
