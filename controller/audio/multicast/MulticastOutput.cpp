#include "controller/audio/IRoomPlayer.h"
#include "controller/audio/Output.h"
#include "controller/audio/multicast/PacketSender.h"
#include "controller/audio/multicast/PacketSockets.h"
#include "controller/audio/multicast/Zone.h"
#include "controller/audio/multicast/ZoneStream.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio {

namespace {

/// A room that is a zone: what it does is done by the one sender.
class ZonePlayer final : public IRoomPlayer {
public:
    ZonePlayer(PlayerOrder order, const Zone& zone)
        : m_packets(order.context.packets)
        , m_stream(std::make_shared<ZoneStream>(std::move(order), zone, RtpStream::Start::Random())) {}

    void Start(OnEvent onEvent) override {
        m_stream->Listen(std::move(onEvent));
        m_packets->Add(m_stream);
    }
    void SetVolume(unsigned volume) override { m_stream->SetVolume(volume); }
    void Stop() override { m_packets->Stop(m_stream); }
    void Abort() override { m_packets->Abort(m_stream); }

private:
    const std::shared_ptr<PacketSender> m_packets;
    const std::shared_ptr<ZoneStream> m_stream;
};

/// Nobody knows more than whether it would be sent.
Health HealthOf(const Zone& usual) {
    int error = PacketSockets::WhyNoWayTo(usual);
    if (error != 0)
        return {Health::State::Silent, NothingIsSentTo(usual, error)};
    const auto urgent = UrgentZoneOf(usual);
    if (urgent && (error = PacketSockets::WhyNoWayTo(*urgent)) != 0)
        return {Health::State::Silent, NothingIsSentTo(*urgent, error)};
    return {};
}

} // namespace

Output CreateMulticastOutput(const std::string& text) {
    PlayerOutput output;
    output.leadSilence = kSilentPackets * kPacketTime;
    output.make = [usual = ReadZone(text)](PlayerOrder order) {
        const auto urgent = order.isUrgent ? UrgentZoneOf(usual) : std::nullopt;
        return std::make_shared<ZonePlayer>(std::move(order), urgent.value_or(usual));
    };
    return output;
}

OutputFacts FactsOfMulticast(const std::string& text) {
    const Zone usual = ReadZone(text);
    OutputFacts facts{{usual.place}, DoubtsAbout(usual), false};
    if (const auto urgent = UrgentZoneOf(usual)) {
        facts.places.push_back(urgent->place);
        for (std::string& doubt : DoubtsAbout(*urgent))
            facts.doubts.push_back(std::move(doubt));
    }
    return facts;
}

std::vector<Health> AskMulticast(const std::vector<std::string>& texts, const OutputContext& /*context*/) {
    std::vector<Health> answers;
    answers.reserve(texts.size());
    for (const std::string& text : texts)
        answers.push_back(HealthOf(ReadZone(text)));
    return answers;
}

} // namespace controller::audio
