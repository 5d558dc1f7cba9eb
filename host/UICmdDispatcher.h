#pragma once

#include "host/ICmdMessage.h"
#include "host/VqXML.h"

#include <boost/function.hpp>

#include <string>

/// A handler of requests: receives the request, borrowed for the call, and returns the element that is the
/// reply.
using UICmdHandler = boost::function<vq::auto_com<VqXML::INode>(const ICmdMessage&)>;

/// Routes requests, which are answered by an XML element, to the handler registered under their exact name. A
/// later registration of a name replaces the earlier one. Owned by the base agent driver.
class UICmdDispatcher {
public:
    virtual void RegisterUICmd(const std::string& name, const UICmdHandler& handler) = 0;

protected:
    ~UICmdDispatcher() = default;
};
