#pragma once

#include "controller/http/Packer.h"
#include "controller/http/ReplyHead.h"

#include <boost/asio/buffer.hpp>

#include <array>
#include <memory>
#include <string>
#include <string_view>

namespace controller {

/// Gives the bytes of a reply, piece by piece: head and body, packed where the client likes it better. Knows
/// no socket.
class ReplyWriter {
public:
    using Piece = std::array<boost::asio::const_buffer, 2>;

    /// The frame's texts are borrowed for this call.
    void Begin(HttpReply reply, const ReplyFrame& frame);

    /// What is to be written now. It stays where it is until the next call of the others.
    [[nodiscard]] Piece Next() const noexcept;

    /// That has been written: makes the next piece; false when there is none.
    [[nodiscard]] bool Advance();

    /// How long the body is before it is packed.
    [[nodiscard]] std::size_t Size() const noexcept { return ViewOf(m_reply.body).size(); }

private:
    void BeginPacked(const ReplyFrame& frame);
    void AppendChunk(const std::string& packed);

    HttpReply m_reply;
    std::string m_text; ///< head, or a chunk
    std::string_view m_body;
    std::unique_ptr<Packer> m_packer; ///< while something of the body is to be packed
};

} // namespace controller
