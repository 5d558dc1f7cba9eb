#pragma once

#include "announce/basics/Json.h"
#include "announce/house/House.h"

#include <string>
#include <vector>

/// An announcement as a text that people edit: YAML with names in place of ids, and a comment on each line.
namespace announcement_form {

/// One thing that is wrong with a form.
struct Mistake {
    std::size_t line = 0; ///< of the form, from 1; 0 when it is the whole
    std::string text;

    /// "line 5: …"; `above` is how many lines stand above the form now.
    [[nodiscard]] std::string Told(std::size_t above = 0) const;
};
using Mistakes = std::vector<Mistake>;

/// The form, with what may be filled in.
[[nodiscard]] std::string Write(const Json& announcement, House& house);

/// The announcement that the form describes; `original` is the one that it was written from. What the user
/// has left alone stays as it is, also where the house no longer has it. Appends to `mistakes`, in place of
/// throwing, what is wrong: where and what would be right.
[[nodiscard]] Json Read(const std::string& form, const Json& original, House& house, Mistakes& mistakes);

/// Whether nothing is in it but comments and empty lines.
[[nodiscard]] bool IsEmpty(const std::string& form);

/// The form with the mistakes on top, as comments; those of the last time are taken away.
[[nodiscard]] std::string WithMistakes(const std::string& form, const Mistakes& mistakes);

/// The form without the mistakes of the last time.
[[nodiscard]] std::string WithoutMistakes(const std::string& form);

} // namespace announcement_form
