#include "controller/speech/WyomingEngine.h"

#include "controller/driver/Text.h"
#include "controller/speech/SpeechError.h"
#include "controller/speech/TcpStream.h"
#include "controller/speech/Wave.h"
#include "controller/speech/WyomingReader.h"

namespace controller {

namespace {

using Json = nlohmann::json;

constexpr std::uint32_t kLeastRate = 4000;
constexpr std::uint32_t kMostRate = 384000;

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

} // namespace

std::string WyomingEngine::Version() const {
    return m_voice.host + ' ' + std::to_string(m_voice.port) + ' ' + m_voice.voice + ' ' + m_voice.language;
}

std::string WyomingEngine::Speak(const std::string& text, unsigned /*speed*/, const Patience& patience) {
    Json voice = Json::object();
    if (!m_voice.voice.empty())
        voice["name"] = m_voice.voice;
    voice["language"] = m_voice.language;
    const TcpStream server(m_voice.host, m_voice.port, patience);
    server.Write(Written({"synthesize", {{"text", text}, {"voice", voice}}, ""}));
    WyomingReader reader;
    Sound sound;
    while (true) {
        while (const auto event = reader.Next())
            if (!sound.Take(*event))
                return sound.AsWave();
        const std::string bytes = server.Read();
        if (bytes.empty())
            throw SpeechError("has broken off before its audio-stop");
        reader.Take(bytes.data(), bytes.size());
    }
}

} // namespace controller
