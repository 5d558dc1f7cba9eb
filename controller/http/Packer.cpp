#include "controller/http/Packer.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace controller {

namespace {

constexpr std::size_t kWorthwhile = 1024;
constexpr std::string_view kMark = ";gzip\"";

/// 64 KiB of memory for each reply that is being packed: its client may be slow in taking it.
constexpr int kWindowBits = 13;
constexpr int kMemory = 6;
constexpr int kAsGzip = 16;

} // namespace

std::unique_ptr<Packer> Packer::Make(std::string_view text) {
    std::unique_ptr<Packer> packer(new Packer(text));
    const bool isReady = deflateInit2(&packer->m_stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED,
                                      kWindowBits + kAsGzip, kMemory, Z_DEFAULT_STRATEGY) == Z_OK;
    return isReady ? std::move(packer) : nullptr;
}

Packer::~Packer() {
    (void)deflateEnd(&m_stream); // data that is left unpacked is no failure
}

void Packer::Next(std::string& out) {
    assert(!m_isDone);
    const std::string_view slice = m_left.substr(0, kSlice);
    m_left.remove_prefix(slice.size());
    m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(slice.data())); // only read
    m_stream.avail_in = static_cast<uInt>(slice.size());
    // What is packed is given out at the end of each slice: the client sees it, and no chunk is empty.
    const int flush = m_left.empty() ? Z_FINISH : Z_SYNC_FLUSH;
    std::array<char, 16384> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): filled next
    do {
        m_stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
        m_stream.avail_out = static_cast<uInt>(bytes.size());
        m_isDone = deflate(&m_stream, flush) == Z_STREAM_END;
        out.append(bytes.data(), bytes.size() - m_stream.avail_out);
    } while (m_stream.avail_out == 0 && !m_isDone);
}

bool packing::IsWorthwhile(const HttpReply& reply) noexcept {
    const bool isText =
        reply.contentType.substr(0, 16) == "application/json" ||
        reply.contentType == "application/problem+json" || reply.contentType == "application/xml" ||
        reply.contentType.substr(0, 8) == "text/csv" || reply.contentType.substr(0, 10) == "text/plain";
    return isText && !reply.isPage && ViewOf(reply.body).size() > kWorthwhile &&
           std::none_of(reply.headers.begin(), reply.headers.end(), [](const auto& header) {
               return IsSameInLowerCase(header.first, "content-encoding");
           });
}

std::string packing::PackedTag(std::string_view tag) {
    const bool isStrong = tag.size() >= 2 && tag.front() == '"';
    return isStrong ? std::string(tag.substr(0, tag.size() - 1)).append(kMark) : std::string(tag);
}

bool packing::HasPackedTag(std::string_view tags) noexcept {
    return tags.find(kMark) != std::string_view::npos;
}

std::string packing::PlainTags(std::string_view tags) {
    std::string plain(tags);
    for (std::size_t at = plain.find(kMark); at != std::string::npos; at = plain.find(kMark, at))
        plain.erase(at, kMark.size() - 1);
    return plain;
}

} // namespace controller
