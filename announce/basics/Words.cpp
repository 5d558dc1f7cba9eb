#include "announce/basics/Words.h"

#include "unicode/Unicode.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace words {
namespace {

constexpr std::size_t kMostNearest = 3;

/// How many characters have to be changed, added, left out or swapped with the next.
std::size_t Distance(const std::string& one, const std::string& other) {
    std::vector<std::size_t> beforeLast(other.size() + 1);
    std::vector<std::size_t> last(other.size() + 1);
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= one.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= other.size(); ++j) {
            const std::size_t change = last[j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, change});
            if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast = std::exchange(last, row);
    }
    return last.back();
}

} // namespace

std::vector<std::string> Nearest(const std::vector<std::string>& all, const std::string& wanted) {
    const std::string meant = unicode::Folded(wanted);
    const std::size_t farthest = std::max<std::size_t>(1, meant.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : all) {
        const std::string known = unicode::Folded(name);
        const bool isPart = meant.size() >= 2 && known.find(meant) != std::string::npos;
        const std::size_t distance = isPart ? 0 : Distance(meant, known);
        if (distance <= farthest)
            near.emplace_back(distance, name);
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> nearest;
    for (const auto& [distance, name] : near) {
        if (nearest.size() < kMostNearest && std::find(nearest.begin(), nearest.end(), name) == nearest.end())
            nearest.push_back(name);
    }
    return nearest;
}

std::string Choice(const std::vector<std::string>& all) {
    std::string choice;
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (index > 0)
            choice += index + 1 == all.size() ? " or " : ", ";
        choice += all[index];
    }
    return choice;
}

} // namespace words
