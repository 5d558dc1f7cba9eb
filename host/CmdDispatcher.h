#pragma once

#include "host/ICmdMessage.h"

#include <boost/function.hpp>

#include <string>

/// Routes commands, which get no reply, to the handler registered under their exact name. A later
/// registration of a name replaces the earlier one. Owned by the base agent driver.
class CmdDispatcher {
public:
    /// `handler` is called without arguments when a command of that name arrives.
    virtual void RegisterCmd0(const std::string& name, const boost::function<void()>& handler) = 0;

    /// `handler` receives the command message, borrowed for the call.
    virtual void RegisterCmd1(const std::string& name,
                              const boost::function<void(const ICmdMessage&)>& handler) = 0;

protected:
    ~CmdDispatcher() = default;
};
