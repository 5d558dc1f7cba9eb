#include "controller/state/Durable.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace controller {

void durable::Sync(const std::filesystem::path& file) {
    const int number = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const int result = number >= 0 ? ::fsync(number) : -1;
    const std::error_code error(result == 0 ? 0 : errno, std::generic_category());
    if (number >= 0)
        ::close(number);
    if (error)
        throw std::filesystem::filesystem_error("cannot be written to the disk", file, error);
}

void durable::Replace(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::filesystem::rename(from, to);
    Sync(to.parent_path());
}

} // namespace controller
