#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace controller {

/// One event of the Wyoming protocol.
struct WyomingEvent {
    std::string type;
    nlohmann::json data = nlohmann::json::object();
    std::string payload;
};

/// Takes the bytes of a connection as they come, however they are cut, and gives the events in them: a line
/// of JSON, then as many bytes of data as it says, then as many of payload. Throws `SpeechError` for what is
/// none, or is larger than anybody who means well sends; nothing can be read behind that.
class WyomingReader {
public:
    static constexpr std::size_t kMostLine = std::size_t{64} * 1024;
    static constexpr std::size_t kMostData = std::size_t{1} << 20U;
    static constexpr std::size_t kMostPayload = std::size_t{4} << 20U;

    void Take(const char* bytes, std::size_t count) { m_bytes.append(bytes, count); }

    /// The next event that is there as a whole.
    [[nodiscard]] std::optional<WyomingEvent> Next();

    /// Whether an event has begun to come and has not come to its end.
    [[nodiscard]] bool IsInside() const noexcept { return m_at < m_bytes.size() || m_event.has_value(); }

private:
    [[nodiscard]] bool ReadLine();
    void Begin(const std::string& line);

    std::string m_bytes;
    std::size_t m_at = 0; ///< so much has been taken
    std::optional<WyomingEvent> m_event;
    std::size_t m_data = 0;
    std::size_t m_payload = 0;
};

/// The event as it is sent.
[[nodiscard]] std::string Written(const WyomingEvent& event);

} // namespace controller
