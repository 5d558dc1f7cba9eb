#include "controller/access/Access.h"

#include <algorithm>
#include <exception>

namespace controller {

namespace {

constexpr std::chrono::minutes kWrongMemory{1};
/// Addresses whose wrong tokens are remembered; more than that is a flood, and the oldest are forgotten.
constexpr std::size_t kMaxAddresses = 1000;

} // namespace

Access::Access(std::vector<Token> tokens, Parts parts)
    : m_tokens(std::move(tokens))
    , m_parts(std::move(parts)) {}

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
    if (IsLimited(peer)) {
        done(Verdict::TooManyWrong, {});
        return;
    }
    const std::size_t dot = token.find('.');
    const Token* const named = Find(token.substr(0, dot));
    if (named == nullptr || dot == std::string_view::npos) {
        CountWrong(peer);
        done(Verdict::Wrong, {});
        return;
    }
    auto& waiting = m_waiting[digest];
    waiting.push_back({peer, done});
    if (waiting.size() > 1)
        return;
    // Counted as wrong until it is found right, so that a burst cannot have more hashed than the limit.
    CountWrong(peer);
    m_parts.elsewhere([this, digest, named, secret = std::string(token.substr(dot + 1))] {
        bool isRight = false;
        try {
            isRight = token_secret::Matches(secret, named->hash);
        } catch (const std::exception&) {
            // Without memory to look at it, no token is right.
        }
        m_parts.driver.Post("looking at a token",
                            [this, digest, named, isRight] { Verified(digest, *named, isRight); });
    });
}

void Access::Verified(const token_secret::Digest& digest, const Token& token, bool isRight) {
    const auto waiting = m_waiting.extract(digest);
    if (waiting.empty())
        return;
    if (isRight) {
        m_known.emplace_back(digest, &token);
        const auto counted = m_wrong.find(waiting.mapped().front().peer);
        if (counted != m_wrong.end() && !counted->second.empty())
            counted->second.pop_back();
    }
    for (const Waiting& waiter : waiting.mapped())
        waiter.done(isRight ? Verdict::Known : Verdict::Wrong, isRight ? token.rights : Rights{});
}

bool Access::IsLimited(const std::string& peer) {
    const auto place = m_wrong.find(peer);
    if (place == m_wrong.end())
        return false;
    auto& times = place->second;
    while (!times.empty() && m_parts.driver.Now() - times.front() >= kWrongMemory)
        times.pop_front();
    if (times.empty())
        m_wrong.erase(place);
    else if (times.size() >= kWrongPerMinute)
        return true;
    return false;
}

void Access::CountWrong(const std::string& peer) {
    if (m_wrong.size() >= kMaxAddresses && m_wrong.count(peer) == 0)
        m_wrong.erase(m_wrong.begin());
    auto& times = m_wrong[peer];
    times.push_back(m_parts.driver.Now());
    if (times.size() == kWrongPerMinute)
        m_parts.warn("Too many wrong tokens from " + peer + ": none are looked at for a minute");
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
