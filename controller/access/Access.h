#pragma once

#include "controller/access/Token.h"
#include "controller/access/TokenSecret.h"
#include "controller/driver/DriverOnly.h"
#include "controller/driver/IScheduler.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace controller {

/// Says who may do what: knows the tokens of the house, and the tickets given for them. Driver thread only.
///
/// Hashing a token takes long, on purpose, so it is done elsewhere, and once: a token that was found right is
/// known again by its digest.
class Access {
public:
    using TimePoint = IScheduler::Duration;

    /// A wrong token costs the machine a hash: so many of one address are looked at in a minute.
    static constexpr std::size_t kWrongPerMinute = 10;
    static constexpr std::chrono::seconds kTicketLife{30};
    static constexpr std::size_t kMaxTickets = 4096;

    struct Parts {
        std::function<void(std::function<void()> work)> elsewhere; ///< runs work on another thread
        IScheduler& driver;
        std::function<void(const std::string& line)> warn;
    };

    enum class Verdict {
        Known,
        Wrong,       ///< no such token
        TooManyWrong ///< from this address; nothing was looked at
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
        std::string peer;
        Done done;
    };

    [[nodiscard]] const Token* Find(std::string_view name) const noexcept;
    [[nodiscard]] const Token* Remembered(const token_secret::Digest& digest) const noexcept;
    void Verified(const token_secret::Digest& digest, const Token& token, bool isRight);
    [[nodiscard]] bool IsLimited(const std::string& peer);
    void CountWrong(const std::string& peer);

    const std::vector<Token> m_tokens;
    Parts m_parts;
    std::vector<std::pair<token_secret::Digest, const Token*>> m_known; ///< at most one a token
    std::map<token_secret::Digest, std::vector<Waiting>> m_waiting;     ///< those that are being hashed
    std::map<std::string, std::deque<TimePoint>> m_wrong;               ///< by address
    std::map<std::string, Ticket> m_tickets;
    DriverOnly m_driverOnly;
};

} // namespace controller
