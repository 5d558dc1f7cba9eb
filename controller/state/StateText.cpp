#include "controller/state/StateText.h"

#include "controller/driver/Durable.h"
#include "framework/XmlText.h"
#include "host/ForEachChild.h"
#include "host/VqXML.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace controller::state_text {

namespace {

constexpr std::string_view kEnd = "</announcement>";

std::string Joined(const AnnouncementRows& rows, bool isWithHouse, const std::string& others = "") {
    if (rows.empty() && others.empty())
        return "<announcements/>";
    std::string text = "<announcements>";
    for (const AnnouncementRow& row : rows) {
        text += row.xml;
        if (isWithHouse && !row.house.empty())
            text.insert(text.size() - kEnd.size(), row.house);
    }
    return text + others + "</announcements>";
}

/// An announcement's element, and beside it what the house has added within.
AnnouncementRow RowOf(VqXML::INode& element) {
    AnnouncementRow row;
    row.key = element.GetChildValueAsULong("id");
    const auto* const house = element.FindChild("house");
    if (house == nullptr) {
        row.xml = ToXmlText(element);
        return row;
    }
    row.house = ToXmlText(*house);
    const auto plain = VqXML::CreateXmlNode("announcement", "");
    ForEachChild(element, [&](VqXML::INode& child) {
        if (child.GetName() != "house")
            plain->AppendChild(&child);
    });
    if (plain->FindChild("id") == nullptr)
        plain->AddChildULong("id", 0); // as the agent reads it
    row.xml = ToXmlText(*plain);
    return row;
}

} // namespace

std::string ForAgent(const AnnouncementRows& rows) {
    return Joined(rows, false);
}

std::string ForPeople(const AnnouncementRows& rows, const SoundText& sounds) {
    return Joined(rows, true, sound_text::Of(sounds));
}

AnnouncementRows Split(const std::string& text) {
    const auto document = VqXML::CreateXmlDocument(text);
    if (!document)
        throw std::runtime_error("is not XML");
    VqXML::INode& root = *document->GetRootNode();
    if (root.GetName() != "announcements")
        throw std::runtime_error("holds no announcements: its root element is \"" + root.GetName() +
                                 "\" and not \"announcements\"");
    AnnouncementRows rows;
    std::int64_t next = 0;
    ForEachChild(root, [&](VqXML::INode& child) {
        if (sound_text::IsElement(child.GetName()))
            return;
        rows.push_back(RowOf(child));
        rows.back().key = std::max(rows.back().key, next);
        next = rows.back().key + 1;
    });
    return rows;
}

AnnouncementRows Read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    if (!stream)
        throw std::runtime_error(file.string() + " cannot be read");
    try {
        return Split(content.str());
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.string() + " " + error.what());
    }
}

void Write(const std::filesystem::path& file, const std::string& text) {
    const bool isThere = std::filesystem::exists(file);
    if (isThere && !std::filesystem::is_regular_file(file)) {
        std::ofstream stream(file, std::ios::binary);
        stream << text << std::flush;
        if (!stream)
            throw std::runtime_error(file.string() + " cannot be written");
        return;
    }
    durable::Draft draft(isThere ? std::filesystem::canonical(file) : file);
    if (isThere)
        draft.TakeOwnerAndMode();
    draft.Write(text);
    draft.Place();
}

} // namespace controller::state_text
