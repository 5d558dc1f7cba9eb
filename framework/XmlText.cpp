#include "framework/XmlText.h"

#include "framework/XmlNode.h"

#include <cstddef>
#include <string_view>
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

/// Writes the element up to its children; says whether it has any.
bool AppendOpening(std::string& out, const XmlNode& node) {
    out += '<';
    out += node.GetName();
    const bool hasChildren = node.FirstChild() != nullptr;
    if (!hasChildren && node.GetValue().empty()) {
        out += "/>";
        return false;
    }
    out += '>';
    AppendXmlEscaped(out, node.GetValue());
    return hasChildren;
}

void AppendClosing(std::string& out, const XmlNode& node) {
    out += "</";
    out += node.GetName();
    out += '>';
}

/// An element whose tag is open, and the place of the child that comes next.
struct OpenElement {
    const XmlNode* node;
    const XmlLink* nextChild;
};

/// The node to be written next; null at the end. Closes the elements that are complete.
const XmlNode* Advance(std::string& out, std::vector<OpenElement>& open) {
    while (!open.empty()) {
        OpenElement& element = open.back();
        if (const XmlLink* const place = element.nextChild; place != nullptr) {
            element.nextChild = place->next;
            return place->node;
        }
        AppendClosing(out, *element.node);
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
    std::string out;
    std::vector<OpenElement> open; // a stack of our own: a tree may be deeper than the program's
    for (const auto* next = &static_cast<const XmlNode&>(node); next != nullptr; next = Advance(out, open)) {
        if (AppendOpening(out, *next))
            open.push_back({next, next->FirstChild()});
        else if (!next->GetValue().empty())
            AppendClosing(out, *next);
    }
    return out;
}
