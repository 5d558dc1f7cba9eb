#include "framework/ShortText.h"

void ShortText::Assign(std::string_view text) {
    char* const former = IsOnHeap() ? Heap() : nullptr;
    Store(text);
    delete[] former;
}

std::string_view ShortText::LongView() const noexcept {
    const char* const heap = Heap();
    std::size_t size = 0;
    std::memcpy(&size, heap, sizeof size);
    return {heap + sizeof size, size};
}

void ShortText::StoreOnHeap(std::string_view text) {
    const std::size_t size = text.size();
    char* const heap = new char[sizeof size + size];
    std::memcpy(heap, &size, sizeof size);
    std::memcpy(heap + sizeof size, text.data(), size);
    std::memcpy(m_bytes, &heap, sizeof heap);
    m_bytes[kCapacity] = static_cast<char>(kOnHeap);
}
