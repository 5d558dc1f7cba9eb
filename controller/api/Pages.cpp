#include "controller/api/Pages.h"

#include "controller/api/json/Replies.h"
#include "controller/http/AcceptEncoding.h"

#include <algorithm>
#include <string>
#include <utility>

namespace controller {

namespace {

/// A file as it is sent: each form of it has a tag of its own, since a tag stands for the bytes.
struct Form {
    std::string_view coding; ///< empty for the plain one
    std::string_view bytes;
    std::string etag;
};

Form FormFor(const Asset& asset, std::string_view acceptEncoding) {
    const std::string tag = "\"" + std::string(asset.digest);
    const std::string_view coding = asset.brotli.empty() ? ChooseCoding(acceptEncoding, {"gzip"})
                                                         : ChooseCoding(acceptEncoding, {"br", "gzip"});
    if (coding == "br")
        return {coding, asset.brotli, tag + "-br\""};
    if (coding == "gzip" && !asset.gzip.empty())
        return {coding, asset.gzip, tag + "-gz\""};
    return {{}, asset.plain, tag + "\""};
}

bool IsCompressible(const Asset& asset) noexcept {
    return !asset.gzip.empty() || !asset.brotli.empty();
}

/// Whether one of the tags in `If-None-Match` is this one; a weak one is as good (RFC 9110, 13.1.2).
bool HasTag(std::string_view ifNoneMatch, std::string_view etag) {
    if (ifNoneMatch == "*")
        return true;
    // Our tags hold neither commas nor quotes, so that no other tag can hold one of them with its quotes.
    return ifNoneMatch.find(etag) != std::string_view::npos;
}

HttpReply MethodRefusal(std::string_view method) {
    return Problem({405, std::string(method) + " is not for this address", "GET", {{"Allow", "GET"}}});
}

} // namespace

Pages::Pages(const Asset* (*find)(std::string_view name) noexcept, std::vector<std::uint32_t> navigators)
    : m_find(find)
    , m_navigators(std::move(navigators)) {}

const Asset* Pages::At(std::string_view path) const {
    static constexpr std::string_view kNavigator = "/navigator/";
    static constexpr std::string_view kAssets = "/assets/";
    if (path == "/")
        return m_find("index.html");
    if (path.substr(0, kAssets.size()) == kAssets)
        return m_find(path.substr(kAssets.size()));
    if (path.substr(0, kNavigator.size()) != kNavigator)
        return nullptr;
    const bool isKnown = std::any_of(m_navigators.begin(), m_navigators.end(), [&](std::uint32_t navigator) {
        return path.substr(kNavigator.size()) == std::to_string(navigator);
    });
    return isKnown ? m_find("navigator.html") : nullptr;
}

std::optional<HttpReply> Pages::Answer(const HttpRequest& request) const {
    const Asset* const asset = At(request.path);
    if (asset == nullptr)
        return std::nullopt;
    if (request.method != "GET")
        return MethodRefusal(request.method);
    const Form form = FormFor(*asset, request.Header("accept-encoding"));
    HttpReply reply;
    reply.isPage = true;
    reply.headers.emplace_back("ETag", form.etag);
    reply.headers.emplace_back("Cache-Control",
                               asset->isForEver ? "public, max-age=31536000, immutable" : "no-cache");
    if (IsCompressible(*asset))
        reply.headers.emplace_back("Vary", "Accept-Encoding");
    if (HasTag(request.Header("if-none-match"), form.etag)) {
        reply.status = 304;
        return reply;
    }
    if (!form.coding.empty())
        reply.headers.emplace_back("Content-Encoding", form.coding);
    reply.contentType = asset->contentType;
    reply.body = form.bytes;
    return reply;
}

} // namespace controller
