#include "announce/commands/TextFile.h"

#include "announce/basics/Failure.h"
#include "announce/basics/TextWidth.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

#include <unistd.h>

namespace text_file {

std::string Read(const std::string& file) {
    std::ostringstream content;
    if (file == "-") {
        content << std::cin.rdbuf();
    } else {
        std::ifstream stream(file, std::ios::binary);
        content << stream.rdbuf();
        if (!stream.is_open() || stream.bad())
            throw Failure(ExitStatus::NotFound, file + " cannot be read");
    }
    if (!text::IsUtf8(content.str()))
        throw Failure(ExitStatus::Usage, file + " is not UTF-8");
    return content.str();
}

void Write(const std::string& file, const std::string& text) {
    const std::string draft = file + ".new";
    std::ofstream stream(draft, std::ios::binary | std::ios::trunc);
    stream << text;
    stream.close();
    if (!stream || std::rename(draft.c_str(), file.c_str()) != 0) {
        const std::string why = std::strerror(errno);
        (void)unlink(draft.c_str()); // it may not be there
        throw Failure(ExitStatus::Failed, file + " cannot be written: " + why);
    }
}

} // namespace text_file
