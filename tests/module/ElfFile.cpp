#include "tests/module/ElfFile.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

ElfFile::ElfFile(const std::string& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    m_bytes = bytes.str();
    ElfW(Ehdr) header;
    if (m_bytes.size() < sizeof header || m_bytes.compare(0, SELFMAG, ELFMAG) != 0)
        throw std::runtime_error(file + " is no ELF file");
    std::memcpy(&header, m_bytes.data(), sizeof header);
    m_sections.resize(header.e_shnum);
    std::memcpy(m_sections.data(), &m_bytes.at(header.e_shoff), m_sections.size() * sizeof m_sections[0]);
}

std::vector<std::string> ElfFile::ExportedSymbols() const {
    return Symbols([](const ElfW(Sym) & symbol) {
        const auto binding = ELF64_ST_BIND(symbol.st_info); // the same for both word sizes
        const auto visibility = ELF64_ST_VISIBILITY(symbol.st_other);
        return symbol.st_shndx != SHN_UNDEF && symbol.st_shndx != SHN_ABS && binding != STB_LOCAL &&
               (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
    });
}

std::vector<std::string> ElfFile::ImportedSymbols() const {
    return Symbols(
        [](const ElfW(Sym) & symbol) { return symbol.st_shndx == SHN_UNDEF && symbol.st_name != 0; });
}

template <class Predicate>
std::vector<std::string> ElfFile::Symbols(Predicate isWanted) const {
    std::vector<std::string> names;
    const auto section = Section(SHT_DYNSYM);
    if (!section)
        return names;
    for (const auto& symbol : Table<ElfW(Sym)>(*section)) {
        if (isWanted(symbol))
            names.push_back(Text(m_sections.at(section->sh_link), symbol.st_name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool ElfFile::Holds(const std::string& text) const {
    return m_bytes.find(std::string(text.c_str(), text.size() + 1)) != std::string::npos;
}

std::vector<std::string> ElfFile::NeededLibraries() const {
    std::vector<std::string> names;
    const auto section = Section(SHT_DYNAMIC);
    if (!section)
        return names;
    for (const auto& entry : Table<ElfW(Dyn)>(*section)) {
        if (entry.d_tag == DT_NEEDED)
            names.push_back(Text(m_sections.at(section->sh_link), entry.d_un.d_val));
    }
    return names;
}

std::optional<ElfW(Shdr)> ElfFile::Section(unsigned type) const {
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [type](const auto& section) { return section.sh_type == type; });
    return found != m_sections.end() ? std::optional(*found) : std::nullopt;
}

template <class Entry>
std::vector<Entry> ElfFile::Table(const ElfW(Shdr) & section) const {
    std::vector<Entry> entries(section.sh_size / sizeof(Entry));
    std::memcpy(entries.data(), &m_bytes.at(section.sh_offset), entries.size() * sizeof(Entry));
    return entries;
}

std::string ElfFile::Text(const ElfW(Shdr) & section, std::size_t offset) const {
    return &m_bytes.at(section.sh_offset + offset);
}
