// The vector widths that a test runs with.
#pragma once

#include "render/raster/simd_level.h"

#include "doctest/doctest.h"

#include <span>
#include <string>

// Every level that this processor has. The others are named in the log, once for each test, as not run.
inline std::span<const SimdLevel> TestedLevels() {
    static std::string lastTest;
    const std::string test = doctest::getContextOptions()->currentTest->m_name;
    const std::span<const SimdLevel> supported = SupportedSimdLevels();
    if (test != lastTest) {
        for (SimdLevel level : AllSimdLevels().subspan(supported.size()))
            MESSAGE("not run with ", NameOf(level), ", which this machine lacks: ", test);
        lastTest = test;
    }
    return supported;
}
