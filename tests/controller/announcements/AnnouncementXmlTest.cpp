#include "controller/announcements/AnnouncementXml.h"

#include "framework/XmlText.h"
#include "host/ForEachChild.h"
#include "host/VqXML.h"
#include "tests/controller/support/TestAgent.h"

#include <gtest/gtest.h>

#include <random>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

/// What the agent keeps of this element and writes of it again.
Texts KeptByTheAgent(const std::string& elements) {
    TestAgent host;
    host.agent.Start("<announcements>" + elements + "</announcements>");
    const auto document = VqXML::CreateXmlDocument(host.agent.State());
    Texts kept;
    ForEachChild(*document->GetRootNode(), [&](VqXML::INode& child) { kept.push_back(ToXmlText(child)); });
    return kept;
}

Announcement Read(const std::string& element) {
    return announcement_xml::FromXml(*VqXML::CreateXmlDocument(element)->GetRootNode());
}

std::string Pick(std::mt19937& random, const Texts& texts) {
    return texts[random() % texts.size()];
}

/// An element that people might write, with things missing, doubled and awkward.
std::string Awkward(std::mt19937& random, int id) {
    const Texts texts{"",           "<a/>",   "Dinner",   "a &amp; b &lt;c&gt;", " blanks ", "\t\n", "&#13;",
                      "&#228; ä€𝄞", "]]&gt;", "<a>x</a>y"};
    const Texts numbers{"", "0", "7", "-1", "100", "4294967295", "4294967296", "12x", "x", " 5", "+3"};
    const Texts flags{"", "true", "false", "1", "0", "yes", "TRUE"};
    const auto child = [&](const char* name, const Texts& values) {
        if (random() % 5 == 0)
            return std::string();
        const std::string tag(name);
        return "<" + tag + ">" + Pick(random, values) + "</" + tag + ">";
    };
    const auto targets = [&](const std::string& list, const std::string& one, const auto& make) {
        if (random() % 6 == 0)
            return std::string();
        std::string text = "<" + list + ">";
        for (auto count = random() % 5; count > 0; --count)
            text.append("<")
                .append(one)
                .append(">")
                .append(child("id", numbers))
                .append(make())
                .append("</")
                .append(one)
                .append(">");
        return text + "</" + list + ">";
    };
    return "<announcement><id>" + std::to_string(id) + "</id>" + child("name", texts) + "<audio>" +
           child("file", texts) + child("delay", numbers) + "</audio><video>" + child("file", texts) +
           child("text", texts) + child("delay", numbers) + child("timeout", numbers) +
           child("displayID", numbers) + child("variableID", numbers) + child("variableName", texts) +
           child("OKButton", flags) + "</video>" +
           targets("rooms", "room", [&] { return child("volume", numbers); }) +
           targets("navigators", "navigator",
                   [&] { return child("room_id", numbers) + child("onscreen", flags); }) +
           "<other>x</other></announcement>";
}

TEST(AnnouncementXmlTest, WhateverIsWrittenIsReadAndWrittenAsTheAgentDoes) {
    std::mt19937 random(20250201);
    Texts elements{"<announcement><id>1</id></announcement>",
                   "<announcement><id>2</id><audio/><video/><rooms/><navigators/></announcement>"};
    for (int id = 3; id <= 300; ++id)
        elements.push_back(Awkward(random, id));
    std::string all;
    for (const std::string& element : elements)
        all += element;
    const Texts kept = KeptByTheAgent(all);
    ASSERT_EQ(kept.size(), elements.size());
    for (std::size_t index = 0; index < kept.size(); ++index) {
        EXPECT_EQ(announcement_xml::ToXml(Read(elements[index])), kept[index]) << elements[index];
        EXPECT_EQ(announcement_xml::ToXml(Read(kept[index])), kept[index]);
    }
}

TEST(AnnouncementXmlTest, AllOfThemAreWrittenAsTheAgentAnswersThem) {
    for (const char* state :
         {"", "<announcement><id>1</id></announcement><announcement><id>3</id></announcement>"}) {
        TestAgent host;
        host.agent.Start(std::string("<announcements>") + state + "</announcements>");
        const std::string answer = host.agent.Request("get_announcements", {}).text;
        const auto document = VqXML::CreateXmlDocument(answer);
        std::vector<AnnouncementPointer> list;
        ForEachChild(*document->GetRootNode(), [&](VqXML::INode& child) {
            list.push_back(std::make_shared<const Announcement>(announcement_xml::FromXml(child)));
        });
        EXPECT_EQ(announcement_xml::ToXml(list), answer);
    }
}

TEST(AnnouncementXmlTest, WhatTheHouseAddsIsTextOfItsOwn) {
    EXPECT_EQ(announcement_xml::ToXml(HouseAddition()), "");
    EXPECT_TRUE(announcement_xml::HouseFromXml("").tags.empty());
    const std::string text = announcement_xml::ToXml(HouseAddition{{"kitchen", "a < b"}});
    EXPECT_EQ(text, "<house><tag>kitchen</tag><tag>a &lt; b</tag></house>");
    EXPECT_EQ(announcement_xml::HouseFromXml(text).tags, (Texts{"kitchen", "a < b"}));
    EXPECT_EQ(
        announcement_xml::HouseFromXml("<house><tag>a</tag><tag/><rule>x</rule><tag>a</tag></house>").tags,
        Texts{"a"});
    EXPECT_FALSE(announcement_xml::HouseFromXml(text).isPassing);
    const std::string passing = announcement_xml::ToXml(HouseAddition{{"a"}, true});
    EXPECT_EQ(passing, "<house><tag>a</tag><passing/></house>");
    EXPECT_TRUE(announcement_xml::HouseFromXml(passing).isPassing);
    EXPECT_EQ(announcement_xml::ToXml(HouseAddition{{}, true}), "<house><passing/></house>");
    EXPECT_FALSE(announcement_xml::HouseFromXml(passing).isUrgent);
    const std::string urgent = announcement_xml::ToXml(HouseAddition{{"a"}, false, true});
    EXPECT_EQ(urgent, "<house><tag>a</tag><urgent/></house>");
    EXPECT_TRUE(announcement_xml::HouseFromXml(urgent).isUrgent);
    EXPECT_EQ(announcement_xml::HouseFromXml(urgent).tags, Texts{"a"});
    EXPECT_EQ(announcement_xml::ToXml(HouseAddition{{}, false, true}), "<house><urgent/></house>");
}

} // namespace

} // namespace controller
