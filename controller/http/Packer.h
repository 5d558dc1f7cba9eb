#pragma once

#include "controller/http/HttpMessage.h"

#include <memory>
#include <string>
#include <string_view>

#include <zlib.h>

namespace controller {

/// Makes gzip of a text, a slice at a time, so that a long one holds up nobody. Not for texts that change
/// meanwhile.
class Packer {
public:
    static constexpr std::size_t kSlice = 65536;

    /// Borrows the text for life. Null when there is no memory for it.
    [[nodiscard]] static std::unique_ptr<Packer> Make(std::string_view text);
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;
    ~Packer();

    /// Appends what comes of the next slice, which is never nothing.
    void Next(std::string& out);
    [[nodiscard]] bool IsDone() const noexcept { return m_isDone; }

private:
    explicit Packer(std::string_view text) : m_left(text) {}

    z_stream m_stream{};
    std::string_view m_left;
    bool m_isDone = false;
};

namespace packing {

/// Whether the reply is sent packed to those who like it better: text that programs read, not too short.
[[nodiscard]] bool IsWorthwhile(const HttpReply& reply) noexcept;

/// The tag of what is packed: of other bytes a strong tag must be another one (RFC 9110, 8.8.3.3). A weak one
/// stays.
[[nodiscard]] std::string PackedTag(std::string_view tag);

/// Whether one of these tags is of something packed; and the tags of the same things as they are.
[[nodiscard]] bool HasPackedTag(std::string_view tags) noexcept;
[[nodiscard]] std::string PlainTags(std::string_view tags);

} // namespace packing

} // namespace controller
