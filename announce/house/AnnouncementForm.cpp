#include "announce/house/AnnouncementForm.h"

#include "announce/Failure.h"
#include "announce/house/AnnouncementOptions.h"
#include "announce/house/FormFields.h"

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

std::string Reason(const Failure& failure) {
    return failure.what() + (failure.Right().empty() ? "" : "; right: " + failure.Right());
}

std::string Scalar(const std::string& text) {
    if (text.empty())
        return "\"\"";
    YAML::Emitter emitter;
    emitter << text;
    return emitter.c_str();
}

std::string Item(const form_fields::Item& item) {
    if (item.size() == 1)
        return Scalar(item.front().second);
    YAML::Emitter emitter;
    emitter << YAML::Flow << YAML::BeginMap;
    for (const auto& [key, value] : item)
        emitter << YAML::Key << key << YAML::Value << value;
    emitter << YAML::EndMap;
    return emitter.c_str();
}

void AddLine(std::string& form, const std::string& line, const char* comment) {
    form += line;
    form.append(line.size() < kCommentColumn ? kCommentColumn - line.size() : 2, ' ');
    form += std::string("# ") + comment + "\n";
}

/// The texts of one item of a list: a scalar, or a map of scalars.
form_fields::Item ReadItem(const YAML::Node& node, const char* firstKey) {
    form_fields::Item item;
    if (node.IsScalar())
        return {{firstKey, node.Scalar()}};
    if (!node.IsMap())
        throw Failure(ExitStatus::Usage,
                      "this is neither a name nor {" + std::string(firstKey) + ": NAME, ...}");
    for (const auto& entry : node) {
        if (!entry.first.IsScalar() || !entry.second.IsScalar())
            throw Failure(ExitStatus::Usage, "a value in { } is no text");
        item.emplace_back(entry.first.Scalar(), entry.second.Scalar());
    }
    return item;
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
            Note(mark, Reason(failure));
        }
    }

    void Note(const YAML::Mark& mark, const std::string& what) { m_mistakes.push_back({LineOf(mark), what}); }

    void Take(const std::string& key, const YAML::Node& value) {
        for (const auto& field : form_fields::Fields()) {
            if (field.key == key)
                return TakeField(field, value);
        }
        for (const auto& list : form_fields::Lists()) {
            if (list.key == key)
                return TakeList(list, value);
        }
        const std::string near = names::Choice(names::Nearest(form_fields::Keys(), key));
        throw Failure(ExitStatus::Usage, "there is no key \"" + key + "\"",
                      near.empty() ? names::Choice(form_fields::Keys()) : near + "?");
    }

    void TakeField(const form_fields::Field& field, const YAML::Node& value) {
        if (!value.IsScalar() && !value.IsNull())
            throw Failure(ExitStatus::Usage, field.key + " is no text", "one value behind the colon");
        const std::string text = value.IsNull() ? "" : value.Scalar();
        if (text != field.show(m_original))
            field.read(text, m_house, m_read);
    }

    void TakeList(const form_fields::List& list, const YAML::Node& value) {
        if (!value.IsSequence() && !value.IsNull())
            throw Failure(ExitStatus::Usage, list.key + " is no list", "lines that begin with \"  - \"");
        Json items = Json::array();
        for (const YAML::Node& node : value)
            Guarded(node.Mark(), [&] { AddItem(list, node, items); });
        m_read[list.member] = std::move(items);
    }

    void AddItem(const form_fields::List& list, const YAML::Node& node, Json& items) {
        Json item = ItemFor(list, ReadItem(node, list.firstKey));
        for (const Json& other : items) {
            if (other.at("id") == item.at("id"))
                throw Failure(ExitStatus::Usage, "it stands twice in " + list.key);
        }
        items.push_back(std::move(item));
    }

    /// The original's item when its text is the same, else what the text says.
    Json ItemFor(const form_fields::List& list, const form_fields::Item& texts) {
        for (const Json& present : m_original.at(list.member)) {
            if (list.show(present, m_house) == texts)
                return present;
        }
        return list.read(texts, m_house);
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
    for (const std::string& key : form_fields::Keys()) {
        for (const auto& field : form_fields::Fields()) {
            if (field.key == key)
                AddLine(form, key + ": " + Scalar(field.show(announcement)), field.comment);
        }
        for (const auto& list : form_fields::Lists()) {
            if (list.key != key)
                continue;
            AddLine(form, key + ":", list.comment);
            for (const Json& item : announcement.at(list.member))
                form += "  - " + Item(list.show(item, house)) + "\n";
        }
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
    std::istringstream lines(form);
    for (std::string line; std::getline(lines, line);) {
        const auto first = line.find_first_not_of(" \t\r");
        if (first != std::string::npos && line[first] != '#')
            return false;
    }
    return true;
}

std::string WithoutMistakes(const std::string& form) {
    std::istringstream lines(form);
    std::string rest;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(kMark, 0) != 0)
            rest += line + "\n";
    }
    return rest;
}

std::string WithMistakes(const std::string& form, const Mistakes& mistakes) {
    std::string text;
    for (const Mistake& mistake : mistakes)
        text += kMark + mistake.Told(mistakes.size()) + "\n";
    return text + WithoutMistakes(form);
}

} // namespace announcement_form
