#include "controller/api/json/HouseViews.h"

#include "controller/api/json/AnnouncementJson.h"

namespace controller::view {

using fields::Member;

const Object& Room::Table() {
    static const Object kTable(
        "Room", Room(),
        {Member<&Room::id>("id").AsId(), Member<&Room::name>("name"), Member<&Room::output>("output"),
         Member<&Room::volume>("volume").Between(0, 100),
         Member<&Room::maxVolume>("max_volume").Between(0, 100),
         Member<&Room::leadSilenceMs>("lead_silence_ms"),
         Member<&Room::isInAnnouncement>("in_announcement",
                                         "An announcement has set the room up and not given it back"),
         Member<&Room::isAwake>("awake"),
         Member<&Room::trouble>("trouble", "Why its output cannot be heard, since the last announcement")
             .NullWhenEmpty()});
    return kTable;
}

const Object& Popup::Table() {
    static const Object kTable(
        "Popup", Popup(),
        {Member<&Popup::number>("number"), Member<&Popup::message>("message"),
         Member<&Popup::image>("image", "Empty, /api/media/NAME, or an http(s) address"),
         Member<&Popup::hasOkButton>("ok_button"), Member<&Popup::remainingMs>("remaining_ms"),
         Member<&Popup::ends>("ends")});
    return kTable;
}

const Object& Navigator::Table() {
    static const Object kTable("Navigator", Navigator(),
                               {Member<&Navigator::id>("id").AsId(), Member<&Navigator::name>("name"),
                                Member<&Navigator::room>("room").AsId(),
                                Member<&Navigator::pages>("pages", "How many of its pages are connected"),
                                Member<&Navigator::isAwake>("awake"), Member<&Navigator::popup>("popup")});
    return kTable;
}

const Object& Variable::Table() {
    static const Object kTable("Variable", Variable(),
                               {Member<&Variable::device>("device").AsId(),
                                Member<&Variable::variable>("variable").AsId(),
                                Member<&Variable::name>("name"), Member<&Variable::value>("value")});
    return kTable;
}

const Object& RoomList::Table() {
    static const Object kTable("RoomList", RoomList(), {Member<&RoomList::rooms>("rooms")});
    return kTable;
}

const Object& NavigatorList::Table() {
    static const Object kTable("NavigatorList", NavigatorList(),
                               {Member<&NavigatorList::navigators>("navigators")});
    return kTable;
}

const Object& VariableList::Table() {
    static const Object kTable("VariableList", VariableList(),
                               {Member<&VariableList::variables>("variables")});
    return kTable;
}

const Object& AnnouncementList::Table() {
    static const Object kTable("AnnouncementList", AnnouncementList(),
                               {Member<&AnnouncementList::announcements>("announcements", "By id")});
    return kTable;
}

const Object& House::Table() {
    static const Object kTable("House", House(),
                               {Member<&House::name>("name"), Member<&House::rooms>("rooms"),
                                Member<&House::navigators>("navigators")});
    return kTable;
}

const Object& Playing::Table() {
    static const Object kTable("Playing", Playing(),
                               {Member<&Playing::announcement>("announcement").AsId(),
                                Member<&Playing::name>("name"), Member<&Playing::since>("since")});
    return kTable;
}

const Object& Sound::Table() {
    static const Object kTable("PlayingSound", Sound(),
                               {Member<&Sound::file>("file"), Member<&Sound::since>("since")});
    return kTable;
}

const Object& ShownPopup::Table() {
    static const Object kTable(
        "ShownPopup", ShownPopup(),
        {Member<&ShownPopup::navigator>("navigator").AsId(), Member<&ShownPopup::popup>("popup")});
    return kTable;
}

const Object& KnownFrom::Table() {
    static const Object kTable("KnownFrom", KnownFrom(),
                               {Member<&KnownFrom::playing>("playing"),
                                Member<&KnownFrom::waiting>("waiting"), Member<&KnownFrom::sound>("sound")});
    return kTable;
}

const Object& Status::Table() {
    static const Object kTable(
        "Status", Status(),
        {Member<&Status::house>("house"), Member<&Status::version>("version"),
         Member<&Status::started>("started"), Member<&Status::isAgentRunning>("agent"),
         Member<&Status::playing>("playing"), Member<&Status::waiting>("waiting", "Ids, oldest first"),
         Member<&Status::sound>("sound"), Member<&Status::popups>("popups"),
         Member<&Status::isStateSaved>("state_saved"), Member<&Status::stateError>("state_error"),
         Member<&Status::events>("events", "The number of the last event"),
         Member<&Status::knownFrom>("known_from", "What these are known from, in words")});
    return kTable;
}

const Object& WholeState::Table() {
    static const Object kTable("WholeState", WholeState(),
                               {Member<&WholeState::status>("status"), Member<&WholeState::rooms>("rooms"),
                                Member<&WholeState::navigators>("navigators"),
                                Member<&WholeState::variables>("variables"),
                                Member<&WholeState::announcements>("announcements")});
    return kTable;
}

const Object& Named::Table() {
    static const Object kTable("Named", Named(),
                               {Member<&Named::id>("id").AsId(), Member<&Named::name>("name")});
    return kTable;
}

const Object& PageState::Table() {
    static const Object kTable("PageState", PageState(),
                               {Member<&PageState::navigator>("navigator"), Member<&PageState::room>("room"),
                                Member<&PageState::house>("house"), Member<&PageState::isAwake>("awake"),
                                Member<&PageState::popup>("popup")});
    return kTable;
}

} // namespace controller::view
