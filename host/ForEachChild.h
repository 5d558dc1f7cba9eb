#pragma once

#include "host/INode.h"

/// Calls `action` with every child element of `parent`, in document order.
template <class Action>
void ForEachChild(VqXML::INode& parent, Action action) {
    VqXML::INodeList* const children = parent.GetChildren();
    for (VqXML::INode* child = children->First(); child != nullptr; child = children->Next())
        action(*child);
}
