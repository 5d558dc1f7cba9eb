#include "controller/http/ReplyWriter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace controller {

namespace {

HttpReply Json(std::size_t size) {
    HttpReply reply;
    reply.contentType = "application/json";
    std::string text = "{";
    for (unsigned number = 1; text.size() < size; number = number * 1103515245 + 12345)
        text += "\"id\":" + std::to_string(number) + ",";
    text.resize(size, ' ');
    reply.body = std::move(text);
    return reply;
}

ReplyFrame Frame(std::string_view acceptEncoding) {
    ReplyFrame frame;
    frame.date = "now";
    frame.acceptEncoding = acceptEncoding;
    return frame;
}

struct Written {
    std::vector<std::string> pieces;
    std::string head;
    std::string body; ///< without its chunks
};

/// Undoes chunks; fails the test when they are none.
std::string Unchunked(const std::string& body) {
    std::string plain;
    for (std::size_t at = 0; at < body.size();) {
        const std::size_t size = std::stoul(body.substr(at), nullptr, 16);
        const std::size_t start = body.find("\r\n", at) + 2;
        plain += body.substr(start, size);
        at = start + size + 2;
        EXPECT_EQ(body.substr(at - 2, 2), "\r\n");
        EXPECT_EQ(size == 0, at == body.size());
    }
    return plain;
}

Written Write(HttpReply reply, const ReplyFrame& frame) {
    ReplyWriter writer;
    Written written;
    writer.Begin(std::move(reply), frame);
    std::string all;
    boost::asio::const_buffer next;
    do {
        next = writer.Next();
        written.pieces.emplace_back(static_cast<const char*>(next.data()), next.size());
        all += written.pieces.back();
    } while (writer.Advance(next.size()));
    const std::size_t end = all.find("\r\n\r\n") + 4;
    written.head = all.substr(0, end);
    written.body = all.substr(end);
    if (written.head.find("Transfer-Encoding: chunked\r\n") != std::string::npos && !written.body.empty())
        written.body = Unchunked(written.body);
    return written;
}

std::string Unpacked(const std::string& packed) {
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, 15 + 16), Z_OK);
    std::string plain(64U << 20U, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(plain.data());
    stream.avail_out = static_cast<uInt>(plain.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    plain.resize(plain.size() - stream.avail_out);
    EXPECT_EQ(inflateEnd(&stream), Z_OK);
    return plain;
}

bool HasIn(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(ReplyWriterTest, TextOfMoreThanAKilobyteIsPackedForWhoeverLikesThat) {
    const HttpReply reply = Json(20000);

    const Written written = Write(reply, Frame("gzip, deflate"));

    EXPECT_EQ(written.pieces.size(), 1U);
    EXPECT_TRUE(HasIn(written.head, "Content-Encoding: gzip\r\n"));
    EXPECT_TRUE(HasIn(written.head, "Vary: Accept-Encoding\r\n"));
    EXPECT_TRUE(HasIn(written.head, "Content-Length: " + std::to_string(written.body.size()) + "\r\n"));
    EXPECT_LT(written.body.size(), 13000U);
    EXPECT_EQ(Unpacked(written.body), ViewOf(reply.body));
}

TEST(ReplyWriterTest, LongTextIsPackedAndSentSliceBySlice) {
    const HttpReply reply = Json(5000000);

    const Written written = Write(reply, Frame("gzip"));

    EXPECT_EQ(written.pieces.size(), 5000000 / Packer::kSlice + 1);
    for (const std::string& piece : written.pieces)
        EXPECT_LE(piece.size(), 2 * Packer::kSlice);
    EXPECT_FALSE(HasIn(written.head, "Content-Length"));
    EXPECT_EQ(Unpacked(written.body), ViewOf(reply.body));
}

TEST(ReplyWriterTest, TextThatPacksToNearlyNothingHasNoEmptyChunkBeforeItsEnd) {
    HttpReply reply = Json(10);
    reply.body = std::string(1U << 20U, ' ');

    const Written written = Write(reply, Frame("gzip"));

    EXPECT_EQ(Unpacked(written.body), ViewOf(reply.body));
    // The last slice fills up exactly, and one more ends it or not: never more pieces than that.
    EXPECT_LE(written.pieces.size(), (1U << 20U) / Packer::kSlice + 1);
}

TEST(ReplyWriterTest, WhoDoesNotLikeItPackedGetsItAsItIs) {
    const HttpReply reply = Json(5000);
    ReplyFrame old = Frame("gzip");
    old.isOldClient = true;

    for (const ReplyFrame& frame : {Frame(""), Frame("br"), Frame("gzip;q=0"), old}) {
        const Written written = Write(reply, frame);
        EXPECT_FALSE(HasIn(written.head, "Content-Encoding"));
        EXPECT_TRUE(HasIn(written.head, "Vary: Accept-Encoding\r\n"));
        EXPECT_TRUE(HasIn(written.head, "Content-Length: 5000\r\n"));
        EXPECT_EQ(written.body, ViewOf(reply.body));
    }
}

TEST(ReplyWriterTest, WhatIsShortOrNoTextOrPackedAlreadyStaysAsItIs) {
    HttpReply sound = Json(5000);
    sound.contentType = "audio/wav";
    HttpReply page = Json(5000);
    page.contentType = "text/html; charset=utf-8";
    HttpReply packed = Json(5000);
    packed.headers = {{"Content-Encoding", "br"}};

    for (const HttpReply& reply : {Json(1024), sound, page, packed}) {
        const Written written = Write(reply, Frame("gzip"));
        EXPECT_FALSE(HasIn(written.head, "Vary"));
        EXPECT_FALSE(HasIn(written.head, "gzip"));
        EXPECT_EQ(written.body, ViewOf(reply.body));
    }
}

TEST(ReplyWriterTest, PackedBytesHaveAStrongTagOfTheirOwn) {
    HttpReply reply = Json(5000);
    reply.headers = {{"ETag", "\"a\""}};
    HttpReply weak = Json(5000);
    weak.headers = {{"ETag", "W/\"a\""}};

    EXPECT_TRUE(HasIn(Write(reply, Frame("gzip")).head, "ETag: \"a;gzip\"\r\n"));
    EXPECT_TRUE(HasIn(Write(reply, Frame("")).head, "ETag: \"a\"\r\n"));
    EXPECT_TRUE(HasIn(Write(weak, Frame("gzip")).head, "ETag: W/\"a\"\r\n"));
}

TEST(ReplyWriterTest, BytesThatWereNotTakenAreGivenAgain) {
    for (const std::size_t size : {10U, 50000U}) {
        const HttpReply reply = Json(size);
        ReplyWriter writer;
        writer.Begin(reply, Frame(""));
        std::string all;
        std::size_t taken = 0;
        do {
            const auto next = writer.Next();
            taken = std::min<std::size_t>(next.size(), 7);
            all.append(static_cast<const char*>(next.data()), taken);
        } while (writer.Advance(taken));
        EXPECT_EQ(all.substr(all.find("\r\n\r\n") + 4), ViewOf(reply.body));
    }
}

TEST(ReplyWriterTest, HeadRequestGetsTheHeadOfTheWholeReply) {
    for (const std::size_t size : {10U, 5000U, 500000U}) {
        ReplyFrame frame = Frame("gzip");
        const Written whole = Write(Json(size), frame);
        frame.isHeadRequest = true;
        const Written head = Write(Json(size), frame);
        EXPECT_EQ(head.head, whole.head);
        EXPECT_EQ(head.body, "");
        EXPECT_EQ(head.pieces.size(), 1U);
    }
}

} // namespace controller
