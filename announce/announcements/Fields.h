#pragma once

#include "announce/basics/Json.h"
#include "announce/definitions/Definitions.h"
#include "announce/house/House.h"

#include <string>
#include <vector>

/// What describes an announcement. Options, form and views come from this table and nothing else.
namespace fields {

enum class Kind { Text, Sound, Image, Variable, Length, YesNo, Rooms, Screens };

struct Field {
    std::string key; ///< of the form
    Kind kind;
    std::string option; ///< "--room"
    const char* value;  ///< what stands for it in help texts
    const char* help;
    const char* comment;       ///< in the form
    Json::json_pointer member; ///< of the announcement
    Json otherwise;            ///< what it is when nothing is said
    Completes completes = Completes::Nothing;
    const char* phrase = "{}";     ///< how a view says it, {} being its value; of YesNo: "yes|no"
    std::uint64_t zeroIs = 0;      ///< of Length, in ms: what 0 stands for
    const char* removal = nullptr; ///< of a list: the help of the option that takes something out

    [[nodiscard]] bool IsList() const noexcept { return kind == Kind::Rooms || kind == Kind::Screens; }
};

/// Every field, in the order of options and form.
[[nodiscard]] const std::vector<Field>& All();

/// The field with this key, which there is.
[[nodiscard]] const Field& Named(const std::string& key);

/// The value that the user's text means, for any field but a list; `what` names it in the Failure (Usage,
/// NotFound, Ambiguous) that is thrown else.
[[nodiscard]] Json Read(const Field& field, const std::string& what, const std::string& text, House& house);

/// The text that Read takes for it.
[[nodiscard]] std::string Write(const Field& field, const Json& announcement);

/// What a view says about it, also of a list; empty when there is nothing to say.
[[nodiscard]] std::string Phrase(const Field& field, const Json& announcement, House& house);

/// An announcement with nothing in it, not even a name.
[[nodiscard]] Json Nothing();

} // namespace fields
