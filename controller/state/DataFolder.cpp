#include "controller/state/DataFolder.h"

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace controller {

namespace {

std::string Reason(int error) {
    return std::generic_category().message(error);
}

/// Others have no business in it; one that somebody has made keeps its rights.
void Make(const std::filesystem::path& folder) {
    std::error_code error;
    if (folder.has_parent_path())
        std::filesystem::create_directories(folder.parent_path(), error);
    if (!error && !std::filesystem::is_directory(folder) && ::mkdir(folder.c_str(), 0700) != 0)
        error.assign(errno, std::generic_category());
    if (error)
        throw std::runtime_error("The data folder " + folder.string() +
                                 " cannot be made: " + error.message());
}

std::string HolderOf(int lock) {
    char text[32];
    const ssize_t size = ::pread(lock, text, sizeof text, 0);
    std::string process(text, size > 0 ? static_cast<std::size_t>(size) : 0);
    process.erase(std::min(process.find('\n'), process.size()));
    return process.empty() ? "" : " (process " + process + ")";
}

} // namespace

DataFolder::DataFolder(const std::filesystem::path& folder)
    : m_folder(folder.has_filename() ? folder : folder.parent_path()) {
    Make(m_folder);
    const std::filesystem::path file = folder / "controller.lock";
    m_lock = ::open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (m_lock < 0)
        throw std::runtime_error("The data folder " + folder.string() + " cannot be written: " +
                                 Reason(errno) + "; its owner must be the user that the controller runs as");
    if (::flock(m_lock, LOCK_EX | LOCK_NB) != 0) {
        const std::string holder = HolderOf(m_lock);
        ::close(m_lock);
        throw std::runtime_error("The data folder " + folder.string() + " is in use by another controller" +
                                 holder + "; end that one first, or give this one a data folder of its own");
    }
    const std::string process = std::to_string(::getpid()) + "\n";
    // Only a courtesy to whoever finds the folder locked.
    if (::ftruncate(m_lock, 0) == 0)
        (void)!::pwrite(m_lock, process.data(), process.size(), 0);
}

DataFolder::~DataFolder() {
    ::close(m_lock);
}

} // namespace controller
