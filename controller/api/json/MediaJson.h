#pragma once

#include "controller/api/json/Fields.h"
#include "controller/media/MediaShelf.h"

#include <vector>

namespace controller {

/// A file of the media folder.
const fields::Object& TableOf(fields::For<MediaShelf::Description> type);

namespace view {

struct MediaList {
    std::vector<MediaShelf::Description> media;

    static const fields::Object& Table();
};

} // namespace view

} // namespace controller
