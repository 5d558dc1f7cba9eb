#pragma once

#include "controller/api/ApiContext.h"
#include "controller/api/json/StatusViews.h"

#include <cstdint>
#include <string>

/// The house and what stands in it, as the API shows it at this moment.
namespace controller::house_json {

[[nodiscard]] view::Room Room(const ApiContext& context, const House::Room& room);
[[nodiscard]] view::RoomList Rooms(const ApiContext& context);
[[nodiscard]] view::Navigator Navigator(const ApiContext& context, const House::Navigator& navigator);
[[nodiscard]] view::NavigatorList Navigators(const ApiContext& context);
[[nodiscard]] view::Status Status(const ApiContext& context);

[[nodiscard]] view::WholeState WholeState(const ApiContext& context, view::SharedAnnouncements announcements);

/// Of a navigator that the house has.
[[nodiscard]] view::PageState PageState(const ApiContext& context, const House::Navigator& navigator);

/// The popup on this navigator, if one stands there.
[[nodiscard]] std::optional<view::Popup> PopupOn(const ApiContext& context, std::uint32_t navigator);

/// Where a page finds the image that an announcement names: in the media folder, or at an http(s) address;
/// empty for anything else.
[[nodiscard]] std::string ImageAddress(const std::string& image);

/// Null when the house has none with this id.
[[nodiscard]] const House::Room* FindRoom(const House& house, std::uint32_t id);
[[nodiscard]] const House::Navigator* FindNavigator(const House& house, std::uint32_t id);
/// The same; throw `ApiError` with 404.
[[nodiscard]] const House::Room& RequiredRoom(const ApiContext& context, std::uint32_t id);
[[nodiscard]] const House::Navigator& RequiredNavigator(const ApiContext& context, std::uint32_t id);

/// Of rooms or navigators.
template <class Known>
[[nodiscard]] std::vector<std::uint32_t> IdsOf(const std::vector<Known>& known) {
    std::vector<std::uint32_t> ids;
    ids.reserve(known.size());
    for (const Known& one : known)
        ids.push_back(one.id);
    return ids;
}

} // namespace controller::house_json
