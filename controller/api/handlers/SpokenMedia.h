#pragma once

#include "controller/api/ApiContext.h"
#include "controller/media/MediaShelf.h"

#include <string>
#include <vector>

/// Spoken sounds among the files of the media folder. Driver thread only, where nothing else is said.
namespace controller::spoken_media {

/// By name.
[[nodiscard]] std::vector<MediaShelf::Description> List(const ApiContext& context);

/// Nothing when the sound is not a spoken one.
[[nodiscard]] std::optional<MediaShelf::Description> Describe(const ApiContext& context,
                                                              const std::string& name);

/// The files with the spoken ones among them, and the sizes of those; looks into the file system. Any thread.
[[nodiscard]] std::vector<MediaShelf::Description> Merge(std::vector<MediaShelf::Description> files,
                                                         std::vector<MediaShelf::Description> spoken);

/// As it is played; nothing when the sound, as announcements name it, is not a spoken one.
[[nodiscard]] std::optional<MediaShelf::Length> LengthOf(const ApiContext& context, const std::string& sound);

/// Answers with the sound as it is now.
void Reply(ApiContext& context, const ApiCallPointer& call, const std::string& name);

/// Throws `ApiError` with 409 where a file that comes under this name is to take the place of a spoken sound.
void RefuseFile(const ApiContext& context, const std::string& name);

} // namespace controller::spoken_media
