#include "controller/access/Access.h"

#include "controller/driver/Network.h"

#include <algorithm>
#include <exception>

namespace controller {

Access::Access(std::vector<Token> tokens, Parts parts)
    : m_tokens(std::move(tokens))
    , m_parts(std::move(parts))
    , m_wrong(m_parts.driver, m_parts.warn) {}

const Token* Access::Find(std::string_view name) const noexcept {
    const auto place = std::find_if(m_tokens.begin(), m_tokens.end(),
                                    [&](const Token& token) { return token.name == name; });
    return place != m_tokens.end() ? &*place : nullptr;
}

const Token* Access::Remembered(const token_secret::Digest& digest) const noexcept {
    const Token* found = nullptr;
    for (const auto& [known, token] : m_known) {
        if (token_secret::AreSame(known, digest))
            found = token;
    }
    return found;
}

void Access::Check(std::string_view token, const std::string& peer, const Done& done) {
    m_driverOnly.Assert();
    const auto digest = token_secret::DigestOf(token);
    if (const Token* known = Remembered(digest)) {
        done(Verdict::Known, known->rights);
        return;
    }
    if (m_wrong.AreTooManyFrom(peer)) {
        done(Verdict::TooManyWrong, {});
        return;
    }
    const std::size_t dot = token.find('.');
    const Token* const named = Find(token.substr(0, dot));
    if (named == nullptr || dot == std::string_view::npos) {
        m_wrong.Count(peer);
        done(Verdict::Wrong, {});
        return;
    }
    const auto same = std::find_if(m_waiting.begin(), m_waiting.end(),
                                   [&](const Waiting& one) { return one.digest == digest; });
    if (same != m_waiting.end()) {
        same->done.push_back(done);
        return;
    }
    const std::string network = network::NameOf(peer);
    if (IsFull(network)) {
        done(Verdict::Busy, {});
        return;
    }
    m_waiting.push_back({digest, named, std::string(token.substr(dot + 1)), peer, network, {done}});
    HashNext();
}

bool Access::IsFull(const std::string& network) const {
    const auto ofTheNetwork = std::count_if(m_waiting.begin(), m_waiting.end(),
                                            [&](const Waiting& one) { return one.network == network; });
    return m_waiting.size() >= kMaxWaiting || static_cast<std::size_t>(ofTheNetwork) >= kMaxWaitingOfANetwork;
}

void Access::HashNext() {
    if (m_isHashing || m_waiting.empty())
        return;
    const auto best = std::find_if(m_waiting.begin(), m_waiting.end(),
                                   [this](const Waiting& one) { return m_wrong.AreNoneFrom(one.peer); });
    if (best != m_waiting.end())
        m_waiting.splice(m_waiting.begin(), m_waiting, best);
    m_isHashing = true;
    const Waiting& next = m_waiting.front();
    m_parts.elsewhere([this, secret = next.secret, hash = next.token->hash] {
        bool isRight = false;
        try {
            isRight = token_secret::Matches(secret, hash);
        } catch (const std::exception&) {
            // Without memory to look at it, no token is right.
        }
        m_parts.driver.Post("looking at a token", [this, isRight] { Verified(isRight); });
    });
}

void Access::Verified(bool isRight) {
    const Waiting verified = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_isHashing = false;
    if (isRight)
        m_known.emplace_back(verified.digest, verified.token);
    else
        m_wrong.Count(verified.peer);
    for (const Done& done : verified.done)
        done(isRight ? Verdict::Known : Verdict::Wrong, isRight ? verified.token->rights : Rights{});
    RefuseTheLimited();
    HashNext();
}

void Access::RefuseTheLimited() {
    std::list<Waiting> refused;
    for (auto place = m_waiting.begin(); place != m_waiting.end();) {
        const auto one = place++;
        if (m_wrong.AreTooManyFrom(one->peer))
            refused.splice(refused.end(), m_waiting, one);
    }
    for (const Waiting& one : refused)
        for (const Done& done : one.done)
            done(Verdict::TooManyWrong, {});
}

std::string Access::GiveTicket(const Rights& rights) {
    m_driverOnly.Assert();
    const TimePoint now = m_parts.driver.Now();
    for (auto place = m_tickets.begin(); place != m_tickets.end();)
        place = place->second.end <= now ? m_tickets.erase(place) : std::next(place);
    if (m_tickets.size() >= kMaxTickets)
        m_tickets.erase(m_tickets.begin());
    std::string ticket = token_secret::Chance(32);
    m_tickets.emplace(ticket, Ticket{rights, now + kTicketLife});
    return ticket;
}

std::optional<Rights> Access::TakeTicket(const std::string& ticket) {
    m_driverOnly.Assert();
    const auto taken = m_tickets.extract(ticket);
    if (taken.empty() || taken.mapped().end <= m_parts.driver.Now())
        return std::nullopt;
    return taken.mapped().rights;
}

} // namespace controller
