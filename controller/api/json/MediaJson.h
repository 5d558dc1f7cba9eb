#pragma once

#include "controller/api/json/List.h"
#include "controller/media/MediaShelf.h"

#include <vector>

namespace controller {

/// How loud a sound is.
fields::Object TableOf(fields::For<SoundLevels::Level> type);

/// A file of the media folder.
fields::Object TableOf(fields::For<MediaShelf::Description> type);

namespace view {

/// A body.
struct LoudnessOrder {
    bool isAsItIs = false;

    static fields::Object Table();
};

template <>
inline constexpr ListWords kListWords<std::vector<MediaShelf::Description>>{"MediaList", "media", "By name"};
using MediaList = List<std::vector<MediaShelf::Description>>;

} // namespace view

} // namespace controller
