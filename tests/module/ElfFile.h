#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <link.h>

/// What the dynamic section of a shared object or program of this machine's own word size says.
class ElfFile {
public:
    /// Throws `std::runtime_error` when the file cannot be read or is none.
    explicit ElfFile(const std::string& file);

    /// The names that it defines for others, sorted.
    [[nodiscard]] std::vector<std::string> ExportedSymbols() const;
    /// The names that others must define for it, sorted.
    [[nodiscard]] std::vector<std::string> ImportedSymbols() const;
    /// The libraries that it was linked with.
    [[nodiscard]] std::vector<std::string> NeededLibraries() const;

    /// Whether this text, with its end, stands in its data.
    [[nodiscard]] bool Holds(const std::string& text) const;

private:
    template <class Predicate>
    [[nodiscard]] std::vector<std::string> Symbols(Predicate isWanted) const;
    [[nodiscard]] std::optional<ElfW(Shdr)> Section(unsigned type) const;
    template <class Entry>
    [[nodiscard]] std::vector<Entry> Table(const ElfW(Shdr) & section) const;
    [[nodiscard]] std::string Text(const ElfW(Shdr) & section, std::size_t offset) const;

    std::string m_bytes;
    std::vector<ElfW(Shdr)> m_sections;
};
