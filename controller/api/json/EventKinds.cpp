#include "controller/api/json/EventKinds.h"

#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/HouseJson.h"
#include "controller/api/json/Meaning.h"
#include "controller/api/json/PlayViews.h"
#include "controller/api/json/StatusViews.h"
#include "controller/media/MediaName.h"

#include <cctype>

namespace controller {

namespace {

using fields::Field;
using fields::Made;
using fields::Member;
using fields::Object;

/// A member of the event's own structure.
template <auto Pointer>
Field Data(const char* name, const char* words = "") {
    using Owner = decltype(fields::OwnerOf(Pointer));
    Field field = Member<Pointer>(name, words);
    field.start = nullptr;
    field.get = [](const void* event) -> const void* {
        return &(std::get<Owner>(static_cast<const Event*>(event)->data).*Pointer);
    };
    return field;
}

template <class Kind>
std::string SoundOf(const Event& event) {
    return media_name::SoundOf(std::get<Kind>(event.data).file);
}

/// What a text of the event's own structure means.
template <auto Pointer>
std::optional<Meaning> Meant(const Event& event) {
    return KnownMeaningOf(std::get<decltype(fields::OwnerOf(Pointer))>(event.data).*Pointer);
}

std::string WhyOf(const Event& event) {
    switch (std::get<events::PopupHidden>(event.data).why) {
    case events::PopupEnd::TimeIsUp:
        return "time_is_up";
    case events::PopupEnd::Hidden:
        return "hidden";
    case events::PopupEnd::Dismissed:
        return "dismissed";
    case events::PopupEnd::Replaced:
        break;
    }
    return "replaced";
}

std::string HealthOf(const Event& event) {
    return view::HealthName(std::get<events::RoomHealthChanged>(event.data).health);
}

view::Popup PopupOf(const Event& event) {
    const auto& shown = std::get<events::PopupShown>(event.data);
    return {shown.number,      shown.message,          house_json::ImageAddress(shown.image),
            shown.hasOkButton, shown.duration.count(), event.time + shown.duration};
}

std::string LevelOf(const Event& event) {
    return SeverityName(std::get<events::LogLine>(event.data).severity);
}

/// "popup_shown" becomes "PopupShown".
std::string SchemaName(const char* type) {
    std::string name;
    bool isFirst = true;
    for (const char letter : std::string(type)) {
        if (letter != '_')
            name += isFirst ? static_cast<char>(letter - 'a' + 'A') : letter;
        isFirst = letter == '_';
    }
    return name;
}

std::unique_ptr<const Object> Message(const char* type, const char* ending, std::vector<Field> rows) {
    auto data = std::make_shared<const Object>("", std::move(rows));
    return std::make_unique<const Object>(
        SchemaName(type) + ending,
        std::vector{Member<&Event::number>("seq"), Member<&Event::time>("time"),
                    fields::Constant("type", type), fields::Itself("data", std::move(data))});
}

class KindList {
public:
    template <class Data>
    void Add(const char* type, std::vector<Field> rows) {
        EventKind& kind = At<Data>();
        kind.type = type;
        kind.message = Message(type, "Event", std::move(rows));
    }

    template <class Data>
    void AddForPage(const char* type, std::vector<Field> rows) {
        At<Data>().pageMessage = Message(type, "PageEvent", std::move(rows));
    }

    [[nodiscard]] std::vector<EventKind> Take() { return std::move(m_kinds); }

private:
    template <class Data>
    EventKind& At() {
        return m_kinds[EventData(Data()).index()];
    }

    std::vector<EventKind> m_kinds{std::variant_size_v<EventData>};
};

void AddAnnouncements(KindList& list) {
    using namespace events;
    list.Add<PlayAsked>(
        "play_asked",
        {Data<&PlayAsked::announcement>("announcement", "Somebody asks for it").AsId(),
         Data<&PlayAsked::entry>("entry", "Its number in the queue; 0: the agent is asked at once")});
    list.Add<QueueChanged>("queue_changed", {Data<&QueueChanged::queue>("queue", "The next one first")});
    list.Add<AnnouncementStarted>("announcement_started",
                                  {Data<&AnnouncementStarted::announcement>("announcement").AsId()});
    list.Add<PlayingChanged>("playing_changed", {Data<&PlayingChanged::playing>("playing")});
    list.Add<AnnouncementStopped>("announcement_stopped",
                                  {Data<&AnnouncementStopped::announcement>("announcement").AsId()});
    list.Add<AnnouncementEnded>("announcement_ended",
                                {Data<&AnnouncementEnded::announcement>("announcement").AsId()});
    list.Add<AnnouncementStored>(
        "announcement_stored",
        {Data<&AnnouncementStored::announcement>("announcement").AsId(),
         Data<&AnnouncementStored::now>("now", "As it is; not among the recent events").LeftOutWhenEmpty()});
    list.Add<AnnouncementRemoved>("announcement_removed",
                                  {Data<&AnnouncementRemoved::announcement>("announcement").AsId()});
}

void AddRooms(KindList& list) {
    using namespace events;
    list.Add<RoomSetUp>("room_set_up", {Data<&RoomSetUp::room>("room").AsId(),
                                        Data<&RoomSetUp::volume>("volume", "Its own, kept for later")});
    list.Add<RoomVolumeChanged>("room_volume_changed", {Data<&RoomVolumeChanged::room>("room").AsId(),
                                                        Data<&RoomVolumeChanged::volume>("volume")});
    list.Add<RoomRestored>("room_restored",
                           {Data<&RoomRestored::room>("room").AsId(), Data<&RoomRestored::volume>("volume"),
                            Data<&RoomRestored::isChangedMeanwhile>("changed_meanwhile")});
    list.Add<RoomOutputFailed>("room_output_failed",
                               {Data<&RoomOutputFailed::room>("room").AsId(),
                                Data<&RoomOutputFailed::reason>("reason"),
                                Made<&Meant<&RoomOutputFailed::reason>>("reason_means").LeftOutWhenEmpty()});
    list.Add<RoomHealthChanged>(
        "room_health_changed",
        {Data<&RoomHealthChanged::room>("room").AsId(), Made<&HealthOf>("health").OneOf(view::HealthNames()),
         Data<&RoomHealthChanged::reason>("reason", "Why it would not be heard now").NullWhenEmpty(),
         Made<&Meant<&RoomHealthChanged::reason>>("reason_means").LeftOutWhenEmpty()});
    list.Add<ScreensWoken>("screens_woken", {Data<&ScreensWoken::room>("room").AsId()});
    list.AddForPage<ScreensWoken>("wake", {});
    list.Add<ScreensRested>("screens_rested", {Data<&ScreensRested::room>("room").AsId()});
    list.AddForPage<ScreensRested>("rest", {});
    list.Add<SoundStarted>("sound_started", {Made<&SoundOf<SoundStarted>>("file")});
    list.Add<SoundEnded>("sound_ended", {Made<&SoundOf<SoundEnded>>("file"),
                                         Data<&SoundEnded::error>("error").NullWhenEmpty(),
                                         Made<&Meant<&SoundEnded::error>>("error_means").LeftOutWhenEmpty()});
}

void AddPopups(KindList& list) {
    using namespace events;
    const Field number = Data<&PopupHidden::number>("number");
    const Field why = Made<&WhyOf>("why").OneOf({"time_is_up", "hidden", "dismissed", "replaced"});
    list.Add<PopupShown>("popup_shown",
                         {Data<&PopupShown::navigator>("navigator").AsId(), Made<&PopupOf>("popup")});
    list.AddForPage<PopupShown>("popup_shown", {Made<&PopupOf>("popup")});
    list.Add<PopupChanged>("popup_changed",
                           {Data<&PopupChanged::navigator>("navigator").AsId(),
                            Data<&PopupChanged::number>("number"), Data<&PopupChanged::message>("message")});
    list.AddForPage<PopupChanged>(
        "popup_changed", {Data<&PopupChanged::number>("number"), Data<&PopupChanged::message>("message")});
    list.Add<PopupHidden>("popup_hidden", {Data<&PopupHidden::navigator>("navigator").AsId(), number, why});
    list.AddForPage<PopupHidden>("popup_hidden", {number, why});
    list.Add<PagesChanged>("pages_changed",
                           {Data<&PagesChanged::navigator>("navigator").AsId(),
                            Data<&PagesChanged::pages>("pages"), Data<&PagesChanged::size>("size"),
                            Data<&PagesChanged::isArmed>("armed", view::Navigator::kArmed)});
}

void AddOthers(KindList& list) {
    using namespace events;
    list.Add<VariableChanged>("variable_changed", {Data<&VariableChanged::device>("device").AsId(),
                                                   Data<&VariableChanged::variable>("variable").AsId(),
                                                   Data<&VariableChanged::value>("value")});
    list.Add<MediaStored>("media_stored", {Data<&MediaStored::name>("name")});
    list.Add<MediaRemoved>("media_removed", {Data<&MediaRemoved::name>("name")});
    list.Add<VoiceFailed>("voice_failed",
                          {Data<&VoiceFailed::voice>("voice"), Data<&VoiceFailed::reason>("reason"),
                           Made<&Meant<&VoiceFailed::reason>>("reason_means").LeftOutWhenEmpty()});
    list.Add<VoiceRecovered>("voice_recovered", {Data<&VoiceRecovered::voice>("voice")});
    list.Add<StateSaved>("state_saved", {});
    list.Add<StateNotSaved>("state_not_saved",
                            {Data<&StateNotSaved::reason>("reason"),
                             Made<&Meant<&StateNotSaved::reason>>("reason_means").LeftOutWhenEmpty()});
    list.Add<LogLine>("log",
                      {Made<&LevelOf>("level").OneOf({"error", "warning", "notice", "information", "debug"}),
                       Data<&LogLine::text>("text")});
}

} // namespace

const std::vector<EventKind>& EventKinds() {
    static const std::vector<EventKind> kKinds = [] {
        KindList list;
        AddAnnouncements(list);
        AddRooms(list);
        AddPopups(list);
        AddOthers(list);
        return list.Take();
    }();
    return kKinds;
}

} // namespace controller
