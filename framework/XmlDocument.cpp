#include "framework/XmlDocument.h"

#include "framework/XmlParser.h"
#include "host/VqXML.h"

#include <utility>

void XmlDocument::Release() {
    if (--m_references == 0)
        delete this;
}

vq::auto_com<VqXML::IDocument> VqXML::CreateXmlDocument(const std::string& text) {
    vq::auto_com<XmlNode> root = XmlParser().Parse(text);
    if (!root)
        return nullptr;
    return vq::auto_com<IDocument>(new XmlDocument(std::move(root)));
}
