#pragma once

#include "host/Export.h"
#include "host/VqXML.h"

namespace XmlHelper { // NOLINT(readability-identifier-naming): the name is the host's

/// Appends a child element with that name and text and gives it, borrowed from `node`.
VQ_EXPORT VqXML::INode& AddChild(VqXML::INode& node, const char* name, const char* value);

} // namespace XmlHelper
