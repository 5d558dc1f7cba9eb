#include "fuzz/ServerBytes.h"

#include "controller/http/HttpMessage.h"
#include "fuzz/Require.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <string>

#include <zlib.h>

namespace controller {

namespace {

/// The value of a header in a reply's head; empty when it is missing.
std::string_view HeaderOf(std::string_view head, std::string_view name) {
    const std::string wanted = "\r\n" + std::string(name) + ": ";
    const std::size_t place = head.find(wanted);
    if (place == std::string_view::npos)
        return {};
    const std::string_view value = head.substr(place + wanted.size());
    return value.substr(0, value.find("\r\n"));
}

/// What was packed with gzip; short enough for one step.
std::string Unpacked(std::string_view packed) {
    z_stream stream{};
    Require(inflateInit2(&stream, MAX_WBITS + 16) == Z_OK, "memory");
    std::string plain(std::size_t{1} << 20U, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data())); // only read
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(plain.data());
    stream.avail_out = static_cast<uInt>(plain.size());
    Require(inflate(&stream, Z_FINISH) == Z_STREAM_END, "a packed reply is whole");
    plain.resize(stream.total_out);
    (void)inflateEnd(&stream); // all has been read
    return plain;
}

void RequireBody(unsigned status, std::string_view type, std::string_view body) {
    const bool isProblem = type == "application/problem+json";
    Require(isProblem == (status >= 400), "refusals, and nothing else, are problems");
    if (!isProblem && type != "application/json")
        return;
    const auto json = nlohmann::json::parse(body, nullptr, false);
    Require(json.is_object(), "a reply that says so is a JSON object");
    if (isProblem)
        Require(json.value("status", 0U) == status && !json.value("detail", "").empty(),
                "a problem has its status and says what is wrong");
}

/// Takes a body off the bytes, put together where it comes in chunks.
std::string TakeBody(std::string_view head, std::string_view& bytes) {
    const bool isChunked = HeaderOf(head, "Transfer-Encoding") == "chunked";
    const std::string_view length = HeaderOf(head, "Content-Length");
    std::size_t size = length.empty() ? 0 : std::stoul(std::string(length));
    std::string body;
    do {
        if (isChunked) {
            const std::size_t end = bytes.find("\r\n");
            Require(end != std::string_view::npos && end > 0, "a chunk says how long it is");
            size = std::stoul(std::string(bytes.substr(0, end)), nullptr, 16);
            bytes.remove_prefix(end + 2);
        }
        const std::size_t behind = isChunked ? 2 : 0;
        Require(size + behind <= bytes.size(), "a reply is as long as it says");
        body.append(bytes.substr(0, size));
        bytes.remove_prefix(size + behind);
    } while (isChunked && size > 0);
    return body;
}

} // namespace

void RequireReplies(std::string_view bytes, bool hasHead) {
    while (!bytes.empty()) {
        const std::size_t end = bytes.find("\r\n\r\n");
        Require(end != std::string_view::npos && bytes.substr(0, 9) == "HTTP/1.1 ", "a reply has a head");
        const std::string_view head = bytes.substr(0, end + 2);
        const auto status = static_cast<unsigned>(std::stoul(std::string(head.substr(9, 3))));
        bytes.remove_prefix(end + 4);
        if (status == 100)
            continue;
        if (status == 101) {
            RequireFrames(bytes);
            return;
        }
        Require(status != 500 && StatusText(status) != "Unknown", std::string(head).c_str());
        if (hasHead)
            return;
        const std::string body = TakeBody(head, bytes);
        const bool isPacked = HeaderOf(head, "Content-Encoding") == "gzip";
        RequireBody(status, HeaderOf(head, "Content-Type"), isPacked ? Unpacked(body) : body);
    }
}

void RequireFrames(std::string_view bytes) {
    while (bytes.size() >= 2) {
        const auto byte = [&](std::size_t at) {
            return static_cast<std::uint8_t>(bytes[at]);
        };
        const unsigned kind = byte(0) & 0x0fU;
        Require((byte(0) & 0xf0U) == 0x80 && (kind == 1 || kind == 8 || kind == 9 || kind == 10),
                "a frame of the server is whole, and a text or for control");
        Require((byte(1) & 0x80U) == 0, "a frame of the server is not masked");
        std::size_t size = byte(1);
        const std::size_t more = size == 126 ? 2 : size == 127 ? 8 : 0;
        Require(kind == 1 || more == 0, "a control frame is short");
        if (bytes.size() < 2 + more)
            return;
        for (std::size_t at = 0; at < more; ++at)
            size = (at == 0 ? 0 : size << 8U) + byte(2 + at);
        bytes.remove_prefix(2 + more);
        if (bytes.size() < size)
            return;
        if (kind == 1)
            Require(nlohmann::json::parse(bytes.substr(0, size), nullptr, false).contains("type"),
                    "a text of the server is a JSON object with its type");
        bytes.remove_prefix(size);
    }
}

} // namespace controller
