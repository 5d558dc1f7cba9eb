#pragma once

namespace VqXML { // NOLINT(readability-identifier-naming): the name is the host's

class INode;

/// An element's child list, owned by the element: nobody releases it, and it lives as long as the element. It
/// holds one place, so that two walks over the same element do not mix.
class INodeList {
public:
    /// The first child element, borrowed, or null when there is none.
    virtual INode* First() = 0;

    /// The child behind the one given last, borrowed, or null after the last one.
    virtual INode* Next() = 0;

protected:
    ~INodeList() = default;
};

} // namespace VqXML
