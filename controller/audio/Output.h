#pragma once

#include "controller/audio/FoundOutput.h"
#include "controller/audio/Gst.h"
#include "controller/audio/Health.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace controller::audio {

class DeviceSearch;
class HomeAssistantDesk;
class ISoundAddresses;
class IRoomPlayer;
class PacketSender;
class PageDesk;
class Timeline;
struct OutputFacts;
struct RoomSlot;
class Held;
class PulseDesk;
class SnapcastDesk;

/// For whom an output opens, and with what help.
struct OutputContext {
    std::uint32_t roomId = 0;
    unsigned take = 1;                                     ///< Counts the engine's streams, from 1.
    std::function<void(const std::string& reason)> silent; ///< Nothing will be heard, and why. Any thread.
    std::shared_ptr<DeviceSearch> devices;
    std::shared_ptr<PacketSender> packets;
    std::shared_ptr<PulseDesk> pulse;
    std::shared_ptr<SnapcastDesk> snapcast;
    std::shared_ptr<Held> held;
    ISoundAddresses* addresses = nullptr; ///< borrowed for life; null: nothing can be fetched
    std::shared_ptr<PageDesk> pages = nullptr;
    std::shared_ptr<HomeAssistantDesk> houses = nullptr;
};

/// A place where a room's sound can go: gives an element or bin, floating, whose "sink" pad takes raw audio;
/// what arrives there has been converted to what the pad asks for. Called on a thread of its own, so it may
/// block.
/// @throws std::runtime_error that says why there can be no sound.
using ElementOutput = std::function<GstElement*(const OutputContext& context)>;

/// What a room's player starts from.
struct PlayerOrder {
    std::shared_ptr<Timeline> timeline;
    std::shared_ptr<RoomSlot> slot;
    unsigned volume = 0;
    std::chrono::milliseconds leadSilence{0}; ///< that the room is to get before the clip
    OutputContext context;
    bool isUrgent = false; ///< as the announcement is
};

/// A place that is no GStreamer bin: its rooms have players of their own.
struct PlayerOutput {
    std::function<std::shared_ptr<IRoomPlayer>(PlayerOrder order)> make;
    std::chrono::milliseconds leadSilence{0}; ///< that it needs before each clip, at least
    bool needsWholeSound = false;             ///< as the clip's file, beside its samples
    /// Is given the file of what will probably be played soon; null: it need not know. Driver thread.
    std::function<void(const OutputContext& context, const std::shared_ptr<const std::string>& file)>
        prepare = nullptr;
};

using Output = std::variant<ElementOutput, PlayerOutput>;

/// A kind of output: one row of the table in Outputs.cpp, one source file.
struct OutputKind {
    const char* kind;
    const char* form;
    const char* meaning;
    /// `text` is what follows the kind. Opens nothing.
    /// @throws std::invalid_argument when it is not what the kind needs.
    Output (*create)(const std::string& text);
    /// The words that may stand behind the text, each as `word=value`, with spaces between them.
    const char* options = "";
    /// What the text says about the place; null: nothing.
    OutputFacts (*facts)(const std::string& text) = nullptr;
    /// Whether what plays at places with these texts now would be heard: an answer each, in their order.
    /// Called on a thread of its own, never twice at a time; it may block, plays nothing, and opens nothing
    /// that anybody would notice. Null: nobody knows before something has played there.
    std::vector<Health> (*ask)(const std::vector<std::string>& texts, const OutputContext& context) = nullptr;
    /// The places of this kind that there are; `texts` are those of the house's rooms. Called as `ask` is.
    /// Null: they cannot be looked for.
    std::vector<FoundOutput> (*find)(const std::vector<std::string>& texts,
                                     const OutputContext& context) = nullptr;
};

Output CreateAutoOutput(const std::string& text);
Output CreateSilentOutput(const std::string& text);
Output CreateFileOutput(const std::string& text);
Output CreateGstreamerOutput(const std::string& text);
Output CreateMulticastOutput(const std::string& text);
OutputFacts FactsOfMulticast(const std::string& text);
Output CreatePageOutput(const std::string& text);
Output CreatePulseOutput(const std::string& text);
Output CreateSnapcastOutput(const std::string& text);
OutputFacts FactsOfSnapcast(const std::string& text);
Output CreateHomeAssistantOutput(const std::string& text);
OutputFacts FactsOfHomeAssistant(const std::string& text);

std::vector<FoundOutput> FindCards(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<FoundOutput> FindClients(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<FoundOutput> FindPages(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<FoundOutput> FindSinks(const std::vector<std::string>& texts, const OutputContext& context);

std::vector<Health> AskAuto(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<Health> AskFile(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<Health> AskMulticast(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<Health> AskPage(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<Health> AskHomeAssistant(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<Health> AskPulse(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<Health> AskSnapcast(const std::vector<std::string>& texts, const OutputContext& context);
std::vector<Health> AskSilent(const std::vector<std::string>& texts, const OutputContext& context);

struct OutputDescription;

/// @throws std::invalid_argument for an unknown kind or an unusable text.
[[nodiscard]] Output CreateOutput(const OutputDescription& description);

/// The row of the table; null for an unknown kind.
[[nodiscard]] const OutputKind* FindOutputKind(const std::string& kind);

/// Those that can look for places.
[[nodiscard]] std::vector<std::string> KindsThatFind();

} // namespace controller::audio
