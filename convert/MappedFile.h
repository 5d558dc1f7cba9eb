#pragma once

#include <cstddef>

/// What an open file holds, in memory as it stands.
class MappedFile {
public:
    /// Throws `std::system_error` for what cannot be mapped, `report::Refusal` for what is empty.
    explicit MappedFile(int descriptor);
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile();

    [[nodiscard]] const unsigned char* Data() const noexcept { return m_data; }
    [[nodiscard]] std::size_t Size() const noexcept { return m_size; }

private:
    unsigned char* m_data = nullptr;
    std::size_t m_size = 0;
};
