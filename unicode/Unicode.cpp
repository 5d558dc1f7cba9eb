#include "unicode/Unicode.h"

#include <cstdlib>
#include <memory>

#include <utf8proc.h>

namespace unicode {
namespace {

struct Freer {
    void operator()(utf8proc_uint8_t* bytes) const noexcept { std::free(bytes); }
};

std::string Mapped(std::string_view text, int options) {
    utf8proc_uint8_t* mapped = nullptr;
    const utf8proc_ssize_t size = utf8proc_map(
        reinterpret_cast<const utf8proc_uint8_t*>(text.data()), // NOLINT(*-reinterpret-cast)
        static_cast<utf8proc_ssize_t>(text.size()), &mapped, static_cast<utf8proc_option_t>(options));
    const std::unique_ptr<utf8proc_uint8_t, Freer> owner(mapped);
    return size < 0 ? std::string(text) : std::string(mapped, mapped + size);
}

} // namespace

std::string Folded(std::string_view text) {
    return Mapped(text, UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD);
}

std::string WithoutMarks(std::string_view text) {
    return Mapped(text, UTF8PROC_STABLE | UTF8PROC_DECOMPOSE | UTF8PROC_STRIPMARK);
}

} // namespace unicode
