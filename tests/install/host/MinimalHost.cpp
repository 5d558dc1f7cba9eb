#include "framework/CmdMessage.h"
#include "framework/DriverModule.h"
#include "framework/IDriverHost.h"
#include "framework/InstanceRegistry.h"
#include "framework/XmlText.h"

#include <iostream>

/// Keeps announcements; to play them it would have to let its timers expire, and to publish the other
/// services.
class MinimalHost final : private IDriverHost, private IDriverHelperV2 {
public:
    MinimalHost() { m_instances.RegisterInterface(IDriverHost::kGuid, static_cast<IDriverHost*>(this), 1); }

    IInstanceManager& Instances() { return m_instances; }

private:
    const IDriverHelperV2& GetHelper(const VqBaseDriver&) override { return *this; }
    std::uint32_t GetDeviceId() const override { return 100; }
    vq::auto_com<ICmdMessage> CreateCmdMessage(const std::string& name) const override {
        return CmdMessage::Create(name);
    }

    std::uint32_t AddTimer(VqBaseDriver&, std::uint32_t, std::uint32_t) override { return ++m_lastTimer; }
    void ForgetDriver(VqBaseDriver&) noexcept override {}
    void FireEvent(std::uint32_t eventId) override { std::cout << "event " << eventId << '\n'; }
    void LogMessage(unsigned level, const char* text) override { std::cout << level << ": " << text << '\n'; }
    void InvalidateState(VqBaseDriver&) override { std::cout << "to be saved\n"; }
    void HandlerRegistered(Registration, const std::string&) override {}
    void HandlerMissing(const std::string& name) override { std::cout << "unknown: " << name << '\n'; }

    InstanceRegistry m_instances;
    std::uint32_t m_lastTimer = 0;
};

int main(int, char** argv) {
    MinimalHost host;
    const DriverModule module(argv[1]);
    const auto agent = module.Create(host.Instances());
    agent->Initialize(0, *VqXML::CreateXmlNode("configuration", ""), nullptr); // no saved state yet
    agent->RegisterCommands();

    const auto request = CmdMessage::Create("add_announcement");
    request->AddParam("announcement", "STRING",
                      "<announcement><name>Dinner</name><navigators/></announcement>");
    std::cout << ToXmlText(*agent->UIRequest(*request)) << '\n';

    std::cout << ToXmlText(*agent->GetPersistState(0)) << '\n';

    const auto command = CmdMessage::Create("execute_announcement");
    command->AddParam("id", "NUMBER", "1");
    agent->ExecuteCommand(*command, nullptr, 0);
}
