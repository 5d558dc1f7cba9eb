#pragma once

#include "convert/Pixels.h"

#include <vector>

/// Makes a picture smaller while its lines come, so that it need not be in memory as a whole: each point
/// becomes the mean of all that it covers.
class Shrinker {
public:
    /// `to` has neither side longer than `from`.
    Shrinker(picture::Size from, picture::Size to);

    /// The next line, from above; as many as `from` is high.
    void Take(const std::uint8_t* line) noexcept;

    /// Once all lines have come.
    [[nodiscard]] Pixels Give() { return std::move(m_made); }

private:
    void Narrow(const std::uint8_t* line) noexcept;
    void Finish() noexcept;

    const picture::Size m_from;
    Pixels m_made;
    std::uint32_t m_done = 0;    ///< lines that are made
    std::uint64_t m_room;        ///< of the line that is being made, in parts of a line that comes
    std::vector<float> m_narrow; ///< the line that came: colours by opacity, and opacity
    std::vector<float> m_sums;   ///< the line that is being made, the same way
};

[[nodiscard]] Pixels Shrunk(Pixels pixels, picture::Size to);
