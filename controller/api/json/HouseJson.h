#pragma once

#include "controller/api/ApiContext.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>

/// The house and what stands in it, as the API shows it.
namespace controller::house_json {

using Json = nlohmann::ordered_json;

[[nodiscard]] Json Room(const ApiContext& context, const House::Room& room);
[[nodiscard]] Json Rooms(const ApiContext& context);
[[nodiscard]] Json Navigator(const ApiContext& context, const House::Navigator& navigator);
[[nodiscard]] Json Navigators(const ApiContext& context);
[[nodiscard]] Json Variable(const Variables::Variable& variable);
[[nodiscard]] Json Variables(const ApiContext& context);
[[nodiscard]] Json Popup(const Popups::Popup& popup);
[[nodiscard]] Json Status(const ApiContext& context);

/// The popup on this navigator, or null.
[[nodiscard]] Json PopupOn(const ApiContext& context, std::uint32_t navigator);

/// Where a page finds the image that an announcement names: in the media folder, or at an http(s) address;
/// empty for anything else.
[[nodiscard]] std::string ImageAddress(const std::string& image);

/// Null when the house has none with this id.
[[nodiscard]] const House::Room* FindRoom(const House& house, std::uint32_t id);
[[nodiscard]] const House::Navigator* FindNavigator(const House& house, std::uint32_t id);

} // namespace controller::house_json
