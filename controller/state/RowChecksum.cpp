#include "controller/state/RowChecksum.h"

#include <string_view>

namespace controller {

namespace {

/// FNV-1a, of 64 bits.
constexpr std::uint64_t kStart = 0xcbf29ce484222325;
constexpr std::uint64_t kFactor = 0x100000001b3;

/// With an end, so that nothing can move from one text to the next unseen.
std::uint64_t Add(std::uint64_t sum, std::string_view text) noexcept {
    for (const char character : text)
        sum = (sum ^ static_cast<unsigned char>(character)) * kFactor;
    return (sum ^ 0xff) * kFactor; // no byte of UTF-8
}

} // namespace

std::int64_t ChecksumOf(const AnnouncementRow& row) noexcept {
    auto key = static_cast<std::uint64_t>(row.key);
    std::uint64_t sum = kStart;
    for (int byte = 0; byte < 8; ++byte, key >>= 8U)
        sum = (sum ^ (key & 0xffU)) * kFactor;
    return static_cast<std::int64_t>(Add(Add(sum, row.xml), row.house));
}

std::string Named(const AnnouncementRow& row) {
    constexpr std::string_view kBegin = "<name>";
    std::string text = "announcement " + std::to_string(row.key);
    const std::size_t begin = row.xml.find(kBegin);
    const std::size_t end = row.xml.find("</name>", begin != std::string::npos ? begin : 0);
    if (begin == std::string::npos || end == std::string::npos)
        return text;
    return text + " (\"" + row.xml.substr(begin + kBegin.size(), end - begin - kBegin.size()) + "\")";
}

} // namespace controller
