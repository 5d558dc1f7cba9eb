#pragma once

#include "host/Export.h"
#include "host/StackTrace.h"

namespace vq {

/// Reports a failed internal check, with the source's name, the line and the stack, to whoever listens on
/// this thread (framework/AssertWriter.h), else to standard error; then returns, so that the caller goes on.
VQ_EXPORT void AssertWrite(const char* file, int line, const StackTrace& stack);

} // namespace vq
