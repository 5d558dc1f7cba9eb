#include "controller/api/ApiContext.h"
#include "controller/api/ApiError.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/OutputViews.h"

#include <algorithm>
#include <vector>

namespace controller::handlers {
namespace {

using Places = std::vector<OutputDesk::Place>;

/// Whoever may test shall not have the program open whatever he can think of.
void RequireFound(const Places& places, const std::string& output) {
    const bool isThere = std::any_of(places.begin(), places.end(),
                                     [&](const OutputDesk::Place& place) { return place.output == output; });
    if (!isThere)
        throw ApiError(404, "there is no output \"" + output + "\"", "one that GET /api/outputs lists");
}

void RefuseBesideAnnouncement(const ApiContext& context) {
    if (context.watch.Current())
        throw ApiError(409, "an announcement is playing", "another try when it is over");
}

void Test(ApiContext& context, Call call, const view::OutputTest& order) {
    RefuseBesideAnnouncement(context);
    context.parts.outputs.tryOut(order.output, order.volume, [call](const std::string& trouble) {
        call->Guard([&] { call->Reply(200, view::OutputTested{trouble.empty(), trouble}); });
    });
}

} // namespace

void ListOutputs(ApiContext& context, Call call) {
    context.parts.outputs.find(
        [call](const Places& places) { call->Guard([&] { call->Reply(200, view::OutputList{places}); }); });
}

void TestOutput(ApiContext& context, Call call) {
    const auto order = call->Take<view::OutputTest>();
    RefuseBesideAnnouncement(context);
    context.parts.outputs.find([&context, call, order](const Places& places) {
        call->Guard([&] {
            RequireFound(places, order.output);
            Test(context, call, order);
        });
    });
}

} // namespace controller::handlers
