#include "controller/audio/OutputDescription.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace controller::audio::test {

namespace {

std::string Refusal(const std::string& text) {
    try {
        (void)ParseOutput(text);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return {};
}

void ExpectRefused(const std::string& text, const std::string& reason) {
    EXPECT_NE(Refusal(text).find(reason), std::string::npos) << text << ": " << Refusal(text);
}

} // namespace

TEST(OutputDescriptionTest, EveryKindIsReadWithItsText) {
    EXPECT_EQ(ParseOutput("auto").kind, "auto");
    EXPECT_EQ(ParseOutput(" silent ").kind, "silent");
    const auto file = ParseOutput("file:  recordings/kitchen %r-%n.wav ");
    EXPECT_EQ(file.kind, "file");
    EXPECT_EQ(file.text, "recordings/kitchen %r-%n.wav");
    const auto bin = ParseOutput("gstreamer: audioconvert ! fakesink name=a:b");
    EXPECT_EQ(bin.kind, "gstreamer");
    EXPECT_EQ(bin.text, "audioconvert ! fakesink name=a:b");
    const auto zone = ParseOutput("multicast: 239.255.10.1:5004 codec=l16");
    EXPECT_EQ(zone.kind, "multicast");
    EXPECT_EQ(zone.text, "239.255.10.1:5004 codec=l16");
}

TEST(OutputDescriptionTest, AnUnknownKindIsAnsweredWithTheKnownOnes) {
    ExpectRefused("loud", "\"loud\" is no kind of output");
    ExpectRefused("loud", "\"file: PATTERN\"");
    ExpectRefused("", "is no kind of output");
    ExpectRefused(": x", "is no kind of output");
}

TEST(OutputDescriptionTest, ATextThatAKindDoesNotTakeIsRefused) {
    ExpectRefused("auto: hdmi", "\"auto\" takes nothing behind it");
    ExpectRefused("silent: please", "\"silent\" takes nothing behind it");
}

TEST(OutputDescriptionTest, ARecordingNeedsAPathWithKnownPlaceHolders) {
    ExpectRefused("file:", "needs a path");
    ExpectRefused("file", "needs a path");
    ExpectRefused("file: a%d.wav", "after % there can be n");
    ExpectRefused("file: a%", "after % there can be n");
    EXPECT_EQ(Refusal("file: 100%%.wav"), "");
}

TEST(OutputDescriptionTest, ABinDescriptionMustParseAndTakeSound) {
    ExpectRefused("gstreamer:", "needs a bin description");
    ExpectRefused("gstreamer: nosuchelement", "nosuchelement");
    ExpectRefused("gstreamer: fakesink nosuchproperty=1", "nosuchproperty");
    ExpectRefused("gstreamer: fakesrc ! fakesink", "has no free input");
    ExpectRefused("gstreamer: fakesink !", "fakesink !");
}

TEST(OutputDescriptionTest, ASinkNeedsANameAndTakesWhatIsToHappenToOthers) {
    ExpectRefused("pulse:", "needs a sink of the sound server");
    ExpectRefused("pulse: kitchen loudly", "takes duck beside it, not \"loudly\"");
    for (const char* value : {"loud", "-15dB", "3", "0", "-61", ""})
        ExpectRefused(std::string("pulse: kitchen duck=") + value,
                      "neither off, pause nor a number of decibels");
    for (const char* value : {"off", "pause", "-15", "-7.5", "-60"})
        EXPECT_EQ(Refusal(std::string("pulse: default duck=") + value), "");
}

TEST(OutputDescriptionTest, EveryKindIsListedWithItsFormAndMeaning) {
    const auto list = ListOutputs();
    ASSERT_EQ(list.size(), 9U);
    for (const char* kind :
         {"auto", "silent", "file", "gstreamer", "multicast", "page", "pulse", "snapcast", "home_assistant"})
        EXPECT_TRUE(std::any_of(list.begin(), list.end(), [&](const OutputHelp& help) {
            return help.kind == kind && help.form.rfind(kind, 0) == 0 && !help.meaning.empty();
        })) << kind;
}

TEST(OutputDescriptionTest, OnlyOfZonesAndClientsThereIsAnythingToTellBeforehand) {
    const auto facts = FactsOf(ParseOutput("multicast: 238.255.10.1:5004 ttl=4"));
    EXPECT_EQ(facts.places, std::vector<std::string>{"238.255.10.1:5004"});
    EXPECT_EQ(facts.doubts.size(), 1U);
    EXPECT_FALSE(facts.isAnswering);
    const auto both = FactsOf(ParseOutput("multicast: 239.192.0.1:5004 urgent=238.255.10.1:5004"));
    EXPECT_EQ(both.places, (std::vector<std::string>{"239.192.0.1:5004", "238.255.10.1:5004"}));
    ASSERT_EQ(both.doubts.size(), 2U);
    EXPECT_NE(both.doubts[0].find("the address 239.192.0.1:5004 is one for several networks"),
              std::string::npos);
    EXPECT_NE(both.doubts[1].find("238.255.10.1:5004 is given out to the whole world"), std::string::npos);
    const auto client = FactsOf(ParseOutput("snapcast: kitchen server=nas"));
    EXPECT_EQ(client.places, std::vector<std::string>{"client kitchen of nas:1705"});
    EXPECT_TRUE(client.doubts.empty());
    EXPECT_TRUE(client.isAnswering);
    for (const char* output : {"auto", "silent", "file: a.wav", "gstreamer: fakesink"}) {
        const auto none = FactsOf(ParseOutput(output));
        EXPECT_TRUE(none.places.empty()) << output;
        EXPECT_TRUE(none.doubts.empty()) << output;
        EXPECT_TRUE(none.isAnswering) << output;
    }
}

} // namespace controller::audio::test
