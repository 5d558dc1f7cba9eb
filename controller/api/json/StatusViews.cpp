#include "controller/api/json/StatusViews.h"

#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/Meaning.h"
#include "controller/media/MediaName.h"

namespace controller {

using fields::Made;

namespace {

std::string SoundOf(const PlayingSound& sound) {
    return media_name::SoundOf(sound.file);
}

} // namespace

fields::Object TableOf(fields::For<PlayingSound> /*type*/) {
    using fields::Member;
    using Sound = PlayingSound;
    return {"SoundNow",
            {Made<&SoundOf>("file"), Member<&Sound::since>("since"),
             Member<&Sound::lengthMs>("length_ms", "0 while it is not known")}};
}

fields::Object TableOf(fields::For<PlayingNow> /*type*/) {
    using fields::Member;
    using Now = PlayingNow;
    return {"Playing",
            {Member<&Now::announcement>("announcement").AsId(), Member<&Now::name>("name"),
             Member<&Now::since>("since"), Member<&Now::ends>("ends", "Probably"),
             Member<&Now::canBeDismissed>("can_be_dismissed", "A popup of it stands"),
             Member<&Now::isStopped>("stopped"), Member<&Now::sound>("sound")}};
}

} // namespace controller

namespace controller::view {

using fields::Member;

namespace {

std::optional<Meaning> StateErrorMeaningOf(const Status& status) {
    return status.stateError ? KnownMeaningOf(*status.stateError) : std::nullopt;
}

} // namespace

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
             Made<&StateErrorMeaningOf>("state_error_means").LeftOutWhenEmpty(),
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
