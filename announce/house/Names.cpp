#include "announce/house/Names.h"

#include "announce/Failure.h"
#include "announce/output/TextWidth.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace names {
namespace {

constexpr std::size_t kMostNearest = 3;

std::string Shown(const Named& named) {
    return text::Visible(named.name) + " (" + named.id + ")";
}

[[noreturn]] void
RefuseUnknown(const std::vector<Named>& all, const std::string& wanted, const std::string& kind) {
    std::vector<std::string> known;
    known.reserve(all.size());
    for (const Named& named : all)
        known.push_back(named.name);
    std::vector<std::string> near;
    for (const std::string& name : Nearest(known, wanted)) {
        for (const Named& named : all) {
            if (named.name == name && near.size() < kMostNearest)
                near.push_back(Shown(named));
        }
    }
    std::string right;
    if (!near.empty())
        right = "the nearest: " + Choice(near);
    else if (all.empty())
        right = "there is no " + kind + " at all";
    else
        right = "one of those that \"announce " +
                (kind == "announcement" ? std::string("list") : kind + "s") + "\" shows";
    throw Failure(ExitStatus::NotFound, "there is no " + kind + " \"" + text::Visible(wanted) + "\"", right);
}

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

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    });
    return text;
}

std::size_t Find(const std::vector<Named>& all, const std::string& wanted, const std::string& kind) {
    std::vector<std::size_t> found;
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (all[index].id == wanted)
            return index;
        if (Lower(all[index].name) == Lower(wanted))
            found.push_back(index);
    }
    if (found.empty())
        RefuseUnknown(all, wanted, kind);
    if (found.size() == 1)
        return found.front();
    std::vector<std::size_t> exact;
    std::copy_if(found.begin(), found.end(), std::back_inserter(exact),
                 [&](std::size_t index) { return all[index].name == wanted; });
    if (exact.size() == 1)
        return exact.front();
    std::vector<std::string> candidates;
    candidates.reserve(found.size());
    for (const std::size_t index : found)
        candidates.push_back(Shown(all[index]));
    throw Failure(ExitStatus::Ambiguous, "several " + kind + "s are called \"" + text::Visible(wanted) + "\"",
                  "an id: " + Choice(candidates));
}

std::vector<std::string> Nearest(const std::vector<std::string>& all, const std::string& wanted) {
    const std::string meant = Lower(wanted);
    const std::size_t farthest = std::max<std::size_t>(1, meant.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : all) {
        const std::string known = Lower(name);
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

} // namespace names
