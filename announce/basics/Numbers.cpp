#include "announce/basics/Numbers.h"

#include "announce/basics/Failure.h"

#include <charconv>

std::optional<long> WholeNumber(const std::string& text) {
    long number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

long ReadNumber(const std::string& what, const std::string& text, long smallest, long largest) {
    const auto number = WholeNumber(text);
    if (!number || *number < smallest || *number > largest)
        throw Failure(ExitStatus::Usage, what + ": \"" + text + "\" is not one",
                      "a whole number from " + std::to_string(smallest) + " to " + std::to_string(largest));
    return *number;
}
