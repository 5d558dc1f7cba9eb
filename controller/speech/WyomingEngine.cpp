#include "controller/speech/WyomingEngine.h"

#include "controller/driver/Durable.h"
#include "controller/driver/Text.h"
#include "controller/speech/SpeechError.h"
#include "controller/speech/TcpStream.h"
#include "controller/speech/Wave.h"
#include "controller/speech/WyomingReader.h"

#include <fstream>
#include <sstream>
#include <utility>

namespace controller {

namespace {

using Json = nlohmann::json;

constexpr std::uint32_t kLeastRate = 4000;
constexpr std::uint32_t kMostRate = 384000;
constexpr std::size_t kMostNames = 300;

/// What a server says, from `audio-start` to `audio-stop`.
class Sound {
public:
    /// False when it was the last.
    [[nodiscard]] bool Take(const WyomingEvent& event) {
        if (event.type == "error")
            throw SpeechError("answers: " + TextOf(event.data));
        if (event.type == "audio-start" || event.type == "audio-chunk")
            TakeFormat(event.data);
        if (event.type == "audio-chunk")
            m_samples += event.payload;
        if (m_samples.size() > ISpeechEngine::kMostOutput)
            throw SpeechError("sends more than " + std::to_string(ISpeechEngine::kMostOutput >> 20U) +
                              " MiB");
        return event.type != "audio-stop";
    }

    [[nodiscard]] std::string AsWave() {
        const std::size_t frame = std::size_t{m_format.bytes} * m_format.channels;
        if (frame != 0)
            m_samples.resize(m_samples.size() - m_samples.size() % frame);
        if (m_samples.empty() || frame == 0)
            throw SpeechError("has said nothing");
        return wave::Of(m_format, m_samples);
    }

private:
    void TakeFormat(const Json& data) {
        const wave::Format format{Number(data, "rate", kLeastRate, kMostRate),
                                  static_cast<std::uint16_t>(Number(data, "width", 1, 4)),
                                  static_cast<std::uint16_t>(Number(data, "channels", 1, 8))};
        const bool isOther = format.rate != m_format.rate || format.bytes != m_format.bytes ||
                             format.channels != m_format.channels;
        if (isOther && !m_samples.empty())
            throw SpeechError("changes the format of its sound on the way");
        m_format = format;
    }

    static std::string TextOf(const Json& data) {
        const auto place = data.find("text");
        return place != data.end() && place->is_string() ? OneLine(place->get<std::string>()) : "an error";
    }

    static std::uint32_t Number(const Json& data, const char* name, std::uint32_t least, std::uint32_t most) {
        const auto place = data.find(name);
        if (place == data.end() || !place->is_number_unsigned() || place->get<std::uint64_t>() < least ||
            place->get<std::uint64_t>() > most)
            throw SpeechError(std::string("sends sound whose ") + name + " is no number from " +
                              std::to_string(least) + " to " + std::to_string(most));
        return place->get<std::uint32_t>();
    }

    wave::Format m_format;
    std::string m_samples;
};

/// A connection on which one event after the other is read.
class ServerTalk {
public:
    ServerTalk(HostLookup& server, const Patience& patience) : m_server(server, patience) {}

    void Say(const WyomingEvent& event) const { m_server.Write(Written(event)); }

    /// Throws `SpeechError` when the server ends before `wanted`.
    [[nodiscard]] WyomingEvent Hear(const char* wanted) {
        while (true) {
            if (auto event = m_reader.Next())
                return std::move(*event);
            const std::string bytes = m_server.Read();
            if (bytes.empty())
                throw SpeechError(std::string("has broken off before its ") + wanted);
            m_reader.Take(bytes.data(), bytes.size());
        }
    }

private:
    const TcpStream m_server;
    WyomingReader m_reader;
};

Json List(const Json& object, const char* name) {
    const auto place = object.is_object() ? object.find(name) : object.end();
    return object.is_object() && place != object.end() && place->is_array() ? *place : Json::array();
}

std::string Text(const Json& object, const char* name) {
    const auto place = object.is_object() ? object.find(name) : object.end();
    return object.is_object() && place != object.end() && place->is_string() ? place->get<std::string>() : "";
}

/// What the programs that speak there are, and their voice. Throws `SpeechError` when none has the voice.
std::string VersionOf(const Json& info, const std::string& wanted) {
    std::string version;
    std::string names;
    for (const Json& program : List(info, "tts")) {
        version += Text(program, "name") + ' ' + Text(program, "version") + '\n';
        for (const Json& voice : List(program, "voices")) {
            const std::string name = Text(voice, "name");
            if (name == wanted)
                return version + name + ' ' + Text(voice, "version");
            names += (names.empty() ? "" : ", ") + name;
        }
    }
    if (!wanted.empty() && !names.empty())
        throw SpeechError("is no voice of the server, which has " + OneLine(names).substr(0, kMostNames));
    return version;
}

std::string ReadText(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

} // namespace

WyomingEngine::WyomingEngine(const Voice& voice, std::filesystem::path memory)
    : m_voice(voice)
    , m_lookup(voice.host, voice.port)
    , m_memory(std::move(memory))
    , m_version(ReadText(m_memory)) {}

std::string WyomingEngine::Version() const {
    const std::lock_guard lock(m_mutex);
    return m_voice.host + ' ' + std::to_string(m_voice.port) + '\n' + m_version;
}

void WyomingEngine::Learn(const std::string& version) {
    const std::lock_guard lock(m_mutex);
    if (version == m_version)
        return;
    m_version = version;
    std::filesystem::create_directories(m_memory.parent_path());
    durable::Draft draft(m_memory, 0600);
    draft.Write(version);
    draft.Place();
}

std::string WyomingEngine::Speak(const std::string& text, unsigned /*speed*/, const Patience& patience) {
    Json voice{{"language", m_voice.language}};
    if (!m_voice.voice.empty())
        voice["name"] = m_voice.voice;
    ServerTalk talk(m_lookup, patience);
    talk.Say({"describe", Json::object(), ""});
    Learn(VersionOf(talk.Hear("info").data, m_voice.voice));
    talk.Say({"synthesize", {{"text", text}, {"voice", voice}}, ""});
    Sound sound;
    while (sound.Take(talk.Hear("audio-stop")))
        continue;
    return sound.AsWave();
}

} // namespace controller
