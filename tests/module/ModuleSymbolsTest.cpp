#include "tests/module/ElfFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

bool NeedsLibrary(const Names& needed, const std::string& beginning) {
    return std::any_of(needed.begin(), needed.end(), [&](const std::string& name) {
        return name.compare(0, beginning.size(), beginning) == 0;
    });
}

TEST(ModuleSymbolsTest, ModuleExportsItsEntryUnmangledAndNothingElse) {
    EXPECT_EQ(ElfFile(MODULE).ExportedSymbols(), Names{"GetCreationFunc"});
}

TEST(ModuleSymbolsTest, SymbolTablesAreReadAtAll) {
    const Names exported = ElfFile(FRAMEWORK).ExportedSymbols();

    EXPECT_GT(exported.size(), 10U);
    EXPECT_EQ(std::count(exported.begin(), exported.end(), "_ZN2vq8ToStringB5cxx11Ej"), 1);
}

TEST(ModuleSymbolsTest, ModuleTakesTheFrameworkFromTheSharedLibrary) {
    const Names needed = ElfFile(MODULE).NeededLibraries();

    EXPECT_TRUE(NeedsLibrary(needed, "libannouncement_framework.so."));
    for (const char* const library : {"libexpat", "libgst", "libboost", "libyaml", "libsqlite"})
        EXPECT_FALSE(NeedsLibrary(needed, library)) << library;
}

TEST(ModuleSymbolsTest, ProgramLoadsTheModuleByFileAndDoesNotLinkIt) {
    const Names needed = ElfFile(PROGRAM).NeededLibraries();

    EXPECT_TRUE(NeedsLibrary(needed, "libannouncement_framework.so."));
    EXPECT_FALSE(NeedsLibrary(needed, "announcement_agent"));
    EXPECT_FALSE(NeedsLibrary(needed, "libannouncement_agent"));
}

} // namespace
