#pragma once

#include <string>

/// Where a command may leave named results for whoever sent it; commands of this framework leave none.
class ICmdReturn {
public:
    virtual void AddResult(const std::string& name, const std::string& value) = 0;

protected:
    ~ICmdReturn() = default;
};
