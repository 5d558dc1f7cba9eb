#pragma once

#include "announcement/Announcement.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Lines.h"
#include "tests/support/TestMessage.h"
#include "tests/support/Xml.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <string>

/// A sound that starts half a second after the rooms are set up.
inline const std::string kAudio = "<audio><file>chime</file><delay>500</delay></audio>";

/// Makes announcements at a fake host.
class AnnouncementTest : public testing::Test {
protected:
    using Pointer = boost::shared_ptr<Announcement>;

    Pointer FromXml(const std::string& text) {
        return boost::make_shared<Announcement>(m_host.Helper(), m_host, *ParseXml(text)->GetRootNode());
    }
    Pointer FromMessage(const std::string& text, std::uint32_t id) {
        return boost::make_shared<Announcement>(m_host.Helper(), m_host, Described(text), id);
    }
    static TestMessage Described(const std::string& text) { return {"request", {{"announcement", text}}}; }
    static TestMessage With(const std::string& parameter, const std::string& value) {
        return {"request", {{parameter, value}}};
    }
    /// A message whose every parameter throws this text.
    static TestMessage Throwing(const std::string& text) {
        return {"request", [text](const std::string&) -> std::string {
                    throw text;
                }};
    }
    static std::string Written(const Pointer& announcement) { return TextOf(announcement->toXml()); }
    /// What the announcement does now, without what came before.
    template <class Action>
    Lines CallsOf(Action action) {
        m_host.Take();
        action();
        return m_host.Take();
    }

    FakeHost m_host;
};
