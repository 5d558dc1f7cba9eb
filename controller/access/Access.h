#pragma once

#include "controller/access/Token.h"
#include "controller/access/TokenSecret.h"
#include "controller/access/WrongTokens.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/IScheduler.h"

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace controller {

/// Says who may do what: knows the tokens of the house, and the tickets given for them. Driver thread only.
///
/// Hashing a token takes long, on purpose, so it is done elsewhere, and once: a token that was found right is
/// known again by its digest. One is hashed at a time, so that no more wrong ones of an address are than it
/// may send, and many right ones, as after a start, need not be taken for guesses. Whose network has been
/// right so far comes first.
class Access {
public:
    using TimePoint = IScheduler::Duration;

    /// So many tokens wait to be hashed, and so many of one network: some seconds of one core.
    static constexpr std::size_t kMaxWaiting = 200;
    static constexpr std::size_t kMaxWaitingOfANetwork = 100;
    static constexpr std::chrono::seconds kTicketLife{30};
    static constexpr std::size_t kMaxTickets = 4096;

    struct Parts {
        std::function<void(std::function<void()> work)> elsewhere; ///< runs work on another thread
        IScheduler& driver;
        std::function<void(const std::string& line)> warn;
    };

    enum class Verdict {
        Known,
        Wrong,        ///< no such token
        TooManyWrong, ///< from this address or its network; nothing was looked at
        Busy          ///< too many wait; nothing was looked at
    };
    using Done = std::function<void(Verdict verdict, const Rights& rights)>;

    Access(std::vector<Token> tokens, Parts parts);
    Access(const Access&) = delete;
    Access& operator=(const Access&) = delete;

    /// Without tokens everybody may do everything: nobody but this machine can reach the controller then.
    [[nodiscard]] bool IsOpen() const noexcept { return m_tokens.empty(); }

    /// Tells `done`, at once or later, whether the token is known. `peer` is the address that it came from.
    void Check(std::string_view token, const std::string& peer, const Done& done);

    /// A ticket for these rights, good once and for `kTicketLife`.
    [[nodiscard]] std::string GiveTicket(const Rights& rights);

    /// What the ticket is good for; it is good for nothing afterwards.
    [[nodiscard]] std::optional<Rights> TakeTicket(const std::string& ticket);

private:
    struct Ticket {
        Rights rights;
        TimePoint end{};
    };
    struct Waiting {
        token_secret::Digest digest;
        const Token* token;
        std::string secret;
        std::string peer;
        std::string network;
        std::vector<Done> done;
    };

    [[nodiscard]] const Token* Find(std::string_view name) const noexcept;
    [[nodiscard]] const Token* Remembered(const token_secret::Digest& digest) const noexcept;
    [[nodiscard]] bool IsFull(const std::string& network) const;
    void HashNext();
    void RefuseTheLimited();
    void Verified(bool isRight);

    const std::vector<Token> m_tokens;
    Parts m_parts;
    std::vector<std::pair<token_secret::Digest, const Token*>> m_known; ///< at most one a token
    std::list<Waiting> m_waiting; ///< the first one is being hashed, if one is
    bool m_isHashing = false;
    WrongTokens m_wrong;
    std::map<std::string, Ticket> m_tickets;
    DriverOnly m_driverOnly;
};

} // namespace controller
