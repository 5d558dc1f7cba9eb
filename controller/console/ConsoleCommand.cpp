#include "controller/console/ConsoleCommand.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace controller {

namespace {

constexpr std::uintmax_t kMaxFile = std::uintmax_t{1024} * 1024;

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// A word, and where in it the first `=` outside of quotes stands.
struct Word {
    std::string text;
    std::size_t equals = std::string::npos;
};

class Splitter {
public:
    explicit Splitter(const std::string& line) : m_line(line) {}

    std::vector<Word> Split() {
        std::vector<Word> words;
        while (SkipBlanks())
            words.push_back(NextWord());
        return words;
    }

private:
    bool SkipBlanks() {
        while (m_place < m_line.size() && IsBlank(m_line[m_place]))
            ++m_place;
        return m_place < m_line.size();
    }

    Word NextWord() {
        Word word;
        while (m_place < m_line.size() && !IsBlank(m_line[m_place])) {
            const char c = m_line[m_place++];
            if (c == '"') {
                Quoted(word.text);
                continue;
            }
            if (c == '=' && word.equals == std::string::npos)
                word.equals = word.text.size();
            word.text += c;
        }
        return word;
    }

    void Quoted(std::string& text) {
        while (m_place < m_line.size() && m_line[m_place] != '"') {
            const bool isEscape = m_line[m_place] == '\\' && m_place + 1 < m_line.size() &&
                                  (m_line[m_place + 1] == '"' || m_line[m_place + 1] == '\\');
            m_place += isEscape ? 1 : 0;
            text += m_line[m_place++];
        }
        if (m_place == m_line.size())
            throw ConsoleError("a \" is opened and not closed");
        ++m_place;
    }

    const std::string& m_line;
    std::size_t m_place = 0;
};

std::string ValueOf(const std::string& text) {
    if (text.substr(0, 2) == "@@")
        return text.substr(1);
    return !text.empty() && text[0] == '@' ? ReadConsoleFile(text.substr(1)) : text;
}

} // namespace

std::string ReadConsoleFile(const std::string& file) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error)
        throw ConsoleError("the file " + file + " cannot be read: " + error.message());
    if (size > kMaxFile)
        throw ConsoleError("the file " + file + " is larger than 1 MiB");
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    if (!stream)
        throw ConsoleError("the file " + file + " cannot be read");
    return text.str();
}

ConsoleCommand ParseConsoleLine(const std::string& line) {
    ConsoleCommand command;
    const std::size_t first = line.find_first_not_of(" \t\r\n");
    if (first == std::string::npos || line[first] == '#')
        return command;
    for (const Word& word : Splitter(line).Split()) {
        if (command.verb.empty() && word.equals == std::string::npos)
            command.verb = word.text;
        else if (word.equals != std::string::npos && word.equals > 0)
            command.parameters.emplace_back(word.text.substr(0, word.equals),
                                            ValueOf(word.text.substr(word.equals + 1)));
        else
            command.words.push_back(word.text);
    }
    if (command.verb.empty())
        throw ConsoleError("a line begins with a command; `help` lists them");
    return command;
}

} // namespace controller
