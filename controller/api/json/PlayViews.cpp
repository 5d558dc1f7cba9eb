#include "controller/api/json/PlayViews.h"

#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/Meaning.h"
#include "controller/media/MediaName.h"

#include <nlohmann/json.hpp>

namespace controller {

using fields::Made;
using fields::Member;
using fields::Object;

namespace {

constexpr std::int64_t kLongestMs = 600000;

std::string SoundPlayed(const HistoryEntry& entry) {
    return media_name::SoundOf(entry.file);
}

std::string ReasonOf(const HistoryEntry& entry) {
    constexpr std::string_view kFailed = "failed: ";
    return entry.outcome.rfind(kFailed, 0) == 0 ? entry.outcome.substr(kFailed.size()) : "";
}

std::optional<Meaning> ReasonMeaningOf(const HistoryEntry& entry) {
    return KnownMeaningOf(ReasonOf(entry));
}

std::optional<Meaning> TextMeaningOf(const view::Moment& moment) {
    return moment.text ? KnownMeaningOf(*moment.text) : std::nullopt;
}

/// An id, or an announcement.
class RehearsedType final : public fields::Type {
    void Read(const fields::Json& json,
              const fields::Place& place,
              const fields::Limits& limits,
              void* value) const override {
        auto& rehearsed = *static_cast<view::Rehearsed*>(value);
        if (!json.is_object()) {
            fields::TypeOf<std::uint32_t>().Read(json, place, limits, &rehearsed.id);
            return;
        }
        // One that is taken from the house has its id, which means nothing here.
        fields::Json announcement = json;
        announcement.erase("id");
        rehearsed.announcement = announcement_json::Read(announcement, 0, place.Text());
    }

    void Describe(fields::Schema& schema,
                  const fields::Limits& limits,
                  fields::Components& components) const override {
        fields::Schema id;
        fields::TypeOf<std::uint32_t>().Describe(id, limits, components);
        fields::Schema announcement;
        fields::TypeOf<Announcement>().Describe(announcement, {}, components);
        schema["oneOf"] = {std::move(id), std::move(announcement)};
    }
};

} // namespace

Object TableOf(fields::For<HistoryEntry> /*type*/) {
    using Entry = HistoryEntry;
    return {"HistoryEntry",
            {Member<&Entry::id>("id"), Member<&Entry::announcement>("announcement"),
             Member<&Entry::name>("name"), Member<&Entry::startedAt>("started"),
             Member<&Entry::endedAt>("ended"), Member<&Entry::rooms>("rooms"),
             Member<&Entry::navigators>("navigators"), Made<&SoundPlayed>("file"),
             Member<&Entry::outcome>("outcome",
                                     "ended, dismissed, stopped, interrupted, dropped, or failed: WHY"),
             Made<&ReasonOf>("reason", "WHY").LeftOutWhenEmpty(),
             Made<&ReasonMeaningOf>("reason_means").LeftOutWhenEmpty()}};
}

Object TableOf(fields::For<Queued> /*type*/) {
    return {"Queued",
            {Member<&Queued::entry>("entry"), Member<&Queued::announcement>("announcement").AsId(),
             Member<&Queued::name>("name", "As it was when it was asked for"),
             Member<&Queued::askedAt>("asked_at")}};
}

namespace view {

Object QueueMove::Table() {
    return {"QueueMove",
            {Member<&QueueMove::before>("before", "The entry that is played behind it; null: behind all")}};
}

const fields::Type& Rehearsed::Table() {
    static const RehearsedType kType;
    return kType;
}

Object RehearsalOrder::Table() {
    using Order = RehearsalOrder;
    return {
        "RehearsalOrder",
        {Member<&Order::announcement>("announcement")
             .AsId()
             .Required("the id of an announcement, or an announcement"),
         Member<&Order::streamReadyMs>("stream_ready_ms").Between(0, kLongestMs),
         Member<&Order::soundMs>("sound_ms", "How long the sound lasts; as long as its file, when left out")
             .Between(0, kLongestMs)}};
}

Object FollowedVariable::Table() {
    return {"FollowedVariable",
            {Member<&FollowedVariable::device>("device"), Member<&FollowedVariable::variable>("variable")}};
}

Object Moment::Table() {
    return {
        "Moment",
        {Member<&Moment::atMs>("at_ms"),
         Member<&Moment::what>("what").OneOf(
             {"started", "ended", "room_set_up", "room_restored", "screens_woken", "screens_rested",
              "volume_set", "stream_opened", "stream_ready", "stream_closed", "sound_started", "sound_ended",
              "popup_shown", "popup_hidden", "room_missing", "screen_missing", "sound_missing", "log"}),
         Member<&Moment::announcement>("announcement").LeftOutWhenEmpty(),
         Member<&Moment::room>("room").LeftOutWhenEmpty(),
         Member<&Moment::volume>("volume").LeftOutWhenEmpty(),
         Member<&Moment::file>("file").LeftOutWhenEmpty(),
         Member<&Moment::navigator>("navigator").LeftOutWhenEmpty(),
         Member<&Moment::variable>("variable").LeftOutWhenEmpty(),
         Member<&Moment::message>("message").LeftOutWhenEmpty(),
         Member<&Moment::image>("image").LeftOutWhenEmpty(),
         Member<&Moment::durationMs>("duration_ms").LeftOutWhenEmpty(),
         Member<&Moment::hasOkButton>("ok_button").LeftOutWhenEmpty(),
         Member<&Moment::level>("level").LeftOutWhenEmpty(), Member<&Moment::text>("text").LeftOutWhenEmpty(),
         Made<&TextMeaningOf>("text_means").LeftOutWhenEmpty()}};
}

Object Rehearsal::Table() {
    return {"Rehearsal",
            {Member<&Rehearsal::announcement>("announcement").AsId(),
             Member<&Rehearsal::lengthMs>("length_ms"),
             Member<&Rehearsal::isComplete>("complete", "False when it is not over within ten minutes"),
             Member<&Rehearsal::timeline>("timeline")}};
}

} // namespace view

} // namespace controller
