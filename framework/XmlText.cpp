#include "framework/XmlText.h"

#include "framework/XmlNode.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

/// What stands for this character in a text; empty when it stands for itself.
std::string_view Escape(char character) noexcept {
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '\r':
        return "&#13;";
    default:
        return {};
    }
}

/// The text that is written, most of it in very small pieces: they are put together here first.
class Output {
public:
    void Put(char character) {
        if (m_used == sizeof m_piece)
            Flush();
        m_piece[m_used++] = character;
    }

    void Put(std::string_view text) {
        if (text.size() > sizeof m_piece - m_used)
            return PutBehind(text);
        for (std::size_t index = 0; index < text.size(); ++index)
            m_piece[m_used + index] = text[index];
        m_used += text.size();
    }

    void PutEscaped(std::string_view text) {
        for (const char character : text) {
            const std::string_view escape = Escape(character);
            if (escape.empty())
                Put(character);
            else
                Put(escape);
        }
    }

    [[nodiscard]] std::string Take() {
        Flush();
        return std::move(m_text);
    }

private:
    void PutBehind(std::string_view text) {
        Flush();
        m_text += text;
    }
    void Flush() {
        m_text.append(m_piece, m_used);
        m_used = 0;
    }

    std::string m_text;
    std::size_t m_used = 0;
    char m_piece[2048];
};

void PutClosing(Output& out, std::string_view name) {
    out.Put('<');
    out.Put('/');
    out.Put(name);
    out.Put('>');
}

/// Writes an element without children, or one with them up to the first; says whether it is still open.
bool PutElement(Output& out, const XmlNode& node) {
    const std::string_view name = node.Name();
    const std::string_view value = node.Value();
    const bool hasChildren = node.FirstChild() != nullptr;
    out.Put('<');
    out.Put(name);
    if (!hasChildren && value.empty()) {
        out.Put('/');
        out.Put('>');
        return false;
    }
    out.Put('>');
    out.PutEscaped(value);
    if (!hasChildren)
        PutClosing(out, name);
    return hasChildren;
}

/// An element whose tag is open, and the place of the child that comes next.
struct OpenElement {
    const XmlNode* node;
    const XmlLink* nextChild;
};

/// The node to be written next; null at the end. Closes the elements that are complete.
const XmlNode* Advance(Output& out, std::vector<OpenElement>& open) {
    while (!open.empty()) {
        OpenElement& element = open.back();
        if (const XmlLink* const place = element.nextChild; place != nullptr) {
            element.nextChild = element.node->ChildBehind(*place);
            return place->node;
        }
        PutClosing(out, element.node->Name());
        open.pop_back();
    }
    return nullptr;
}

} // namespace

void AppendXmlEscaped(std::string& out, std::string_view text) {
    std::size_t written = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const std::string_view escape = Escape(text[index]);
        if (escape.empty())
            continue;
        out += text.substr(written, index - written);
        out += escape;
        written = index + 1;
    }
    out += text.substr(written);
}

std::string ToXmlText(const VqXML::INode& node) {
    Output out;
    std::vector<OpenElement> open; // a stack of our own: a tree may be deeper than the program's
    for (const auto* next = &static_cast<const XmlNode&>(node); next != nullptr; next = Advance(out, open)) {
        if (PutElement(out, *next))
            open.push_back({next, next->FirstChild()});
    }
    return out.Take();
}
