#include "controller/api/json/HouseViews.h"

#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/Meaning.h"

namespace controller {

using fields::Member;

fields::Object TableOf(fields::For<Variables::Variable> /*type*/) {
    using Variable = Variables::Variable;
    return {"Variable",
            {Member<&Variable::device>("device").AsId(), Member<&Variable::variable>("variable").AsId(),
             Member<&Variable::name>("name"), Member<&Variable::value>("value")}};
}

fields::Object events::TableOf(fields::For<ScreenSize> /*type*/) {
    constexpr std::int64_t kMost = 100000;
    return {"ScreenSize",
            {Member<&ScreenSize::width>("width", "CSS pixels").Between(1, kMost).Required(),
             Member<&ScreenSize::height>("height", "CSS pixels").Between(1, kMost).Required()}};
}

namespace view {

std::string HealthName(events::RoomHealth health) {
    return HealthNames().at(static_cast<std::size_t>(health));
}

std::vector<const char*> HealthNames() {
    return {"unknown", "healthy", "silent", "unheard"};
}

Object Room::Table() {
    return {
        "Room",
        {Member<&Room::id>("id").AsId(), Member<&Room::name>("name"), Member<&Room::output>("output"),
         Member<&Room::volume>("volume").Between(0, 100),
         Member<&Room::maxVolume>("max_volume").Between(0, 100),
         Member<&Room::leadSilenceMs>("lead_silence_ms"),
         Member<&Room::isInAnnouncement>("in_announcement",
                                         "An announcement has set the room up and not given it back"),
         Member<&Room::isAwake>("awake"),
         Member<&Room::isAnswering>("answers", "Its output tells when it is not heard; loudspeakers at a "
                                               "multicast address never do"),
         Member<&Room::health>("health", "Whether it would be heard now: silent, when what is played there "
                                         "goes nowhere; unknown, when only playing can tell")
             .OneOf(HealthNames()),
         Member<&Room::trouble>("trouble", "Why it would not be heard, or was not in the last announcement")
             .NullWhenEmpty(),
         fields::Made<&MeaningIn<&Room::trouble>>("trouble_means").LeftOutWhenEmpty()}};
}

Object Popup::Table() {
    return {"Popup",
            {Member<&Popup::number>("number"), Member<&Popup::message>("message"),
             Member<&Popup::image>("image", "Empty, /api/media/NAME, or an http(s) address"),
             Member<&Popup::hasOkButton>("ok_button"), Member<&Popup::remainingMs>("remaining_ms"),
             Member<&Popup::ends>("ends")}};
}

Object Navigator::Table() {
    return {"Navigator",
            {Member<&Navigator::id>("id").AsId(), Member<&Navigator::name>("name"),
             Member<&Navigator::room>("room").AsId(),
             Member<&Navigator::pages>("pages", "How many of its pages are connected"),
             Member<&Navigator::isAwake>("awake"), Member<&Navigator::popup>("popup"),
             Member<&Navigator::size>("size", "Of the window that its page is shown in; null when none is"),
             Member<&Navigator::isArmed>("armed", kArmed)}};
}

Object House::Table() {
    return {"House",
            {Member<&House::name>("name"), Member<&House::rooms>("rooms"),
             Member<&House::navigators>("navigators")}};
}

Object Named::Table() {
    return {"Named", {Member<&Named::id>("id").AsId(), Member<&Named::name>("name")}};
}

Object PageState::Table() {
    return {"PageState",
            {Member<&PageState::navigator>("navigator"), Member<&PageState::room>("room"),
             Member<&PageState::house>("house"), Member<&PageState::isAwake>("awake"),
             Member<&PageState::popup>("popup"),
             Member<&PageState::isSpeaker>("speaker", "Rooms play on this page")}};
}

} // namespace view

} // namespace controller
