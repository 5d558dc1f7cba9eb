#include "controller/http/RequestReader.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace controller {

namespace {

using Step = RequestReader::Step;
using Texts = std::vector<std::string>;

constexpr std::size_t kBodyLimit = 1000;
const HttpLimits kLimits;
const std::string kPost = "POST / HTTP/1.1\r\nHost: x\r\n";

/// A reader that is fed, and what came of it: requests with their bodies, or the status of a refusal, which
/// is the end.
class Fed {
public:
    Fed() { m_reader.Begin(); }

    /// False when no more is taken.
    bool Feed(const std::string& bytes, std::size_t atOnce = 4096) {
        for (std::size_t at = 0; at < bytes.size() && !m_isRefused;) {
            const auto room = m_reader.Room();
            const std::size_t size = std::min({room.size(), atOnce, bytes.size() - at});
            std::memcpy(room.data(), bytes.data() + at, size);
            m_reader.Commit(size);
            at += size;
            Do(m_reader.Parse());
        }
        return !m_isRefused;
    }

    [[nodiscard]] const Texts& Seen() const { return m_seen; }

private:
    void Do(Step step) {
        for (; step != Step::Read && !m_isRefused; step = Next())
            Take(step);
    }

    void Take(Step step) {
        if (step == Step::Head)
            step = m_reader.WantBody(kBodyLimit);
        m_isWaiting = step == Step::Read;
        m_isRefused = step == Step::Refused;
        const HttpRequest& request = m_reader.Request();
        if (m_isRefused)
            m_seen.push_back(std::to_string(m_reader.TakeRefusal().status));
        else if (!m_isWaiting)
            m_seen.push_back(std::string(request.method).append(" ").append(request.path).append(" ") +
                             m_reader.TakeBody());
    }

    Step Next() {
        if (m_isWaiting || m_isRefused)
            return Step::Read;
        m_reader.Begin();
        return m_reader.HasBytes() ? m_reader.Parse() : Step::Read;
    }

    RequestReader m_reader{kLimits, "192.0.2.1", false};
    Texts m_seen;
    bool m_isWaiting = false;
    bool m_isRefused = false;
};

/// The same whether the bytes come at once or one by one.
Texts Read(const std::string& bytes) {
    Fed whole;
    Fed slow;
    whole.Feed(bytes);
    slow.Feed(bytes, 1);
    EXPECT_EQ(whole.Seen(), slow.Seen()) << bytes;
    return whole.Seen();
}

/// How many bytes are taken of what never ends; the refusal is checked.
std::size_t TakenOfEndless(const std::string& start, const std::string& again) {
    Fed reader;
    std::size_t taken = start.size();
    EXPECT_TRUE(reader.Feed(start));
    while (taken < 10000000 && reader.Feed(again))
        taken += again.size();
    EXPECT_EQ(reader.Seen(), Texts{"413"}) << start << again;
    return taken;
}

} // namespace

TEST(RequestReaderTest, RequestsAreToldApartHoweverTheyCome) {
    EXPECT_EQ(Read("GET /1?q HTTP/1.1\r\nHost: x\r\n\r\n" + kPost +
                   "Content-Length: 2\r\n\r\nhiHEAD /3 HTTP/1.0\r\n\r\n" + kPost +
                   "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n1\r\nd\r\n0\r\n\r\nPUT /5 "
                   "HTTP/1.1\r\nContent-Length: 0\r\n\r\n"),
              (Texts{"GET /1 ", "POST / hi", "GET /3 ", "POST / abcd", "PUT /5 "}));
}

TEST(RequestReaderTest, ChunksAreReadAsTheStandardHasThem) {
    for (const char* coding : {"chunked", "Chunked", "\t chunked \t"})
        EXPECT_EQ(Read(kPost + "Transfer-Encoding:" + coding + "\r\n\r\n3\r\nabc\r\n0\r\n\r\n"),
                  Texts{"POST / abc"})
            << coding;
    for (const char* chunks :
         {"0003\r\nabc\r\n000\r\n\r\n", "3;name=value;b=\"c d\"\r\nabc\r\n0;last\r\n\r\n",
          "3\r\nabc\r\n0\r\nTrailer: x\r\nOther: y\r\n\r\n"})
        EXPECT_EQ(Read(kPost + "Transfer-Encoding: chunked\r\n\r\n" + chunks + "GET /next HTTP/1.1\r\n\r\n"),
                  (Texts{"POST / abc", "GET /next "}))
            << chunks;
    std::string shortChunks;
    for (int i = 0; i < 1000; ++i)
        shortChunks += "1\r\na\r\n";
    EXPECT_EQ(Read(kPost + "Transfer-Encoding: chunked\r\n\r\n" + shortChunks + "0\r\n\r\n"),
              Texts{"POST / " + std::string(1000, 'a')});
}

TEST(RequestReaderTest, WhatLeavesOpenWhereARequestEndsIsRefusedAndWhatFollowsIsNoRequest) {
    const std::string inside = "GET /inside HTTP/1.1\r\nHost: x\r\n\r\n";
    for (const char* headers : {
             "Transfer-Encoding: xchunked",
             "Transfer-Encoding: identity",
             "Transfer-Encoding: gzip",
             "Transfer-Encoding: \"chunked\"",
             "Transfer-Encoding: chunked, identity",
             "Transfer-Encoding: gzip, chunked",
             "Transfer-Encoding: chunked, chunked",
             "Transfer-Encoding: chunked,",
             "Transfer-Encoding: chunked;q=1",
             "Transfer-Encoding: ",
             "Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked",
             "Transfer-Encoding: identity\r\nTransfer-Encoding: chunked",
             "Transfer-Encoding: chunked\r\nContent-Length: 3",
             "Content-Length: 3\r\nTransfer-Encoding: chunked",
             "Content-Length: 3\r\nTransfer-Encoding: identity",
             "Transfer-Encoding : chunked",
             "Transfer-Encoding\x0b: chunked",
             "Content-Length: 3\r\nContent-Length: 3",
             "Content-Length: 3\r\nContent-Length: 4",
             "Content-Length: 3, 3",
             "Content-Length: 3 3",
             "Content-Length: +3",
             "Content-Length: -3",
             "Content-Length: 0x3",
             "Content-Length: 3.0",
             "Content-Length: ",
             "Content-Length: 99999999999999999999",
             "Content-Length : 3",
             "Content-Length\t: 3",
             "Content-Length\r\n : 3",
             "Content-Length:\r\n 3",
             "Content-Length: 3\r\n ",
             "Content-Length: 1\r\n\t2",
             "X: a\r\n\tContent-Length: 3",
             "X: a\r\n Transfer-Encoding: chunked",
             "Transfer-Encoding:\r\n chunked",
             "X: a\nContent-Length: 3",
             "X: a\rContent-Length: 3",
             "X: a\n\nGET /inside HTTP/1.1",
             " Content-Length: 3",
             "\tX: a",
             "X",
             "Content-Length",
         })
        EXPECT_EQ(Read(std::string(kPost).append(headers).append("\r\n\r\n").append(inside)), Texts{"400"})
            << headers;
    for (const char* start : {" X: a\r\n", "\tX: a\r\n", " \r\n", "\nHost: x\r\n"})
        EXPECT_EQ(Read(std::string("GET / HTTP/1.1\r\n").append(start).append("\r\n").append(inside)),
                  Texts{"400"})
            << start;
    const std::string rest = "Host: x\r\n\r\n" + inside;
    EXPECT_EQ(Read("GET  / HTTP/1.1\r\n" + rest), Texts{"400"});
    for (const char* line : {"GET / HTTP/1.1\n", "GET / HTTP/1.1 \r\n", "GET / \r\n"})
        EXPECT_EQ(Read(line + rest), Texts{"505"}) << line;
    EXPECT_EQ(Read("POST / HTTP/1.0\r\nTransfer-Encoding: chunked\r\n\r\n" + inside), Texts{"400"});
}

TEST(RequestReaderTest, ABodyThatLooksLikeAFoldedLineIsABody) {
    for (const std::string& body :
         {std::string("\r\n x"), std::string("  \r\n\t"), std::string(" \r\n \r\n\r\n ")}) {
        const std::string request = std::string(kPost)
                                        .append("Content-Length: ")
                                        .append(std::to_string(body.size()))
                                        .append("\r\n\r\n")
                                        .append(body);
        const std::string seen = std::string("POST / ").append(body);
        EXPECT_EQ(Read(std::string(request).append(request)), (Texts{seen, seen}));
    }
    EXPECT_EQ(Read("GET / HTTP/1.1\r\n\r\n"), Texts{"GET / "});
}

TEST(RequestReaderTest, ChunksThatAreNoneAreRefused) {
    for (const char* chunks :
         {"x\r\n", "\r\n", " 3\r\nabc\r\n", "-3\r\nabc\r\n", "0x3\r\nabc\r\n", "3\r\nabcd\r\n", "3\nabc\n",
          "3\rabc", "10000000000000003\r\nabc\r\n", "3;a=\"\n\"\r\nabc\r\n", "3 x\r\nabc\r\n",
          "3;\r\nabc\r\n", "3\r\nabc\r\n0\r\nno field\r\n\r\n"})
        EXPECT_EQ(Read(kPost + "Transfer-Encoding: chunked\r\n\r\n" + chunks + "\r\n\r\n"), Texts{"400"})
            << chunks;
}

TEST(RequestReaderTest, WhatIsEndlessIsRefusedAfterSomeKilobytes) {
    const std::string chunked = kPost + "Transfer-Encoding: chunked\r\n\r\n";
    const std::size_t most = 3 * kLimits.headerBytes;

    EXPECT_LE(TakenOfEndless(chunked + "1;", "aaaaaaaa"), most);
    EXPECT_LE(TakenOfEndless(chunked + "1;a=\"", "aaaaaaaa"), most);
    EXPECT_LE(TakenOfEndless(chunked, "00000000"), most);
    EXPECT_LE(TakenOfEndless(chunked + "1\r\na\r\n0\r\n", "Trailer: x\r\n"), most);
    EXPECT_LE(TakenOfEndless(chunked + "0\r\nTrailer: ", "xxxxxxxx"), most);
    EXPECT_LE(TakenOfEndless(chunked, "1;" + std::string(4000, 'a') + "\r\na\r\n"), most);
    EXPECT_LE(TakenOfEndless(chunked, "1\r\na\r\n"), 10 * kBodyLimit);
}

TEST(RequestReaderTest, EveryPartHasItsLimit) {
    EXPECT_EQ(Read("GET / HTTP/1.1\r\nLong: " + std::string(9000, 'a') + "\r\n\r\n"), Texts{"431"});
    EXPECT_EQ(Read("GET /" + std::string(9000, 'a') + " HTTP/1.1\r\n\r\n"), Texts{"431"});
    EXPECT_EQ(Read("GET /" + std::string(3000, 'a') + " HTTP/1.1\r\n\r\n"), Texts{"414"});
    EXPECT_EQ(Read(kPost + "Content-Length: 1001\r\n\r\n"), Texts{"413"});
    EXPECT_EQ(Read(kPost + "Transfer-Encoding: chunked\r\n\r\n3e9\r\n" + std::string(1001, 'a')),
              Texts{"413"});
    EXPECT_EQ(Read("GET / HTTP/2.0\r\n\r\n"), Texts{"505"});
    for (const char* bytes :
         {"hello\r\n\r\n", "GET / HTTP/1.1\r\nBad Header: x\r\n\r\n", "\x16\x03\x01\x02 a\r\n\r\n",
          "GET / HTTP/1.1\r\nName: a\x01\r\n\r\n", "GET / HTTP/1.1\r\n: x\r\n\r\n"})
        EXPECT_EQ(Read(bytes), Texts{"400"}) << bytes;
}

TEST(RequestReaderTest, HeadIsTakenApart) {
    RequestReader reader(kLimits, "192.0.2.1", true);
    reader.Begin();
    const std::string bytes =
        "HEAD /a%20b?c=d?e HTTP/1.1\r\nHOST: x\r\nAccept: one\r\naccept: two\r\nExpect: 100-Continue\r\n"
        "Content-Length: 5\r\n\r\n";
    std::memcpy(reader.Room().data(), bytes.data(), bytes.size());
    reader.Commit(bytes.size());

    ASSERT_EQ(reader.Parse(), Step::Head);

    const HttpRequest& request = reader.Request();
    EXPECT_EQ(request.method, "GET");
    EXPECT_TRUE(reader.IsHeadRequest());
    EXPECT_EQ(request.path, "/a%20b");
    EXPECT_EQ(request.query, "c=d?e");
    EXPECT_EQ(request.peer, "192.0.2.1");
    EXPECT_TRUE(request.isSecure);
    EXPECT_TRUE(request.hasBody);
    EXPECT_FALSE(request.isUpgrade);
    EXPECT_EQ(request.Header("host"), "x");
    EXPECT_EQ(request.Header("accept"), "one");
    EXPECT_EQ(request.CountHeaders("accept"), 2U);
    EXPECT_FALSE(reader.IsOld());
    EXPECT_TRUE(reader.AwaitsContinue());
}

// The refusal of a head looks at the request too: who it came from, and how its reply may be packed.
TEST(RequestReaderTest, OfTheFormerRequestNothingIsLeftWhenTheNextOneIsRefused) {
    RequestReader reader(kLimits, "192.0.2.1", true);
    reader.Begin();
    const std::string bytes =
        "HEAD /a?b=c HTTP/1.1\r\nHost: x\r\nAccept-Encoding: gzip\r\n\r\nno HTTP\r\n\r\n";
    std::memcpy(reader.Room().data(), bytes.data(), bytes.size());
    reader.Commit(bytes.size());
    ASSERT_EQ(reader.Parse(), Step::Head);
    ASSERT_EQ(reader.WantBody(kBodyLimit), Step::Body);
    reader.Begin();
    ASSERT_EQ(reader.Parse(), Step::Refused);
    const HttpRequest& request = reader.Request();
    EXPECT_EQ(request.headers.size(), 0U);
    EXPECT_EQ(request.method, "");
    EXPECT_EQ(request.path, "");
    EXPECT_EQ(request.query, "");
    EXPECT_EQ(request.peer, "192.0.2.1");
    EXPECT_TRUE(request.isSecure);
    EXPECT_FALSE(reader.IsHeadRequest());
}

TEST(RequestReaderTest, TagsOfPackedRepliesAreTheTagsOfWhatWasPacked) {
    RequestReader reader(kLimits, "192.0.2.1", false);
    reader.Begin();
    const std::string bytes = "PUT / HTTP/1.1\r\nIf-Match: \"a;gzip\", \"b\"\r\nIf-None-Match: "
                              "W/\"c;gzip\"\r\nOther: \"d;gzip\"\r\n\r\n";
    std::memcpy(reader.Room().data(), bytes.data(), bytes.size());
    reader.Commit(bytes.size());

    ASSERT_EQ(reader.Parse(), Step::Head);

    EXPECT_EQ(reader.Request().Header("if-match"), "\"a\", \"b\"");
    EXPECT_EQ(reader.Request().Header("if-none-match"), "W/\"c\"");
    EXPECT_EQ(reader.Request().Header("other"), "\"d;gzip\"");
}

} // namespace controller
