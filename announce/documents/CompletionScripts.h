#pragma once

#include <string>

/// The script that makes a shell ask `announce complete`; throws Failure (Usage) for a shell that is not
/// known.
[[nodiscard]] std::string CompletionScript(const std::string& shell);
