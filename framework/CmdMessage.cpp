#include "framework/CmdMessage.h"

#include "host/Conversion.h"

#include <algorithm>

vq::auto_com<CmdMessage> CmdMessage::Create(const std::string& name) {
    return vq::auto_com<CmdMessage>(new CmdMessage(name));
}

void CmdMessage::AddRef() {
    ++m_references;
}

void CmdMessage::Release() {
    if (--m_references == 0)
        delete this;
}

std::string CmdMessage::GetParam(const std::string& name) const {
    const auto found = std::find_if(m_parameters.begin(), m_parameters.end(),
                                    [&](const Parameter& parameter) { return parameter.name == name; });
    return found != m_parameters.end() ? found->value : std::string();
}

std::uint32_t CmdMessage::GetParamAsULong(const std::string& name) const {
    return vq::ToULong(GetParam(name));
}

void CmdMessage::AddParam(const std::string& name, const std::string& type, const std::string& value) {
    m_parameters.push_back({name, type, value});
}

void CmdMessage::AddVariableParam(const std::string& name,
                                  const std::string& type,
                                  std::uint32_t deviceId,
                                  std::uint32_t variableId) {
    m_parameters.push_back({name, type, {}, true, deviceId, variableId});
}
