#pragma once

#include <cstddef>
#include <new>

/// The n-th allocation from now on fails with `std::bad_alloc`; 0: none does.
void FailAllocation(std::size_t n) noexcept;

/// Does `action` with the n-th allocation failing, for every n, until it needs no more; gives how often it
/// failed.
template <class Action>
std::size_t FailEveryAllocationOf(Action action) {
    for (std::size_t n = 1;; ++n) {
        FailAllocation(n);
        bool hasFailed = false;
        try {
            action();
        } catch (const std::bad_alloc&) {
            hasFailed = true;
        }
        FailAllocation(0);
        if (!hasFailed)
            return n - 1;
    }
}
