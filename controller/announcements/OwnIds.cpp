#include "controller/announcements/OwnIds.h"

#include "framework/XmlText.h"
#include "host/Conversion.h"
#include "host/VqXML.h"

#include <algorithm>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace controller {

namespace {

constexpr std::int64_t kMaxId = std::numeric_limits<std::uint32_t>::max();

std::int64_t CarriedId(const std::string& xml) {
    // Most are as the agent writes them, and to read them all takes long.
    constexpr std::string_view kBegin = "<announcement><id>";
    const std::size_t end = xml.find('<', kBegin.size());
    if (xml.compare(0, kBegin.size(), kBegin) == 0 && end != std::string::npos) {
        const std::string text = xml.substr(kBegin.size(), end - kBegin.size());
        if (std::all_of(text.begin(), text.end(), [](char one) { return one >= '0' && one <= '9'; }))
            return vq::ToULong(text);
    }
    const auto document = VqXML::CreateXmlDocument(xml);
    return document ? document->GetRootNode()->GetChildValueAsULong("id") : 0;
}

/// Of what is no XML, which the agent refuses, nothing is changed.
std::string WithId(const std::string& xml, std::int64_t id) {
    const auto document = VqXML::CreateXmlDocument(xml);
    if (!document)
        return xml;
    VqXML::INode& element = *document->GetRootNode();
    if (VqXML::INode* const child = element.FindChild("id"); child != nullptr)
        child->SetNameAndValue("id", std::to_string(id));
    else
        element.AddChildULong("id", static_cast<std::uint32_t>(id));
    return ToXmlText(element);
}

std::int64_t FreeFrom(std::int64_t id, const std::set<std::int64_t>& taken) {
    if (id < 1 || id > kMaxId)
        id = 1;
    while (taken.count(id) != 0)
        ++id;
    if (id > kMaxId)
        throw std::runtime_error("there is no id left for an announcement");
    return id;
}

} // namespace

AnnouncementRows WithOwnIds(const AnnouncementRows& rows) {
    AnnouncementRows own = rows;
    std::set<std::int64_t> taken;
    std::vector<std::pair<AnnouncementRow*, std::int64_t>> others;
    for (AnnouncementRow& row : own) {
        const std::int64_t carried = CarriedId(row.xml);
        if (carried != 0 && carried == row.key)
            taken.insert(carried);
        else
            others.emplace_back(&row, carried);
    }
    std::vector<AnnouncementRow*> without;
    for (const auto& [row, carried] : others) {
        if (carried != 0 && taken.insert(carried).second)
            row->key = carried;
        else
            without.push_back(row);
    }
    for (AnnouncementRow* const row : without) {
        row->key = FreeFrom(row->key, taken);
        taken.insert(row->key);
        row->xml = WithId(row->xml, row->key);
    }
    std::sort(own.begin(), own.end(),
              [](const AnnouncementRow& one, const AnnouncementRow& other) { return one.key < other.key; });
    return own;
}

} // namespace controller
