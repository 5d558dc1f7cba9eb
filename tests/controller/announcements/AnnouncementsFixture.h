#pragma once

#include "controller/announcements/AnnouncementXml.h"
#include "controller/announcements/Announcements.h"
#include "controller/state/StateText.h"
#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/TestAgent.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace controller {

using Ids = std::vector<std::uint32_t>;
using Texts = std::vector<std::string>;

/// Keeps the rows that it is given; an answer comes when the test lets it.
class FakeStore final : public IAnnouncementStore {
public:
    void WriteAnnouncements(AnnouncementRows changes, WriteDone done) override {
        ++writes;
        const bool isFailing = writes == failing;
        for (AnnouncementRow& row : changes) {
            written.push_back(row);
            if (isFailing)
                failed.push_back(row);
            else
                Put(row);
        }
        waiting.push_back([this, isFailing, done = std::move(done)] {
            if (isFailing || failed.empty())
                listener(isFailing ? "full" : "");
            done(isFailing ? "full" : "");
        });
        if (isAnswering)
            Answer();
    }
    void WriteAll(WriteDone done) override {
        for (const AnnouncementRow& row : std::exchange(failed, {}))
            Put(row);
        done("");
    }
    void ListenToAnnouncements(WriteDone to) override { listener = std::move(to); }

    void Answer() {
        for (const auto& answer : std::exchange(waiting, {}))
            answer();
    }

    /// What is written from now on.
    [[nodiscard]] std::vector<std::int64_t> TakeWritten() {
        std::vector<std::int64_t> keys;
        for (const AnnouncementRow& row : std::exchange(written, {}))
            keys.push_back(row.key);
        return keys;
    }

    [[nodiscard]] AnnouncementRows Rows() const {
        AnnouncementRows all;
        for (const auto& [key, row] : rows)
            all.push_back(row);
        return all;
    }

    std::map<std::int64_t, AnnouncementRow> rows;
    AnnouncementRows written;
    AnnouncementRows failed;
    std::vector<std::function<void()>> waiting;
    WriteDone listener;
    bool isAnswering = true;
    int writes = 0;
    int failing = 0; ///< the number of the write that fails

private:
    void Put(const AnnouncementRow& row) {
        failed.erase(std::remove_if(failed.begin(), failed.end(),
                                    [&](const AnnouncementRow& one) { return one.key == row.key; }),
                     failed.end());
        if (row.xml.empty())
            rows.erase(row.key);
        else
            rows[row.key] = row;
    }
};

inline Announcement Made(const std::string& name) {
    Announcement announcement;
    announcement.name = name;
    announcement.audio = {"gong", 10};
    announcement.video.text = name + " & more";
    announcement.rooms = {{1, -1}, {2, 40}};
    announcement.navigators = {{11, 1, true}};
    return announcement;
}

/// The real module's agent, which starts with one announcement; every test ends with everything compared.
class AnnouncementsTest : public testing::Test {
protected:
    AnnouncementsTest() {
        m_host.fired = [this](std::uint32_t id) {
            m_fired.push_back(id);
        };
        Start({{1, announcement_xml::ToXml(WithId(Made("One"), 1)), "<house><tag>kitchen</tag></house>"}});
        (void)m_events.Take();
        m_store.written.clear();
        m_store.writes = 0;
    }

    void TearDown() override {
        m_store.Answer();
        if (!m_isMirrored)
            return;
        m_announcements.Check();
        for (const std::string& line : m_host.log.lines)
            EXPECT_EQ(line.find("error: Announcement"), std::string::npos) << line;
        if (m_store.failing == 0) {
            EXPECT_EQ(state_text::ForAgent(m_store.Rows()), m_host.agent.State());
        }
    }

    static Announcement WithId(Announcement announcement, std::uint32_t id) {
        announcement.id = id;
        return announcement;
    }

    /// As the program does, with what the disk holds.
    void Start(const AnnouncementRows& rows, bool areKept = true) {
        for (const AnnouncementRow& row : rows)
            m_store.rows[row.key] = row;
        m_announcements.Begin(rows, areKept);
    }

    /// Keeps what an operation is answered with, and says how often.
    Announcements::Done Note() {
        return [this](const Announcements::Outcome& outcome) {
            ++m_answers;
            m_outcome = outcome;
        };
    }

    std::string Request(const std::string& name, const Parameters& parameters) {
        m_announcements.Request(name, parameters, Note());
        return m_outcome.answer.text;
    }

    std::uint32_t Add(const std::string& name) {
        m_announcements.Add(Made(name), Note());
        return m_outcome.announcement->id;
    }

    [[nodiscard]] std::string OnDisk(std::int64_t key) const {
        const auto place = m_store.rows.find(key);
        return place != m_store.rows.end() ? place->second.xml + place->second.house : "";
    }

    /// What the record is written as: as the disk should have it.
    [[nodiscard]] std::string Record(std::uint32_t id) const {
        const auto announcement = m_announcements.Find(id);
        return announcement
                   ? announcement_xml::ToXml(*announcement) + announcement_xml::ToXml(announcement->house)
                   : "";
    }

    [[nodiscard]] Texts Names() {
        Texts names;
        for (const AnnouncementPointer& one : *m_announcements.All())
            names.push_back(std::to_string(one->id) + " " + one->name);
        return names;
    }

    TestAgent m_host;
    EventFeed m_feed;
    EventTexts m_events{m_feed};
    FakeStore m_store;
    Announcements m_announcements{{m_host.agent, m_store, m_host.scheduler, m_feed, m_host.log.log}};
    Announcements::Outcome m_outcome;
    int m_answers = 0;
    Ids m_fired; ///< what the agent has begun to play
    bool m_isMirrored = true;
};

} // namespace controller
