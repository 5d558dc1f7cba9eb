#pragma once

#include <filesystem>
#include <string>

/// The agent's state as XML text in a file.
namespace controller::statetext {

/// The text of a file, once it is certain that it is a state: XML with the root element "announcements".
/// Throws `std::runtime_error`, which says what is wrong.
[[nodiscard]] std::string Read(const std::filesystem::path& file);

} // namespace controller::statetext
