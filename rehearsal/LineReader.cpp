#include "rehearsal/LineReader.h"

#include <cerrno>
#include <stdexcept>
#include <streambuf>
#include <system_error>

bool LineReader::Next(std::string& line) {
    using Traits = std::streambuf::traits_type;
    line.clear();
    if (!m_input)
        return false;
    ++m_number;
    std::streambuf& buffer = *m_input.rdbuf();
    try {
        for (auto next = buffer.sbumpc(); !Traits::eq_int_type(next, Traits::eof()); next = buffer.sbumpc()) {
            if (next == '\n')
                return true;
            if (line.size() == kLongest)
                throw std::length_error("the line is longer than " + std::to_string(kLongest) + " bytes");
            line.push_back(Traits::to_char_type(next));
        }
    } catch (const std::ios_base::failure&) {
        throw std::system_error(errno, std::generic_category(), "cannot be read");
    }
    m_input.setstate(std::ios_base::eofbit | std::ios_base::failbit);
    return !line.empty();
}
