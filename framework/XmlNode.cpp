#include "framework/XmlNode.h"

#include "framework/XmlNodePool.h"
#include "host/AssertWrite.h"
#include "host/Conversion.h"
#include "host/VqXML.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <limits>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

template <class Number>
class Decimal {
public:
    explicit Decimal(Number number)
        : m_end(std::to_chars(m_digits, m_digits + sizeof m_digits, number).ptr) {}
    [[nodiscard]] std::string_view View() const {
        return {m_digits, static_cast<std::size_t>(m_end - m_digits)};
    }

private:
    char m_digits[std::numeric_limits<Number>::digits10 + 2] = {};
    const char* m_end;
};

/// "true" in any case, of ASCII's letters: no locale has a say here.
bool IsTrue(std::string_view text) {
    constexpr std::string_view kTrue = "true";
    constexpr int kCaseBit = 'a' - 'A';
    return text == "1" ||
           std::equal(text.begin(), text.end(), kTrue.begin(), kTrue.end(),
                      [](char given, char lower) { return given == lower || given + kCaseBit == lower; });
}

} // namespace

VqXML::INode* XmlChildren::First() {
    m_given = nullptr;
    return Next();
}

VqXML::INode* XmlChildren::Next() {
    const XmlLink* const next = m_given != nullptr ? m_parent.ChildBehind(*m_given) : m_parent.FirstChild();
    if (next == nullptr)
        return nullptr; // and stays there: a child added later is the next one
    m_given = next;
    return next->node;
}

void* XmlNode::operator new(std::size_t size) {
    return XmlNodePool::Take(size);
}

void XmlNode::operator delete(void* memory) noexcept {
    XmlNodePool::GiveBack(memory);
}

void XmlNode::Release() {
    assert(m_references > 0);
    if (--m_references > 0)
        return;
    // Destroyed in a loop over a list of their own: a tree may be deeper than the stack.
    XmlNode* dying = this;
    while (dying != nullptr) {
        XmlNode* const node = dying;
        dying = node->DropChildren(node->m_ownLink.node);
        delete node;
    }
}

XmlNode* XmlNode::DropChildren(XmlNode* rest) noexcept {
    // A dying node has no parent left, so its own link is free for the list. The list keeps the order in
    // which the nodes were made: to go backwards through memory takes twice the time.
    if (m_lastChild == nullptr)
        return rest;
    XmlNode* first = rest;
    XmlNode** end = &first;
    XmlLink* link = std::exchange(m_lastChild->next, nullptr);
    m_lastChild = nullptr;
    while (link != nullptr) {
        XmlNode* const child = link->node;
        XmlLink* const next = link->next;
        child->DropParent(*link);
        link = next;
        if (--child->m_references > 0)
            continue;
        if (child->m_lastChild == nullptr) { // most are leaves: at once, while they are at hand
            delete child;
            continue;
        }
        *end = child;
        end = &child->m_ownLink.node;
    }
    *end = rest;
    return first;
}

std::string XmlNode::GetChildValue(const std::string& name) const {
    const XmlNode* const child = Find(name);
    return child != nullptr ? child->GetValue() : std::string();
}

std::int32_t XmlNode::GetChildValueAsLong(const std::string& name) const {
    const XmlNode* const child = Find(name);
    return child != nullptr ? vq::ToLong(child->Value()) : 0;
}

std::uint32_t XmlNode::GetChildValueAsULong(const std::string& name) const {
    const XmlNode* const child = Find(name);
    return child != nullptr ? vq::ToULong(child->Value()) : 0;
}

bool XmlNode::GetChildValueAsBool(const std::string& name) const {
    const XmlNode* const child = Find(name);
    return child != nullptr && IsTrue(child->Value());
}

void XmlNode::AddChildString(const std::string& name, const std::string& value) {
    AddNewChild(name, value);
}

void XmlNode::AddChildLong(const std::string& name, std::int32_t value) {
    AddNewChild(name, Decimal(value).View());
}

void XmlNode::AddChildULong(const std::string& name, std::uint32_t value) {
    AddNewChild(name, Decimal(value).View());
}

void XmlNode::AddChildBool(const std::string& name, bool value) {
    AddNewChild(name, value ? "true" : "false");
}

void XmlNode::AppendChild(VqXML::INode* child) {
    auto* const node = static_cast<XmlNode*>(child);
    if (node == nullptr || node->IsAncestorOf(*this)) {
        vq::AssertWrite("XmlNode", __LINE__, vq::StackTrace());
        return;
    }
    XmlLink& link = node->m_ownLink.node == nullptr ? node->m_ownLink : *new XmlLink;
    link.node = node;
    node->AddRef();
    Link(link);
}

VqXML::INode* XmlNode::FindChild(const std::string& name) const {
    return const_cast<XmlNode*>(Find(name));
}

VqXML::INodeList* XmlNode::GetChildren() {
    if (m_children == nullptr)
        m_children = std::make_unique<XmlChildren>(*this);
    return m_children.get();
}

void XmlNode::SetNameAndValue(const std::string& name, const std::string& value) {
    m_name.Assign(name);
    m_value.Assign(value);
}

void XmlNode::AppendText(std::string_view text) {
    if (Value().empty())
        m_value.Assign(text);
    else
        m_value.Assign(GetValue().append(text));
}

XmlNode& XmlNode::AddNewChild(std::string_view name, std::string_view value) {
    auto* const child = new XmlNode(name, value);
    child->m_ownLink.node = child;
    Link(child->m_ownLink);
    return *child;
}

const XmlNode* XmlNode::Find(std::string_view name) const noexcept {
    const XmlLink* link = m_lastChild;
    if (link == nullptr)
        return nullptr;
    do {
        link = link->next;
        if (link->node->m_name.Is(name))
            return link->node;
    } while (link != m_lastChild);
    return nullptr;
}

void XmlNode::Link(XmlLink& link) noexcept {
    ++link.node->m_parents;
    link.next = m_lastChild != nullptr ? std::exchange(m_lastChild->next, &link) : &link;
    m_lastChild = &link;
}

void XmlNode::DropParent(XmlLink& link) noexcept {
    --m_parents;
    if (&link == &m_ownLink)
        m_ownLink.node = nullptr;
    else
        delete &link;
}

bool XmlNode::IsAncestorOf(const XmlNode& node) const {
    if (this == &node)
        return true;
    if (node.m_parents == 0) // nobody's child: the usual case, a tree that is built from its leaves
        return false;
    std::vector<const XmlNode*> open{this};
    std::unordered_set<const XmlNode*> shared;
    while (!open.empty()) {
        const XmlNode* const next = open.back();
        open.pop_back();
        for (const XmlLink* link = next->FirstChild(); link != nullptr; link = next->ChildBehind(*link)) {
            const XmlNode* const child = link->node;
            if (child == &node)
                return true;
            const bool isNew = child->m_parents < 2 || shared.insert(child).second;
            if (isNew && child->FirstChild() != nullptr)
                open.push_back(child);
        }
    }
    return false;
}

vq::auto_com<VqXML::INode> VqXML::CreateXmlNode() {
    return CreateXmlNode({}, {});
}

vq::auto_com<VqXML::INode> VqXML::CreateXmlNode(const std::string& name, const std::string& value) {
    return vq::auto_com<INode>(new XmlNode(name, value));
}
