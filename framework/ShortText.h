#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// A text in 16 bytes, for the many that are no longer than 15: names and values of elements. Longer ones
/// stand on the heap.
class ShortText {
public:
    /// Throws `std::bad_alloc`.
    explicit ShortText(
        std::string_view text) { // NOLINT(cppcoreguidelines-pro-type-member-init): `Store` does
        Store(text);
    }
    ShortText(const ShortText&) = delete;
    ShortText& operator=(const ShortText&) = delete;
    ~ShortText() {
        if (IsOnHeap())
            delete[] Heap();
    }

    /// Changes nothing when it throws `std::bad_alloc`. `text` may be a part of this one.
    void Assign(std::string_view text);

    [[nodiscard]] std::string_view View() const noexcept {
        return IsOnHeap() ? LongView() : std::string_view(m_bytes, kCapacity - LastByte());
    }

    [[nodiscard]] bool Is(std::string_view text) const noexcept {
        if (text.size() > kCapacity)
            return IsOnHeap() && LongView() == text;
        return LastByte() == kCapacity - text.size() && std::memcmp(m_bytes, text.data(), text.size()) == 0;
    }

private:
    static constexpr std::size_t kCapacity = 15;
    static constexpr unsigned char kOnHeap = 0xFF;

    /// What is unused of the 15 bytes before it, or that the text is on the heap.
    [[nodiscard]] unsigned char LastByte() const noexcept {
        return static_cast<unsigned char>(m_bytes[kCapacity]);
    }
    [[nodiscard]] bool IsOnHeap() const noexcept { return LastByte() == kOnHeap; }
    [[nodiscard]] char* Heap() const noexcept {
        char* heap = nullptr;
        std::memcpy(&heap, m_bytes, sizeof heap);
        return heap;
    }
    [[nodiscard]] std::string_view LongView() const noexcept;

    void Store(std::string_view text) {
        if (text.size() > kCapacity)
            return StoreOnHeap(text);
        CopyShort(m_bytes, text);
        m_bytes[kCapacity] = static_cast<char>(kCapacity - text.size());
    }
    void StoreOnHeap(std::string_view text);

    /// Copies up to 15 bytes as two words that may overlap: a call of `memcpy` takes longer.
    static void CopyShort(char* to, std::string_view text) noexcept {
        if (text.size() >= sizeof(std::uint64_t))
            return CopyEnds<std::uint64_t>(to, text);
        if (text.size() >= sizeof(std::uint32_t))
            return CopyEnds<std::uint32_t>(to, text);
        for (std::size_t index = 0; index < text.size(); ++index)
            to[index] = text[index];
    }
    template <class Word>
    static void CopyEnds(char* to, std::string_view text) noexcept {
        Word first;
        Word last;
        std::memcpy(&first, text.data(), sizeof first);
        std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
        std::memcpy(to, &first, sizeof first);
        std::memcpy(to + text.size() - sizeof last, &last, sizeof last);
    }

    char m_bytes[kCapacity + 1];
};
