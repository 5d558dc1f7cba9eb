#include "controller/api/Api.h"

#include "controller/api/NotFoundPage.h"
#include "controller/api/json/HouseJson.h"
#include "controller/api/json/ParseJson.h"
#include "controller/api/json/Replies.h"
#include "controller/media/MediaName.h"

#include <nlohmann/json.hpp>

#include <atomic>

namespace controller {

namespace {

/// A longer list of announcements is written elsewhere.
constexpr std::size_t kLongList = 64;

/// The token of the request; empty without one.
std::string_view BearerOf(const HttpRequest& request) {
    const std::string_view text = request.Header("authorization");
    static constexpr std::string_view kBearer = "Bearer ";
    return text.substr(0, kBearer.size()) == kBearer ? text.substr(kBearer.size()) : std::string_view();
}

HttpReply Unauthorized(const char* detail, const char* right) {
    return Problem({401, detail, right, {{"WWW-Authenticate", "Bearer"}}});
}

bool IsJson(std::string_view contentType) {
    const std::string_view type = contentType.substr(0, contentType.find(';'));
    return type == "application/json" || type == "application/json ";
}

HttpReply RefusalOf(Access::Verdict verdict) {
    if (verdict == Access::Verdict::Wrong)
        return Unauthorized("this token is unknown", "`announcement-controller token add` makes one");
    if (verdict == Access::Verdict::Busy)
        return Problem(
            {503, "too many tokens wait to be looked at", "another try in a moment", {{"Retry-After", "2"}}});
    return Problem({429,
                    "too many wrong tokens came from this address",
                    "a right one, in a minute",
                    {{"Retry-After", "60"}}});
}

} // namespace

Api::Api(ControllerParts parts, const Asset* (*findAsset)(std::string_view name) noexcept)
    : m_parts(std::move(parts))
    , m_hosts(HostCheck::MachineName(), m_parts.house.address)
    , m_router(Operations())
    , m_pages(findAsset, house_json::IdsOf(m_parts.house.navigators))
    , m_access(m_parts.house.tokens, AccessParts())
    , m_watch(m_parts.feed)
    , m_streams(m_parts.feed, StreamParts())
    , m_recent(m_parts.feed)
    , m_media(m_parts.house.mediaFolder,
              Converter({Converter::FindProgram()},
                        [&log = m_parts.log,
                         hasTold = std::make_shared<std::atomic<bool>>(false)](const std::string& text) {
                            if (!hasTold->exchange(true))
                                log.Warning(text);
                        }),
              &m_parts.levels,
              m_parts.thumbnailFolder)
    , m_hashing(std::make_unique<Worker>())
    , m_converting(std::make_unique<Worker>())
    , m_worker(std::make_unique<Worker>())
    , m_context{m_parts,   m_access,      m_watch,
                m_streams, m_recent,      m_media,
                *m_worker, *m_converting, std::chrono::system_clock::now(),
                {}} {}

Api::~Api() = default;

Access::Parts Api::AccessParts() {
    return {[this](std::function<void()> work) { m_hashing->Submit(std::move(work)); }, m_parts.driver,
            [this](const std::string& line) {
                m_parts.log.Warning(line);
            }};
}

EventStreams::Parts Api::StreamParts() {
    return {
        [this](const EventStreams::State& give) { GiveWholeState(give); },
        [this](std::uint32_t navigator) { return PageState(navigator); },
        [this](std::uint32_t navigator) {
            const auto* const found = house_json::FindNavigator(m_parts.house, navigator);
            return found != nullptr ? found->room : 0;
        },
        &m_parts.speakers,
    };
}

void Api::Handle(std::shared_ptr<HttpExchange> exchange) {
    const HttpRequest& request = exchange->Request();
    const std::string_view host = request.Header("host");
    if (request.CountHeaders("host") != 1) {
        exchange->Reply(Problem({400, "the request has no Host, or several", "one Host"}));
        return;
    }
    if (!m_hosts.IsOurs(host)) {
        exchange->Reply(Problem({421, "this Host is not served here", m_hosts.Accepted()}));
        return;
    }
    if (!HostCheck::IsSameOrigin(request.Header("origin"), host)) {
        exchange->Reply(
            Problem({403, "the request comes from a page of another origin", "a page of this server"}));
        return;
    }
    Route(exchange);
}

HttpReply Api::Explain(const HttpRefusal& refusal) {
    return Problem(refusal);
}

void Api::Route(const std::shared_ptr<HttpExchange>& exchange) {
    const HttpRequest& request = exchange->Request();
    auto route = m_router.Find(request.method, request.path);
    if (route.operation == nullptr) {
        if (auto page = m_pages.Answer(request)) {
            exchange->Reply(std::move(*page));
            return;
        }
        if (route.allowed.empty() && WantsPage(request))
            exchange->Reply(NotFoundPage(request, m_parts.house));
        else if (route.allowed.empty())
            exchange->Reply(Problem({404, "there is nothing at this address", "see GET /api/operations"}));
        else
            exchange->Reply(Problem({405,
                                     std::string(request.method) + " is not for this address",
                                     route.allowed,
                                     {{"Allow", route.allowed}}}));
        return;
    }
    auto query = ParseQuery(request.query);
    if (!query) {
        exchange->Reply(Problem({400, "the query is badly encoded", "NAME=VALUE&..., percent-encoded"}));
        return;
    }
    const auto call = std::make_shared<ApiCall>(exchange, std::move(route.values), std::move(*query));
    if (route.operation->kind == Operation::Kind::Events && !request.isUpgrade) {
        call->Reply(
            Problem({426, "this address is a WebSocket", "a WebSocket request", {{"Upgrade", "websocket"}}}));
        return;
    }
    Authorize({route.operation, call});
}

void Api::Authorize(const Wanted& wanted) {
    if (wanted.operation->need == Need::Nothing || m_access.IsOpen()) {
        Allowed(wanted, Rights::All());
        return;
    }
    const HttpRequest& request = wanted.call->Request();
    const std::string ticket = wanted.call->Query("ticket");
    if (wanted.operation->kind == Operation::Kind::Events && !ticket.empty()) {
        if (const auto rights = m_access.TakeTicket(ticket))
            Allowed(wanted, *rights);
        else
            wanted.call->Reply(
                Unauthorized("this ticket is used, too old or unknown", "POST /api/tickets gives one"));
        return;
    }
    const std::string_view token = BearerOf(request);
    if (token.empty()) {
        wanted.call->Reply(Unauthorized("a token is needed", "Authorization: Bearer TOKEN"));
        return;
    }
    m_access.Check(token, std::string(request.peer),
                   [this, wanted](Access::Verdict verdict, const Rights& rights) {
                       if (verdict == Access::Verdict::Known)
                           Allowed(wanted, rights);
                       else
                           wanted.call->Reply(RefusalOf(verdict));
                   });
}

void Api::Allowed(const Wanted& wanted, const Rights& rights) {
    wanted.call->Guard([&] {
        const Need need = wanted.operation->need;
        if (need != Need::Nothing)
            wanted.call->Exchange().TrustClient();
        const std::uint32_t navigator = need == Need::Navigator ? wanted.call->Id("id") : 0;
        if (!rights.Allow(need, navigator))
            throw ApiError(403, "this token has not the right for this operation",
                           std::string("the right ") + NameOf(need));
        wanted.call->SetCaller(rights);
        CheckBody(wanted);
    });
}

void Api::CheckBody(const Wanted& wanted) {
    const HttpRequest& request = wanted.call->Request();
    const Operation::Kind kind = wanted.operation->kind;
    const std::string_view contentType = request.Header("content-type");
    if (!request.Header("content-encoding").empty())
        throw ApiError(415, "the body is encoded", "a body without Content-Encoding");
    if (kind == Operation::Kind::Events) {
        Run(wanted);
        return;
    }
    if (kind == Operation::Kind::File) {
        const std::string name = media_name::GoodName(wanted.call->Text("name"));
        if (const auto refusal = media_name::RefusalOf(name))
            throw ApiError(415, refusal->text, refusal->right);
        if (!media_name::IsTypeTaken(contentType))
            throw ApiError(415, "the body is of the wrong type",
                           "audio/..., video/..., image/... or application/octet-stream");
        if (*m_context.uploads >= kMaxUploads)
            throw ApiError(503, "other files are being stored", "another try in a moment");
        // Given back when the call is over, however it ends.
        wanted.call->holds = CountIn(m_context.uploads);
        wanted.call->Exchange().ReadBody(MediaShelf::kMaxFile, std::chrono::seconds(60),
                                         [this, wanted](std::string body) {
                                             wanted.call->body = std::move(body);
                                             Run(wanted);
                                         });
        return;
    }
    const bool isNeeded = kind == Operation::Kind::Json;
    if ((isNeeded || request.hasBody) && !IsJson(contentType) && (isNeeded || !contentType.empty()))
        throw ApiError(415, "the body is of the wrong type", "Content-Type: application/json");
    wanted.call->Exchange().ReadBody(
        kMaxJson, std::chrono::seconds(15), [this, wanted, isNeeded](std::string body) {
            wanted.call->Guard([&] {
                if (isNeeded)
                    wanted.call->json = std::make_shared<const nlohmann::json>(ParseJson(body));
                else if (!body.empty() && !ParseJson(body).empty())
                    throw ApiError(400, "this operation takes no body", "an empty body, or {}");
                Run(wanted);
            });
        });
}

void Api::Run(const Wanted& wanted) {
    m_parts.driver.Do(wanted.operation->name, [&] {
        wanted.call->Guard([&] { wanted.operation->handler(m_context, wanted.call); });
    });
}

void Api::GiveWholeState(const EventStreams::State& give) {
    const auto list = m_parts.announcements.All();
    const auto state = std::make_shared<const view::WholeState>(house_json::WholeState(m_context, list));
    if (list->size() <= kLongList) {
        give(fields::ToText(*state));
        return;
    }
    m_worker->Submit([this, state, give] {
        m_parts.driver.Post("the first message of a socket",
                            [give, text = fields::ToText(*state)] { give(text); });
    });
}

std::string Api::PageState(std::uint32_t navigator) const {
    return fields::ToText(
        house_json::PageState(m_context, *house_json::FindNavigator(m_parts.house, navigator)));
}

} // namespace controller
