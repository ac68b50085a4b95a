#include "render/raster/simd_level.h"

#include "render/raster/kernels.h"

#include <cstddef>
#include <cstdint>

#if defined(_MSC_VER)
#include <intrin.h>
#else
#include <cpuid.h>
#endif

constexpr SimdLevel kLevels[] = {SimdLevel::OneLane, SimdLevel::Sse2, SimdLevel::Avx2, SimdLevel::Avx512};

namespace {

// What the CPUID instruction answers.
struct CpuAnswer {
    uint32_t a = 0, b = 0, c = 0, d = 0;
};

}  // namespace

// All zeros if the processor does not know the question.
static CpuAnswer AskCpu(uint32_t leaf) {
    CpuAnswer answer;
#if defined(_MSC_VER)
    int numbers[4];
    __cpuid(numbers, 0);
    if (static_cast<uint32_t>(numbers[0]) < leaf) return answer;
    __cpuidex(numbers, static_cast<int>(leaf), 0);
    answer = {static_cast<uint32_t>(numbers[0]), static_cast<uint32_t>(numbers[1]),
              static_cast<uint32_t>(numbers[2]), static_cast<uint32_t>(numbers[3])};
#else
    __get_cpuid_count(leaf, 0, &answer.a, &answer.b, &answer.c, &answer.d);
#endif
    return answer;
}

// The register files that the operating system saves when it switches threads: XCR0. Only where CPUID says
// that XGETBV may be asked.
static uint64_t SavedRegisters() {
#if defined(_MSC_VER)
    return _xgetbv(0);
#else
    uint32_t low, high;
    __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return uint64_t{high} << 32 | low;
#endif
}

static bool HasAll(uint64_t set, uint64_t wanted) { return (set & wanted) == wanted; }

std::string NameOf(SimdLevel level) {
    constexpr const char* kNames[] = {"one lane", "SSE2", "AVX2", "AVX-512"};
    return kNames[static_cast<size_t>(level)];
}

// From the narrowest extension up: the processor must have the instructions, and the operating system must
// save their registers. Without the second the instructions fault, although the processor has them.
SimdLevel WidestLevel(uint32_t leaf1Ecx, uint32_t leaf7Ebx, uint64_t (*savedRegisters)()) {
    constexpr uint32_t kFma = 1u << 12, kPopcnt = 1u << 23, kOsUsesXsave = 1u << 27, kAvx = 1u << 28;
    constexpr uint32_t kAvx2 = 1u << 5;
    constexpr uint32_t kAvx512 = 1u << 16 | 1u << 17 | 1u << 30 | 1u << 31;  // F, DQ, BW, VL
    constexpr uint64_t kSseAndAvx = 6, kMasksAndUpper = 0xE0;
    if (!HasAll(leaf1Ecx, kFma | kPopcnt | kOsUsesXsave | kAvx)) return SimdLevel::Sse2;
    const uint64_t saved = savedRegisters();
    if (!HasAll(saved, kSseAndAvx) || !HasAll(leaf7Ebx, kAvx2)) return SimdLevel::Sse2;
    if (!HasAll(saved, kMasksAndUpper) || !HasAll(leaf7Ebx, kAvx512)) return SimdLevel::Avx2;
    return SimdLevel::Avx512;
}

SimdLevel BestSimdLevel() { return WidestLevel(AskCpu(1).c, AskCpu(7).b, SavedRegisters); }

const RasterKernels& KernelsOf(SimdLevel level) {
    switch (level) {
        case SimdLevel::Avx512: return KernelsAvx512();
        case SimdLevel::Avx2: return KernelsAvx2();
        case SimdLevel::Sse2: return KernelsSse2();
        case SimdLevel::OneLane: break;
    }
    return KernelsOneLane();
}

std::span<const SimdLevel> AllSimdLevels() { return kLevels; }

std::span<const SimdLevel> SupportedSimdLevels() {
    return AllSimdLevels().first(static_cast<size_t>(BestSimdLevel()) + 1);
}
