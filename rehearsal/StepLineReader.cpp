#include "rehearsal/JsonText.h"
#include "rehearsal/StepLine.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>
#include <optional>
#include <stdexcept>
#include <unordered_map>

namespace {

using Value = StepLine::Value;
using Kind = Value::Kind;

constexpr std::size_t kMostMembers = 64;

/// Takes the parser's events. It builds no more than a step can be made of, whatever the line holds, and
/// leaves out what lies deeper.
class Reader final : public nlohmann::json_sax<nlohmann::json> {
public:
    [[nodiscard]] StepLine Result(const std::string& line);

    bool null() override { return Take(Kind::Null); }
    bool boolean(bool flag) override {
        m_value.flag = flag;
        return Take(Kind::Flag);
    }
    bool number_integer(std::int64_t number) override {
        m_value.number = 0; // the parser gives -0 here, and else what is below 0
        return Take(number == 0 ? Kind::Integer : Kind::Negative);
    }
    bool number_unsigned(std::uint64_t number) override {
        m_value.number = number;
        return Take(Kind::Integer);
    }
    bool number_float(double /*number*/, const std::string& text) override {
        const bool isInteger = text.find_first_of(".eE") == std::string::npos;
        return Take(!isInteger ? Kind::Fraction : text.front() == '-' ? Kind::Negative : Kind::TooLarge);
    }
    bool string(std::string& text) override {
        m_value.text = std::move(text);
        return Take(Kind::Text);
    }
    bool binary(nlohmann::json::binary_t& /*bytes*/) override { return false; } // JSON text has none
    bool start_object(std::size_t /*size*/) override { return Open(Kind::Object); }
    bool start_array(std::size_t /*size*/) override { return Open(Kind::List); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }
    bool key(std::string& name) override;
    bool parse_error(std::size_t position,
                     const std::string& token,
                     const nlohmann::detail::exception& error) override;

private:
    bool Take(Kind kind);
    bool Open(Kind kind);
    bool Close();
    void TakeElement(Kind kind);
    void TakeText(Kind kind);

    [[nodiscard]] Value& Current() { return m_line.members[m_member].second; }

    StepLine m_line;
    Value m_value; ///< the one being read
    std::optional<Kind> m_root;
    std::size_t m_depth = 0;
    std::size_t m_member = 0;
    std::string m_key; ///< within the member that is an object
    std::unordered_map<std::string, std::size_t> m_textOf;
    std::vector<Kind> m_kindOfText;
    std::string m_error;
};

bool Reader::key(std::string& name) {
    if (m_depth == 2) {
        m_key = std::move(name);
        return true;
    }
    if (m_depth != 1 || m_root != Kind::Object)
        return true;
    const auto known = std::find_if(m_line.members.begin(), m_line.members.end(),
                                    [&](const auto& member) { return member.first == name; });
    m_member = static_cast<std::size_t>(known - m_line.members.begin());
    if (known != m_line.members.end())
        return true;
    if (m_line.members.size() == kMostMembers) {
        m_error = "it has more members than any step takes";
        return false;
    }
    m_line.members.emplace_back(std::move(name), Value());
    return true;
}

bool Reader::Take(Kind kind) {
    m_value.kind = kind;
    if (m_depth == 0)
        m_root = kind;
    if (m_root != Kind::Object)
        return true;
    if (m_depth == 1)
        Current() = std::move(m_value);
    else if (m_depth == 2)
        Current().kind == Kind::List ? TakeElement(kind) : TakeText(kind);
    m_value = {};
    return true;
}

void Reader::TakeElement(Kind kind) {
    Value& list = Current();
    const bool isId = kind == Kind::Integer && m_value.number <= std::numeric_limits<std::uint32_t>::max();
    if (isId)
        list.ids.push_back(static_cast<std::uint32_t>(m_value.number));
    else if (list.fault.empty())
        list.fault = "element " + std::to_string(list.ids.size() + 1) + " is " +
                     std::string(StepLine::NameOf(kind == Kind::Integer ? Kind::TooLarge : kind));
}

void Reader::TakeText(Kind kind) {
    auto& texts = Current().texts;
    const auto [place, isNew] = m_textOf.try_emplace(m_key, texts.size());
    if (isNew) {
        texts.emplace_back(m_key, std::string());
        m_kindOfText.emplace_back();
    }
    texts[place->second].second = std::move(m_value.text);
    m_kindOfText[place->second] = kind;
}

bool Reader::Open(Kind kind) {
    Take(kind);
    ++m_depth;
    if (m_depth == 2) {
        m_textOf.clear();
        m_kindOfText.clear();
    }
    return true;
}

bool Reader::Close() {
    --m_depth;
    if (m_depth != 1 || m_root != Kind::Object || Current().kind != Kind::Object)
        return true;
    const auto fault =
        std::find_if(m_kindOfText.begin(), m_kindOfText.end(), [](Kind kind) { return kind != Kind::Text; });
    if (fault != m_kindOfText.end()) {
        const auto& name = Current().texts[static_cast<std::size_t>(fault - m_kindOfText.begin())].first;
        Current().fault = QuotedExcerpt(name) + " is " + std::string(StepLine::NameOf(*fault));
    }
    return true;
}

bool Reader::parse_error(std::size_t position,
                         const std::string& /*token*/,
                         const nlohmann::detail::exception& error) {
    m_error = "it is not JSON from byte " + std::to_string(position) + " on";
    // Of the parser's own words only the reason: between its place, which is said, and the text read last,
    // which may be endless.
    const std::string_view words = error.what();
    const std::string_view reasons = words.substr(0, words.find("; last read"));
    const std::size_t begin = reasons.find("invalid ");
    if (begin != std::string_view::npos)
        m_error.append(" (").append(reasons.substr(begin)).append(")");
    return false;
}

StepLine Reader::Result(const std::string& line) {
    // The parser would take a zero byte for the end of its input, and drop a byte order mark.
    if (line.find('\0') != std::string::npos)
        throw std::invalid_argument("it is not JSON: it holds a zero byte");
    if (line.compare(0, 3, "\xEF\xBB\xBF") == 0)
        throw std::invalid_argument("it is not JSON: a byte order mark stands before it");
    if (!nlohmann::json::sax_parse(line, this))
        throw std::invalid_argument(m_error);
    if (m_root != Kind::Object)
        throw std::invalid_argument("it is " + std::string(StepLine::NameOf(*m_root)) +
                                    "; a step is an object");
    return std::move(m_line);
}

} // namespace

StepLine StepLine::Read(const std::string& line) {
    return Reader().Result(line);
}
