#pragma once

#include "host/Export.h"
#include "host/VqXML.h"

#include <string>

/// The element as XML text: no declaration, no blanks between elements, `<name/>` where there is neither text
/// nor child, text before children; `&`, `<` and `>` escaped, a carriage return as `&#13;`.
[[nodiscard]] VQ_EXPORT std::string ToXmlText(const VqXML::INode& node);
