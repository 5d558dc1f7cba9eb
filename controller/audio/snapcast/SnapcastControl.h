#pragma once

#include "controller/audio/Mailbox.h"
#include "controller/audio/snapcast/ISnapcastServer.h"
#include "controller/audio/snapcast/SnapcastLink.h"

#include <boost/asio/io_context.hpp>

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <vector>

namespace controller::audio {

/// A server's control as the driver thread has it; what it does happens on the link's thread.
class SnapcastControl final : public ISnapcastServer {
public:
    using OnState = std::function<void(const SnapcastState& state)>;

    /// `onState` is called on the driver thread, as long as the mailbox is open.
    SnapcastControl(std::shared_ptr<boost::asio::io_context> context,
                    SnapcastHost host,
                    std::shared_ptr<Mailbox> mailbox,
                    OnState onState);
    SnapcastControl(const SnapcastControl&) = delete;
    SnapcastControl& operator=(const SnapcastControl&) = delete;
    ~SnapcastControl() override;

    void Look() override;
    void SetVolume(const std::string& client, const SnapcastVolume& volume, Answered answered) override;
    void SetStream(const std::string& group, const std::string& stream, Answered answered) override;
    void SetMute(const std::string& group, bool isMuted, Answered answered) override;
    void
    SetClients(const std::string& group, const std::vector<std::string>& clients, Answered answered) override;

    /// Ready when the server has done all that it was told so far, or is not there.
    [[nodiscard]] std::future<void> Done();

private:
    void Call(std::string method, std::string params, Answered answered);

    const std::shared_ptr<boost::asio::io_context> m_context;
    const std::shared_ptr<Mailbox> m_mailbox;
    const std::shared_ptr<SnapcastLink> m_link;
};

} // namespace controller::audio
