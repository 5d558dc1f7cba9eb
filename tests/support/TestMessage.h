#pragma once

#include "host/ICmdMessage.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>

/// An incoming message that answers as the test says, with fixed parameters or by a function: it may throw,
/// or answer differently the next time.
class TestMessage final : public ICmdMessage {
public:
    using Answer = std::function<std::string(const std::string& parameter)>;

    explicit TestMessage(std::string name)
        : TestMessage(std::move(name), std::map<std::string, std::string>()) {}
    TestMessage(std::string name, std::map<std::string, std::string> parameters);
    TestMessage(std::string name, Answer answer) : m_name(std::move(name)), m_answer(std::move(answer)) {}

    void AddRef() override {}
    void Release() override {}
    [[nodiscard]] const std::string& GetName() const override { return m_name; }
    [[nodiscard]] std::string GetParam(const std::string& name) const override { return m_answer(name); }
    [[nodiscard]] std::uint32_t GetParamAsULong(const std::string& name) const override;
    void AddParam(const std::string& name, const std::string& type, const std::string& value) override;
    void AddVariableParam(const std::string& name,
                          const std::string& type,
                          std::uint32_t deviceId,
                          std::uint32_t variableId) override;

private:
    std::string m_name;
    Answer m_answer;
};
