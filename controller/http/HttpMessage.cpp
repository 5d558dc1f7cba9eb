#include "controller/http/HttpMessage.h"

#include <algorithm>

namespace controller {

std::string_view HttpRequest::Header(std::string_view lowerCaseName) const noexcept {
    for (const auto& [name, value] : headers) {
        if (name == lowerCaseName)
            return value;
    }
    return {};
}

std::size_t HttpRequest::CountHeaders(std::string_view lowerCaseName) const noexcept {
    return static_cast<std::size_t>(std::count_if(
        headers.begin(), headers.end(), [&](const auto& header) { return header.first == lowerCaseName; }));
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
    struct Entry {
        unsigned status;
        std::string_view text;
    };
    static constexpr Entry kTexts[] = {
        {200, "OK"},
        {201, "Created"},
        {202, "Accepted"},
        {204, "No Content"},
        {304, "Not Modified"},
        {400, "Bad Request"},
        {401, "Unauthorized"},
        {403, "Forbidden"},
        {404, "Not Found"},
        {405, "Method Not Allowed"},
        {408, "Request Timeout"},
        {409, "Conflict"},
        {413, "Content Too Large"},
        {414, "URI Too Long"},
        {415, "Unsupported Media Type"},
        {421, "Misdirected Request"},
        {422, "Unprocessable Content"},
        {426, "Upgrade Required"},
        {429, "Too Many Requests"},
        {431, "Request Header Fields Too Large"},
        {500, "Internal Server Error"},
        {501, "Not Implemented"},
        {503, "Service Unavailable"},
        {505, "HTTP Version Not Supported"},
        {507, "Insufficient Storage"},
    };
    for (const Entry& entry : kTexts) {
        if (entry.status == status)
            return entry.text;
    }
    return "Unknown";
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
