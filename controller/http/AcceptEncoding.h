#pragma once

#include <initializer_list>
#include <string_view>

namespace controller {

/// Which of the content codings that are there for a reply the client likes best, by its `Accept-Encoding`
/// (RFC 9110, 12.5.3): one of `offered`, which are in lower case and in the order of our own preference, or
/// empty for the reply as it is. The latter, too, where nothing acceptable is there. What is badly written
/// counts as not said.
[[nodiscard]] std::string_view ChooseCoding(std::string_view acceptEncoding,
                                            std::initializer_list<std::string_view> offered) noexcept;

} // namespace controller
