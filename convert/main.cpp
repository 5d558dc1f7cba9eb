// Makes of what anybody brings what the media folder takes. It is started by the controller, with three
// descriptors: 0 is what has come, 1 takes what it becomes, 3 is told what has become of it.
//   announcement-convert sound [FROM_MS [TO_MS]]
//   announcement-convert picture
//   announcement-convert thumbnail

#include "convert/Decoder.h"
#include "convert/MappedFile.h"
#include "convert/PictureConversion.h"
#include "convert/Report.h"
#include "convert/Sandbox.h"
#include "convert/SoundConversion.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cstring>
#include <exception>
#include <string_view>
#include <vector>

namespace {

constexpr int kInput = 0;
constexpr int kOutput = 1;
constexpr int kReport = 3;
constexpr int kUsage = 2;

using Words = std::vector<std::string_view>;

std::optional<std::chrono::milliseconds> TimeIn(const Words& words, std::size_t place) {
    std::int64_t number = 0;
    if (words.size() <= place ||
        std::from_chars(words[place].data(), words[place].data() + words[place].size(), number).ec !=
            std::errc())
        return std::nullopt;
    return std::chrono::milliseconds(number);
}

nlohmann::json Convert(const MappedFile& file, const Words& words) {
    if (words[0] == "picture")
        return ConvertPicture(file, kOutput);
    if (words[0] == "thumbnail")
        return MakeThumbnail(file, kOutput);
    return ConvertSound(file, {TimeIn(words, 1).value_or(std::chrono::milliseconds(0)), TimeIn(words, 2)},
                        kOutput);
}

/// What is loaded at run time is loaded before the file is looked at; pictures take nothing of that kind.
nlohmann::json ConvertHeld(const Words& words) {
    const MappedFile file(kInput);
    if (words[0] == "sound")
        Decoder::Prepare();
    const std::string held = sandbox::Enter();
    nlohmann::json result = Convert(file, words);
    result["held_by"] = held;
    return result;
}

bool IsKnown(std::string_view word) {
    return word == "sound" || word == "picture" || word == "thumbnail";
}

} // namespace

int main(int argc, char** argv) {
    const Words words(argv + 1, argv + argc);
    if (words.empty() || !IsKnown(words[0]))
        return kUsage;
    sandbox::SetLimits();
    try {
        report::Write(kReport, ConvertHeld(words));
    } catch (const report::Refusal& refusal) {
        report::Write(kReport, refusal);
    } catch (const std::exception& error) {
        report::Write(kReport, nlohmann::json{{"failed", error.what()}});
    }
    return 0;
}
