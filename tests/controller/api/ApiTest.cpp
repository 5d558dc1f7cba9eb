#include "controller/api/Api.h"

#include "controller/Household.h"
#include "controller/ModuleFile.h"
#include "tests/controller/support/NoEngine.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/controller/support/TestLog.h"

#include <boost/asio/io_context.hpp>
#include <gtest/gtest.h>

#include <algorithm>

namespace controller {

namespace {

const Asset* NoAsset(std::string_view /*name*/) noexcept {
    return nullptr;
}

/// A GET with a token, from an address; tells its answer.
class FakeExchange final : public HttpExchange {
public:
    FakeExchange(std::string path, const std::string& token, std::string peer, std::function<void()> answered)
        : m_path(std::move(path))
        , m_token("Bearer " + token)
        , m_peer(std::move(peer))
        , m_answered(std::move(answered)) {
        m_request.method = "GET";
        m_request.path = m_path;
        m_request.peer = m_peer;
        m_request.headers = {{"Host", "127.0.0.1"}};
        if (!token.empty())
            m_request.headers.emplace_back("Authorization", m_token);
    }

    [[nodiscard]] const HttpRequest& Request() const noexcept override { return m_request; }
    void ReadBody(std::size_t /*limit*/,
                  std::chrono::seconds /*time*/,
                  std::function<void(std::string)> onBody) override {
        onBody("");
    }
    void Reply(HttpReply reply) override {
        EXPECT_EQ(status, 0U) << m_path;
        status = reply.status;
        body = ViewOf(reply.body);
        headers = reply.headers;
        m_answered();
    }
    void TrustClient() override { isTrusted = true; }
    void Upgrade(std::function<void(std::shared_ptr<WebSocket>)> /*onOpen*/) override {}

    unsigned status = 0;
    std::string body;
    std::vector<std::pair<std::string, std::string>> headers;
    bool isTrusted = false;

private:
    const std::string m_path;
    const std::string m_token;
    const std::string m_peer;
    const std::function<void()> m_answered;
    HttpRequest m_request;
};

using Exchange = std::shared_ptr<FakeExchange>;

/// A real house with tokens, without a network.
class ApiTest : public testing::Test {
protected:
    House MakeHouse() {
        House house;
        house.name = "House";
        house.mediaFolder = m_folder.Path();
        house.dataFolder = m_folder.Path() / "data";
        house.rooms.push_back({12, "Kitchen", {"silent", ""}, 80, 40, 0});
        house.navigators.push_back({5, "Tablet", 12});
        house.tokens.push_back({"screen", token_secret::Hash("secret"), Rights::Read({"navigator:5"})});
        house.tokens.push_back({"remote", token_secret::Hash("secret"), Rights::Read({"play"})});
        return house;
    }

    Exchange Ask(const std::string& path, const std::string& token, const std::string& peer = "192.0.2.1") {
        ++m_unanswered;
        auto exchange = std::make_shared<FakeExchange>(path, token, peer, [this] { Answered(); });
        m_api.Handle(exchange);
        return exchange;
    }

    void Answered() {
        if (--m_unanswered == 0)
            m_household.Parts().driver.Stop();
    }

    /// Until everything is answered.
    void Run() {
        DriverThread& driver = m_household.Parts().driver;
        driver.Context().restart();
        if (m_unanswered > 0)
            driver.Run();
    }

    TemporaryFolder m_folder;
    NoEngine m_engine;
    TestLog m_log;
    Household m_household{MakeHouse(), Household::Options{FindModuleFile(), false, &m_engine}, m_log.log};
    Api m_api{m_household.Parts(), &NoAsset};
    int m_unanswered = 0;
};

} // namespace

TEST_F(ApiTest, OnlyAClientThatHasShownATokenIsTrustedWithItsConnection) {
    const struct {
        const char* path;
        const char* token;
        unsigned status;
        bool isTrusted;
    } cases[] = {
        {"/api/rooms", "", 401, false},
        {"/api/rooms", "remote.wrong", 401, false},
        {"/api/rooms", "nobody.secret", 401, false},
        {"/api/rooms", "remote.secret", 200, true},
        {"/api/rooms", "screen.secret", 403, true},
        {"/api/navigators/5", "screen.secret", 200, true},
        {"/healthz", "remote.secret", 200, false},
        {"/nothing", "remote.secret", 404, false},
    };
    for (const auto& one : cases) {
        const Exchange exchange = Ask(one.path, one.token);
        Run();
        EXPECT_EQ(exchange->status, one.status) << one.path << " " << one.token;
        EXPECT_EQ(exchange->isTrusted, one.isTrusted) << one.path << " " << one.token;
    }
}

TEST_F(ApiTest, AOneTimeSoundIsFetchedWithoutATokenByWhoKnowsItsNameAndNothingElseIs) {
    OneTimeSounds& sounds = m_household.Parts().oneTime;
    const std::string name =
        sounds.Add(std::make_shared<const std::string>("RIFF sound"), std::chrono::hours(1));
    const Exchange right = Ask("/api/once/" + name, "");
    std::vector<Exchange> wrong;
    for (const char* other : {"0123456789abcdef0123456789abcdef.wav", "gong.wav", "..%2Fhouse.yaml", "%00"})
        wrong.push_back(Ask(std::string("/api/once/") + other, ""));
    Run();
    EXPECT_EQ(right->status, 200U);
    EXPECT_EQ(right->body, "RIFF sound");
    EXPECT_EQ(right->headers,
              (std::vector<std::pair<std::string, std::string>>{{"Cache-Control", "no-store"}}));
    EXPECT_FALSE(right->isTrusted);
    for (const Exchange& one : wrong)
        EXPECT_EQ(one->status, 404U);
    sounds.Remove(name);
    const Exchange over = Ask("/api/once/" + name, "remote.secret");
    Run();
    EXPECT_EQ(over->status, 404U);
}

TEST_F(ApiTest, WrongSignInsHoldNobodysFilesUp) {
    (void)Ask("/api/media", "remote.secret");
    Run();
    std::vector<Exchange> wrong;
    wrong.reserve(40);
    for (int i = 0; i < 40; ++i)
        wrong.push_back(
            Ask("/api/media", "remote.guess" + std::to_string(i), "10.0." + std::to_string(i) + ".1"));
    std::ptrdiff_t before = -1;
    ++m_unanswered;
    const auto files = std::make_shared<FakeExchange>("/api/media", "remote.secret", "192.0.2.1", [&] {
        before =
            std::count_if(wrong.begin(), wrong.end(), [](const Exchange& one) { return one->status != 0; });
        Answered();
    });
    m_api.Handle(files);
    Run();
    EXPECT_EQ(files->status, 200U);
    EXPECT_LT(before, 20);
    for (const Exchange& one : wrong)
        EXPECT_EQ(one->status, 401U);
}

} // namespace controller
