#pragma once

#include "framework/XmlNode.h"
#include "host/IDocument.h"
#include "host/auto_com.h"

#include <cstdint>

/// A parsed text; holds the root.
class XmlDocument final : public VqXML::IDocument {
public:
    /// Made with one reference, the creator's.
    explicit XmlDocument(vq::auto_com<XmlNode> root) : m_root(std::move(root)) {}
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    void AddRef() override { ++m_references; }
    void Release() override;
    [[nodiscard]] VqXML::INode* GetRootNode() override { return m_root.Get(); }

private:
    ~XmlDocument() = default;

    vq::auto_com<XmlNode> m_root;
    std::uint32_t m_references = 1;
};
