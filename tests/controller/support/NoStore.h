#pragma once

#include "controller/state/IRoomStore.h"
#include "controller/state/IVariableStore.h"

namespace controller {

/// Keeps nothing, and answers nobody.
class NoStore final : public IRoomStore, public IVariableStore {
public:
    void WriteTaken(const JournalEntry& /*entry*/, unsigned /*volume*/, WriteDone /*done*/) override {}
    void WriteFree(std::uint32_t /*room*/, unsigned /*volume*/, WriteDone /*done*/) override {}
    void WriteVariable(std::uint32_t /*device*/,
                       std::uint32_t /*variable*/,
                       const std::string& /*value*/,
                       WriteDone /*done*/) override {}
};

} // namespace controller
