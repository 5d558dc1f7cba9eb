#include "controller/state/SoundText.h"

#include "controller/state/StateDatabase.h"
#include "framework/XmlText.h"
#include "host/ForEachChild.h"
#include "host/VqXML.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace controller::sound_text {

namespace {

constexpr const char* kSpoken = "spoken_sound";
constexpr const char* kAsItIs = "sound_as_it_is";

SpokenSoundRow SpokenIn(const VqXML::INode& element) {
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

std::string NameIn(const VqXML::INode& element) {
    std::string name = element.GetChildValue("name");
    if (name.empty())
        throw std::runtime_error("says of a sound without a name how loud it is played");
    return name;
}

} // namespace

bool IsElement(const std::string& name) {
    return name == kSpoken || name == kAsItIs;
}

std::string Of(const SoundText& sounds) {
    std::string text;
    for (const SpokenSoundRow& sound : sounds.spoken) {
        const auto element = VqXML::CreateXmlNode(kSpoken, "");
        element->AddChildString("name", sound.name);
        element->AddChildString("text", sound.text);
        element->AddChildString("voice", sound.voice);
        element->AddChildULong("speed", sound.speed);
        element->AddChildString("chime", sound.chime);
        text += ToXmlText(*element);
    }
    for (const std::string& name : sounds.asItIs) {
        const auto element = VqXML::CreateXmlNode(kAsItIs, "");
        element->AddChildString("name", name);
        text += ToXmlText(*element);
    }
    return text;
}

SoundText Split(const std::string& text) {
    const auto document = VqXML::CreateXmlDocument(text);
    if (!document)
        throw std::runtime_error("is not XML");
    SoundText sounds;
    ForEachChild(*document->GetRootNode(), [&](VqXML::INode& child) {
        if (child.GetName() == kSpoken)
            sounds.spoken.push_back(SpokenIn(child));
        else if (child.GetName() == kAsItIs)
            sounds.asItIs.push_back(NameIn(child));
    });
    return sounds;
}

SoundText Read(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    try {
        return Split(content.str());
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.string() + " " + error.what());
    }
}

void Write(const SoundText& sounds, StateDatabase& database) {
    for (const SpokenSoundRow& sound : sounds.spoken)
        database.WriteSpokenSound(sound);
    // How loud they are is measured where their files are.
    for (const std::string& name : sounds.asItIs)
        database.WriteSoundLevel({name, "", 0, 0, true});
}

} // namespace controller::sound_text
