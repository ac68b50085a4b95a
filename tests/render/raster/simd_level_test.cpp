#include "render/raster/simd_level.h"

#include "doctest/doctest.h"
#include "support/capture.h"

#include <cstdint>

constexpr uint64_t BitOf(int32_t number) { return uint64_t{1} << number; }

// What processor and system say, each with the bits that AVX-512 needs and no others.
static uint64_t leaf1Ecx, leaf7Ebx, xcr0;
static int32_t questions;  // about XCR0

static SimdLevel LevelWithout(uint64_t& answer, int32_t bit) {
    leaf1Ecx = BitOf(12) | BitOf(23) | BitOf(27) | BitOf(28);
    leaf7Ebx = BitOf(5) | BitOf(16) | BitOf(17) | BitOf(30) | BitOf(31);
    xcr0 = BitOf(1) | BitOf(2) | BitOf(5) | BitOf(6) | BitOf(7);
    questions = 0;
    answer &= ~BitOf(bit);
    return WidestLevel(static_cast<uint32_t>(leaf1Ecx), static_cast<uint32_t>(leaf7Ebx), [] {
        ++questions;
        return xcr0;
    });
}

TEST_CASE("a level needs all of its instructions, and that the system saves its registers") {
    constexpr int32_t kNotNeeded = 0;
    const struct {
        const char* missing;
        uint64_t& answer;
        int32_t bit;
        SimdLevel widest;
    } cases[] = {
        {"nothing", leaf1Ecx, kNotNeeded, SimdLevel::Avx512},
        {"FMA", leaf1Ecx, 12, SimdLevel::Sse2},
        {"POPCNT", leaf1Ecx, 23, SimdLevel::Sse2},
        {"the permission to ask for XCR0", leaf1Ecx, 27, SimdLevel::Sse2},
        {"AVX", leaf1Ecx, 28, SimdLevel::Sse2},
        {"AVX2", leaf7Ebx, 5, SimdLevel::Sse2},
        {"AVX-512 F", leaf7Ebx, 16, SimdLevel::Avx2},
        {"AVX-512 DQ", leaf7Ebx, 17, SimdLevel::Avx2},
        {"AVX-512 BW", leaf7Ebx, 30, SimdLevel::Avx2},
        {"AVX-512 VL", leaf7Ebx, 31, SimdLevel::Avx2},
        {"the registers of SSE", xcr0, 1, SimdLevel::Sse2},
        {"the upper halves of the registers of AVX", xcr0, 2, SimdLevel::Sse2},
        {"the masks of AVX-512", xcr0, 5, SimdLevel::Avx2},
        {"the upper halves of 16 registers of AVX-512", xcr0, 6, SimdLevel::Avx2},
        {"the other 16 registers of AVX-512", xcr0, 7, SimdLevel::Avx2},
    };
    for (const auto& [missing, answer, bit, widest] : cases) {
        CAPTURE(missing);
        CHECK(NameOf(LevelWithout(answer, bit)) == NameOf(widest));
    }
}

TEST_CASE("XCR0 is not asked where the processor does not allow the question") {
    LevelWithout(leaf1Ecx, 27);
    CHECK(questions == 0);
    LevelWithout(leaf7Ebx, 16);
    CHECK(questions == 1);
}

#if defined(__GNUC__)

TEST_CASE("the widest registers are used that the compiler's own question finds") {
    __builtin_cpu_init();
    const bool hasAvx2 =
        __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("popcnt");
    const bool hasAvx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
                           __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl");
    const SimdLevel widest = !hasAvx2 ? SimdLevel::Sse2 : hasAvx512 ? SimdLevel::Avx512 : SimdLevel::Avx2;
    CHECK(NameOf(BestSimdLevel()) == NameOf(widest));
}

#endif
