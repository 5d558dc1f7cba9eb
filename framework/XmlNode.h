#pragma once

#include "framework/ShortText.h"
#include "host/INode.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class XmlNode;

/// A child's place in a list of children.
struct XmlLink {
    XmlNode* node;
    XmlLink* next;
};

/// The walk over the children of an element that `GetChildren` gives.
class XmlChildren final : public VqXML::INodeList {
public:
    explicit XmlChildren(const XmlNode& parent) : m_parent(parent) {}

    VqXML::INode* First() override;
    VqXML::INode* Next() override;

private:
    const XmlNode& m_parent;
    const XmlLink* m_given = nullptr; ///< the place of the child given last
};

/// The one implementation of `VqXML::INode`: whatever is an `INode` is one of these.
///
/// No operation recurses over the tree, so depth costs no stack. Children are linked, and a node brings along
/// the link for its first parent; nodes that hang under further parents get further links. Trees are made of
/// very many nodes, and most of these are leaves with a short name and a short text: one allocation, and no
/// more bytes than such a leaf needs, for the time of a large tree goes into fetching it from memory.
class XmlNode final : public VqXML::INode {
public:
    /// Made with one reference, the creator's.
    XmlNode(std::string_view name, std::string_view value) : m_name(name), m_value(value) {}
    XmlNode(const XmlNode&) = delete;
    XmlNode& operator=(const XmlNode&) = delete;

    static void* operator new(std::size_t size);
    static void operator delete(void* memory) noexcept;

    void AddRef() override { ++m_references; }
    void Release() override;
    [[nodiscard]] std::string GetChildValue(const std::string& name) const override;
    [[nodiscard]] std::int32_t GetChildValueAsLong(const std::string& name) const override;
    [[nodiscard]] std::uint32_t GetChildValueAsULong(const std::string& name) const override;
    [[nodiscard]] bool GetChildValueAsBool(const std::string& name) const override;
    void AddChildString(const std::string& name, const std::string& value) override;
    void AddChildLong(const std::string& name, std::int32_t value) override;
    void AddChildULong(const std::string& name, std::uint32_t value) override;
    void AddChildBool(const std::string& name, bool value) override;
    void AppendChild(VqXML::INode* child) override;
    [[nodiscard]] VqXML::INode* FindChild(const std::string& name) const override;
    [[nodiscard]] VqXML::INodeList* GetChildren() override;
    void SetNameAndValue(const std::string& name, const std::string& value) override;
    [[nodiscard]] std::string GetName() const override { return std::string(Name()); }
    [[nodiscard]] std::string GetValue() const override { return std::string(Value()); }

    /// As `GetName` and `GetValue`; the views hold until the text is changed.
    [[nodiscard]] std::string_view Name() const noexcept { return m_name.View(); }
    [[nodiscard]] std::string_view Value() const noexcept { return m_value.View(); }

    /// Appends a new element and gives it, borrowed.
    XmlNode& AddNewChild(std::string_view name, std::string_view value);
    void AppendText(std::string_view text);
    /// The first child's place, or null; from there on `ChildBehind` leads.
    [[nodiscard]] const XmlLink* FirstChild() const noexcept {
        return m_lastChild != nullptr ? m_lastChild->next : nullptr;
    }
    /// The place of the child behind the one at `link`, or null.
    [[nodiscard]] const XmlLink* ChildBehind(const XmlLink& link) const noexcept {
        return &link != m_lastChild ? link.next : nullptr;
    }

private:
    ~XmlNode() = default;

    [[nodiscard]] const XmlNode* Find(std::string_view name) const noexcept;
    void Link(XmlLink& link) noexcept;
    void DropParent(XmlLink& link) noexcept;
    /// Lets the children of a dying node go; gives the list of those that die with it, linked by their own
    /// links, with `rest` behind them.
    [[nodiscard]] XmlNode* DropChildren(XmlNode* rest) noexcept;
    [[nodiscard]] bool IsAncestorOf(const XmlNode& node) const;

    std::uint32_t m_references = 1;
    std::uint32_t m_parents = 0; ///< how many child lists hold this node
    ShortText m_name;
    ShortText m_value;
    XmlLink m_ownLink{nullptr, nullptr};     ///< free while its `node` is null
    XmlLink* m_lastChild = nullptr;          ///< leads to the first: children are linked in a ring
    std::unique_ptr<XmlChildren> m_children; ///< made when somebody asks for it
};
