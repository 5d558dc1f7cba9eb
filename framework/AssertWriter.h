#pragma once

#include "host/Export.h"
#include "host/StackTrace.h"

/// Listens to failed internal checks of the thread that made it, for as long as it lives. The one made last
/// is told; they are destroyed in the reverse order.
///
/// The list of listeners is per thread, and the only thing in the framework that is not reached through an
/// object: `vq::AssertWrite` is a plain function.
class VQ_EXPORT AssertWriter {
public:
    AssertWriter() noexcept;
    AssertWriter(const AssertWriter&) = delete;
    AssertWriter& operator=(const AssertWriter&) = delete;

    /// A check has failed in `file`, at `line`; the caller goes on when this returns.
    virtual void Write(const char* file, int line, const vq::StackTrace& stack) = 0;

    /// The listener of this thread, or null.
    [[nodiscard]] static AssertWriter* Current() noexcept;

protected:
    ~AssertWriter();

private:
    AssertWriter* m_previous;
};
