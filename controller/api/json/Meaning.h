#pragma once

#include "controller/api/json/Replies.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the texts say that people read. They are written in English, wherever something goes wrong; a program
/// that speaks another language goes by what stands here.
namespace controller {

/// One row of the one table of these texts: `code` never changes its meaning, and `text` has its values in
/// braces, {like} this.
struct MeantText {
    const char* code;
    const char* text;
};

/// All of them. Where several fit, the first does: those with most letters of their own stand first.
[[nodiscard]] const std::vector<MeantText>& MeantTexts();

/// Those among them that tell of sounds, pictures and voices.
[[nodiscard]] std::vector<MeantText> MeantTextsOfSounds();

struct Meaning {
    /// Of a text that is in no row.
    static constexpr const char* kOther = "other";

    view::MeaningCode code{kOther};
    view::Parameters params; ///< the values; of one that is such a text itself, as `why`, also `why.code` ...

    static fields::Object Table();
};

/// Of those with this code, when one is given.
[[nodiscard]] Meaning MeaningOf(std::string_view text, std::string_view code = {});

/// Adds what the text means to the values of another one, under this name.
void AddMeaning(view::Parameters& params, const std::string& name, std::string_view text);

/// For a table of fields, beside the text itself: left out where there is no text, or nothing is known of it.
[[nodiscard]] std::optional<Meaning> KnownMeaningOf(std::string_view text);

template <auto Pointer>
auto MeaningIn(const decltype(fields::OwnerOf(Pointer))& owner) {
    return KnownMeaningOf(owner.*Pointer);
}

} // namespace controller
