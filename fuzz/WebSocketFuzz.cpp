#include "fuzz/ApiHouse.h"
#include "fuzz/Require.h"
#include "fuzz/ServerBytes.h"

#include <cctype>
#include <cstddef>
#include <cstdint>
#include <string>

namespace controller {

namespace {

std::string Upgrade(const char* path) {
    return std::string("GET ") + path +
           " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
           "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n";
}

int DigitOf(char letter) {
    if (letter >= '0' && letter <= '9')
        return letter - '0';
    return letter >= 'A' && letter <= 'F' ? letter - 'A' + 10 : -1;
}

/// Inputs are texts that people can read: pairs of digits are bytes, what stands in quotes is itself, and the
/// rest is there for the eye.
std::string BytesOf(const std::string& text) {
    std::string bytes;
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"')
            isQuoted = !isQuoted;
        else if (isQuoted)
            bytes += text[at];
        else if (at + 1 < text.size() && DigitOf(text[at]) >= 0 && DigitOf(text[at + 1]) >= 0) {
            bytes += static_cast<char>(DigitOf(text[at]) * 16 + DigitOf(text[at + 1]));
            ++at;
        }
    }
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string frames = BytesOf({data, data + size});
    if (frames.empty())
        return 0;
    for (const char* path : {"/api/events", "/api/navigators/5/events"}) {
        ApiHouse house;
        const std::string got = house.Converse(Upgrade(path), frames);
        Require(got.rfind("HTTP/1.1 101 ", 0) == 0, "a client that asks for a socket gets it");
        RequireReplies(got, false);
    }
    return 0;
}

} // namespace controller
