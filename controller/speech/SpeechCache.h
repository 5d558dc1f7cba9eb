#pragma once

#include "controller/driver/BoundedFolder.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace controller {

/// What has been spoken, kept under the digest of all that it was made of. Looks into the file system, so not
/// for the driver thread; any other thread, several at once.
class SpeechCache {
public:
    static constexpr std::uintmax_t kMost = std::uintmax_t{64} << 20U;

    struct Entry {
        std::filesystem::path file;
        std::chrono::milliseconds duration{0};
    };

    /// `most`: as many bytes are kept; what was used longest ago goes first.
    explicit SpeechCache(std::filesystem::path folder, std::uintmax_t most = kMost);

    /// The whole sound under the key, which counts as used now; nothing when there is none. A damaged one is
    /// removed.
    [[nodiscard]] std::optional<Entry> Find(const std::string& key) const;

    /// Keeps a sealed sound. Throws `std::system_error`.
    Entry Keep(const std::string& key, const std::string& file);

    /// Where the sound under a key stands, if it is there.
    [[nodiscard]] std::filesystem::path FileOf(const std::string& key) const;

private:
    BoundedFolder m_kept;
};

} // namespace controller
