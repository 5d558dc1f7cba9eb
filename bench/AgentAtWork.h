#pragma once

#include "bench/QuietHost.h"
#include "framework/CmdMessage.h"
#include "framework/DriverModule.h"
#include "host/VqBaseDriver.h"
#include "host/VqXML.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

/// An agent of the real module, loaded by file, at a quiet host, and the pieces of work that are measured.
///
/// The names of those pieces are known to `script/bench`, which has their instructions counted.
class AgentAtWork {
public:
    AgentAtWork();

    /// Reads the saved state, given as a tree.
    void Initialize(VqXML::INode& savedState);
    /// Reads the saved state, given as text, as a program does that starts.
    void ParseAndInitialize(const std::string& savedState);
    /// Gives the size of all announcements as XML text.
    std::size_t GetAnnouncements();
    /// Gives the size of one announcement as XML text.
    std::size_t GetAnnouncement(std::uint32_t id);
    void ModifyRoom(std::uint32_t id);
    void RemoveAnnouncement(std::uint32_t id);

    void AddAnnouncement(const std::string& text);

private:
    static const DriverModule& Module();
    vq::auto_com<VqXML::INode> Ask(const CmdMessage& request);

    QuietHost m_host;
    std::unique_ptr<VqBaseDriver> m_driver;
};

/// A saved state as the tree that `Initialize` takes.
[[nodiscard]] vq::auto_com<VqXML::IDocument> SavedTree(std::size_t count);
