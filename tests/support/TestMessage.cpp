#include "tests/support/TestMessage.h"

#include "host/Conversion.h"

#include <stdexcept>

TestMessage::TestMessage(std::string name, std::map<std::string, std::string> parameters)
    : m_name(std::move(name))
    , m_answer([parameters = std::move(parameters)](const std::string& parameter) {
        const auto found = parameters.find(parameter);
        return found != parameters.end() ? found->second : std::string();
    }) {}

std::uint32_t TestMessage::GetParamAsULong(const std::string& name) const {
    return vq::ToULong(GetParam(name));
}

void TestMessage::AddParam(const std::string& /*name*/,
                           const std::string& /*type*/,
                           const std::string& /*value*/) {
    throw std::logic_error("an incoming message is only read");
}

void TestMessage::AddVariableParam(const std::string& /*name*/,
                                   const std::string& /*type*/,
                                   std::uint32_t /*deviceId*/,
                                   std::uint32_t /*variableId*/) {
    throw std::logic_error("an incoming message is only read");
}
