#include "tests/support/AnnouncementTest.h"

#include <type_traits>

namespace {

using AnnouncementXmlTest = AnnouncementTest;

const std::string kFull =
    "<announcement><id>3</id><name>Dinner</name><audio><file>chime</file><delay>500</delay></audio>"
    "<video><file>d.png</file><text>Ready</text><delay>10</delay><timeout>5000</timeout><displayID>9</"
    "displayID>"
    "<variableID>4</variableID><variableName>Menu</variableName><OKButton>false</OKButton></video>"
    "<rooms><room><id>7</id><volume>-1</volume></room><room><id>12</id><volume>40</volume></room></rooms>"
    "<navigators><navigator><id>5</id><room_id>12</room_id><onscreen>true</onscreen></navigator></navigators>"
    "</announcement>";

const std::string kEmpty = "<announcement><id>0</id><name/><audio><file/><delay>0</delay></"
                           "audio><video><file/><text/><delay>0</delay>"
                           "<timeout>0</timeout><displayID>0</displayID><variableID>0</"
                           "variableID><variableName/><OKButton>true</OKButton>"
                           "</video><rooms/><navigators/></announcement>";

std::string WithVideo(const std::string& video) {
    return "<announcement><video>" + video + "</video><rooms/><navigators/></announcement>";
}

std::string Between(const std::string& text, const std::string& from, const std::string& to) {
    const std::size_t begin = text.find(from);
    return text.substr(begin, text.find(to, begin) - begin);
}

TEST_F(AnnouncementXmlTest, WritesEveryValueThatWasReadInTheElementsFixedOrder) {
    EXPECT_EQ(Written(FromXml(kFull)), kFull);
    EXPECT_EQ(FromXml(kFull)->GetID(), 3U);
}

TEST_F(AnnouncementXmlTest, WritesEveryFieldEvenWhenNothingWasRead) {
    EXPECT_EQ(Written(FromXml("<announcement><navigators/></announcement>")), kEmpty);
}

TEST_F(AnnouncementXmlTest, TheElementsNameIsNotLookedAt) {
    EXPECT_EQ(
        Written(FromXml("<x><id>3</id><rooms><y><id>1</id></y></rooms><navigators><z><id>2</id></z>"
                        "</navigators></x>")),
        "<announcement><id>3</id><name/><audio><file/><delay>0</delay></audio><video><file/><text/>"
        "<delay>0</delay><timeout>0</timeout><displayID>0</displayID><variableID>0</variableID>"
        "<variableName/><OKButton>true</OKButton></video><rooms><room><id>1</id><volume>0</volume></room>"
        "</rooms><navigators><navigator><id>2</id><room_id>0</room_id><onscreen>false</onscreen></navigator>"
        "</navigators></announcement>");
}

TEST_F(AnnouncementXmlTest, RoomsAndNavigatorsAreWrittenByAscendingUnsignedId) {
    const std::string written = Written(
        FromXml("<announcement><rooms><room><id>-1</id></room><room><id>10</id></room><room><id>9</id>"
                "</room></rooms><navigators><navigator><id>30</id></navigator><navigator><id>4</id>"
                "</navigator></navigators></announcement>"));
    EXPECT_EQ(Between(written, "<rooms>", "</rooms>"),
              "<rooms><room><id>9</id><volume>0</volume></room><room><id>10</id><volume>0</volume></room>"
              "<room><id>4294967295</id><volume>0</volume></room>");
    EXPECT_EQ(Between(written, "<navigators>", "</navigators>"),
              "<navigators><navigator><id>4</id><room_id>0</room_id><onscreen>false</onscreen></navigator>"
              "<navigator><id>30</id><room_id>0</room_id><onscreen>false</onscreen></navigator>");
}

TEST_F(AnnouncementXmlTest, OfTwoRoomsAndOfTwoNavigatorsWithOneIdTheFirstStays) {
    const std::string written = Written(
        FromXml("<announcement><rooms><room><id>1</id><volume>10</volume></room><room><id>1</id>"
                "<volume>20</volume></room></rooms><navigators><navigator><id>2</id><room_id>1</room_id>"
                "</navigator><navigator><id>2</id><room_id>9</room_id></navigator></navigators>"
                "</announcement>"));
    EXPECT_EQ(Between(written, "<rooms>", "</rooms>"), "<rooms><room><id>1</id><volume>10</volume></room>");
    EXPECT_EQ(Between(written, "<navigators>", "</navigators>"),
              "<navigators><navigator><id>2</id><room_id>1</room_id><onscreen>false</onscreen></navigator>");
}

TEST_F(AnnouncementXmlTest, MissingNavigatorsAssertAndLogAndKeepTheRooms) {
    Pointer announcement;
    EXPECT_EQ(CallsOf([&] {
                  announcement =
                      FromXml("<announcement><rooms><room><id>1</id></room></rooms></announcement>");
              }),
              (Lines{"vq.AssertWrite(Announcement, 473)",
                     "ILogger.Log(3, Announcement is missing navigators tag)"}));
    EXPECT_EQ(Between(Written(announcement), "<rooms>", "</announcement>"),
              "<rooms><room><id>1</id><volume>0</volume></room></rooms><navigators/>");
}

TEST_F(AnnouncementXmlTest, MissingNavigatorsLeaveThoseThatAreThere) {
    const Pointer announcement = FromXml(kFull);
    announcement->fromXml(*ParseXml("<announcement><rooms/></announcement>")->GetRootNode());
    EXPECT_EQ(Between(Written(announcement), "<navigators>", "</navigators>"),
              "<navigators><navigator><id>5</id><room_id>12</room_id><onscreen>true</onscreen></navigator>");
}

TEST_F(AnnouncementXmlTest, MissingRoomsAreAnEmptyListWithoutAWord) {
    EXPECT_EQ(
        CallsOf([&] { EXPECT_EQ(Written(FromXml("<announcement><navigators/></announcement>")), kEmpty); }),
        Lines{"ITimerManager.KillAllTimers()"});
}

TEST_F(AnnouncementXmlTest, ReadingAgainOnlyAddsRoomsAndNavigators) {
    const Pointer announcement = FromXml(kFull);
    announcement->fromXml(
        *ParseXml("<announcement><rooms><room><id>7</id><volume>99</volume></room><room><id>1</id>"
                  "</room></rooms><navigators><navigator><id>6</id></navigator></navigators>"
                  "</announcement>")
             ->GetRootNode());
    EXPECT_EQ(
        Between(Written(announcement), "<rooms>", "</announcement>"),
        "<rooms><room><id>1</id><volume>0</volume></room><room><id>7</id><volume>-1</volume></room><room>"
        "<id>12</id><volume>40</volume></room></rooms><navigators><navigator><id>5</id><room_id>12</room_id>"
        "<onscreen>true</onscreen></navigator><navigator><id>6</id><room_id>0</room_id><onscreen>false"
        "</onscreen></navigator></navigators>");
}

TEST_F(AnnouncementXmlTest, WithoutVideoItsValuesStayButBindingAndOkButtonAreReset) {
    const Pointer announcement = FromXml(kFull);
    announcement->fromXml(
        *ParseXml("<announcement><audio/><rooms/><navigators/></announcement>")->GetRootNode());
    EXPECT_EQ(Between(Written(announcement), "<announcement>", "<rooms>"),
              "<announcement><id>0</id><name/><audio><file/><delay>0</delay></audio><video><file>d.png</file>"
              "<text>Ready</text><delay>10</delay><timeout>5000</timeout><displayID>0</displayID>"
              "<variableID>0</variableID><variableName/><OKButton>true</OKButton></video>");
}

TEST_F(AnnouncementXmlTest, WithoutAudioItsValuesStay) {
    const Pointer announcement = FromXml(kFull);
    announcement->fromXml(
        *ParseXml("<announcement><video/><rooms/><navigators/></announcement>")->GetRootNode());
    EXPECT_EQ(
        Between(Written(announcement), "<announcement>", "<rooms>"),
        "<announcement><id>0</id><name/><audio><file>chime</file><delay>500</delay></audio><video><file/>"
        "<text/><delay>0</delay><timeout>0</timeout><displayID>0</displayID><variableID>0</variableID>"
        "<variableName/><OKButton>true</OKButton></video>");
}

TEST_F(AnnouncementXmlTest, TheOkButtonIsTrueUnlessItsTextIsThereAndFalse) {
    const auto okButton = [this](const std::string& video) {
        return Between(Written(FromXml(WithVideo(video))), "<OKButton>", "</OKButton>");
    };
    EXPECT_EQ(okButton(""), "<OKButton>true");
    EXPECT_EQ(okButton("<OKButton/>"), "<OKButton>true");
    EXPECT_EQ(okButton("<OKButton>false</OKButton>"), "<OKButton>false");
    EXPECT_EQ(okButton("<OKButton>0</OKButton>"), "<OKButton>false");
    EXPECT_EQ(okButton("<OKButton> </OKButton>"), "<OKButton>false");
    EXPECT_EQ(okButton("<OKButton>TRUE</OKButton>"), "<OKButton>true");
    EXPECT_EQ(okButton("<OKButton>1</OKButton>"), "<OKButton>true");
}

TEST_F(AnnouncementXmlTest, ABindingIsReadOnlyWhenBothIdsHaveText) {
    const auto binding = [this](const std::string& video) {
        return Between(Written(FromXml(WithVideo(video + "<variableName>Menu</variableName>"))),
                       "<displayID>", "<OKButton>");
    };
    const std::string none = "<displayID>0</displayID><variableID>0</variableID><variableName/>";
    EXPECT_EQ(binding(""), none);
    EXPECT_EQ(binding("<displayID>9</displayID>"), none);
    EXPECT_EQ(binding("<displayID>9</displayID><variableID/>"), none);
    EXPECT_EQ(binding("<displayID/><variableID>4</variableID>"), none);
    EXPECT_EQ(binding("<displayID>9</displayID><variableID>4</variableID>"),
              "<displayID>9</displayID><variableID>4</variableID><variableName>Menu</variableName>");
    // Texts that are no numbers count as given: the name is read, the ids are 0.
    EXPECT_EQ(binding("<displayID> </displayID><variableID>x</variableID>"),
              "<displayID>0</displayID><variableID>0</variableID><variableName>Menu</variableName>");
}

TEST_F(AnnouncementXmlTest, NumbersAreReadAsUnsigned32BitsFromTheLeadingDigits) {
    EXPECT_EQ(FromXml("<a><id> +1st</id><navigators/></a>")->GetID(), 1U);
    EXPECT_EQ(FromXml("<a><id>-1</id><navigators/></a>")->GetID(), 4294967295U);
    EXPECT_EQ(FromXml("<a><id>4294967297</id><navigators/></a>")->GetID(), 4294967295U);
    EXPECT_EQ(FromXml("<a><id>abc</id><navigators/></a>")->GetID(), 0U);
    EXPECT_EQ(FromXml("<a><id>6</id><id>7</id><navigators/></a>")->GetID(), 6U);
}

TEST_F(AnnouncementXmlTest, ValuesAreNeverTrimmed) {
    const std::string written = Written(FromXml("<a><name> two  words </name><navigators/></a>"));
    EXPECT_EQ(Between(written, "<name>", "</name>"), "<name> two  words ");
}

TEST_F(AnnouncementXmlTest, LooksUpDeviceManagersOfItsTargetsThenItsOwnThenTheTimerManager) {
    m_host.log.ShowLookUps();
    const std::string devices = "IInstanceManager.QueryInterface({731E9F66-23F5-4100-AA7B-C3F189BAABFD})";
    const std::string timers = "IInstanceManager.QueryInterface({6AF43241-ECD9-4DFF-9F14-3E7194FFE2D4})";
    Pointer announcement;
    EXPECT_EQ(CallsOf([&] { announcement = FromXml(kFull); }),
              (Lines{devices, devices, devices, devices, timers}));
    EXPECT_EQ(CallsOf([&] { announcement = FromMessage("<a><navigators/></a>", 1); }),
              (Lines{devices, timers, "ITimerManager.KillAllTimers()"}));
}

TEST_F(AnnouncementXmlTest, AnIdInTheDescriptionIsKeptAndWithoutOneTheGivenIdTaken) {
    EXPECT_EQ(FromMessage("<a><id>7</id><navigators/></a>", 3)->GetID(), 7U);
    EXPECT_EQ(FromMessage("<a><id>0</id><navigators/></a>", 3)->GetID(), 3U);
    EXPECT_EQ(FromMessage("<a><navigators/></a>", 3)->GetID(), 3U);
}

TEST_F(AnnouncementXmlTest, ADescriptionThatIsNotXmlAssertsAndThrowsAndLeavesNoTrace) {
    m_host.log.ShowLookUps();
    for (const char* const text : {"", "Dinner", "<announcement>", "<a/><b/>"}) {
        try {
            FromMessage(text, 1);
            ADD_FAILURE() << "an announcement from " << text;
        } catch (const char* thrown) {
            EXPECT_STREQ(thrown, "Unable to dom xml to create announcement");
        }
        EXPECT_EQ(m_host.Take(), Lines{"vq.AssertWrite(Announcement, 37)"}) << text;
    }
}

TEST_F(AnnouncementXmlTest, AConstructorThatThrowsHalfWayCallsNothingMore) {
    m_host.log.ShowLookUps();
    m_host.log.ThrowAtCall(4); // the device manager of the announcement itself
    EXPECT_THROW(FromXml(kFull), std::string);
    EXPECT_EQ(m_host.Take().size(), 4U);
}

TEST_F(AnnouncementXmlTest, FromCmdMessageReadsTheDescriptionOrFailsSilently) {
    const Pointer announcement = FromXml("<a><id>1</id><navigators/></a>");
    EXPECT_EQ(CallsOf([&] { EXPECT_EQ(announcement->fromCmdMessage(Described("<a>")), -1); }), Lines{});
    EXPECT_EQ(announcement->GetID(), 1U);
    EXPECT_EQ(announcement->fromCmdMessage(Described(kFull)), 0);
    EXPECT_EQ(Written(announcement), kFull);
}

TEST_F(AnnouncementXmlTest, DestructionCancelsItsTimersIfATimerManagerWasFound) {
    Pointer announcement = FromXml(kFull);
    EXPECT_EQ(CallsOf([&] { announcement.reset(); }), Lines{"ITimerManager.KillAllTimers()"});
    m_host.hasTimerManager = false;
    announcement = FromXml(kFull);
    EXPECT_EQ(CallsOf([&] { announcement.reset(); }), Lines{});
}

TEST_F(AnnouncementXmlTest, ATimerManagerThatThrowsAtDestructionIsSurvived) {
    Pointer announcement = FromXml(kFull);
    m_host.log.ThrowAtCall(1);
    announcement.reset();
    EXPECT_TRUE(m_host.log.HasThrown());
}

TEST_F(AnnouncementXmlTest, GivesASharedPointerToItself) {
    const Pointer announcement = FromXml(kFull);
    const boost::shared_ptr<ITimerManagerCallback> self = announcement->shared_from_this();
    EXPECT_EQ(self.get(), announcement.get());
    EXPECT_EQ(announcement.use_count(), 2);
}

TEST_F(AnnouncementXmlTest, HasTheTimerCallbackAsItsBaseAndAVirtualDestructor) {
    EXPECT_TRUE((std::is_convertible_v<Announcement*, ITimerManagerCallback*>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Announcement>);
}

} // namespace
