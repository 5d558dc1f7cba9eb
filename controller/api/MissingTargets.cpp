#include "controller/api/MissingTargets.h"

#include "controller/announcements/AnnouncementXml.h"
#include "host/VqXML.h"

#include <algorithm>

namespace controller {

namespace {

template <class Known, class Target>
void AddMissing(std::vector<std::string>& missing,
                const std::vector<Known>& known,
                const std::vector<Target>& targets,
                const char* kind) {
    for (const Target& target : targets) {
        const auto isIt = [&target](const Known& one) {
            return one.id == target.id;
        };
        if (std::none_of(known.begin(), known.end(), isIt))
            missing.push_back(kind + std::to_string(target.id));
    }
}

} // namespace

std::vector<std::string> missing_targets::In(const Announcement& announcement, const House& house) {
    std::vector<std::string> missing;
    AddMissing(missing, house.rooms, announcement.rooms, "room ");
    AddMissing(missing, house.navigators, announcement.navigators, "navigator ");
    return missing;
}

std::string missing_targets::ListedIn(const Announcement& announcement, const House& house) {
    std::string list;
    for (const std::string& one : In(announcement, house))
        list += (list.empty() ? "" : ", ") + one;
    return list;
}

std::string missing_targets::ListedIn(const AnnouncementRow& row, const House& house) {
    const auto document = VqXML::CreateXmlDocument(row.xml);
    return document ? ListedIn(announcement_xml::FromXml(*document->GetRootNode()), house) : "";
}

} // namespace controller
