#pragma once

#include "controller/audio/Borrowings.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace controller::audio {

/// Pauses the media players that play while announcements ask for it, and has those play again that are still
/// paused then. Driver thread.
class Pausing final {
public:
    using Names = std::vector<std::string>;

    /// The way to the players. Each calls back once, on the driver thread, and waits for nobody.
    struct Players {
        /// Gives those that play and can be paused.
        std::function<void(std::function<void(const Names& playing)>)> list;
        std::function<void(const Names& players, std::function<void()> done)> pause;
        /// Has those play again that are there and paused.
        std::function<void(const Names& players, std::function<void()> done)> play;
    };

    /// Has those play again that a former run has left paused. `borrowings` is borrowed for life.
    Pausing(Borrowings& borrowings, Players players);
    Pausing(const Pausing&) = delete;
    Pausing& operator=(const Pausing&) = delete;
    ~Pausing() = default;

    void Hold();
    void Release();

    /// Whether nothing is paused, or about to be.
    [[nodiscard]] bool HasGivenBack() const;

private:
    void Continue();
    void Take(const Names& playing);
    void GiveBack();
    [[nodiscard]] std::function<void()> Then(void (Pausing::*next)());
    void Done();

    Borrowings& m_borrowings;
    const Players m_players;
    unsigned m_holds = 0;
    bool m_isHeld = false; ///< as the players know it
    bool m_isBusy = false; ///< one of their answers is awaited
    std::vector<Borrowed> m_returning;
    const std::shared_ptr<bool> m_isAlive = std::make_shared<bool>(true);
};

} // namespace controller::audio
