#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace controller {

/// A program of ours that does one thing and ends: it is given what it works on, writes what that becomes,
/// and tells what has become of it. It gets three descriptors and nothing else: 0 to read, 1 to write, 3 to
/// tell.
struct HelperProcess {
    std::filesystem::path program;
    std::chrono::milliseconds limit{10000};          ///< then it is killed
    std::size_t mostOutput = std::size_t{36} << 20U; ///< a file as large as any that comes, and some more

    struct Outcome {
        std::string report;  ///< all that it told
        std::string output;  ///< all that it wrote
        std::string trouble; ///< why it did not end by itself, and in good order; empty when it did
    };

    /// Waits for its end: not for the driver thread. No process is left behind, whatever happens. Throws
    /// `std::system_error` when it cannot be started.
    [[nodiscard]] Outcome Run(const std::vector<std::string>& words, const std::string& input) const;
};

} // namespace controller
