// Memory that does not suffice, for tests: `new` fails as it does on a machine without memory.
#pragma once

#include <cstddef>
#include <cstdint>

// While it lives, everything that asks for more than `bytes` at once gets nothing.
struct AllocationLimit {
    explicit AllocationLimit(size_t bytes);
    ~AllocationLimit();
    AllocationLimit(const AllocationLimit&) = delete;
    AllocationLimit& operator=(const AllocationLimit&) = delete;
};

// While it lives, the request of that number, counted from 1, gets nothing.
struct FailingAllocation {
    explicit FailingAllocation(int64_t number);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    // True once it has failed.
    static bool HasFailed();
};
