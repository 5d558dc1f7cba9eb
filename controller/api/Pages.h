#pragma once

#include "controller/http/HttpMessage.h"
#include "controller/web/Assets.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace controller {

/// The pages of the house, and what they load: `/`, `/navigator/{id}`, `/assets/{name}`.
class Pages {
public:
    /// `find` gives the files by name, null for an unknown one; `navigators` are those that have a page.
    Pages(const Asset* (*find)(std::string_view name) noexcept, std::vector<std::uint32_t> navigators);

    /// The answer to a request: the file in the form that the client likes best; 304 when it has just that;
    /// 405 for a method that is not for it. Nothing when no page has this address.
    [[nodiscard]] std::optional<HttpReply> Answer(const HttpRequest& request) const;

private:
    [[nodiscard]] const Asset* At(std::string_view path) const;

    const Asset* (*const m_find)(std::string_view name) noexcept;
    const std::vector<std::uint32_t> m_navigators;
};

} // namespace controller
