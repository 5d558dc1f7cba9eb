#include "announce/output/Terminal.h"

#include "announce/basics/Numbers.h"

#include <cstdlib>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::size_t kUsualWidth = 80;

std::size_t WidthOf(int descriptor) {
    winsize size{};
    if (ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    const char* const columns = std::getenv("COLUMNS");
    const long told = columns != nullptr ? WholeNumber(columns).value_or(0) : 0;
    return told > 0 ? static_cast<std::size_t>(told) : kUsualWidth;
}

bool WantsColour() {
    const char* const no = std::getenv("NO_COLOR");
    const char* const kind = std::getenv("TERM");
    return (no == nullptr || *no == '\0') && (kind == nullptr || std::string(kind) != "dumb");
}

} // namespace

Terminal Terminal::Of(int descriptor) {
    if (isatty(descriptor) == 0)
        return {};
    return {true, WantsColour(), WidthOf(descriptor)};
}
