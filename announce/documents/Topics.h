#pragma once

#include <string>
#include <utility>
#include <vector>

/// What the manual says beside the commands. In the texts, words in `backquotes` are to be typed as they are.
namespace topics {

using Rows = std::vector<std::pair<std::string, std::string>>;

[[nodiscard]] const std::string& Description();
[[nodiscard]] const std::string& Connecting();
[[nodiscard]] const Rows& Environment();
[[nodiscard]] const Rows& Files();

/// The keys of the configuration file.
[[nodiscard]] const Rows& ConfigurationKeys();

} // namespace topics
