// How wide the vectors of the rasterizer are, and its kernels for each width.
#pragma once

#include <cstdint>
#include <span>
#include <string>

// One lane is the definition; every other level gives the same pixels and depths.
enum class SimdLevel { OneLane, Sse2, Avx2, Avx512 };

// What a level is called in tests and measurements: "one lane", "SSE2", "AVX2", "AVX-512".
std::string NameOf(SimdLevel level);

// The widest level that this processor has, and whose registers the operating system saves. SSE2 is the floor
// of 64-bit processors.
SimdLevel BestSimdLevel();

// The same for a processor whose CPUID has these bits in ECX of leaf 1 and in EBX of leaf 7.
// `savedRegisters` tells the bits of XCR0; it is only asked if leaf 1 says that it may be.
SimdLevel WidestLevel(uint32_t leaf1Ecx, uint32_t leaf7Ebx, uint64_t (*savedRegisters)());

struct RasterKernels;

// The kernels of a level that this processor has: see kernels.h.
const RasterKernels& KernelsOf(SimdLevel level);

// Every level, the narrowest first; and those that this processor has.
std::span<const SimdLevel> AllSimdLevels();
std::span<const SimdLevel> SupportedSimdLevels();
