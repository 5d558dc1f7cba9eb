#include "host/XmlHelper.h"

#include "framework/XmlNode.h"

VqXML::INode& XmlHelper::AddChild(VqXML::INode& node, const char* name, const char* value) {
    return static_cast<XmlNode&>(node).AddNewChild(name, value);
}
