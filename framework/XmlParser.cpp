#include "framework/XmlParser.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

namespace {

constexpr std::size_t kMaxDepth = 256;

/// Expat takes lengths as int: longer texts are fed in pieces.
constexpr std::size_t kPiece = std::size_t{1} << 24;

/// Expat takes such a beginning for UTF-16 even when it is told UTF-8, in which none of these bytes stand.
bool LooksLikeUtf16(std::string_view text) noexcept {
    using namespace std::string_view_literals;
    return text.substr(0, 2).find_first_of("\0\xFE\xFF"sv) != std::string_view::npos;
}

/// XML 1.0 knows the versions "1." and digits.
bool IsVersionOne(std::string_view version) noexcept {
    return version.size() > 2 && version.substr(0, 2) == "1." &&
           version.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

} // namespace

XmlParser::XmlParser() : m_parser(XML_ParserCreate("UTF-8")) {
    if (m_parser == nullptr)
        throw std::bad_alloc();
    XML_SetUserData(m_parser.get(), this);
    XML_SetElementHandler(m_parser.get(), &XmlParser::OnStart, &XmlParser::OnEnd);
    XML_SetCharacterDataHandler(m_parser.get(), &XmlParser::OnText);
    XML_SetStartDoctypeDeclHandler(m_parser.get(), &XmlParser::OnDoctype);
    XML_SetXmlDeclHandler(m_parser.get(), &XmlParser::OnDeclaration);
}

vq::auto_com<XmlNode> XmlParser::Parse(std::string_view text) {
    if (LooksLikeUtf16(text))
        return nullptr;
    bool isLast = false;
    while (!isLast) {
        const std::string_view piece = text.substr(0, kPiece);
        text.remove_prefix(piece.size());
        isLast = text.empty();
        const XML_Status status =
            XML_Parse(m_parser.get(), piece.data(), static_cast<int>(piece.size()), static_cast<int>(isLast));
        if (m_failure != nullptr)
            std::rethrow_exception(m_failure);
        if (status != XML_STATUS_OK)
            return nullptr;
    }
    return std::move(m_root);
}

template <class Action>
void XmlParser::Guard(Action&& action) noexcept {
    if (m_failure != nullptr)
        return;
    try {
        action();
    } catch (...) {
        m_failure = std::current_exception();
        Refuse();
    }
}

void XMLCALL XmlParser::OnStart(void* self, const XML_Char* name, const XML_Char** /*attributes*/) {
    auto& parser = *static_cast<XmlParser*>(self);
    parser.Guard([&] { parser.Open(name); });
}

void XMLCALL XmlParser::OnEnd(void* self, const XML_Char* /*name*/) {
    auto& parser = *static_cast<XmlParser*>(self);
    parser.Guard([&] {
        parser.EndStretch();
        parser.m_open.pop_back();
    });
}

void XMLCALL XmlParser::OnText(void* self, const XML_Char* text, int length) {
    auto& parser = *static_cast<XmlParser*>(self);
    parser.Guard([&] { parser.m_stretch.append(text, static_cast<std::size_t>(length)); });
}

void XMLCALL XmlParser::OnDoctype(void* self,
                                  const XML_Char* /*name*/,
                                  const XML_Char* /*systemId*/,
                                  const XML_Char* /*publicId*/,
                                  int /*hasSubset*/) {
    static_cast<XmlParser*>(self)->Refuse();
}

void XMLCALL XmlParser::OnDeclaration(void* self,
                                      const XML_Char* version,
                                      const XML_Char* /*encoding*/,
                                      int /*standalone*/) {
    if (!IsVersionOne(version))
        static_cast<XmlParser*>(self)->Refuse();
}

void XmlParser::Refuse() noexcept {
    (void)XML_StopParser(m_parser.get(), XML_FALSE); // fails only when it is stopped already
}

void XmlParser::Open(std::string_view name) {
    if (m_open.size() == kMaxDepth) {
        Refuse();
        return;
    }
    if (m_open.empty()) {
        m_root = vq::auto_com<XmlNode>(new XmlNode(name, {}));
        m_open.push_back(m_root.Get());
        return;
    }
    XmlNode& child = m_open.back()->AddNewChild(name, {});
    EndStretch(); // behind the adding: the stretch's element has a child now
    m_open.push_back(&child);
}

void XmlParser::EndStretch() {
    if (m_stretch.empty())
        return;
    XmlNode& element = *m_open.back();
    const bool isBlank = m_stretch.find_first_not_of(" \t\n\r") == std::string::npos;
    if (!isBlank || element.FirstChild() == nullptr)
        element.AppendText(m_stretch);
    m_stretch.clear();
}
