#pragma once

#include "host/INodeList.h"

#include <cstdint>
#include <string>

namespace VqXML { // NOLINT(readability-identifier-naming): the name is the host's

/// An XML element: a tag name, a text and child elements; no attributes. Reference counted, made by
/// `CreateXmlNode` or a document, held in `vq::auto_com`. A node may hang in several holders and under a
/// parent at once; a parent holds a reference of its own to each child.
///
/// The typed readers take the first child of the name. A missing child reads as empty text, 0 and false.
/// Numbers are read as `vq::ToULong` and `vq::ToLong` read them; "true" in any case and "1" are true, all
/// else is false.
class INode {
public:
    virtual void AddRef() = 0;
    virtual void Release() = 0;

    /// The text of the named child; as a number; as a flag.
    [[nodiscard]] virtual std::string GetChildValue(const std::string& name) const = 0;
    [[nodiscard]] virtual std::int32_t GetChildValueAsLong(const std::string& name) const = 0;
    [[nodiscard]] virtual std::uint32_t GetChildValueAsULong(const std::string& name) const = 0;
    [[nodiscard]] virtual bool GetChildValueAsBool(const std::string& name) const = 0;

    /// Append a child element with this name and the value as text: numbers in decimal, flags as "true" or
    /// "false".
    virtual void AddChildString(const std::string& name, const std::string& value) = 0;
    virtual void AddChildLong(const std::string& name, std::int32_t value) = 0;
    virtual void AddChildULong(const std::string& name, std::uint32_t value) = 0;
    virtual void AddChildBool(const std::string& name, bool value) = 0;

    /// Appends an existing element as the last child and takes a reference of its own to it. An append that
    /// would make a node its own descendant is refused: an assertion is reported and nothing changes.
    virtual void AppendChild(INode* child) = 0;

    /// The first child element of that name, borrowed, or null.
    [[nodiscard]] virtual INode* FindChild(const std::string& name) const = 0;

    /// The child list, owned by the element; never null.
    [[nodiscard]] virtual INodeList* GetChildren() = 0;

    /// Sets the tag name and the text; children stay.
    virtual void SetNameAndValue(const std::string& name, const std::string& value) = 0;

    [[nodiscard]] virtual std::string GetName() const = 0;
    [[nodiscard]] virtual std::string GetValue() const = 0;

protected:
    ~INode() = default;
};

} // namespace VqXML
