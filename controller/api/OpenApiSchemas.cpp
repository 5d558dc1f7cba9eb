#include "controller/api/OpenApiSchemas.h"

namespace controller {

namespace {

constexpr const char* kSchemas = R"JSON({
"Id": {"type": "integer", "minimum": 1, "maximum": 4294967295},
"Milliseconds": {"type": "integer", "minimum": 0, "maximum": 4294967295},
"Nothing": {"type": "object", "additionalProperties": false},
"Anything": {"type": "object"},
"Problem": {"type": "object", "required": ["type", "title", "status", "detail"], "properties": {
  "type": {"type": "string"}, "title": {"type": "string"}, "status": {"type": "integer"},
  "detail": {"type": "string", "description": "What is wrong, and where"},
  "right": {"type": "string", "description": "What would be right"}}},
"VariableBinding": {"type": "object", "required": ["device", "variable"], "additionalProperties": false, "properties": {
  "device": {"$ref": "#/components/schemas/Id"}, "variable": {"$ref": "#/components/schemas/Id"},
  "name": {"type": "string"}}},
"AnnouncementRoom": {"type": "object", "required": ["id"], "additionalProperties": false, "properties": {
  "id": {"$ref": "#/components/schemas/Id"},
  "volume": {"type": "integer", "minimum": -1, "maximum": 100, "default": -1,
             "description": "0 and -1 leave the room's volume as it is"}}},
"AnnouncementRoomVolume": {"type": "object", "additionalProperties": false, "properties": {
  "volume": {"type": "integer", "minimum": -1, "maximum": 100, "default": -1}}},
"AnnouncementNavigator": {"type": "object", "required": ["id"], "additionalProperties": false, "properties": {
  "id": {"$ref": "#/components/schemas/Id"}, "room": {"type": "integer", "minimum": 0, "maximum": 4294967295},
  "onscreen": {"type": "boolean", "default": true}}},
"AnnouncementNavigatorPlace": {"type": "object", "additionalProperties": false, "properties": {
  "room": {"type": "integer", "minimum": 0, "maximum": 4294967295}, "onscreen": {"type": "boolean", "default": true}}},
"Announcement": {"type": "object", "required": ["name"], "additionalProperties": false, "properties": {
  "id": {"$ref": "#/components/schemas/Id"},
  "name": {"type": "string"},
  "audio": {"type": "object", "additionalProperties": false, "properties": {
    "file": {"type": "string", "description": "A sound of the media folder, without .wav"},
    "delay_ms": {"$ref": "#/components/schemas/Milliseconds"}}},
  "video": {"type": "object", "additionalProperties": false, "properties": {
    "image": {"type": "string", "description": "A file of the media folder, or an http(s) address"},
    "text": {"type": "string"},
    "delay_ms": {"$ref": "#/components/schemas/Milliseconds"},
    "timeout_ms": {"type": "integer", "minimum": 0, "maximum": 4294967295, "description": "0 means 30000"},
    "ok_button": {"type": "boolean", "default": true},
    "variable": {"nullable": true, "allOf": [{"$ref": "#/components/schemas/VariableBinding"}]}}},
  "rooms": {"type": "array", "maxItems": 1000, "items": {"$ref": "#/components/schemas/AnnouncementRoom"}},
  "navigators": {"type": "array", "maxItems": 1000, "items": {"$ref": "#/components/schemas/AnnouncementNavigator"}}}},
"AnnouncementList": {"type": "object", "required": ["announcements"], "properties": {
  "announcements": {"type": "array", "items": {"$ref": "#/components/schemas/Announcement"}}}},
"Played": {"type": "object", "required": ["announcement", "state"], "properties": {
  "announcement": {"$ref": "#/components/schemas/Id"}, "state": {"type": "string", "enum": ["playing", "waiting"]}}},
"Dismissed": {"type": "object", "required": ["announcement"], "properties": {
  "announcement": {"type": "integer", "nullable": true}}},
"Room": {"type": "object", "required": ["id", "name", "output", "volume", "max_volume", "lead_silence_ms",
    "in_announcement", "awake", "trouble"], "properties": {
  "id": {"$ref": "#/components/schemas/Id"}, "name": {"type": "string"}, "output": {"type": "string"},
  "volume": {"type": "integer", "minimum": 0, "maximum": 100}, "max_volume": {"type": "integer"},
  "lead_silence_ms": {"type": "integer"}, "in_announcement": {"type": "boolean"}, "awake": {"type": "boolean"},
  "trouble": {"type": "string", "nullable": true}}},
"RoomList": {"type": "object", "required": ["rooms"], "properties": {
  "rooms": {"type": "array", "items": {"$ref": "#/components/schemas/Room"}}}},
"Volume": {"type": "object", "required": ["volume"], "additionalProperties": false, "properties": {
  "volume": {"type": "integer", "minimum": 0, "maximum": 100}}},
"RoomVolume": {"type": "object", "required": ["id", "volume"], "properties": {
  "id": {"$ref": "#/components/schemas/Id"}, "volume": {"type": "integer"}}},
"Popup": {"type": "object", "required": ["number", "message", "image", "ok_button", "remaining_ms", "ends"],
  "properties": {
  "number": {"type": "integer"}, "message": {"type": "string"}, "image": {"type": "string"},
  "ok_button": {"type": "boolean"}, "remaining_ms": {"type": "integer"},
  "ends": {"type": "string", "format": "date-time"}}},
"Navigator": {"type": "object", "required": ["id", "name", "room", "pages", "awake", "popup"], "properties": {
  "id": {"$ref": "#/components/schemas/Id"}, "name": {"type": "string"}, "room": {"$ref": "#/components/schemas/Id"},
  "pages": {"type": "integer"}, "awake": {"type": "boolean"},
  "popup": {"nullable": true, "allOf": [{"$ref": "#/components/schemas/Popup"}]}}},
"NavigatorList": {"type": "object", "required": ["navigators"], "properties": {
  "navigators": {"type": "array", "items": {"$ref": "#/components/schemas/Navigator"}}}},
"House": {"type": "object", "required": ["name", "rooms", "navigators"], "properties": {
  "name": {"type": "string"},
  "rooms": {"type": "array", "items": {"$ref": "#/components/schemas/Room"}},
  "navigators": {"type": "array", "items": {"$ref": "#/components/schemas/Navigator"}}}},
"Confirmed": {"type": "object", "required": ["dismissed"], "properties": {"dismissed": {"type": "boolean"}}},
"Variable": {"type": "object", "required": ["device", "variable", "name", "value"], "properties": {
  "device": {"$ref": "#/components/schemas/Id"}, "variable": {"$ref": "#/components/schemas/Id"},
  "name": {"type": "string"}, "value": {"type": "string"}}},
"VariableList": {"type": "object", "required": ["variables"], "properties": {
  "variables": {"type": "array", "items": {"$ref": "#/components/schemas/Variable"}}}},
"VariableValue": {"type": "object", "required": ["value"], "additionalProperties": false, "properties": {
  "value": {"type": "string", "maxLength": 4096}}},
"MediaFile": {"type": "object", "required": ["name", "kind", "bytes", "modified"], "properties": {
  "name": {"type": "string"}, "kind": {"type": "string", "enum": ["sound", "image"]}, "bytes": {"type": "integer"},
  "modified": {"type": "string", "format": "date-time"}, "duration_ms": {"type": "integer"},
  "sample_rate": {"type": "integer"}, "channels": {"type": "integer"},
  "trouble": {"type": "string", "description": "Why the sound cannot be played"}}},
"MediaList": {"type": "object", "required": ["media"], "properties": {
  "media": {"type": "array", "items": {"$ref": "#/components/schemas/MediaFile"}}}},
"Status": {"type": "object", "properties": {
  "house": {"type": "string"}, "version": {"type": "string"}, "started": {"type": "string", "format": "date-time"},
  "agent": {"type": "boolean"},
  "playing": {"type": "object", "nullable": true, "properties": {
    "announcement": {"$ref": "#/components/schemas/Id"}, "name": {"type": "string"},
    "since": {"type": "string", "format": "date-time"}}},
  "waiting": {"type": "array", "items": {"$ref": "#/components/schemas/Id"}},
  "sound": {"type": "object", "nullable": true, "properties": {
    "file": {"type": "string"}, "since": {"type": "string", "format": "date-time"}}},
  "popups": {"type": "array", "items": {"type": "object", "properties": {
    "navigator": {"$ref": "#/components/schemas/Id"}, "popup": {"$ref": "#/components/schemas/Popup"}}}},
  "state_saved": {"type": "boolean"}, "state_error": {"type": "string", "nullable": true},
  "events": {"type": "integer"},
  "known_from": {"type": "object", "additionalProperties": {"type": "string"}}}},
"History": {"type": "object", "required": ["history"], "properties": {
  "history": {"type": "array", "items": {"type": "object", "properties": {
    "id": {"type": "integer"}, "announcement": {"$ref": "#/components/schemas/Id"}, "name": {"type": "string"},
    "started": {"type": "string", "format": "date-time"}, "ended": {"type": "string", "format": "date-time"},
    "rooms": {"type": "array", "items": {"$ref": "#/components/schemas/Id"}},
    "navigators": {"type": "array", "items": {"$ref": "#/components/schemas/Id"}},
    "file": {"type": "string"}, "outcome": {"type": "string"}}}}}},
"EventList": {"type": "object", "required": ["events"], "properties": {
  "events": {"type": "array", "items": {"type": "object", "required": ["seq", "time", "type", "data"], "properties": {
    "seq": {"type": "integer"}, "time": {"type": "string", "format": "date-time"}, "type": {"type": "string"},
    "data": {"type": "object"}}}}}},
"RehearsalOrder": {"type": "object", "required": ["announcement"], "additionalProperties": false, "properties": {
  "announcement": {"oneOf": [{"$ref": "#/components/schemas/Id"}, {"$ref": "#/components/schemas/Announcement"}]},
  "stream_ready_ms": {"type": "integer", "minimum": 0, "maximum": 600000, "default": 20},
  "sound_ms": {"type": "integer", "minimum": 0, "maximum": 600000}}},
"Rehearsal": {"type": "object", "required": ["announcement", "length_ms", "complete", "timeline"], "properties": {
  "announcement": {"$ref": "#/components/schemas/Id"}, "length_ms": {"type": "integer"},
  "complete": {"type": "boolean"},
  "timeline": {"type": "array", "items": {"type": "object", "required": ["at_ms", "what"], "properties": {
    "at_ms": {"type": "integer"}, "what": {"type": "string"}}}}}},
"Parameters": {"type": "object", "additionalProperties": {"type": "string"}},
"Ticket": {"type": "object", "required": ["ticket", "expires_in_ms", "rights"], "properties": {
  "ticket": {"type": "string"}, "expires_in_ms": {"type": "integer"},
  "rights": {"type": "array", "items": {"type": "string"}}}},
"OperationList": {"type": "object", "required": ["operations"], "properties": {
  "operations": {"type": "array", "items": {"type": "object", "properties": {
    "name": {"type": "string"}, "method": {"type": "string"}, "path": {"type": "string"},
    "right": {"type": "string"}, "summary": {"type": "string"},
    "parameters": {"type": "array", "items": {"type": "object", "properties": {
      "name": {"type": "string"}, "in": {"type": "string"}, "summary": {"type": "string"}}}}}}}}},
"Health": {"type": "object", "required": ["status"], "properties": {"status": {"type": "string"}}}
})JSON";

} // namespace

const char* OpenApiSchemas() noexcept {
    return kSchemas;
}

} // namespace controller
