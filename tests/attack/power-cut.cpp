// Writes down what a program does to the files of the folder RECORDED, in its order, into the file RECORDING:
// preloaded, it is the disk's view of the program. Each entry is a line, `write FILE OFFSET SIZE`, `cut FILE
// SIZE`, `sync FILE`, `rename FILE FILE` or `unlink FILE`, and behind a write its bytes. What stands in
// memory that is shared (-shm) is not on the disk.
#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

template <class Function>
Function Next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

std::mutex& Gate() {
    static std::mutex gate;
    return gate;
}

/// The name in the recorded folder, "." for the folder itself; empty for any other file.
std::string NameOf(const std::string& path) {
    const char* const folder = std::getenv("RECORDED");
    if (folder == nullptr)
        return "";
    const std::string begin = std::string(folder) + "/";
    if (path == folder)
        return ".";
    const bool isInside = path.compare(0, begin.size(), begin) == 0;
    const std::string name = isInside ? path.substr(begin.size()) : "";
    const std::string shared = "-shm";
    const bool isShared =
        name.size() > shared.size() && name.compare(name.size() - shared.size(), shared.size(), shared) == 0;
    return isShared ? "" : name;
}

std::string NameOf(int number) {
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(number);
    const ssize_t size = readlink(link.c_str(), path.data(), path.size());
    return size > 0 ? NameOf(std::string(path.data(), static_cast<std::size_t>(size))) : "";
}

std::string NameIn(int folder, const char* path) {
    if (folder == AT_FDCWD || path[0] == '/')
        return NameOf(std::string(path));
    return NameOf(folder) == "." ? std::string(path) : "";
}

void Record(const std::string& line, const void* bytes = nullptr, std::size_t size = 0) {
    static const int file = [] {
        const char* const name = std::getenv("RECORDING");
        return name != nullptr ? open(name, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644) : -1;
    }();
    const std::string head = line + "\n";
    const std::array<iovec, 2> parts{iovec{const_cast<char*>(head.data()), head.size()},
                                     iovec{const_cast<void*>(bytes), size}};
    const ssize_t written = file >= 0 ? writev(file, parts.data(), 2) : 0;
    if (written != static_cast<ssize_t>(head.size() + size))
        abort(); // an incomplete recording would prove nothing
}

void RecordWrite(int number, off_t offset, const void* bytes, ssize_t written) {
    const std::string name = written > 0 ? NameOf(number) : "";
    if (!name.empty())
        Record("write " + name + " " + std::to_string(offset) + " " + std::to_string(written), bytes,
               static_cast<std::size_t>(written));
}

template <class Act>
int Recorded(const std::string& what, const std::string& name, const Act& act) {
    if (name.empty())
        return act();
    const std::lock_guard lock(Gate());
    const int result = act();
    if (result == 0)
        Record(what);
    return result;
}

} // namespace

extern "C" {

// The library's own names of the parameters are reserved.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

ssize_t write(int number, const void* bytes, size_t size) {
    static const auto next = Next<ssize_t (*)(int, const void*, size_t)>("write");
    if (NameOf(number).empty())
        return next(number, bytes, size);
    const std::lock_guard lock(Gate());
    const off_t offset = lseek(number, 0, SEEK_CUR);
    const ssize_t written = next(number, bytes, size);
    RecordWrite(number, offset, bytes, written);
    return written;
}

ssize_t pwrite(int number, const void* bytes, size_t size, off_t offset) {
    static const auto next = Next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
    const std::lock_guard lock(Gate());
    const ssize_t written = next(number, bytes, size, offset);
    RecordWrite(number, offset, bytes, written);
    return written;
}

ssize_t pwrite64(int number, const void* bytes, size_t size, off64_t offset) {
    return pwrite(number, bytes, size, offset);
}

int ftruncate(int number, off_t size) noexcept {
    static const auto next = Next<int (*)(int, off_t)>("ftruncate");
    const std::string name = NameOf(number);
    return Recorded("cut " + name + " " + std::to_string(size), name, [&] { return next(number, size); });
}

int ftruncate64(int number, off64_t size) noexcept {
    return ftruncate(number, size);
}

int fsync(int number) {
    static const auto next = Next<int (*)(int)>("fsync");
    const std::string name = NameOf(number);
    return Recorded("sync " + name, name, [&] { return next(number); });
}

int fdatasync(int number) {
    static const auto next = Next<int (*)(int)>("fdatasync");
    const std::string name = NameOf(number);
    return Recorded("sync " + name, name, [&] { return next(number); });
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    static const auto next = Next<int (*)(int, const char*, int, const char*)>("renameat");
    const std::string name = NameIn(fromFolder, from);
    return Recorded("rename " + name + " " + NameIn(toFolder, to), name,
                    [&] { return next(fromFolder, from, toFolder, to); });
}

int rename(const char* from, const char* to) noexcept {
    return renameat(AT_FDCWD, from, AT_FDCWD, to);
}

int unlinkat(int folder, const char* path, int flags) noexcept {
    static const auto next = Next<int (*)(int, const char*, int)>("unlinkat");
    const std::string name = NameIn(folder, path);
    return Recorded("unlink " + name, name, [&] { return next(folder, path, flags); });
}

int unlink(const char* path) noexcept {
    return unlinkat(AT_FDCWD, path, 0);
}

int remove(const char* path) noexcept {
    static const auto next = Next<int (*)(const char*)>("remove");
    const std::string name = NameOf(std::string(path));
    return Recorded("unlink " + name, name, [&] { return next(path); });
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)

} // extern "C"
