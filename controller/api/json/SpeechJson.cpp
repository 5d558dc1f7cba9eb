#include "controller/api/json/SpeechJson.h"

#include "controller/api/json/Meaning.h"
#include "controller/speech/ISpeechEngine.h"

namespace controller {

using fields::Made;
using fields::Member;
using fields::Object;

namespace {

using State = Speech::VoiceState;

std::string EngineOf(const State& state) {
    switch (state.voice.engine) {
    case Voice::Engine::Command:
        return "command";
    case Voice::Engine::Wyoming:
        return "wyoming";
    default:
        return "espeak";
    }
}

bool HasSpeedsOf(const State& state) {
    return HasSpeeds(state.voice);
}

} // namespace

Object TableOf(fields::For<SpeechRecipe> /*type*/) {
    using Recipe = SpeechRecipe;
    return {
        "SpeechRecipe",
        {Member<&Recipe::text>("text", "{Name} stands for the value of the variable with this name")
             .AtMostBytes(Recipe::kMaxText)
             .Required("what is to be spoken"),
         Member<&Recipe::voice>("voice", "One of the voices; empty: the house's default"),
         Member<&Recipe::speed>("speed", "Percent of the voice's own")
             .Between(Recipe::kSlowest, Recipe::kFastest),
         Member<&Recipe::chime>("chime", "A sound of the media folder that is heard before; empty: none")}};
}

Object TableOf(fields::For<State> /*type*/) {
    return {
        "Voice",
        {Member<&State::voice, &Voice::name>("name"),
         Made<&EngineOf>("engine").OneOf({"espeak", "command", "wyoming"}),
         Member<&State::voice, &Voice::language>("language"), Member<&State::isDefault>("is_default"),
         Made<&HasSpeedsOf>("has_speeds", "Whether it can speak faster and slower"),
         Member<&State::trouble>("trouble", "Why it did not speak when it was last asked").NullWhenEmpty(),
         Made<&MeaningIn<&State::trouble>>("trouble_means").LeftOutWhenEmpty()}};
}

} // namespace controller
