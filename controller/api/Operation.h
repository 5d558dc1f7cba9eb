#pragma once

#include "controller/access/Rights.h"
#include "controller/api/ApiCall.h"

#include <vector>

namespace controller {

struct ApiContext;

/// One operation of the API: what routes, help and description are made of.
struct Operation {
    enum class Kind {
        Plain, ///< takes no body
        Json,  ///< takes a JSON object
        File,  ///< takes a media file
        Events ///< becomes a WebSocket
    };
    struct QueryValue {
        const char* name;
        const char* summary;
    };

    const char* name;
    const char* method;
    const char* path; ///< with `{parameters}`
    Need need;
    Kind kind;
    void (*handler)(ApiContext& context, const ApiCallPointer& call);
    const char* summary;
    const char* takes; ///< the schema of the body; null without one
    unsigned status;   ///< of a reply without error
    const char* gives; ///< its schema, "text" or "file"; null without one
    std::vector<QueryValue> query = {};
};

/// All of them.
[[nodiscard]] const std::vector<Operation>& Operations();

} // namespace controller
