#include "controller/driver/Durable.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace controller::durable {

namespace fs = std::filesystem;

namespace {

constexpr const char* kBegin = ".draft-";
/// As uploads were named by a former version.
constexpr const char* kFormerBegin = ".upload-";
constexpr const char* kEnd = ".tmp";

[[noreturn]] void FailWith(const fs::path& file, const std::string& what) {
    throw std::system_error(errno, std::generic_category(), file.string() + " " + what);
}

std::string NewName() {
    constexpr const char* kDigits = "0123456789abcdef";
    std::array<unsigned char, 16> chance{};
    // So few bytes are given whole, once the machine has started.
    (void)!::getrandom(chance.data(), chance.size(), 0);
    std::string name = kBegin;
    for (const unsigned char byte : chance) {
        name += kDigits[byte >> 4U];
        name += kDigits[byte & 0xfU];
    }
    return name + kEnd;
}

fs::path FolderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

bool IsDraft(const std::string& name) {
    const std::string end = kEnd;
    return (name.rfind(kBegin, 0) == 0 || name.rfind(kFormerBegin, 0) == 0) && name.size() > end.size() &&
           name.compare(name.size() - end.size(), end.size(), end) == 0;
}

/// Whoever writes one holds a lock on it, which ends with the process.
void RemoveUnlessWritten(const fs::path& file) noexcept {
    const int number = ::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (number < 0)
        return;
    struct stat status {};
    if (::fstat(number, &status) == 0 && S_ISREG(status.st_mode) && ::flock(number, LOCK_EX | LOCK_NB) == 0)
        (void)::unlink(file.c_str()); // it may be removed the next time
    ::close(number);
}

} // namespace

void Sync(const fs::path& file) {
    const int number = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const int result = number >= 0 ? ::fsync(number) : -1;
    const int error = errno;
    if (number >= 0)
        ::close(number);
    errno = error;
    if (result != 0)
        FailWith(file, "cannot be written to the disk");
}

void Replace(const fs::path& from, const fs::path& to) {
    fs::rename(from, to);
    Sync(FolderOf(to));
}

void MakePrivate(const fs::path& file) {
    const int number = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (number < 0)
        FailWith(file, "cannot be made");
    ::close(number);
}

Draft::Draft(const fs::path& target, mode_t mode) : m_target(target), m_file(FolderOf(target) / NewName()) {
    m_folder = ::open(FolderOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_folder >= 0)
        m_number = ::openat(m_folder, m_file.filename().c_str(),
                            O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    if (m_number < 0 || ::flock(m_number, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        Close();
        errno = error;
        Fail("cannot be written");
    }
}

Draft::~Draft() {
    Close();
}

void Draft::Close() noexcept {
    if (m_number >= 0) {
        if (!m_isPlaced)
            (void)::unlinkat(m_folder, m_file.filename().c_str(), 0); // else the next sweep finds it
        ::close(m_number);
    }
    if (m_folder >= 0)
        ::close(m_folder);
}

void Draft::Fail(const std::string& what) const {
    FailWith(m_target, what);
}

void Draft::TakeOwnerAndMode() {
    struct stat status {};
    if (::fstatat(m_folder, m_target.filename().c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        Fail("cannot be read");
    if (::fchown(m_number, status.st_uid, status.st_gid) != 0)
        Fail("cannot be left to its owner and group; run this as its owner, or as root");
    if (::fchmod(m_number, status.st_mode & 07777U) != 0)
        Fail("cannot keep its rights");
}

void Draft::Write(const std::string& content) {
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t written = ::write(m_number, content.data() + done, content.size() - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            Fail("cannot be written");
        done += static_cast<std::size_t>(written);
    }
}

void Draft::Place() {
    if (::fsync(m_number) != 0)
        Fail("cannot be written to the disk");
    PlaceUnsynced();
    if (::fsync(m_folder) != 0)
        Fail("cannot be written to the disk");
}

void Draft::PlaceUnsynced() {
    if (::renameat(m_folder, m_file.filename().c_str(), m_folder, m_target.filename().c_str()) != 0)
        Fail("cannot be put in place");
    m_isPlaced = true;
}

void Draft::Sweep(const fs::path& folder) noexcept {
    std::error_code error;
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error))
        if (IsDraft(place->path().filename().string()))
            RemoveUnlessWritten(place->path());
}

} // namespace controller::durable
