#include "controller/house/NewHouse.h"

#include "controller/audio/DemoSounds.h"
#include "controller/driver/Durable.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace controller {

namespace {

namespace fs = std::filesystem;

constexpr const char* kHouse =
    R"(# A house for announcement-controller. `announcement-controller check house.yaml` tells every mistake in it.
# Folders and files are relative to the folder of this file.

name: Demo house

# Where the controller can be reached. 127.0.0.1 is this machine alone; any other address needs a token, see below.
address: 127.0.0.1
port: 8765

# The sounds of the announcements: an announcement whose sound is "doorbell" plays doorbell.wav from here.
media_folder: media

# What the controller keeps: announcements, volumes, values of variables, and what was played.
data_folder: data

# The announcements to start with. They are read once, when the data folder holds none yet.
first_announcements: announcements.xml

# Ids are whole numbers from 1; no room and no navigator may have the id of another one.
rooms:
  - id: 1
    name: Kitchen
    # Where the room is heard:
    #   auto                      the machine's sound device
    #   silent                    nowhere, but in real time
    #   "file: NAME.wav"          a recording of what the room hears
    #   "gstreamer: DESCRIPTION"  anything that GStreamer can play to, such as "gstreamer: alsasink device=hw:1"
    #   "pulse: SINK"             a sink of PulseAudio or PipeWire; music there is quieter meanwhile
    #   "page: 11"                the page of the screen with this id, a tablet that hangs there
    #   "multicast: 239.255.10.1:5004"  IP loudspeakers and telephones that listen at this address
    #   "snapcast: CLIENT server=HOST"  a client of a Snapcast server
    #   "home_assistant: media_player.kitchen url=http://HOST:8123 token_file=FILE"  a player of Home Assistant
    # A value with a colon in it stands in quotes.
    output: auto
    # Volumes run from 0 to 100. Before the first change the room is at start_volume; no announcement is louder than
    # max_volume.
    start_volume: 40
    max_volume: 80
    # Silence before each announcement, for loudspeakers that swallow the first syllable while they wake up.
    lead_silence_ms: 0
  - id: 2
    name: Living room
    output: auto
    start_volume: 30
    max_volume: 80

# The screens that show popups, each in one of the rooms.
navigators:
  - id: 11
    name: Kitchen screen
    room: 1
  - id: 12
    name: Living room screen
    room: 2

# Texts that popups can follow, by the id of their device and their own id.
variables:
  - device: 100
    variable: 1
    name: Visitor
    value: nobody

# Who may reach the controller from other machines, with which rights: admin, play, navigator:ID.
# tokens:
#   - name: phone
#     hash: …
#     rights: [play]

# tls:
#   certificate: certificate.pem
#   key: key.pem
)";

constexpr const char* kAnnouncements = R"(<announcements>
  <announcement>
    <id>1</id>
    <name>Doorbell</name>
    <audio>
      <file>doorbell</file>
      <delay>0</delay>
    </audio>
    <video>
      <file/>
      <text>Somebody is at the door</text>
      <delay>0</delay>
      <timeout>6000</timeout>
      <displayID>0</displayID>
      <variableID>0</variableID>
      <variableName/>
      <OKButton>true</OKButton>
    </video>
    <rooms>
      <room><id>1</id><volume>60</volume></room>
      <room><id>2</id><volume>45</volume></room>
    </rooms>
    <navigators>
      <navigator><id>11</id><room_id>1</room_id><onscreen>true</onscreen></navigator>
      <navigator><id>12</id><room_id>2</room_id><onscreen>true</onscreen></navigator>
    </navigators>
  </announcement>
  <announcement>
    <id>2</id>
    <name>Dinner</name>
    <audio>
      <file>gong</file>
      <delay>500</delay>
    </audio>
    <video>
      <file/>
      <text>Dinner is ready</text>
      <delay>1000</delay>
      <timeout>10000</timeout>
      <displayID>0</displayID>
      <variableID>0</variableID>
      <variableName/>
      <OKButton>true</OKButton>
    </video>
    <rooms>
      <room><id>2</id><volume>50</volume></room>
    </rooms>
    <navigators>
      <navigator><id>11</id><room_id>1</room_id><onscreen>true</onscreen></navigator>
      <navigator><id>12</id><room_id>2</room_id><onscreen>true</onscreen></navigator>
    </navigators>
  </announcement>
</announcements>
)";

} // namespace

std::vector<std::filesystem::path> WriteNewHouse(const std::filesystem::path& folder) {
    const std::pair<fs::path, std::string> contents[] = {
        {folder / "house.yaml", kHouse},
        {folder / "announcements.xml", kAnnouncements},
        {folder / "media" / "doorbell.wav", demosounds::Doorbell()},
        {folder / "media" / "gong.wav", demosounds::Gong()},
    };
    for (const auto& [file, content] : contents)
        if (fs::exists(fs::symlink_status(file)))
            throw std::runtime_error(file.string() + " is there already; nothing has been written");
    fs::create_directories(folder / "media");
    std::vector<fs::path> files;
    for (const auto& [file, content] : contents) {
        // The house file will hold the hashes of tokens.
        durable::Draft draft(file, file.extension() == ".yaml" ? 0600 : 0644);
        draft.Write(content);
        draft.Place();
        files.push_back(file);
    }
    return files;
}

} // namespace controller
