// What the processor can do.
#pragma once

// How rows are filled. Every level gives the same pixels and depths.
enum class SimdLevel { Scalar, Sse2, Avx2 };

// The fastest level that this processor and system support; SSE2 is the floor of 64-bit processors.
SimdLevel BestSimdLevel();
