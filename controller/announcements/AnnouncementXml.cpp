#include "controller/announcements/AnnouncementXml.h"

#include "framework/XmlText.h"
#include "host/ForEachChild.h"
#include "host/VqXML.h"

#include <algorithm>
#include <string_view>

namespace controller::announcement_xml {

namespace {

using Node = VqXML::INode;

void ReadVideo(const Node& node, Announcement::Video& video) {
    video.image = node.GetChildValue("file");
    video.text = node.GetChildValue("text");
    video.delayMs = node.GetChildValueAsULong("delay");
    video.timeoutMs = node.GetChildValueAsULong("timeout");
    if (!node.GetChildValue("OKButton").empty())
        video.hasOkButton = node.GetChildValueAsBool("OKButton");
    // Either both ids are given, or there is no binding at all.
    if (node.GetChildValue("displayID").empty() || node.GetChildValue("variableID").empty())
        return;
    Announcement::Binding binding{node.GetChildValueAsULong("displayID"),
                                  node.GetChildValueAsULong("variableID"),
                                  node.GetChildValue("variableName")};
    if (binding.device != 0 || binding.variable != 0 || !binding.name.empty())
        video.variable = std::move(binding);
}

/// Reads the children of a list, each id once and by id, as the agent keeps them.
template <class Target, class Read>
std::vector<Target> ReadTargets(const Node& announcement, const char* list, const Read& read) {
    std::vector<Target> targets;
    if (Node* const node = announcement.FindChild(list); node != nullptr)
        ForEachChild(*node, [&](Node& child) { targets.push_back(read(child)); });
    std::stable_sort(targets.begin(), targets.end(),
                     [](const Target& one, const Target& other) { return one.id < other.id; });
    targets.erase(std::unique(targets.begin(), targets.end(),
                              [](const Target& one, const Target& other) { return one.id == other.id; }),
                  targets.end());
    return targets;
}

/// Writes elements into a text.
class Writer {
public:
    template <class Content>
    void Element(std::string_view name, const Content& content) {
        Begin(name);
        content();
        End(name);
    }
    template <class Items, class Write>
    void List(std::string_view name, const Items& items, const Write& write) {
        if (items.empty())
            Empty(name);
        else
            Element(name, [&] { std::for_each(items.begin(), items.end(), write); });
    }
    void Text(std::string_view name, const std::string& text) {
        if (text.empty())
            Empty(name);
        else
            Element(name, [&] { AppendXmlEscaped(m_text, text); });
    }
    template <class Integer>
    void Number(std::string_view name, Integer number) {
        Element(name, [&] { m_text += std::to_string(number); });
    }
    void Flag(std::string_view name, bool flag) {
        Element(name, [&] { m_text += flag ? "true" : "false"; });
    }
    [[nodiscard]] std::string Take() { return std::move(m_text); }

private:
    void Begin(std::string_view name) { m_text.append("<").append(name).append(">"); }
    void End(std::string_view name) { m_text.append("</").append(name).append(">"); }
    void Empty(std::string_view name) { m_text.append("<").append(name).append("/>"); }

    std::string m_text;
};

void Write(Writer& writer, const Announcement::Room& room) {
    writer.Element("room", [&] {
        writer.Number("id", room.id);
        writer.Number("volume", room.volume);
    });
}

void Write(Writer& writer, const Announcement::Navigator& navigator) {
    writer.Element("navigator", [&] {
        writer.Number("id", navigator.id);
        writer.Number("room_id", navigator.room);
        writer.Flag("onscreen", navigator.isOnscreen);
    });
}

void Write(Writer& writer, const Announcement::Video& video) {
    const Announcement::Binding variable = video.variable.value_or(Announcement::Binding());
    writer.Element("video", [&] {
        writer.Text("file", video.image);
        writer.Text("text", video.text);
        writer.Number("delay", video.delayMs);
        writer.Number("timeout", video.timeoutMs);
        writer.Number("displayID", variable.device);
        writer.Number("variableID", variable.variable);
        writer.Text("variableName", variable.name);
        writer.Flag("OKButton", video.hasOkButton);
    });
}

void Write(Writer& writer, const Announcement& announcement) {
    const auto target = [&writer](const auto& one) {
        Write(writer, one);
    };
    writer.Element("announcement", [&] {
        writer.Number("id", announcement.id);
        writer.Text("name", announcement.name);
        writer.Element("audio", [&] {
            writer.Text("file", announcement.audio.file);
            writer.Number("delay", announcement.audio.delayMs);
        });
        Write(writer, announcement.video);
        writer.List("rooms", announcement.rooms, target);
        writer.List("navigators", announcement.navigators, target);
    });
}

template <class Thing>
std::string TextOf(const Thing& thing) {
    Writer writer;
    Write(writer, thing);
    return writer.Take();
}

} // namespace

Announcement FromXml(Node& element) {
    Announcement announcement;
    announcement.id = element.GetChildValueAsULong("id");
    announcement.name = element.GetChildValue("name");
    if (const Node* const audio = element.FindChild("audio"); audio != nullptr)
        announcement.audio = {audio->GetChildValue("file"), audio->GetChildValueAsULong("delay")};
    if (const Node* const video = element.FindChild("video"); video != nullptr)
        ReadVideo(*video, announcement.video);
    announcement.rooms = ReadTargets<Announcement::Room>(element, "rooms", [](const Node& room) {
        return Announcement::Room{room.GetChildValueAsULong("id"), room.GetChildValueAsLong("volume")};
    });
    announcement.navigators =
        ReadTargets<Announcement::Navigator>(element, "navigators", [](const Node& navigator) {
            return Announcement::Navigator{navigator.GetChildValueAsULong("id"),
                                           navigator.GetChildValueAsULong("room_id"),
                                           navigator.GetChildValueAsBool("onscreen")};
        });
    return announcement;
}

std::string ToXml(const Announcement& announcement) {
    return TextOf(announcement);
}

std::string ToXml(const Announcement::Room& room) {
    return TextOf(room);
}

std::string ToXml(const Announcement::Navigator& navigator) {
    return TextOf(navigator);
}

std::string ToXml(const std::vector<AnnouncementPointer>& announcements) {
    Writer writer;
    writer.List("announcements", announcements, [&](const auto& one) { Write(writer, *one); });
    return writer.Take();
}

HouseAddition HouseFromXml(const std::string& text) {
    HouseAddition addition;
    const auto document = text.empty() ? vq::auto_com<VqXML::IDocument>() : VqXML::CreateXmlDocument(text);
    if (document)
        ForEachChild(*document->GetRootNode(), [&](Node& child) {
            const bool isNew = std::find(addition.tags.begin(), addition.tags.end(), child.GetValue()) ==
                               addition.tags.end();
            if (child.GetName() == "passing")
                addition.isPassing = true;
            if (child.GetName() == "urgent")
                addition.isUrgent = true;
            if (child.GetName() == "tag" && !child.GetValue().empty() && isNew)
                addition.tags.push_back(child.GetValue());
        });
    return addition;
}

std::string ToXml(const HouseAddition& addition) {
    if (addition.tags.empty() && !addition.isPassing && !addition.isUrgent)
        return "";
    Writer writer;
    writer.Element("house", [&] {
        for (const std::string& tag : addition.tags)
            writer.Text("tag", tag);
        if (addition.isPassing)
            writer.Text("passing", "");
        if (addition.isUrgent)
            writer.Text("urgent", "");
    });
    return writer.Take();
}

} // namespace controller::announcement_xml
