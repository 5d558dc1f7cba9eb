#include "controller/audio/snapcast/SnapcastControl.h"

#include <boost/asio/post.hpp>
#include <nlohmann/json.hpp>

#include <utility>

namespace controller::audio {

namespace {

/// Ids come from servers and house files; what is no UTF-8 in them no server has.
std::string Dump(const nlohmann::json& json) {
    return json.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

} // namespace

SnapcastControl::SnapcastControl(std::shared_ptr<boost::asio::io_context> context,
                                 SnapcastHost host,
                                 std::shared_ptr<Mailbox> mailbox,
                                 OnState onState)
    : m_context(std::move(context))
    , m_mailbox(std::move(mailbox))
    , m_link(std::make_shared<SnapcastLink>(
          m_context,
          std::move(host),
          [mailbox = m_mailbox, onState = std::move(onState)](const SnapcastState& state) {
              mailbox->Post([onState, state] { onState(state); });
          })) {}

SnapcastControl::~SnapcastControl() {
    boost::asio::post(*m_context, [link = m_link] { link->Close(); });
}

void SnapcastControl::Look() {
    boost::asio::post(*m_context, [link = m_link] { link->Look(); });
}

void SnapcastControl::Call(std::string method, std::string params, Answered answered) {
    const auto told = [mailbox = m_mailbox, answered = std::move(answered)](const std::string& error) {
        mailbox->Post([answered, error] { answered(error); });
    };
    boost::asio::post(*m_context, [link = m_link, method = std::move(method), params = std::move(params),
                                   told] { link->Call(method, params, told); });
}

void SnapcastControl::SetVolume(const std::string& client, const SnapcastVolume& volume, Answered answered) {
    Call("Client.SetVolume",
         Dump({{"id", client}, {"volume", {{"percent", volume.percent}, {"muted", volume.isMuted}}}}),
         std::move(answered));
}

void SnapcastControl::SetStream(const std::string& group, const std::string& stream, Answered answered) {
    Call("Group.SetStream", Dump({{"id", group}, {"stream_id", stream}}), std::move(answered));
}

void SnapcastControl::SetMute(const std::string& group, bool isMuted, Answered answered) {
    Call("Group.SetMute", Dump({{"id", group}, {"mute", isMuted}}), std::move(answered));
}

void SnapcastControl::SetClients(const std::string& group,
                                 const std::vector<std::string>& clients,
                                 Answered answered) {
    Call("Group.SetClients", Dump({{"id", group}, {"clients", clients}}), std::move(answered));
}

std::future<void> SnapcastControl::Done() {
    auto done = std::make_shared<std::promise<void>>();
    boost::asio::post(*m_context, [link = m_link, done] {
        link->Call("Server.GetRPCVersion", "", [done](const std::string& /*error*/) { done->set_value(); });
    });
    return done->get_future();
}

} // namespace controller::audio
