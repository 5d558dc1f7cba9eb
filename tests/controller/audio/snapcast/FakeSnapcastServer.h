#pragma once

#include "controller/audio/snapcast/SnapcastLoans.h"
#include "tests/controller/audio/snapcast/SnapcastModel.h"

#include <functional>
#include <string>
#include <vector>

namespace controller::audio::test {

/// A server that does at once, or with its answer, what it is told, and answers when posted work is done.
class FakeSnapcastServer final : public ISnapcastServer {
public:
    explicit FakeSnapcastServer(IScheduler& driver) : m_driver(driver) {}

    void Look() override {
        m_driver.Post("look", [this] {
            if (isAnswering && loans != nullptr)
                loans->OnState(model.state);
        });
    }
    void SetVolume(const std::string& client, const SnapcastVolume& volume, Answered answered) override {
        Answer("volume " + client, answered, [=] { return model.SetVolume(client, volume); });
    }
    void SetStream(const std::string& group, const std::string& stream, Answered answered) override {
        Answer("stream " + stream, answered, [=] { return model.SetStream(group, stream); });
    }
    void SetMute(const std::string& group, bool isMuted, Answered answered) override {
        Answer("mute " + group, answered, [=] { return model.SetMute(group, isMuted); });
    }
    void SetClients(const std::string& group,
                    const std::vector<std::string>& clients,
                    Answered answered) override {
        Answer("clients " + group, answered, [=] { return model.SetClients(group, clients); });
    }

    SnapcastModel model;
    SnapcastLoans* loans = nullptr;
    bool isAnswering = true;
    bool isSlow = false; ///< What it is told is done with the answer.
    unsigned lies = 0;   ///< As many of the next calls it does not do, and says that it has.
    int refusedAt = 0;   ///< The n-th call, from 1; 0: none.
    int refusedFrom = 0;
    std::vector<std::string> calls;

private:
    void
    Answer(const std::string& call, const Answered& answered, const std::function<std::string()>& change) {
        calls.push_back(call);
        const int number = static_cast<int>(calls.size());
        const bool isRefused = number == refusedAt || (refusedFrom > 0 && number >= refusedFrom);
        if (isSlow) {
            m_driver.Post("answer", [answered, change] { answered(change()); });
            return;
        }
        const bool isLie = lies > 0;
        lies -= isLie ? 1 : 0;
        const std::string error = isRefused ? "Not today" : isLie ? "" : change();
        if (isAnswering)
            m_driver.Post("answer", [answered, error] { answered(error); });
    }

    IScheduler& m_driver;
};

} // namespace controller::audio::test
