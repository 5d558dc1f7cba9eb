#include "announce/house/Names.h"

#include "announce/basics/Failure.h"
#include "announce/basics/TextWidth.h"
#include "announce/basics/Words.h"
#include "unicode/Unicode.h"

#include <algorithm>

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
    for (const std::string& name : words::Nearest(known, wanted)) {
        for (const Named& named : all) {
            if (named.name == name && near.size() < kMostNearest)
                near.push_back(Shown(named));
        }
    }
    const std::string list = kind == "announcement" ? "list" : kind + "s";
    const std::string right = !near.empty() ? "the nearest: " + words::Choice(near)
                              : all.empty() ? "there is no " + kind + " at all"
                                            : "one of those that \"announce " + list + "\" shows";
    throw Failure(ExitStatus::NotFound, "there is no " + kind + " \"" + text::Visible(wanted) + "\"", right);
}

} // namespace

std::size_t Find(const std::vector<Named>& all, const std::string& wanted, const std::string& kind) {
    const std::string meant = unicode::Folded(wanted);
    std::vector<std::size_t> found;
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (all[index].id == wanted)
            return index;
        if (unicode::Folded(all[index].name) == meant)
            found.push_back(index);
    }
    if (found.empty())
        RefuseUnknown(all, wanted, kind);
    const auto isExact = [&](std::size_t index) {
        return all[index].name == wanted;
    };
    if (found.size() == 1)
        return found.front();
    if (std::count_if(found.begin(), found.end(), isExact) == 1)
        return *std::find_if(found.begin(), found.end(), isExact);
    std::vector<std::string> candidates;
    candidates.reserve(found.size());
    for (const std::size_t index : found)
        candidates.push_back(Shown(all[index]));
    throw Failure(ExitStatus::Ambiguous, "several " + kind + "s are called \"" + text::Visible(wanted) + "\"",
                  "an id: " + words::Choice(candidates));
}

} // namespace names
