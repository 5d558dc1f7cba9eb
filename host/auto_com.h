#pragma once

#include <cstddef>
#include <utility>

namespace vq {

/// Holder of a reference-counted host object (one with `AddRef` and `Release`).
///
/// Built from a plain pointer it takes over the one reference that comes with it; a copy takes a further
/// reference; destruction and reassignment drop one. A holder may be empty. The counts are not atomic: host
/// objects stay on the driver thread.
template <class Object>
class auto_com { // NOLINT(readability-identifier-naming): the name is the host's
public:
    auto_com() noexcept = default;
    // NOLINTNEXTLINE(google-explicit-constructor): an empty holder, as with any pointer
    auto_com(std::nullptr_t) noexcept {}
    explicit auto_com(Object* object) noexcept : m_object(object) {}
    auto_com(const auto_com& other) : m_object(other.m_object) {
        if (m_object != nullptr)
            m_object->AddRef();
    }
    auto_com(auto_com&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    /// From a holder of a more derived type.
    template <class Derived>
    auto_com(auto_com<Derived> other) noexcept // NOLINT(google-explicit-constructor): converts as pointers do
        : m_object(other.Detach()) {}

    ~auto_com() {
        if (m_object != nullptr)
            m_object->Release();
    }

    auto_com& operator=(auto_com other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }

    [[nodiscard]] Object* Get() const noexcept { return m_object; }
    [[nodiscard]] Object& operator*() const noexcept { return *m_object; }
    [[nodiscard]] Object* operator->() const noexcept { return m_object; }
    [[nodiscard]] explicit operator bool() const noexcept { return m_object != nullptr; }

    /// Gives the held reference to the caller and leaves the holder empty.
    [[nodiscard]] Object* Detach() noexcept { return std::exchange(m_object, nullptr); }

private:
    Object* m_object = nullptr;
};

} // namespace vq
