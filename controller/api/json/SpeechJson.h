#pragma once

#include "controller/api/json/List.h"
#include "controller/speech/Speech.h"

#include <vector>

namespace controller {

fields::Object TableOf(fields::For<SpeechRecipe> type);
fields::Object TableOf(fields::For<Speech::VoiceState> type);

namespace view {

template <>
inline constexpr ListWords kListWords<std::vector<Speech::VoiceState>>{"VoiceList", "voices",
                                                                       "As in the house file"};
using VoiceList = List<std::vector<Speech::VoiceState>>;

} // namespace view

} // namespace controller
