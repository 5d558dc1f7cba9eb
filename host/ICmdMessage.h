#pragma once

#include <cstdint>
#include <string>

/// A command or request: a name and named text parameters. Incoming ones are read by handlers, outgoing ones
/// are made by `IDriverHelper::CreateCmdMessage`, filled and sent. Reference counted, held in `vq::auto_com`.
class ICmdMessage {
public:
    virtual void AddRef() = 0;
    virtual void Release() = 0;

    [[nodiscard]] virtual const std::string& GetName() const = 0;

    /// The named parameter's text; empty when there is no such parameter.
    [[nodiscard]] virtual std::string GetParam(const std::string& name) const = 0;

    /// The named parameter read as `vq::ToULong` reads it; 0 when there is no such parameter.
    [[nodiscard]] virtual std::uint32_t GetParamAsULong(const std::string& name) const = 0;

    /// Adds a parameter with a literal value. `type` is the host's name of its type: "STRING", "NUMBER",
    /// "BOOLEAN".
    virtual void AddParam(const std::string& name, const std::string& type, const std::string& value) = 0;

    /// Adds a parameter bound to a variable of a device: the receiver shows that variable's value as it
    /// stands.
    virtual void AddVariableParam(const std::string& name,
                                  const std::string& type,
                                  std::uint32_t deviceId,
                                  std::uint32_t variableId) = 0;

protected:
    ~ICmdMessage() = default;
};
