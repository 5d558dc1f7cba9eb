#pragma once

#include "host/Export.h"
#include "host/VqXML.h"

#include <string>
#include <string_view>

/// The element as XML text: no declaration, no blanks between elements, `<name/>` where there is neither text
/// nor child, text before children; `&`, `<` and `>` escaped, a carriage return as `&#13;`.
[[nodiscard]] VQ_EXPORT std::string ToXmlText(const VqXML::INode& node);

/// Appends a text as it stands in an element.
VQ_EXPORT void AppendXmlEscaped(std::string& out, std::string_view text);
