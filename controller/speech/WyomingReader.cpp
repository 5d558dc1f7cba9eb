#include "controller/speech/WyomingReader.h"

#include "controller/speech/SpeechError.h"

#include <utility>

namespace controller {

namespace {

using Json = nlohmann::json;

std::size_t Length(const Json& head, const char* name, std::size_t most) {
    const auto place = head.find(name);
    if (place == head.end() || place->is_null())
        return 0;
    if (!place->is_number_unsigned() || place->get<std::uint64_t>() > most)
        throw SpeechError(std::string("sends an event whose ") + name + " is no number up to " +
                          std::to_string(most));
    return place->get<std::size_t>();
}

Json Parse(const std::string& text, const char* what) {
    Json json = Json::parse(text, nullptr, false);
    if (!json.is_object())
        throw SpeechError(std::string("sends ") + what + " that is no JSON object: not the Wyoming protocol");
    return json;
}

} // namespace

void WyomingReader::Begin(const std::string& line) {
    Json head = Parse(line, "a line");
    const auto type = head.find("type");
    if (type == head.end() || !type->is_string())
        throw SpeechError("sends an event without a type: not the Wyoming protocol");
    m_data = Length(head, "data_length", kMostData);
    m_payload = Length(head, "payload_length", kMostPayload);
    m_event.emplace();
    m_event->type = type->get<std::string>();
    const auto data = head.find("data");
    if (data != head.end() && data->is_object())
        m_event->data = std::move(*data);
}

bool WyomingReader::ReadLine() {
    const std::size_t end = m_bytes.find('\n', m_at);
    if ((end == std::string::npos ? m_bytes.size() : end) - m_at > kMostLine)
        throw SpeechError("sends a line of more than " + std::to_string(kMostLine) +
                          " bytes: not the Wyoming protocol");
    if (end == std::string::npos)
        return false;
    const std::string line = m_bytes.substr(m_at, end - m_at);
    m_at = end + 1;
    Begin(line);
    return true;
}

std::optional<WyomingEvent> WyomingReader::Next() {
    if (!m_event && !ReadLine())
        return std::nullopt;
    if (m_bytes.size() - m_at < m_data + m_payload)
        return std::nullopt;
    WyomingEvent event = std::move(*m_event);
    m_event.reset();
    if (m_data > 0)
        event.data.update(Parse(m_bytes.substr(m_at, m_data), "data"));
    event.payload = m_bytes.substr(m_at + m_data, m_payload);
    m_bytes.erase(0, m_at + m_data + m_payload);
    m_at = 0;
    return event;
}

std::string Written(const WyomingEvent& event) {
    const std::string data = event.data.dump(-1, ' ', false, Json::error_handler_t::replace);
    Json head{{"type", event.type}, {"data_length", data.size()}};
    if (!event.payload.empty())
        head["payload_length"] = event.payload.size();
    return head.dump() + '\n' + data + event.payload;
}

} // namespace controller
