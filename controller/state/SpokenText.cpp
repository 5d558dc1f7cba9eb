#include "controller/state/SpokenText.h"

#include "framework/XmlText.h"
#include "host/ForEachChild.h"
#include "host/VqXML.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace controller::spoken_text {

namespace {

SpokenSoundRow RowOf(const VqXML::INode& element) {
    constexpr unsigned kUsualSpeed = 100;
    SpokenSoundRow row{element.GetChildValue("name"), element.GetChildValue("text"),
                       element.GetChildValue("voice"), element.GetChildValueAsULong("speed"),
                       element.GetChildValue("chime")};
    if (row.name.empty() || row.text.empty())
        throw std::runtime_error("has a spoken sound without a name or a text");
    if (row.speed == 0)
        row.speed = kUsualSpeed;
    return row;
}

} // namespace

std::string Of(const std::vector<SpokenSoundRow>& sounds) {
    std::string text;
    for (const SpokenSoundRow& sound : sounds) {
        const auto element = VqXML::CreateXmlNode(kElement, "");
        element->AddChildString("name", sound.name);
        element->AddChildString("text", sound.text);
        element->AddChildString("voice", sound.voice);
        element->AddChildULong("speed", sound.speed);
        element->AddChildString("chime", sound.chime);
        text += ToXmlText(*element);
    }
    return text;
}

std::vector<SpokenSoundRow> Split(const std::string& text) {
    const auto document = VqXML::CreateXmlDocument(text);
    if (!document)
        throw std::runtime_error("is not XML");
    std::vector<SpokenSoundRow> sounds;
    ForEachChild(*document->GetRootNode(), [&](VqXML::INode& child) {
        if (child.GetName() == kElement)
            sounds.push_back(RowOf(child));
    });
    return sounds;
}

std::vector<SpokenSoundRow> Read(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    try {
        return Split(content.str());
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.string() + " " + error.what());
    }
}

} // namespace controller::spoken_text
