#pragma once

#include "controller/access/HostCheck.h"
#include "controller/api/ApiContext.h"
#include "controller/api/Pages.h"
#include "controller/api/Router.h"
#include "controller/http/HttpExchange.h"

#include <memory>
#include <string>
#include <string_view>

namespace controller {

/// The controller's API and pages: answers every request that the server takes. Driver thread only.
class Api final : public IHttpHandler {
public:
    static constexpr std::size_t kMaxJson = 262144;
    static constexpr unsigned kMaxUploads = 4;

    /// `findAsset` gives the pages' files by name; null for an unknown one.
    Api(ControllerParts parts, const Asset* (*findAsset)(std::string_view name) noexcept);
    Api(const Api&) = delete;
    Api& operator=(const Api&) = delete;
    /// Waits for the work that is under way elsewhere.
    ~Api();

    void Handle(std::shared_ptr<HttpExchange> exchange) override;
    void Answered(unsigned status) override { ++m_context.replies[status]; }
    [[nodiscard]] HttpReply Explain(const HttpRefusal& refusal) override;

private:
    struct Wanted {
        const Operation* operation;
        ApiCallPointer call;
    };

    void Route(const std::shared_ptr<HttpExchange>& exchange);
    void Authorize(const Wanted& wanted);
    void Allowed(const Wanted& wanted, const Rights& rights);
    void CheckBody(const Wanted& wanted);
    void Run(const Wanted& wanted);
    [[nodiscard]] EventStreams::Parts StreamParts();
    [[nodiscard]] Access::Parts AccessParts();
    void GiveWholeState(const EventStreams::State& give);
    [[nodiscard]] std::string PageState(std::uint32_t navigator) const;

    ControllerParts m_parts;
    const HostCheck m_hosts;
    const Router m_router;
    const Pages m_pages;
    Access m_access;
    HouseWatch m_watch;
    EventStreams m_streams;
    RecentEvents m_recent;
    MediaShelf m_media;
    std::unique_ptr<Worker> m_hashing; ///< of tokens, which must not hold up what people wait for
    std::unique_ptr<Worker> m_converting;
    std::unique_ptr<Worker> m_worker;
    ApiContext m_context;
};

} // namespace controller
