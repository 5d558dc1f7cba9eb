#include "tests/framework/FailingAllocation.h"

#include <cstdlib>

// The program's own allocation. It stands in a source of its own, where no compiler sees it paired with its
// callers.

namespace {

std::size_t allocationsUntilFailure = 0;

} // namespace

void FailAllocation(std::size_t n) noexcept {
    allocationsUntilFailure = n;
}

void* operator new(std::size_t size) {
    if (allocationsUntilFailure > 0 && --allocationsUntilFailure == 0)
        throw std::bad_alloc();
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
