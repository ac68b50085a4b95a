#include "render/cpu_features.h"

#if defined(_MSC_VER) && !defined(__clang__)
#include <immintrin.h>
#include <intrin.h>

static bool SupportsAvx2() {
    int info[4];
    __cpuid(info, 0);
    if (info[0] < 7) return false;
    __cpuid(info, 1);
    constexpr int kOsSavesRegisters = 1 << 27, kAvx = 1 << 28;
    if ((info[2] & kOsSavesRegisters) == 0 || (info[2] & kAvx) == 0) return false;
    constexpr unsigned long long kSseAndAvxState = 6;
    if ((_xgetbv(0) & kSseAndAvxState) != kSseAndAvxState) return false;
    __cpuidex(info, 7, 0);
    constexpr int kAvx2 = 1 << 5;
    return (info[1] & kAvx2) != 0;
}
#else
static bool SupportsAvx2() { return __builtin_cpu_supports("avx2") != 0; }
#endif

SimdLevel BestSimdLevel() { return SupportsAvx2() ? SimdLevel::Avx2 : SimdLevel::Sse2; }
