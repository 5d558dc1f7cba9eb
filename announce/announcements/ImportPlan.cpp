#include "announce/announcements/ImportPlan.h"

#include "announce/announcements/Fields.h"
#include "announce/basics/Failure.h"

#include <algorithm>

namespace {

constexpr const char* kRight =
    "what \"announce export\" writes: {\"announcements\": [...]}, each with a name";

std::string NameOf(const Json& announcement) {
    return announcement.at("name").get<std::string>();
}

Json WithoutId(Json announcement) {
    announcement.erase("id");
    return announcement;
}

/// Members that it leaves out have their usual values in the API.
Json Whole(const Json& announcement) {
    Json whole = fields::Nothing();
    whole.update(WithoutId(announcement), true);
    return whole;
}

/// The order of the members says nothing.
bool IsSame(const Json& present, const Json& wanted) {
    return nlohmann::json(Whole(present)) == nlohmann::json(Whole(wanted));
}

/// The place of the one that `wanted` stands for: the same content, else the same id and name, else the same
/// name.
std::size_t PlaceIn(const std::vector<Json>& left, const Json& wanted) {
    const auto find = [&left](const auto& fits) {
        return static_cast<std::size_t>(std::find_if(left.begin(), left.end(), fits) - left.begin());
    };
    const auto hasName = [&wanted](const Json& present) {
        return NameOf(present) == NameOf(wanted);
    };
    const std::size_t same = find([&](const Json& present) { return IsSame(present, wanted); });
    if (same < left.size())
        return same;
    const std::size_t sameId = find([&](const Json& present) {
        return hasName(present) && wanted.contains("id") && present.at("id") == wanted.at("id");
    });
    if (sameId < left.size())
        return sameId;
    if (std::count_if(left.begin(), left.end(), hasName) > 1)
        throw Failure(ExitStatus::Ambiguous,
                      "several announcements are called \"" + NameOf(wanted) + "\", with other content",
                      "one announcement with this name in the house, or its id in the file");
    return find(hasName);
}

} // namespace

std::vector<Json> ImportPlan::Read(const std::string& file, const std::string& text) {
    Json document;
    try {
        document = Json::parse(text);
    } catch (const Json::parse_error& error) {
        throw Failure(ExitStatus::Usage, file + " is no JSON: byte " + std::to_string(error.byte), kRight);
    }
    const bool isList =
        document.is_object() && document.contains("announcements") && document["announcements"].is_array();
    if (!isList)
        throw Failure(ExitStatus::Usage, file + " holds no announcements", kRight);
    std::vector<Json> all;
    for (const Json& one : document["announcements"]) {
        const bool hasName = one.is_object() && one.contains("name") && one["name"].is_string();
        if (!hasName)
            throw Failure(ExitStatus::Usage,
                          file + ": announcements[" + std::to_string(all.size()) + "] has no name", kRight);
        all.push_back(one);
    }
    return all;
}

ImportPlan ImportPlan::Make(const std::vector<Json>& wanted, const Json& present) {
    ImportPlan plan;
    std::vector<Json> left(present.begin(), present.end());
    for (const Json& one : wanted) {
        const std::size_t place = PlaceIn(left, one);
        if (place == left.size()) {
            plan.changes.push_back({WithoutId(one), nullptr});
            continue;
        }
        if (IsSame(left[place], one))
            ++plan.unchanged;
        else
            plan.changes.push_back({Whole(one), left[place]}); // What it leaves out would stay there.
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(place));
    }
    return plan;
}
