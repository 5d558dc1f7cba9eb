#pragma once

#include "framework/XmlText.h"
#include "host/VqXML.h"

#include <stdexcept>
#include <string>

/// The document of a text that the test knows to be XML.
inline vq::auto_com<VqXML::IDocument> ParseXml(const std::string& text) {
    auto document = VqXML::CreateXmlDocument(text);
    if (!document)
        throw std::invalid_argument("no XML: " + text);
    return document;
}

/// The element as text; "none" for an empty holder.
inline std::string TextOf(const vq::auto_com<VqXML::INode>& node) {
    return node ? ToXmlText(*node) : "none";
}
