#pragma once

#include "announce/Json.h"
#include "announce/house/House.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// The lines of an announcement's form.
namespace form_fields {

/// A key with one value.
struct Field {
    std::string key;
    const char* comment;
    std::function<std::string(const Json& announcement)> show;
    /// Throws Failure when the text is wrong.
    std::function<void(const std::string& text, House& house, Json& announcement)> read;
};

/// The texts of an item of a list by their keys; the first one may stand alone.
using Item = std::vector<std::pair<std::string, std::string>>;

/// A key with a list.
struct List {
    std::string key;
    const char* comment;
    const char* member;   ///< of the announcement
    const char* firstKey; ///< of an item
    std::function<Item(const Json& item, House& house)> show;
    std::function<Json(const Item& item, House& house)> read;
};

/// Every key, in the order of the form.
[[nodiscard]] const std::vector<std::string>& Keys();
[[nodiscard]] const std::vector<Field>& Fields();
[[nodiscard]] const std::vector<List>& Lists();

} // namespace form_fields
