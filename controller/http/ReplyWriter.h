#pragma once

#include "controller/http/Packer.h"
#include "controller/http/ReplyHead.h"

#include <boost/asio/buffer.hpp>

#include <memory>
#include <string>
#include <string_view>

namespace controller {

/// Gives the bytes of a reply, piece by piece: head and body, packed where the client likes it better. Knows
/// no socket.
class ReplyWriter {
public:
    /// The frame's texts are borrowed for this call.
    void Begin(HttpReply reply, const ReplyFrame& frame);

    /// What is to be written now. It stays where it is until the next call of the others.
    [[nodiscard]] boost::asio::const_buffer Next() const noexcept { return {m_left.data(), m_left.size()}; }

    /// So many bytes of that have been written; false when there is nothing more.
    [[nodiscard]] bool Advance(std::size_t written);

    /// How long the body is before it is packed.
    [[nodiscard]] std::size_t Size() const noexcept { return ViewOf(m_reply.body).size(); }

private:
    void BeginPlain(const ReplyFrame& frame, std::string_view body);
    void BeginPacked(const ReplyFrame& frame);
    void AppendChunk(const std::string& packed);

    HttpReply m_reply;
    std::string m_text;               ///< head, with a short body; a chunk
    std::string_view m_left;          ///< of what is being written
    std::string_view m_body;          ///< a longer one, behind that
    std::unique_ptr<Packer> m_packer; ///< while something of the body is to be packed
};

} // namespace controller
