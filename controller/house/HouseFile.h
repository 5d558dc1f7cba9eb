#pragma once

#include "controller/house/House.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace controller {

/// One mistake in a house file: where, and what would be right.
struct HouseMistake {
    int line = 0;    ///< from 1; 0 when it is about the file as a whole
    std::string key; ///< as "rooms[2].output"; empty when it is about the file as a whole
    std::string text;
};

/// A house file that cannot be used, with everything that is wrong in it.
class HouseError : public std::runtime_error {
public:
    HouseError(const std::filesystem::path& file, std::vector<HouseMistake> mistakes);

    [[nodiscard]] const std::vector<HouseMistake>& Mistakes() const noexcept { return m_mistakes; }

private:
    std::vector<HouseMistake> m_mistakes;
};

/// Reads a house file (YAML). Throws `HouseError`, whose text has a line for each mistake.
[[nodiscard]] House ReadHouseFile(const std::filesystem::path& file);

/// The same, of a text; `folder` is what relative paths are relative to, and `file` is how messages name it.
[[nodiscard]] House
ReadHouse(const std::string& text, const std::filesystem::path& folder, const std::filesystem::path& file);

} // namespace controller
