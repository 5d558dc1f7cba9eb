#pragma once

#include <string>

/// Texts in files; "-" is standard input. All throw Failure that names the file.
namespace text_file {

/// The text of the file, which must be UTF-8.
[[nodiscard]] std::string Read(const std::string& file);

/// Puts the text in the file's place at once: a failure leaves the former one as it was.
void Write(const std::string& file, const std::string& text);

} // namespace text_file
