#include "framework/XmlNodePool.h"

#include <new>

// In place of XmlNodePool.cpp where a sanitizer watches: each node is an allocation of its own, so that a
// leak of one is seen, and whoever looks at one that is gone.

void* XmlNodePool::Take(std::size_t size) {
    return ::operator new(size);
}

void XmlNodePool::GiveBack(void* memory) noexcept {
    ::operator delete(memory);
}
