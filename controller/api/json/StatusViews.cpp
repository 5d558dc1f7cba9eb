#include "controller/api/json/StatusViews.h"

#include "controller/api/json/AnnouncementJson.h"

namespace controller::view {

using fields::Member;

Object Playing::Table() {
    return {"Playing",
            {Member<&Playing::announcement>("announcement").AsId(), Member<&Playing::name>("name"),
             Member<&Playing::since>("since")}};
}

Object Sound::Table() {
    return {"PlayingSound", {Member<&Sound::file>("file"), Member<&Sound::since>("since")}};
}

Object ShownPopup::Table() {
    return {"ShownPopup",
            {Member<&ShownPopup::navigator>("navigator").AsId(), Member<&ShownPopup::popup>("popup")}};
}

Object KnownFrom::Table() {
    return {"KnownFrom",
            {Member<&KnownFrom::playing>("playing"), Member<&KnownFrom::waiting>("waiting"),
             Member<&KnownFrom::sound>("sound")}};
}

Object Status::Table() {
    return {"Status",
            {Member<&Status::house>("house"), Member<&Status::version>("version"),
             Member<&Status::started>("started"), Member<&Status::isAgentRunning>("agent"),
             Member<&Status::playing>("playing"),
             Member<&Status::waiting>("waiting", "Ids, the next one first"),
             Member<&Status::queue>("queue", "Of these, what can be taken back"),
             Member<&Status::sound>("sound"), Member<&Status::popups>("popups"),
             Member<&Status::isStateSaved>("state_saved"), Member<&Status::stateError>("state_error"),
             Member<&Status::events>("events", "The number of the last event"),
             Member<&Status::knownFrom>("known_from", "What these are known from, in words")}};
}

Object WholeState::Table() {
    return {"WholeState",
            {Member<&WholeState::status>("status"), Member<&WholeState::rooms>("rooms"),
             Member<&WholeState::navigators>("navigators"), Member<&WholeState::variables>("variables"),
             Member<&WholeState::announcements>("announcements")}};
}

} // namespace controller::view
