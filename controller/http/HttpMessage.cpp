#include "controller/http/HttpMessage.h"

#include <boost/beast/http/status.hpp>

#include <algorithm>
#include <ostream>

namespace controller {

bool IsSameInLowerCase(std::string_view text, std::string_view lowerCase) noexcept {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(), [](char one, char other) {
        return one == other || (one >= 'A' && one <= 'Z' && one - 'A' + 'a' == other);
    });
}

std::string_view HttpRequest::Header(std::string_view lowerCaseName) const noexcept {
    for (const auto& [name, value] : headers) {
        if (IsSameInLowerCase(name, lowerCaseName))
            return value;
    }
    return {};
}

std::size_t HttpRequest::CountHeaders(std::string_view lowerCaseName) const noexcept {
    return static_cast<std::size_t>(std::count_if(headers.begin(), headers.end(), [&](const auto& header) {
        return IsSameInLowerCase(header.first, lowerCaseName);
    }));
}

std::string_view ViewOf(const HttpBody& body) noexcept {
    if (const auto* own = std::get_if<std::string>(&body))
        return *own;
    if (const auto* shared = std::get_if<std::shared_ptr<const std::string>>(&body))
        return *shared ? std::string_view(**shared) : std::string_view();
    if (const auto* text = std::get_if<std::string_view>(&body))
        return *text;
    return {};
}

std::string_view StatusText(unsigned status) noexcept {
    const auto text = boost::beast::http::obsolete_reason(static_cast<boost::beast::http::status>(status));
    return text == "<unknown-status>" ? "Unknown" : std::string_view(text.data(), text.size());
}

namespace {

std::optional<unsigned> HexDigit(char digit) noexcept {
    if (digit >= '0' && digit <= '9')
        return static_cast<unsigned>(digit - '0');
    if (digit >= 'a' && digit <= 'f')
        return static_cast<unsigned>(digit - 'a' + 10);
    if (digit >= 'A' && digit <= 'F')
        return static_cast<unsigned>(digit - 'A' + 10);
    return std::nullopt;
}

std::optional<char> HexByte(std::string_view digits) noexcept {
    if (digits.size() < 2)
        return std::nullopt;
    const auto high = HexDigit(digits[0]);
    const auto low = HexDigit(digits[1]);
    if (!high || !low)
        return std::nullopt;
    return static_cast<char>(*high * 16 + *low);
}

} // namespace

std::optional<std::string> PercentDecoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const auto byte = HexByte(text.substr(i + 1));
        if (!byte || *byte == '\0')
            return std::nullopt;
        decoded += *byte;
        i += 2;
    }
    return decoded;
}

std::optional<std::vector<std::pair<std::string, std::string>>> ParseQuery(std::string_view query) {
    std::vector<std::pair<std::string, std::string>> parsed;
    while (!query.empty()) {
        const std::string_view part = query.substr(0, query.find('&'));
        query.remove_prefix(std::min(query.size(), part.size() + 1));
        if (part.empty())
            continue;
        std::string plain(part);
        std::replace(plain.begin(), plain.end(), '+', ' ');
        const std::size_t equals = plain.find('=');
        auto name = PercentDecoded(std::string_view(plain).substr(0, equals));
        auto value = PercentDecoded(equals == std::string::npos ? std::string_view()
                                                                : std::string_view(plain).substr(equals + 1));
        if (!name || !value)
            return std::nullopt;
        parsed.emplace_back(std::move(*name), std::move(*value));
    }
    return parsed;
}

} // namespace controller
