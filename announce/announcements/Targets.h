#pragma once

#include "announce/announcements/Fields.h"

#include <string>
#include <utility>
#include <vector>

/// The rooms and screens of an announcement, each an item of its lists.
namespace targets {

/// The texts of an item by their keys; the first one may stand alone.
using Texts = std::vector<std::pair<std::string, std::string>>;

/// "Kitchen:40", "Kitchen": the texts of an option's value. A name may have a colon of its own.
[[nodiscard]] Texts TakenApart(const fields::Field& list, const std::string& text, House& house);

/// "room", "screen": what an item is.
[[nodiscard]] std::string KindOf(const fields::Field& list);

/// The item that the texts mean. Throws Failure: Usage, NotFound, Ambiguous.
[[nodiscard]] Json Read(const fields::Field& list, const Texts& texts, House& house);

/// The texts that Read takes for it.
[[nodiscard]] Texts Write(const fields::Field& list, const Json& item, House& house);

/// "Kitchen 40, Garden".
[[nodiscard]] std::string Phrase(const fields::Field& list, const Json& items, House& house);

/// Puts it in the place of the one with its id, or behind the last.
void PutInto(Json& items, Json item);

/// Takes out what the text names. Throws Failure: NotFound, Ambiguous.
void TakeOut(const fields::Field& list, Json& items, const std::string& text, House& house);

} // namespace targets
