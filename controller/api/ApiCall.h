#pragma once

#include "controller/access/Rights.h"
#include "controller/api/ApiError.h"
#include "controller/api/json/Fields.h"
#include "controller/http/HttpExchange.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace controller {

/// One request to an operation of the API, and the ways to answer it; held until it is answered. Driver
/// thread only.
class ApiCall : public std::enable_shared_from_this<ApiCall> {
public:
    /// Names and values, percent-decoded.
    using Values = std::vector<std::pair<std::string, std::string>>;

    ApiCall(std::shared_ptr<HttpExchange> exchange, Values path, Values query)
        : m_exchange(std::move(exchange))
        , m_path(std::move(path))
        , m_query(std::move(query)) {}

    [[nodiscard]] HttpExchange& Exchange() const noexcept { return *m_exchange; }
    [[nodiscard]] const HttpRequest& Request() const noexcept { return m_exchange->Request(); }

    /// A value that stands in the address.
    [[nodiscard]] std::string Text(std::string_view name) const;

    /// The same, as an id. Throws `ApiError` with 404 for what is no number of an id.
    [[nodiscard]] std::uint32_t Id(std::string_view name) const;
    [[nodiscard]] std::uint64_t Number(std::string_view name) const;

    /// A value of the query; empty when it is missing.
    [[nodiscard]] std::string Query(std::string_view name) const;

    /// What the caller may do.
    [[nodiscard]] const Rights& Caller() const noexcept { return m_caller; }
    void SetCaller(const Rights& rights) { m_caller = rights; }

    /// The body as it came, and as JSON, for operations that take it.
    std::string body;
    std::shared_ptr<const nlohmann::json> json;

    /// Reads the body by its table. Throws `ApiError` with 400, which names the member that is wrong.
    template <class Value>
    [[nodiscard]] Value Take() const {
        return fields::Read<Value>(*json);
    }

    /// Kept until the call is over.
    std::shared_ptr<void> holds;

    /// What has a table of fields.
    template <class Value>
    void Reply(unsigned status, const Value& value) {
        ReplyText(status, "application/json", fields::ToText(value));
    }
    void Reply(HttpReply reply);
    void ReplyText(unsigned status, std::string_view contentType, std::string text);
    void ReplyNothing();
    void Fail(const ApiError& error);

    /// Does the work; what it throws becomes the answer.
    void Guard(const std::function<void()>& work);

private:
    const std::shared_ptr<HttpExchange> m_exchange;
    const Values m_path;
    const Values m_query;
    Rights m_caller;
};

using ApiCallPointer = std::shared_ptr<ApiCall>;

} // namespace controller
