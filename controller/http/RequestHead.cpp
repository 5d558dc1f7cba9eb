#include "controller/http/RequestHead.h"

#include <boost/beast/http/fields.hpp>

#include <algorithm>
#include <cctype>

namespace controller {

namespace {

std::string_view View(boost::beast::string_view text) noexcept {
    return {text.data(), text.size()};
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return lower;
}

} // namespace

HttpRequest RequestOf(const boost::beast::http::request_header<>& head) {
    HttpRequest request;
    request.method = std::string(View(head.method_string()));
    const std::string_view target = View(head.target());
    const std::size_t question = target.find('?');
    request.path = std::string(target.substr(0, question));
    if (question != std::string_view::npos)
        request.query = std::string(target.substr(question + 1));
    for (const auto& field : head)
        request.headers.emplace_back(Lower(View(field.name_string())), std::string(View(field.value())));
    return request;
}

bool IsWebSocketKey(std::string_view key) noexcept {
    const std::string_view digits = key.substr(0, 22);
    return key.size() == 24 && key.substr(22) == "==" &&
           std::all_of(digits.begin(), digits.end(), [](unsigned char digit) {
               return std::isalnum(digit) != 0 || digit == '+' || digit == '/';
           });
}

} // namespace controller
