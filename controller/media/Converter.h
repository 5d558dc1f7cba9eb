#pragma once

#include "controller/media/HelperProcess.h"

#include <nlohmann/json_fwd.hpp>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace controller {

/// The part of a sound that is wanted, from its beginning on; without an end: to its own.
struct SoundSpan {
    std::optional<std::chrono::milliseconds> from;
    std::optional<std::chrono::milliseconds> to;

    [[nodiscard]] bool IsWhole() const noexcept { return !from && !to; }
};

class MediaError;

/// Has files of others decoded, by `announcement-convert`: nothing that reads them runs in this process. Any
/// thread but the driver thread.
class Converter {
public:
    /// Told of what should be mended, each time: the kernel cannot keep the program from anything.
    using Complain = std::function<void(const std::string&)>;

    explicit Converter(HelperProcess helper = {FindProgram()}, Complain complain = {})
        : m_helper(std::move(helper))
        , m_complain(std::move(complain)) {}

    /// A WAV file, 16 bits at 48 kHz, of the sound, of at most 20 s. `name` is for messages. Throws
    /// `MediaError`, with the code "cannot_decode", "damaged", "too_long", "nothing_there" or
    /// "conversion_failed".
    [[nodiscard]] std::string
    Sound(const std::string& name, const std::string& content, const SoundSpan& span) const;

    struct Picture {
        std::string type; ///< "image/jpeg"
        std::string content;
        std::string thumbnail; ///< a JPEG, or a PNG where something shines through
    };

    /// The picture as screens need it: at most 1,920 pixels on the longer side, upright, and without what it
    /// says of place, time and camera. Throws `MediaError`, with the code "damaged", "too_large" or
    /// "conversion_failed".
    [[nodiscard]] Picture ShownPicture(const std::string& name, const std::string& content) const;

    /// The picture with at most 320 pixels on the longer side. Throws the same.
    [[nodiscard]] std::string Thumbnail(const std::string& name, const std::string& content) const;

    /// As it lies beside this program: in the build tree, or where both are installed.
    [[nodiscard]] static std::filesystem::path FindProgram();

private:
    [[nodiscard]] HelperProcess::Outcome
    Run(const std::string& name, const std::vector<std::string>& words, const std::string& content) const;
    [[nodiscard]] nlohmann::json ReportOf(const std::string& name,
                                          const HelperProcess::Outcome& outcome) const;

    HelperProcess m_helper;
    Complain m_complain;
};

/// That the sound is longer than can be played, how long it is, and what to do.
[[nodiscard]] MediaError TooLong(const std::string& name, std::chrono::milliseconds length);

} // namespace controller
