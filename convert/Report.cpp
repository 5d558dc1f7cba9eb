#include "convert/Report.h"

#include <nlohmann/json.hpp>

#include <cerrno>
#include <cstddef>

#include <unistd.h>

namespace report {

void WriteAll(int descriptor, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(descriptor, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            throw Refusal(kTooLarge, "becomes larger than is taken");
        data += written;
        size -= static_cast<std::size_t>(written);
    }
}

void Write(int descriptor, const nlohmann::json& object) noexcept {
    try {
        const std::string text = object.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
        WriteAll(descriptor, text.data(), text.size());
    } catch (const std::exception&) {
        // Nobody reads any more.
    }
}

void Write(int descriptor, const Refusal& refusal) noexcept {
    nlohmann::json object{{"refused", refusal.Code()}, {"text", refusal.what()}};
    if (refusal.Length())
        object["length_ms"] = refusal.Length()->count();
    Write(descriptor, object);
}

} // namespace report
