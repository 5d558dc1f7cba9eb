#pragma once

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace controller {

/// Why something cannot be done with a file of the media folder, and what would be right.
class MediaError : public std::runtime_error {
public:
    enum class Kind {
        Missing,    ///< there is no such file
        Unsuitable, ///< the content cannot be played or shown, or not as it is asked for
        Taken,      ///< something that is no file stands under the name
        NoRoom,     ///< the folder takes nothing
        Unreadable  ///< the folder, or a file in it, cannot be read
    };

    MediaError(Kind kind, const std::string& text, std::string right = {})
        : std::runtime_error(text)
        , m_kind(kind)
        , m_right(std::move(right)) {}

    /// A word for programs, and how long a sound is that is too long.
    [[nodiscard]] MediaError With(std::string code,
                                  std::optional<std::chrono::milliseconds> length = std::nullopt) && {
        m_code = std::move(code);
        m_length = length;
        return std::move(*this);
    }

    [[nodiscard]] Kind What() const noexcept { return m_kind; }
    [[nodiscard]] const std::string& Right() const noexcept { return m_right; }
    [[nodiscard]] const std::string& Code() const noexcept { return m_code; }
    [[nodiscard]] std::optional<std::chrono::milliseconds> Length() const noexcept { return m_length; }

private:
    Kind m_kind;
    std::string m_right;
    std::string m_code;
    std::optional<std::chrono::milliseconds> m_length;
};

} // namespace controller
