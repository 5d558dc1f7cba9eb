#include "controller/api/json/OutputViews.h"

#include "controller/api/json/Meaning.h"

namespace controller {

using fields::Member;

fields::Object TableOf(fields::For<OutputDesk::Place> /*type*/) {
    using Place = OutputDesk::Place;
    return {"Output",
            {Member<&Place::kind>("kind").OneOf({"sound_server", "sound_card", "snapcast", "page"}),
             Member<&Place::name>("name", "As its server or machine calls it"),
             Member<&Place::output>("output", "As a room has it"),
             Member<&Place::line>("line", "What stands with a room in the house file"),
             Member<&Place::isDefault>("default", "What its server or machine takes by itself"),
             Member<&Place::rooms>("rooms", "Those of the house that are heard there, by id")}};
}

namespace view {

fields::Object OutputTest::Table() {
    constexpr std::size_t kMost = 1000;
    return {"OutputTest",
            {Member<&OutputTest::output>("output", "One that GET /api/outputs lists")
                 .AtMostBytes(kMost)
                 .Required(),
             Member<&OutputTest::volume>("volume").Between(1, 100)}};
}

fields::Object OutputTested::Table() {
    return {"OutputTested",
            {Member<&OutputTested::isHeard>("heard", "To its last sample, as far as that can be known"),
             Member<&OutputTested::trouble>("trouble", "Why it was not").NullWhenEmpty(),
             fields::Made<&MeaningIn<&OutputTested::trouble>>("trouble_means").LeftOutWhenEmpty()}};
}

} // namespace view

} // namespace controller
