#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

/// The slot of a virtual operation in the table of its class, as compiled: the Itanium ABI represents a
/// pointer to a virtual member function as 1 plus the entry's offset in bytes, and a pointer to any other as
/// its (even) address.
template <class Operation>
std::size_t Slot(Operation operation) {
    static_assert(std::is_member_function_pointer_v<Operation>);
    std::uintptr_t words[2];
    static_assert(sizeof operation == sizeof words);
    std::memcpy(words, &operation, sizeof words);
    return words[0] % 2 == 1 ? (words[0] - 1) / sizeof(void*) : kNoSlot;
}

template <class... Operations>
std::vector<std::size_t> Slots(Operations... operations) {
    return {Slot(operations)...};
}

/// 0, 1, 2, … up to `count` of them, from `first`.
inline std::vector<std::size_t> Consecutive(std::size_t count, std::size_t first = 0) {
    std::vector<std::size_t> slots;
    for (std::size_t slot = first; slot < first + count; ++slot)
        slots.push_back(slot);
    return slots;
}

/// The entry of the table that the object's first pointer leads to.
template <class Function>
Function TableEntry(const void* object, std::size_t slot) {
    const Function* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    return table[slot];
}
