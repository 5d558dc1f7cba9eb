#include "controller/house/HouseFile.h"

#include "controller/house/HouseReading.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/parser.h>

namespace controller {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMaxFile = std::uintmax_t{8} << 20U;

std::string Describe(const fs::path& file, const std::vector<HouseMistake>& mistakes) {
    std::string text;
    for (const HouseMistake& mistake : mistakes) {
        text += text.empty() ? "" : "\n";
        text += file.string() + ":";
        if (mistake.line > 0)
            text += std::to_string(mistake.line) + ":";
        text += mistake.key.empty() ? " " : " " + mistake.key + ": ";
        text += mistake.text;
    }
    return text;
}

/// Looks at a document and keeps nothing of it.
class Onlooker final : public YAML::EventHandler {
public:
    using Mark = YAML::Mark;
    using Text = std::string;
    void OnDocumentStart(const Mark& /*mark*/) override {}
    void OnDocumentEnd() override {}
    void OnNull(const Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {}
    void OnAlias(const Mark& /*mark*/, YAML::anchor_t /*anchor*/) override {}
    void
    OnScalar(const Mark& /*mark*/, const Text& /*tag*/, YAML::anchor_t /*a*/, const Text& /*v*/) override {}
    void OnSequenceStart(const Mark& /*mark*/,
                         const Text& /*tag*/,
                         YAML::anchor_t /*anchor*/,
                         YAML::EmitterStyle::value /*style*/) override {}
    void OnSequenceEnd() override {}
    void OnMapStart(const Mark& /*mark*/,
                    const Text& /*tag*/,
                    YAML::anchor_t /*anchor*/,
                    YAML::EmitterStyle::value /*style*/) override {}
    void OnMapEnd() override {}
};

/// Whether the text holds one document. It is not asked how many there are: of some texts that are no YAML
/// the library reads one empty document after another without end.
bool IsOneDocument(const std::string& text) {
    std::istringstream stream(text);
    YAML::Parser parser(stream);
    Onlooker onlooker;
    return parser.HandleNextDocument(onlooker) && !parser.HandleNextDocument(onlooker);
}

/// `output: pulse: default` is what people write first, and the library's words for it help nobody.
std::string RightInPlaceOf(const std::string& mistake) {
    return mistake == YAML::ErrorMsg::MAP_VALUE
               ? "; a text with a colon in it stands in quotes, as in `output: \"pulse: default\"`"
               : "";
}

} // namespace

HouseError::HouseError(const std::filesystem::path& file, std::vector<HouseMistake> mistakes)
    : std::runtime_error(Describe(file, mistakes))
    , m_mistakes(std::move(mistakes)) {}

House ReadHouse(const std::string& text,
                const std::filesystem::path& folder,
                const std::filesystem::path& file) {
    std::vector<HouseMistake> mistakes;
    House house;
    try {
        const YAML::Node root = IsOneDocument(text) ? YAML::Load(text) : YAML::Node();
        if (root.IsNull())
            mistakes.push_back(
                {0, "", "the file must hold one house; `announcement-controller init` writes one"});
        else
            house = HouseReading(folder, mistakes).Read(root);
    } catch (const YAML::Exception& error) {
        mistakes.push_back(
            {error.mark.line + 1, "", "is not YAML: " + error.msg + RightInPlaceOf(error.msg)});
    }
    if (mistakes.empty())
        return house;
    std::stable_sort(mistakes.begin(), mistakes.end(),
                     [](const HouseMistake& a, const HouseMistake& b) { return a.line < b.line; });
    throw HouseError(file, std::move(mistakes));
}

House ReadHouseFile(const std::filesystem::path& file) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    std::ifstream stream(file, std::ios::binary);
    if (error || !stream || fs::is_directory(file))
        throw HouseError(
            file, {{0, "", "cannot be read; `announcement-controller init` writes a house to start from"}});
    if (size > kMaxFile)
        throw HouseError(file, {{0, "", "is larger than 8 MiB, and so no house file"}});
    std::ostringstream text;
    text << stream.rdbuf();
    return ReadHouse(text.str(), file.parent_path(), file);
}

} // namespace controller
