#pragma once

#include "host/Export.h"

#include <cstddef>
#include <memory>
#include <string>

namespace vq {

/// The call stack at the place of construction. Taking one only notes addresses; names are looked up by
/// `Text`. Copies share the frames; there is no moving, so that none is ever without.
class VQ_EXPORT StackTrace {
public:
    StackTrace();
    StackTrace(const StackTrace&) = default;
    StackTrace& operator=(const StackTrace&) = default;
    ~StackTrace() = default;

    /// The number of frames, innermost first; 0 when the platform gives none.
    [[nodiscard]] std::size_t FrameCount() const noexcept;

    /// The frames, one a line: number, function, and source place where it is known. A hidden function's name
    /// comes from the debug information; without that the frame is an address and its file.
    [[nodiscard]] std::string Text() const;

private:
    struct Frames;
    std::shared_ptr<const Frames> m_frames;
};

} // namespace vq
