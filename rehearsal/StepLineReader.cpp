#include "rehearsal/StepLine.h"
#include "rehearsal/StepLineBuilder.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <stdexcept>
#include <utility>

namespace {

using Value = StepLine::Value;
using Kind = Value::Kind;

/// Hands the parser's events to the builder of the line's object.
class Reader final : public nlohmann::json_sax<nlohmann::json> {
public:
    [[nodiscard]] StepLine Result(const std::string& line);

    bool null() override { return Take(Value()); }
    bool boolean(bool flag) override {
        Value value;
        value.kind = Kind::Flag;
        value.flag = flag;
        return Take(std::move(value));
    }
    bool number_integer(std::int64_t number) override { // the parser gives -0 here, and else what is below 0
        return TakeNumber(number == 0 ? Kind::Integer : Kind::Negative, 0);
    }
    bool number_unsigned(std::uint64_t number) override { return TakeNumber(Kind::Integer, number); }
    bool number_float(double /*number*/, const std::string& text) override {
        const bool isInteger = text.find_first_of(".eE") == std::string::npos;
        return TakeNumber(!isInteger            ? Kind::Fraction
                          : text.front() == '-' ? Kind::Negative
                                                : Kind::TooLarge,
                          0);
    }
    bool string(std::string& text) override {
        Value value;
        value.kind = Kind::Text;
        value.text = std::move(text);
        return Take(std::move(value));
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
    bool TakeNumber(Kind kind, std::uint64_t number);
    bool Take(Value&& value);
    bool Open(Kind kind);
    bool Close();

    [[nodiscard]] bool IsInside() const { return m_root == Kind::Object && !m_builder.IsComplete(); }

    StepLineBuilder m_builder{true};
    std::optional<Kind> m_root; ///< what the line is; there is something in it only for an object
    std::string m_error;
};

bool Reader::TakeNumber(Kind kind, std::uint64_t number) {
    Value value;
    value.kind = kind;
    value.number = number;
    return Take(std::move(value));
}

bool Reader::Take(Value&& value) {
    if (!m_root)
        m_root = value.kind;
    else if (IsInside())
        m_builder.Take(std::move(value));
    return true;
}

bool Reader::Open(Kind kind) {
    if (!m_root)
        m_root = kind;
    else if (IsInside())
        m_builder.Open(kind);
    return true;
}

bool Reader::Close() {
    if (IsInside())
        m_builder.Close();
    return true;
}

bool Reader::key(std::string& name) {
    try {
        if (IsInside())
            m_builder.Key(name);
    } catch (const std::invalid_argument& error) {
        m_error = error.what();
        return false;
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
    return std::move(m_builder.Result());
}

} // namespace

StepLine StepLine::Read(const std::string& line) {
    return Reader().Result(line);
}
