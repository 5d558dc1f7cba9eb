#pragma once

#include "host/Export.h"
#include "host/IDocument.h"
#include "host/INode.h"
#include "host/auto_com.h"

#include <string>

/// The host's XML elements and documents. Every value is a child element whose text is the value; containers
/// are child elements without text.
namespace VqXML { // NOLINT(readability-identifier-naming): the name is the host's

/// A new element without name, text or children.
[[nodiscard]] VQ_EXPORT vq::auto_com<INode> CreateXmlNode();

/// A new element with this tag name and text.
[[nodiscard]] VQ_EXPORT vq::auto_com<INode> CreateXmlNode(const std::string& name, const std::string& value);

/// Parses an XML text: well-formed XML 1.0 in UTF-8, elements nested at most 256 deep (the root is depth 1),
/// no DOCTYPE. A leading U+FEFF is accepted, a declared encoding is ignored, namespaces are not looked at,
/// attributes are dropped. In an element with child elements, a stretch of text between two tags that is
/// nothing but blanks does not count; values are never trimmed. Gives an empty holder for any other text.
[[nodiscard]] VQ_EXPORT vq::auto_com<IDocument> CreateXmlDocument(const std::string& text);

} // namespace VqXML
