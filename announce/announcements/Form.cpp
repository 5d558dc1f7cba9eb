#include "announce/announcements/Form.h"

#include "announce/announcements/Targets.h"
#include "announce/basics/Failure.h"
#include "announce/basics/Words.h"

#include <algorithm>
#include <sstream>

#include <yaml-cpp/yaml.h>

namespace announcement_form {
namespace {

constexpr const char* kMark = "#! ";
constexpr std::size_t kCommentColumn = 32;

std::size_t LineOf(const YAML::Mark& mark) {
    return mark.line >= 0 ? static_cast<std::size_t>(mark.line) + 1 : 0;
}

std::string Scalar(const std::string& text) {
    if (text.empty())
        return "\"\"";
    YAML::Emitter emitter;
    emitter << text;
    return emitter.c_str();
}

std::string Item(const targets::Texts& texts) {
    if (texts.size() == 1)
        return Scalar(texts.front().second);
    YAML::Emitter emitter;
    emitter << YAML::Flow << YAML::BeginMap;
    for (const auto& [key, value] : texts)
        emitter << YAML::Key << key << YAML::Value << value;
    emitter << YAML::EndMap;
    return emitter.c_str();
}

/// The lines of the form that fit.
template <class Fits>
std::string LinesOf(const std::string& form, Fits fits) {
    std::istringstream lines(form);
    std::string fitting;
    for (std::string line; std::getline(lines, line);)
        fitting += fits(line) ? line + "\n" : "";
    return fitting;
}

void AddLine(std::string& form, const std::string& line, const char* comment) {
    form += line;
    form.append(line.size() < kCommentColumn ? kCommentColumn - line.size() : 2, ' ');
    form += std::string("# ") + comment + "\n";
}

/// The texts of one item of a list: a scalar, or a map of scalars.
targets::Texts ReadItem(const YAML::Node& node, const std::string& firstKey) {
    if (node.IsScalar())
        return {{firstKey, node.Scalar()}};
    if (!node.IsMap())
        throw Failure(ExitStatus::Usage, "this is neither a name nor {" + firstKey + ": NAME, ...}");
    targets::Texts texts;
    for (const auto& entry : node) {
        if (!entry.first.IsScalar() || !entry.second.IsScalar())
            throw Failure(ExitStatus::Usage, "a value in { } is no text");
        texts.emplace_back(entry.first.Scalar(), entry.second.Scalar());
    }
    return texts;
}

/// Reads one form, key by key.
class Reader {
public:
    Reader(const Json& original, House& house, Mistakes& mistakes)
        : m_original(original)
        , m_house(house)
        , m_mistakes(mistakes)
        , m_read(original) {}

    Json Read(const YAML::Node& root) {
        if (!root.IsMap())
            Note(YAML::Mark::null_mark(), "this is no form: it has no lines such as \"name: Dinner\"");
        std::vector<std::string> seen;
        for (auto entry = root.begin(); root.IsMap() && entry != root.end(); ++entry) {
            const std::string key = entry->first.IsScalar() ? entry->first.Scalar() : "";
            if (std::find(seen.begin(), seen.end(), key) != seen.end())
                Note(entry->first.Mark(), key + " stands twice");
            seen.push_back(key);
            Guarded(entry->first.Mark(), [&] { Take(key, entry->second); });
        }
        if (m_read.at("name").get<std::string>().empty())
            Note(YAML::Mark::null_mark(), "name: an announcement needs a name");
        return m_read;
    }

private:
    template <class Work>
    void Guarded(const YAML::Mark& mark, const Work& work) {
        try {
            work();
        } catch (const Failure& failure) {
            if (failure.Status() == ExitStatus::NoConnection || failure.Status() == ExitStatus::Interrupted)
                throw;
            Note(mark, failure.Reason());
        }
    }

    void Note(const YAML::Mark& mark, const std::string& what) { m_mistakes.push_back({LineOf(mark), what}); }

    void Take(const std::string& key, const YAML::Node& value) {
        std::vector<std::string> keys;
        for (const fields::Field& field : fields::All()) {
            if (field.key == key)
                return field.IsList() ? TakeList(field, value) : TakeField(field, value);
            keys.push_back(field.key);
        }
        const std::string near = words::Choice(words::Nearest(keys, key));
        throw Failure(ExitStatus::Usage, "there is no key \"" + key + "\"",
                      near.empty() ? words::Choice(keys) : near + "?");
    }

    void TakeField(const fields::Field& field, const YAML::Node& value) {
        if (!value.IsScalar() && !value.IsNull())
            throw Failure(ExitStatus::Usage, field.key + " is no text", "one value behind the colon");
        const std::string text = value.IsNull() ? "" : value.Scalar();
        if (text != fields::Write(field, m_original))
            m_read[field.member] = fields::Read(field, field.key, text, m_house);
    }

    void TakeList(const fields::Field& list, const YAML::Node& value) {
        if (!value.IsSequence() && !value.IsNull())
            throw Failure(ExitStatus::Usage, list.key + " is no list", "lines that begin with \"  - \"");
        Json items = Json::array();
        for (const YAML::Node& node : value)
            Guarded(node.Mark(), [&] { AddItem(list, node, items); });
        m_read[list.member] = std::move(items);
    }

    void AddItem(const fields::Field& list, const YAML::Node& node, Json& items) {
        Json item = ItemFor(list, ReadItem(node, targets::KindOf(list)));
        for (const Json& other : items) {
            if (other.at("id") == item.at("id"))
                throw Failure(ExitStatus::Usage, "it stands twice in " + list.key);
        }
        items.push_back(std::move(item));
    }

    /// The original's item when its text is the same, else what the text says.
    Json ItemFor(const fields::Field& list, const targets::Texts& texts) {
        for (const Json& present : m_original.at(list.member)) {
            if (targets::Write(list, present, m_house) == texts)
                return present;
        }
        return targets::Read(list, texts, m_house);
    }

    const Json& m_original;
    House& m_house;
    Mistakes& m_mistakes;
    Json m_read;
};

} // namespace

std::string Mistake::Told(std::size_t above) const {
    return (line > 0 ? "line " + std::to_string(line + above) + ": " : "") + text;
}

std::string Write(const Json& announcement, House& house) {
    std::string form = "# Announcement " + announcement.at("id").dump() +
                       ". Save it and leave the editor to store it. When nothing is\n"
                       "# changed, or everything is deleted, it stays as it is.\n\n";
    for (const fields::Field& field : fields::All()) {
        if (!field.IsList()) {
            AddLine(form, field.key + ": " + Scalar(fields::Write(field, announcement)), field.comment);
            continue;
        }
        AddLine(form, field.key + ":", field.comment);
        for (const Json& item : announcement.at(field.member))
            form += "  - " + Item(targets::Write(field, item, house)) + "\n";
    }
    return form;
}

Json Read(const std::string& form, const Json& original, House& house, Mistakes& mistakes) {
    YAML::Node root;
    try {
        root = YAML::Load(form);
    } catch (const YAML::Exception& error) {
        mistakes.push_back({LineOf(error.mark), "this is no YAML: " + error.msg});
        return original;
    }
    return Reader(original, house, mistakes).Read(root);
}

bool IsEmpty(const std::string& form) {
    return LinesOf(form,
                   [](const std::string& line) {
                       const auto first = line.find_first_not_of(" \t\r");
                       return first != std::string::npos && line[first] != '#';
                   })
        .empty();
}

std::string WithoutMistakes(const std::string& form) {
    return LinesOf(form, [](const std::string& line) { return line.rfind(kMark, 0) != 0; });
}

std::string WithMistakes(const std::string& form, const Mistakes& mistakes) {
    std::string text;
    for (const Mistake& mistake : mistakes)
        text += kMark + mistake.Told(mistakes.size()) + "\n";
    return text + WithoutMistakes(form);
}

} // namespace announcement_form
