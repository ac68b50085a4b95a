#include "support/allocation_limit.h"

#include <cstdlib>
#include <new>

static size_t mostAtOnce = SIZE_MAX;
static int64_t untilFailure = 0;  // requests up to the one that fails; 0 none does

AllocationLimit::AllocationLimit(size_t bytes) { mostAtOnce = bytes; }
AllocationLimit::~AllocationLimit() { mostAtOnce = SIZE_MAX; }

FailingAllocation::FailingAllocation(int64_t number) { untilFailure = number; }
FailingAllocation::~FailingAllocation() { untilFailure = 0; }
bool FailingAllocation::HasFailed() { return untilFailure == 0; }

static bool IsRefused(size_t bytes) {
    if (bytes > mostAtOnce) return true;
    return untilFailure > 0 && --untilFailure == 0;
}

static void* Allocate(size_t bytes) {
    return IsRefused(bytes) ? nullptr : std::malloc(bytes == 0 ? 1 : bytes);
}

// All forms, because the sanitizers bring their own of each.

void* operator new(size_t bytes) {
    void* const memory = Allocate(bytes);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void* operator new[](size_t bytes) { return operator new(bytes); }
void* operator new(size_t bytes, const std::nothrow_t&) noexcept { return Allocate(bytes); }
void* operator new[](size_t bytes, const std::nothrow_t&) noexcept { return Allocate(bytes); }

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
