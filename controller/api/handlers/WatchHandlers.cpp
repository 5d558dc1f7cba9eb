#include "controller/api/OpenApi.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/HouseJson.h"
#include "controller/api/json/OperationJson.h"
#include "controller/api/json/PlayViews.h"
#include "controller/api/json/Replies.h"
#include "controller/driver/Text.h"

#include <limits>

namespace controller {

namespace handlers {
namespace {

std::size_t LimitOf(Call call) {
    const std::string text = call->Query("limit");
    if (text.empty())
        return 100;
    const auto limit = ReadNumber<std::size_t>(text, 1, 1000);
    if (!limit)
        throw ApiError(400, "limit: \"" + text + "\" is out of range", "an integer from 1 to 1000");
    return *limit;
}

std::int64_t BeforeOf(Call call) {
    const std::string text = call->Query("before");
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    if (text.empty())
        return kMost;
    const auto before = ReadNumber<std::int64_t>(text, 0, kMost);
    if (!before)
        throw ApiError(400, "before: \"" + text + "\" is no id of the history", "the id of an entry");
    return *before;
}

void AppendMetric(
    std::string& out, const char* name, const char* type, const char* help, std::uint64_t value) {
    out.append("# HELP announcement_").append(name).append(" ").append(help).append("\n# TYPE announcement_");
    out.append(name).append(" ").append(type).append("\nannouncement_").append(name).append(" ");
    out.append(std::to_string(value)).append("\n");
}

} // namespace

void GetStatus(ApiContext& context, Call call) {
    call->Reply(200, house_json::Status(context));
}

void GetHistory(ApiContext& context, Call call) {
    context.parts.store.ReadHistory(
        LimitOf(call), BeforeOf(call),
        [call](const std::vector<HistoryEntry>& entries, const std::string& error) {
            call->Guard([&] {
                if (!error.empty())
                    throw ApiError(503, "the history cannot be read: " + error);
                call->Reply(200, view::History{entries});
            });
        });
}

void WatchEvents(ApiContext& context, Call call) {
    call->Exchange().Upgrade(
        [&context](std::shared_ptr<WebSocket> socket) { context.streams.AddWatcher(std::move(socket)); });
}

void ListRecentEvents(ApiContext& context, Call call) {
    call->ReplyText(200, "application/json", context.recent.Last(LimitOf(call)));
}

void GiveTicket(ApiContext& context, Call call) {
    const auto life = std::chrono::milliseconds(Access::kTicketLife);
    call->Reply(
        201, view::Ticket{context.access.GiveTicket(call->Caller()), life.count(), call->Caller().Texts()});
}

void ListOperations(ApiContext& /*context*/, Call call) {
    call->Reply(200, view::OperationList{Operations()});
}

void DescribeApi(ApiContext& context, Call call) {
    Elsewhere(
        context, call, [] { return DescribeAsOpenApi(Operations()); },
        [call](const std::string& description) { call->ReplyText(200, "application/json", description); });
}

void GetHealth(ApiContext& context, Call call) {
    if (!context.parts.isAgentRunning())
        throw ApiError(503, "the agent is not running");
    call->Reply(200, view::Health{"ok"});
}

void GetMetrics(ApiContext& context, Call call) {
    const auto& counts = context.watch.Totals();
    std::string text;
    AppendMetric(text, "played_total", "counter", "Announcements started.", counts.announcements);
    AppendMetric(text, "popups_total", "counter", "Popups shown.", counts.popups);
    AppendMetric(text, "output_failures_total", "counter", "Outputs of rooms that failed.",
                 counts.outputFailures);
    AppendMetric(text, "playing", "gauge", "Announcements that play now.", context.watch.Current() ? 1 : 0);
    AppendMetric(text, "waiting", "gauge", "Announcements that wait.", context.watch.Waiting().size());
    AppendMetric(text, "events_total", "counter", "Events of the house.", context.parts.feed.LastNumber());
    AppendMetric(text, "websockets", "gauge", "Sockets that are told what happens.", context.streams.Size());
    AppendMetric(text, "state_saved", "gauge", "1 when the state is on the disk.",
                 context.watch.StateError() ? 0 : 1);
    text += "# HELP announcement_http_replies_total Replies by status.\n"
            "# TYPE announcement_http_replies_total counter\n";
    for (const auto& [status, count] : context.replies)
        text += "announcement_http_replies_total{status=\"" + std::to_string(status) + "\"} " +
                std::to_string(count) + "\n";
    call->ReplyText(200, "text/plain; version=0.0.4; charset=utf-8", std::move(text));
}

} // namespace handlers

} // namespace controller
