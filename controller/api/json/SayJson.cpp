#include "controller/api/json/SayJson.h"

#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/Meaning.h"
#include "controller/speech/ISpeech.h"

namespace controller::view {

using fields::Member;

fields::Object SayScreen::Table() {
    return {"SayScreen", {Member<&SayScreen::id>("id").AsId().Required()}};
}

fields::Object SayOrder::Table() {
    using announcement_json::kMaxTargets;
    using announcement_json::kMaxText;
    using Order = SayOrder;
    return {
        "SayOrder",
        {Member<&Order::text>("text",
                              "Shown, and spoken unless there is a sound; {Name} is a variable's value")
             .AtMostBytes(SpeechRecipe::kMaxText),
         Member<&Order::sound>("sound", "A sound of the media folder, without .wav").AtMostBytes(kMaxText),
         Member<&Order::voice>("voice", "One of GET /api/voices; empty: the default").AtMostBytes(kMaxText),
         Member<&Order::chime>("chime", "A sound of the media folder that is heard in front of the text")
             .AtMostBytes(kMaxText),
         Member<&Order::rooms>("rooms").AtMostEntries(kMaxTargets).EachOnce(),
         Member<&Order::navigators>("navigators").AtMostEntries(kMaxTargets).EachOnce(),
         Member<&Order::timeoutMs>("timeout_ms", "How long the popup stands"),
         Member<&Order::isUrgent>("urgent", "Goes to the urgent address of loudspeakers that have one")}};
}

fields::Object Said::Table() {
    return {"Said",
            {Member<&Said::entry>("entry", "Its number in the queue"),
             Member<&Said::announcement>("announcement").AsId(),
             Member<&Said::state>("state").OneOf({"playing", "waiting"}),
             Member<&Said::trouble>("trouble", "Why the text is not spoken").NullWhenEmpty(),
             fields::Made<&MeaningIn<&Said::trouble>>("trouble_means").LeftOutWhenEmpty()}};
}

} // namespace controller::view
