#pragma once

#include "controller/media/MediaShelf.h"

#include <nlohmann/json.hpp>

#include <vector>

/// Files of the media folder as JSON.
namespace controller::media_json {

[[nodiscard]] nlohmann::ordered_json Describe(const MediaShelf::Description& file);

/// `{"media": [...]}`
[[nodiscard]] nlohmann::ordered_json List(const std::vector<MediaShelf::Description>& files);

} // namespace controller::media_json
