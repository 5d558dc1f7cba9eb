#pragma once

#include <nlohmann/json_fwd.hpp>

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>

/// What this program tells the one that started it: one JSON object on a descriptor of its own.
namespace report {

/// A file that cannot be converted: why, in a word for programs, and in words for people.
class Refusal : public std::runtime_error {
public:
    Refusal(const char* code,
            const std::string& text,
            std::optional<std::chrono::milliseconds> length = std::nullopt)
        : std::runtime_error(text)
        , m_code(code)
        , m_length(length) {}

    [[nodiscard]] const char* Code() const noexcept { return m_code; }
    /// How long the sound is, as far as that is the reason and known.
    [[nodiscard]] std::optional<std::chrono::milliseconds> Length() const noexcept { return m_length; }

private:
    const char* m_code;
    std::optional<std::chrono::milliseconds> m_length;
};

/// No decoder of this machine knows what it is.
constexpr const char* kUnknown = "cannot_decode";
/// A decoder has begun, and given up.
constexpr const char* kDamaged = "damaged";
constexpr const char* kTooLong = "too_long";
/// `from` lies behind the end.
constexpr const char* kNothingThere = "nothing_there";
/// Too large, as a picture or as what comes out.
constexpr const char* kTooLarge = "too_large";

/// Everything, or nothing: whoever reads sees an object that is cut.
void Write(int descriptor, const nlohmann::json& object) noexcept;
void Write(int descriptor, const Refusal& refusal) noexcept;

/// All of the text into what is open. Throws `Refusal` where it takes no more.
void WriteAll(int descriptor, const char* data, std::size_t size);

} // namespace report
