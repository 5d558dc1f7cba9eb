#pragma once

#include <cstddef>

/// The memory of nodes. Trees are made of very many nodes that come and go together, so they are taken from
/// blocks, in which they stand in the order of their making: each place of a block is given out once, and the
/// block goes back to the heap with the last of them. Every thread fills blocks of its own; memory may be
/// given back on any thread. In builds with a sanitizer each node is an allocation of its own instead.
class XmlNodePool {
public:
    /// Throws `std::bad_alloc`. `size` is a node's.
    [[nodiscard]] static void* Take(std::size_t size);
    static void GiveBack(void* memory) noexcept;
};
