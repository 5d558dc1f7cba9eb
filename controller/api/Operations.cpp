#include "controller/api/Operation.h"
#include "controller/api/handlers/Handlers.h"
#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/EventJson.h"
#include "controller/api/json/MediaJson.h"
#include "controller/api/json/OperationJson.h"
#include "controller/api/json/OutputViews.h"
#include "controller/api/json/PlayViews.h"
#include "controller/api/json/Replies.h"
#include "controller/api/json/SayJson.h"
#include "controller/api/json/SpeechJson.h"
#include "controller/api/json/StatusViews.h"

namespace controller {

// One line an operation, whatever its length: it is a table.
// clang-format off
const std::vector<Operation>& Operations() { // NOLINT(readability-function-size)
    using Kind = Operation::Kind;
    static const std::vector<Operation> kOperations{
        {"list_announcements", "GET", "/api/announcements", Need::Play, Kind::Plain, handlers::ListAnnouncements,
         "Every stored announcement, by id", Content::None(), 200, Content::Of<view::AnnouncementList>()},
        {"add_announcement", "POST", "/api/announcements", Need::Admin, Kind::Json, handlers::AddAnnouncement,
         "Stores an announcement; the agent chooses its id", Content::Of<Announcement>(), 201, Content::Of<Announcement>()},
        {"get_announcement", "GET", "/api/announcements/{id}", Need::Play, Kind::Plain, handlers::GetAnnouncement,
         "One announcement", Content::None(), 200, Content::Of<Announcement>()},
        {"replace_announcement", "PUT", "/api/announcements/{id}", Need::Admin, Kind::Json, handlers::ReplaceAnnouncement,
         "Replaces all of an announcement; with If-Match only when it is still the one that was read", Content::Of<Announcement>(), 200, Content::Of<Announcement>()},
        {"remove_announcement", "DELETE", "/api/announcements/{id}", Need::Admin, Kind::Plain, handlers::RemoveAnnouncement,
         "Removes an announcement; one that plays plays to its end", Content::None(), 204, Content::None()},
        {"play_announcement", "POST", "/api/announcements/{id}/play", Need::Play, Kind::Plain, handlers::PlayAnnouncement,
         "Plays an announcement, now or when its turn comes", Content::None(), 202, Content::Of<view::Played>()},
        {"put_announcement_room", "PUT", "/api/announcements/{id}/rooms/{room}", Need::Admin, Kind::Json, handlers::PutAnnouncementRoom,
         "Adds a room to an announcement, or changes its volume there", Content::Of<announcement_json::RoomVolume>(), 200, Content::Of<Announcement::Room>()},
        {"remove_announcement_room", "DELETE", "/api/announcements/{id}/rooms/{room}", Need::Admin, Kind::Plain, handlers::RemoveAnnouncementRoom,
         "Takes a room out of an announcement", Content::None(), 204, Content::None()},
        {"put_announcement_navigator", "PUT", "/api/announcements/{id}/navigators/{navigator}", Need::Admin, Kind::Json, handlers::PutAnnouncementNavigator,
         "Adds a navigator to an announcement, or changes it there", Content::Of<announcement_json::NavigatorPlace>(), 200, Content::Of<Announcement::Navigator>()},
        {"remove_announcement_navigator", "DELETE", "/api/announcements/{id}/navigators/{navigator}", Need::Admin, Kind::Plain, handlers::RemoveAnnouncementNavigator,
         "Takes a navigator out of an announcement", Content::None(), 204, Content::None()},
        {"try_announcement", "POST", "/api/try", Need::Admin, Kind::Json, handlers::TryAnnouncement,
         "Plays an announcement once, without storing it", Content::Of<Announcement>(), 202, Content::Of<view::Played>()},
        {"dismiss", "POST", "/api/dismiss", Need::Play, Kind::Plain, handlers::Dismiss,
         "Takes the popup of what plays away, on every screen", Content::None(), 202, Content::Of<view::Dismissed>()},
        {"stop", "POST", "/api/stop", Need::Play, Kind::Plain, handlers::Stop,
         "Stops what plays: the sound fades out in every room, and the popups go", Content::None(), 200, Content::Of<view::Stopped>()},
        {"say", "POST", "/api/say", Need::Play, Kind::Json, handlers::Say,
         "Speaks and shows a text, or plays a sound, once", Content::Of<view::SayOrder>(), 202, Content::Of<view::Said>()},
        {"list_queue", "GET", "/api/queue", Need::Play, Kind::Plain, handlers::ListQueue,
         "What waits to be played, the next one first", Content::None(), 200, Content::Of<view::Queue>()},
        {"remove_queued", "DELETE", "/api/queue/{entry}", Need::Play, Kind::Plain, handlers::RemoveQueued,
         "Takes back what waits", Content::None(), 204, Content::None()},
        {"move_queued", "POST", "/api/queue/{entry}/move", Need::Play, Kind::Json, handlers::MoveQueued,
         "Moves what waits in front of another one, or behind all", Content::Of<view::QueueMove>(), 200, Content::Of<view::Queue>()},
        {"get_house", "GET", "/api/house", Need::Play, Kind::Plain, handlers::GetHouse,
         "Name, rooms and navigators of the house", Content::None(), 200, Content::Of<view::House>()},
        {"list_rooms", "GET", "/api/rooms", Need::Play, Kind::Plain, handlers::ListRooms,
         "The rooms", Content::None(), 200, Content::Of<view::RoomList>()},
        {"get_room", "GET", "/api/rooms/{id}", Need::Play, Kind::Plain, handlers::GetRoom,
         "One room", Content::None(), 200, Content::Of<view::Room>()},
        {"set_room_volume", "PUT", "/api/rooms/{id}/volume", Need::Play, Kind::Json, handlers::SetRoomVolume,
         "Sets a room's volume, at most its highest", Content::Of<view::Volume>(), 200, Content::Of<view::RoomVolume>()},
        {"test_room", "POST", "/api/rooms/{id}/test", Need::Play, Kind::Plain, handlers::TestRoom,
         "Plays a tone in the room, at its own volume", Content::None(), 202, Content::Of<view::Played>()},
        {"list_outputs", "GET", "/api/outputs", Need::Admin, Kind::Plain, handlers::ListOutputs,
         "Where rooms could be heard, each with its line for the house file", Content::None(), 200, Content::Of<view::OutputList>()},
        {"test_output", "POST", "/api/outputs/test", Need::Play, Kind::Json, handlers::TestOutput,
         "Plays a tone on an output, whether it is a room's or not", Content::Of<view::OutputTest>(), 200, Content::Of<view::OutputTested>()},
        {"list_navigators", "GET", "/api/navigators", Need::Play, Kind::Plain, handlers::ListNavigators,
         "The navigators", Content::None(), 200, Content::Of<view::NavigatorList>()},
        {"get_navigator", "GET", "/api/navigators/{id}", Need::Navigator, Kind::Plain, handlers::GetNavigator,
         "One navigator", Content::None(), 200, Content::Of<view::Navigator>()},
        {"confirm_popup", "POST", "/api/navigators/{id}/popups/{number}/ok", Need::Navigator, Kind::Plain, handlers::ConfirmPopup,
         "The OK of a popup: closes it on every screen; of one that is gone it does nothing", Content::None(), 200, Content::Of<view::Confirmed>()},
        {"test_navigator", "POST", "/api/navigators/{id}/test", Need::Play, Kind::Plain, handlers::TestNavigator,
         "Shows a popup on the navigator for a few seconds", Content::None(), 202, Content::Of<view::Played>()},
        {"watch_navigator", "GET", "/api/navigators/{id}/events", Need::Navigator, Kind::Events, handlers::WatchNavigator,
         "What a navigator's page shows, as WebSocket", Content::None(), 101, Content::Of<view::PageMessage>(), {{"ticket", "in place of a token"}}},
        {"list_variables", "GET", "/api/variables", Need::Play, Kind::Plain, handlers::ListVariables,
         "The variables", Content::None(), 200, Content::Of<view::VariableList>()},
        {"get_variable", "GET", "/api/variables/{device}/{variable}", Need::Play, Kind::Plain, handlers::GetVariable,
         "One variable", Content::None(), 200, Content::Of<Variables::Variable>()},
        {"set_variable", "PUT", "/api/variables/{device}/{variable}", Need::Play, Kind::Json, handlers::SetVariable,
         "Sets a variable; popups that are bound to it follow", Content::Of<view::VariableValue>(), 200, Content::Of<Variables::Variable>()},
        {"list_media", "GET", "/api/media", Need::Play, Kind::Plain, handlers::ListMedia,
         "The sounds and images of the media folder", Content::None(), 200, Content::Of<view::MediaList>()},
        {"put_media", "PUT", "/api/media/{name}", Need::Admin, Kind::File, handlers::PutMedia,
         "Stores a sound or image in any usual format; 201 when it is new", Content::File(), 200, Content::Of<MediaShelf::Description>(),
         {{"from_ms", "Where the wanted part of a sound begins"}, {"to_ms", "Where it ends, at most 20000 later"},
          {"passing", "Whether it goes when it has been heard: true or false"}}},
        {"get_media", "GET", "/api/media/{name}", Need::Screen, Kind::Plain, handlers::GetMedia,
         "A sound or image itself", Content::None(), 200, Content::File()},
        {"get_one_time_sound", "GET", "/api/once/{name}", Need::Nothing, Kind::Plain, handlers::GetOneTimeSound,
         "A sound that a player in the house was told to fetch, for a minute", Content::None(), 200, Content::File()},
        {"get_thumbnail", "GET", "/api/media/{name}/thumbnail", Need::Screen, Kind::Plain, handlers::GetThumbnail,
         "An image with at most 320 pixels on the longer side", Content::None(), 200, Content::File()},
        {"remove_media", "DELETE", "/api/media/{name}", Need::Admin, Kind::Plain, handlers::RemoveMedia,
         "Removes a sound or image that no announcement uses", Content::None(), 204, Content::None()},
        {"put_loudness", "PUT", "/api/media/{name}/loudness", Need::Admin, Kind::Json, handlers::PutLoudness,
         "Says whether a sound is played as loud as all others, or as it is", Content::Of<view::LoudnessOrder>(), 200, Content::Of<MediaShelf::Description>()},
        {"put_speech", "PUT", "/api/media/{name}/speech", Need::Admin, Kind::Json, handlers::PutSpeech,
         "Stores a spoken sound, and speaks it", Content::Of<SpeechRecipe>(), 200, Content::Of<MediaShelf::Description>()},
        {"list_voices", "GET", "/api/voices", Need::Play, Kind::Plain, handlers::ListVoices,
         "The voices of the house", Content::None(), 200, Content::Of<view::VoiceList>()},
        {"get_status", "GET", "/api/status", Need::Play, Kind::Plain, handlers::GetStatus,
         "What is playing and waiting, and how that is known", Content::None(), 200, Content::Of<view::Status>()},
        {"get_history", "GET", "/api/history", Need::Play, Kind::Plain, handlers::GetHistory,
         "What has been played, newest first", Content::None(), 200, Content::Of<view::History>(), {{"limit", "at most so many, 1 to 1000; 100"}, {"before", "only what came before the entry with this id"}}},
        {"rehearse", "POST", "/api/rehearsal", Need::Play, Kind::Json, handlers::Rehearse,
         "What playing an announcement would do, without playing it", Content::Of<view::RehearsalOrder>(), 200, Content::Of<view::Rehearsal>()},
        {"send_command", "POST", "/api/commands/{name}", Need::Admin, Kind::Json, handlers::SendCommand,
         "Sends the agent one of its own commands", Content::Of<view::Parameters>(), 202, Content::Of<view::Nothing>()},
        {"send_request", "POST", "/api/requests/{name}", Need::Admin, Kind::Json, handlers::SendRequest,
         "Sends the agent one of its own requests; gives its XML", Content::Of<view::Parameters>(), 200, Content::Text("application/xml")},
        {"watch_events", "GET", "/api/events", Need::Play, Kind::Events, handlers::WatchEvents,
         "The full state, then every change, as WebSocket", Content::None(), 101, Content::Of<view::WatcherMessage>(), {{"ticket", "in place of a token"}}},
        {"list_recent_events", "GET", "/api/events/recent", Need::Play, Kind::Plain, handlers::ListRecentEvents,
         "The last events, oldest first", Content::None(), 200, Content::Of<view::EventList>(), {{"limit", "at most so many, 1 to 1000; 100"}}},
        {"give_ticket", "POST", "/api/tickets", Need::Token, Kind::Plain, handlers::GiveTicket,
         "A ticket for opening one WebSocket from a browser", Content::None(), 201, Content::Of<view::Ticket>()},
        {"list_operations", "GET", "/api/operations", Need::Nothing, Kind::Plain, handlers::ListOperations,
         "This list", Content::None(), 200, Content::Of<view::OperationList>()},
        {"describe_api", "GET", "/api/openapi.json", Need::Nothing, Kind::Plain, handlers::DescribeApi,
         "This API as OpenAPI 3.1", Content::None(), 200, Content::Json()},
        {"get_health", "GET", "/healthz", Need::Nothing, Kind::Plain, handlers::GetHealth,
         "Whether the controller works", Content::None(), 200, Content::Of<view::Health>()},
        {"get_metrics", "GET", "/metrics", Need::Play, Kind::Plain, handlers::GetMetrics,
         "Counts for Prometheus", Content::None(), 200, Content::Text("text/plain")},
    };
    return kOperations;
}
// clang-format on

} // namespace controller
