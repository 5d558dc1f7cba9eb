#pragma once

#include <utility>

#include <unistd.h>

namespace controller {

/// An open file, closed at the end; a negative number is none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    void Close() noexcept {
        if (m_number >= 0)
            (void)::close(std::exchange(m_number, -1)); // nothing is written that could be lost
    }
    [[nodiscard]] int Number() const noexcept { return m_number; }
    [[nodiscard]] bool IsOpen() const noexcept { return m_number >= 0; }

private:
    int m_number = -1;
};

} // namespace controller
