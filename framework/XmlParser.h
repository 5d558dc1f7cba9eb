#pragma once

#include "framework/XmlNode.h"
#include "host/auto_com.h"

#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <expat.h>

/// Reads one XML text into a tree of nodes; the rules are `VqXML::CreateXmlDocument`'s.
class XmlParser {
public:
    XmlParser();

    /// The root element; empty for a text that the rules refuse.
    [[nodiscard]] vq::auto_com<XmlNode> Parse(std::string_view text);

private:
    static void XMLCALL OnStart(void* self, const XML_Char* name, const XML_Char** attributes);
    static void XMLCALL OnEnd(void* self, const XML_Char* name);
    static void XMLCALL OnText(void* self, const XML_Char* text, int length);
    static void XMLCALL OnDoctype(
        void* self, const XML_Char* name, const XML_Char* systemId, const XML_Char* publicId, int hasSubset);
    static void XMLCALL OnDeclaration(void* self,
                                      const XML_Char* version,
                                      const XML_Char* encoding,
                                      int standalone);

    void Refuse() noexcept;
    void Open(std::string_view name);
    void EndStretch();
    template <class Action>
    void Guard(Action&& action) noexcept;

    struct Free {
        void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
    };

    std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> m_parser;
    vq::auto_com<XmlNode> m_root;
    std::vector<XmlNode*> m_open; ///< the elements that are still open, the root first
    std::string m_stretch;        ///< the text since the last tag
    std::exception_ptr m_failure; ///< what was thrown in a callback, which Expat's C frames must not see
};
