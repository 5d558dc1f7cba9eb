#pragma once

namespace controller::audio {

/// Wakes a thread that polls a descriptor. Any thread.
class Waker final {
public:
    /// @throws std::system_error when there is no descriptor for it.
    Waker();
    ~Waker();
    Waker(const Waker&) = delete;
    Waker& operator=(const Waker&) = delete;

    [[nodiscard]] int Descriptor() const { return m_descriptor; }
    void Wake() const noexcept;

    /// Whoever has woken up calls this first.
    void Drain() const noexcept;

private:
    const int m_descriptor;
};

} // namespace controller::audio
