#include "controller/api/json/SoundMessages.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace controller::view {

using fields::Constant;
using fields::Member;

namespace {

constexpr std::array kPlayNews{
    std::pair{"started", ScreenSpeakers::News::Started}, std::pair{"late", ScreenSpeakers::News::Late},
    std::pair{"ended", ScreenSpeakers::News::Ended}, std::pair{"failed", ScreenSpeakers::News::Failed}};

class GainType final : public fields::Type {
public:
    void Write(std::string& out, const void* value) const override {
        std::array<char, 32> text{};
        (void)std::snprintf(text.data(), text.size(), "%.7f", static_cast<const Gain*>(value)->factor);
        out += text.data();
    }
    void Describe(fields::Schema& schema,
                  const fields::Limits& /*limits*/,
                  fields::Components& /*components*/) const override {
        schema["type"] = "number";
    }
};

/// A message of this type, with what it says as its data.
template <class Data>
struct Told {
    Data data;

    static const char* TypeName();
    static const char* SchemaName();
    static Object Table() {
        return {SchemaName(), {Constant("type", TypeName()), Member<&Told::data>("data")}};
    }
};

// clang-format off
template <> const char* Told<FetchSound>::TypeName() { return "sound_fetch"; }
template <> const char* Told<FetchSound>::SchemaName() { return "SoundFetchMessage"; }
template <> const char* Told<PlaySound>::TypeName() { return "sound_play"; }
template <> const char* Told<PlaySound>::SchemaName() { return "SoundPlayMessage"; }
template <> const char* Told<SetGain>::TypeName() { return "sound_gain"; }
template <> const char* Told<SetGain>::SchemaName() { return "SoundGainMessage"; }
template <> const char* Told<StopSound>::TypeName() { return "sound_stop"; }
template <> const char* Told<StopSound>::SchemaName() { return "SoundStopMessage"; }
// clang-format on

struct OrderWriter {
    std::string operator()(const ScreenSpeakers::Fetch& order) const {
        return fields::ToText(Told<FetchSound>{{order.sound.number, order.sound.address}});
    }
    std::string operator()(const ScreenSpeakers::Play& order) const {
        return fields::ToText(Told<PlaySound>{
            {order.play, order.sound.number, order.sound.address, MicrosecondsOf(order.at), {order.gain}}});
    }
    std::string operator()(const ScreenSpeakers::Gain& order) const {
        return fields::ToText(Told<SetGain>{{order.play, {order.gain}}});
    }
    std::string operator()(const ScreenSpeakers::Stop& order) const {
        return fields::ToText(Told<StopSound>{{order.play}});
    }
};

} // namespace

const fields::Type& Gain::Table() {
    static const GainType kType;
    return kType;
}

Object PlayNews::Table() {
    std::vector<const char*> texts;
    texts.reserve(kPlayNews.size());
    for (const auto& [text, news] : kPlayNews)
        texts.push_back(text);
    return {"PlayNews",
            {Member<&PlayNews::play>("play").Required(),
             Member<&PlayNews::news>("news").OneOf(texts).Required()}};
}

Object PageSays::Table() {
    return {"PageSays",
            {Member<&PageSays::size>("size"),
             Member<&PageSays::ping>("ping", "Is answered by a pong with the same number"),
             Member<&PageSays::isArmed>("armed", "Its browser lets it play"),
             Member<&PageSays::play>("play")}};
}

Object Pong::Table() {
    static const auto kData = std::make_shared<const Object>(
        "", std::vector{Member<&Pong::ping>("ping"),
                        Member<&Pong::now>("now", "Microseconds of the controller's clock")});
    return {"Pong", {Constant("type", "pong"), fields::Itself("data", kData)}};
}

Object FetchSound::Table() {
    return {"SoundFetch",
            {Member<&FetchSound::sound>("sound"), Member<&FetchSound::address>("address", "Of a WAV file")}};
}

Object PlaySound::Table() {
    return {"SoundPlay",
            {Member<&PlaySound::play>("play"), Member<&PlaySound::sound>("sound"),
             Member<&PlaySound::address>("address", "Of a WAV file"),
             Member<&PlaySound::at>("at", "Microseconds of the controller's clock"),
             Member<&PlaySound::gain>("gain", "A factor")}};
}

Object SetGain::Table() {
    return {"SoundGain", {Member<&SetGain::play>("play"), Member<&SetGain::gain>("gain", "A factor")}};
}

Object StopSound::Table() {
    return {"SoundStop", {Member<&StopSound::play>("play")}};
}

std::int64_t MicrosecondsOf(ScreenSpeakers::Time time) {
    return time.time_since_epoch() / std::chrono::microseconds(1);
}

std::string TextOf(const ScreenSpeakers::Order& order) {
    return std::visit(OrderWriter{}, order);
}

std::optional<ScreenSpeakers::News> NewsOf(const std::string& text) {
    const auto* const row = std::find_if(kPlayNews.begin(), kPlayNews.end(),
                                         [&](const auto& known) { return text == known.first; });
    return row != kPlayNews.end() ? std::optional(row->second) : std::nullopt;
}

std::vector<const fields::Type*> SoundMessages() {
    return {&fields::TypeOf<Pong>(), &fields::TypeOf<Told<FetchSound>>(), &fields::TypeOf<Told<PlaySound>>(),
            &fields::TypeOf<Told<SetGain>>(), &fields::TypeOf<Told<StopSound>>()};
}

} // namespace controller::view
