#include "controller/speech/WyomingReader.h"

#include "controller/speech/SpeechError.h"

#include <gtest/gtest.h>

#include <random>

namespace controller {

namespace {

std::string TextOf(const WyomingEvent& event) {
    return event.type + " " + event.data.dump() + " " + event.payload;
}

/// What is read of the bytes, cut as the generator says.
std::vector<std::string> ReadInPieces(const std::string& bytes, std::mt19937& random) {
    std::vector<std::string> texts;
    WyomingReader reader;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t count = std::min<std::size_t>(1 + random() % 40, bytes.size() - at);
        reader.Take(bytes.data() + at, count);
        at += count;
        while (const auto event = reader.Next())
            texts.push_back(TextOf(*event));
    }
    if (reader.IsInside())
        texts.emplace_back("(cut)");
    return texts;
}

std::string RefusalOf(const std::string& bytes) {
    WyomingReader reader;
    try {
        reader.Take(bytes.data(), bytes.size());
        while (reader.Next())
            continue;
    } catch (const SpeechError& error) {
        return error.what();
    }
    return "";
}

const WyomingEvent kStart{"audio-start", {{"rate", 22050}, {"width", 2}, {"channels", 1}}, ""};
const WyomingEvent kSomeSound{"audio-chunk", {{"rate", 22050}}, std::string("a\nb\0{\"type\":1}\n", 15)};
const WyomingEvent kStop{"audio-stop", nlohmann::json::object(), ""};

TEST(WyomingReaderTest, HoweverTheBytesAreCutTheEventsAreTheSame) {
    std::string bytes;
    std::vector<std::string> expected;
    for (const WyomingEvent& event : {kStart, kSomeSound, kSomeSound, kStop, kSomeSound}) {
        bytes += Written(event);
        expected.push_back(TextOf(event));
    }
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same every time
    for (int round = 0; round < 500; ++round)
        ASSERT_EQ(ReadInPieces(bytes, random), expected) << "round " << round;
}

TEST(WyomingReaderTest, WhatIsBrokenOffIsNoEvent) {
    const std::string bytes = Written(kSomeSound);
    std::mt19937 random(2); // NOLINT(cert-msc32-c,cert-msc51-cpp)
    for (std::size_t length = 1; length < bytes.size(); ++length)
        ASSERT_EQ(ReadInPieces(bytes.substr(0, length), random), std::vector<std::string>{"(cut)"}) << length;
}

TEST(WyomingReaderTest, AnyBytesAreReadOrRefused) {
    std::mt19937 random(3); // NOLINT(cert-msc32-c,cert-msc51-cpp)
    for (int round = 0; round < 2000; ++round) {
        std::string bytes = Written(kStart) + Written(kSomeSound) + Written(kStop);
        for (unsigned change = random() % 4 + 1; change > 0; --change)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        try {
            (void)ReadInPieces(bytes, random);
        } catch (const SpeechError&) { // NOLINT(bugprone-empty-catch): one of the two
        }
    }
}

TEST(WyomingReaderTest, DataMayStandInTheLineOrBehindIt) {
    WyomingReader reader;
    const std::string bytes =
        "{\"type\":\"info\",\"data\":{\"a\":1,\"b\":2},\"data_length\":7,\"payload_length\":null}\n"
        "{\"b\":3}";
    reader.Take(bytes.data(), bytes.size());
    EXPECT_EQ(TextOf(reader.Next().value()), "info {\"a\":1,\"b\":3} ");
    EXPECT_FALSE(reader.IsInside());
}

TEST(WyomingReaderTest, WhatIsNotTheProtocolIsRefusedInWords) {
    EXPECT_EQ(RefusalOf("HTTP/1.1 400 Bad Request\r\n"),
              "sends a line that is no JSON object: not the Wyoming protocol");
    EXPECT_EQ(RefusalOf("{}\n"), "sends an event without a type: not the Wyoming protocol");
    EXPECT_EQ(RefusalOf("{\"type\":\"a\",\"data_length\":2}\n[]"),
              "sends data that is no JSON object: not the Wyoming protocol");
    EXPECT_EQ(RefusalOf(std::string(70'000, ' ')),
              "sends a line of more than 65536 bytes: not the Wyoming protocol");
}

TEST(WyomingReaderTest, WhatNobodySendsWhoMeansWellIsRefusedBeforeItComes) {
    EXPECT_EQ(RefusalOf("{\"type\":\"a\",\"payload_length\":4194305}\n"),
              "sends an event whose payload_length is no number up to 4194304");
    EXPECT_EQ(RefusalOf("{\"type\":\"a\",\"data_length\":-1}\n"),
              "sends an event whose data_length is no number up to 1048576");
    EXPECT_EQ(RefusalOf("{\"type\":\"a\",\"data_length\":\"7\"}\n"),
              "sends an event whose data_length is no number up to 1048576");
    EXPECT_EQ(RefusalOf("{\"type\":\"a\",\"data\":" + std::string(60'000, '[') + "\n"),
              "sends a line that is no JSON object: not the Wyoming protocol");
}

} // namespace

} // namespace controller
