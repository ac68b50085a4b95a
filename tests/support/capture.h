// CAPTURE also for the names of structured bindings, which Clang before version 16 takes into no lambda.
#pragma once

#include "doctest/doctest.h"

#define ZEL_CAPTURE_AS(copy, value) \
    const auto copy = value;        \
    INFO(#value " := ", copy)

#undef CAPTURE
#define CAPTURE(value) ZEL_CAPTURE_AS(DOCTEST_ANONYMOUS(captured_), value)
