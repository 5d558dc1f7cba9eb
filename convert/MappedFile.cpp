#include "convert/MappedFile.h"

#include "convert/Report.h"

#include <cerrno>
#include <system_error>

#include <sys/mman.h>
#include <sys/stat.h>

MappedFile::MappedFile(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0)
        throw std::system_error(errno, std::generic_category(), "the file");
    if (status.st_size == 0)
        throw report::Refusal(report::kUnknown, "is empty");
    m_size = static_cast<std::size_t>(status.st_size);
    void* const data = mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (data == MAP_FAILED) // NOLINT(*-cstyle-cast,*-int-to-ptr): the system's own constant
        throw std::system_error(errno, std::generic_category(), "the file");
    m_data = static_cast<unsigned char*>(data);
}

MappedFile::~MappedFile() {
    munmap(m_data, m_size);
}
