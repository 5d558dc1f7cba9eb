#pragma once

namespace VqXML { // NOLINT(readability-identifier-naming): the name is the host's

class INode;

/// A parsed XML text; reference counted, held in `vq::auto_com`.
class IDocument {
public:
    virtual void AddRef() = 0;
    virtual void Release() = 0;

    /// The root element, never null. Borrowed: it lives as long as the document unless a holder takes a
    /// reference.
    [[nodiscard]] virtual INode* GetRootNode() = 0;

protected:
    ~IDocument() = default;
};

} // namespace VqXML
