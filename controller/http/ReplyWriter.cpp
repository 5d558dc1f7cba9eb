#include "controller/http/ReplyWriter.h"

#include "controller/http/AcceptEncoding.h"

#include <array>
#include <charconv>
#include <utility>

namespace controller {

namespace {

constexpr std::size_t kShort = 16384;

} // namespace

void ReplyWriter::Begin(HttpReply reply, const ReplyFrame& frame) {
    m_reply = std::move(reply);
    m_text.clear();
    m_body = {};
    m_packer.reset();
    const std::string_view body = ViewOf(m_reply.body);
    if (packing::IsWorthwhile(m_reply)) {
        m_reply.headers.emplace_back("Vary", "Accept-Encoding");
        // An old client knows no chunks.
        if (!frame.isOldClient && !ChooseCoding(frame.acceptEncoding, {"gzip"}).empty())
            m_packer = Packer::Make(body);
    }
    if (m_packer)
        BeginPacked(frame);
    else
        BeginPlain(frame, body);
    m_left = m_text;
}

void ReplyWriter::BeginPlain(const ReplyFrame& frame, std::string_view body) {
    AppendHead(m_text, m_reply, frame, body.size());
    if (frame.isHeadRequest)
        return;
    if (body.size() <= kShort)
        m_text += body; // cheaper to copy than to send apart
    else
        m_body = body;
}

void ReplyWriter::BeginPacked(const ReplyFrame& frame) {
    m_reply.headers.emplace_back("Content-Encoding", "gzip");
    for (auto& [name, value] : m_reply.headers) {
        if (name == "ETag")
            value = packing::PackedTag(value);
    }
    std::string packed;
    m_packer->Next(packed);
    if (m_packer->IsDone()) {
        AppendHead(m_text, m_reply, frame, packed.size());
        m_packer.reset();
        if (!frame.isHeadRequest)
            m_text += packed;
        return;
    }
    AppendHead(m_text, m_reply, frame, std::nullopt);
    if (frame.isHeadRequest)
        m_packer.reset();
    else
        AppendChunk(packed);
}

void ReplyWriter::AppendChunk(const std::string& packed) {
    std::array<char, 16> size{};
    const auto end = std::to_chars(size.data(), size.data() + size.size(), packed.size(), 16).ptr;
    m_text.append(size.data(), end).append("\r\n").append(packed).append("\r\n");
}

bool ReplyWriter::Advance(std::size_t written) {
    m_left.remove_prefix(written);
    if (m_left.empty())
        m_left = std::exchange(m_body, {});
    if (!m_left.empty())
        return true;
    if (!m_packer) {
        m_reply = {};
        return false;
    }
    std::string packed;
    m_packer->Next(packed);
    m_text.clear();
    AppendChunk(packed);
    if (m_packer->IsDone()) {
        m_text += "0\r\n\r\n";
        m_packer.reset();
    }
    m_left = m_text;
    return true;
}

} // namespace controller
