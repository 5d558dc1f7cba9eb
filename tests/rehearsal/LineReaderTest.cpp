#include "rehearsal/LineReader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <streambuf>

namespace {

std::string Read(const std::string& text) {
    std::istringstream input(text);
    LineReader lines(input);
    std::string all;
    for (std::string line; lines.Next(line);)
        all += std::to_string(lines.Number()) + "[" + line + "]";
    return all;
}

TEST(LineReaderTest, ReadsLinesWithTheirNumbers) {
    EXPECT_EQ(Read("a\n\nb\r\n"), "1[a]2[]3[b\r]");
}

TEST(LineReaderTest, TheLastLineMayLackItsEnd) {
    EXPECT_EQ(Read("a\nb"), "1[a]2[b]");
    EXPECT_EQ(Read(""), "");
}

/// Gives the same byte for ever.
class Endless final : public std::streambuf {
protected:
    int_type underflow() override {
        setg(&m_byte, &m_byte, &m_byte + 1);
        return traits_type::to_int_type(m_byte);
    }

private:
    char m_byte = '[';
};

TEST(LineReaderTest, RefusesALineThatIsTooLong) {
    Endless endless;
    std::istream input(&endless);
    LineReader lines(input);
    std::string line;
    EXPECT_THROW(lines.Next(line), std::length_error);
    EXPECT_EQ(line.size(), LineReader::kLongest);
}

} // namespace
