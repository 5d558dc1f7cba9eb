#pragma once

#include "host/Export.h"
#include "host/ICmdMessage.h"
#include "host/auto_com.h"

#include <cstdint>
#include <string>
#include <vector>

/// The framework's command message: a name and parameters in the order of their adding, incoming or outgoing.
class VQ_EXPORT CmdMessage final : public ICmdMessage {
public:
    struct Parameter {
        std::string name;
        std::string type;
        std::string value;
        bool isVariable = false; ///< bound to `variableId` of `deviceId`; `value` is empty then
        std::uint32_t deviceId = 0;
        std::uint32_t variableId = 0;
    };

    /// A new message without parameters, with one reference.
    [[nodiscard]] static vq::auto_com<CmdMessage> Create(const std::string& name);

    void AddRef() override;
    void Release() override;
    [[nodiscard]] const std::string& GetName() const override { return m_name; }
    /// Of parameters with the same name the first is read.
    [[nodiscard]] std::string GetParam(const std::string& name) const override;
    [[nodiscard]] std::uint32_t GetParamAsULong(const std::string& name) const override;
    void AddParam(const std::string& name, const std::string& type, const std::string& value) override;
    void AddVariableParam(const std::string& name,
                          const std::string& type,
                          std::uint32_t deviceId,
                          std::uint32_t variableId) override;

    [[nodiscard]] const std::vector<Parameter>& GetParameters() const { return m_parameters; }

private:
    explicit CmdMessage(const std::string& name) : m_name(name) {}
    ~CmdMessage() = default;

    std::string m_name;
    std::vector<Parameter> m_parameters;
    std::uint32_t m_references = 1;
};
