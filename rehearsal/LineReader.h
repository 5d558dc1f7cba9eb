#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>

/// Reads a text line by line, whatever its length, with bounded memory.
class LineReader {
public:
    /// The longest line, without its end, in bytes: more than ten times what the state of ten thousand
    /// announcements takes.
    static constexpr std::size_t kLongest = std::size_t{64} * 1024 * 1024;

    /// `input` is borrowed for life.
    explicit LineReader(std::istream& input) : m_input(input) {}

    /// Reads the next line into `line`, without its line feed; false at the end of the text. The last line
    /// may lack a line feed. Throws `std::length_error` for a line that is too long, `std::runtime_error`
    /// when the text cannot be read.
    bool Next(std::string& line);

    /// The number of the line read last, from 1.
    [[nodiscard]] std::uint64_t Number() const noexcept { return m_number; }

    /// Whether the next line may have to be waited for.
    [[nodiscard]] bool MayWait() const { return m_input.rdbuf()->in_avail() <= 0; }

private:
    std::istream& m_input;
    std::uint64_t m_number = 0;
};
