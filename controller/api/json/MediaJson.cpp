#include "controller/api/json/MediaJson.h"

#include "controller/api/ApiTime.h"

namespace controller::media_json {

using Json = nlohmann::ordered_json;

Json Describe(const MediaShelf::Description& file) {
    Json json{{"name", file.name},
              {"kind", file.isSound ? "sound" : "image"},
              {"bytes", file.bytes},
              {"modified", ApiTime(file.modified)}};
    if (file.sound) {
        json["duration_ms"] = file.sound->duration.count();
        json["sample_rate"] = file.sound->rate;
        json["channels"] = file.sound->channels;
    }
    if (!file.trouble.empty())
        json["trouble"] = file.trouble;
    return json;
}

Json List(const std::vector<MediaShelf::Description>& files) {
    Json media = Json::array();
    for (const MediaShelf::Description& file : files)
        media.push_back(Describe(file));
    return {{"media", std::move(media)}};
}

} // namespace controller::media_json
