#include "controller/api/json/Meaning.h"

#include <algorithm>

namespace controller {

namespace {

using Rows = std::vector<MeantText>;

Rows Requests() {
    return {
        {"no_host", "the request has no Host, or several"},
        {"other_host", "this Host is not served here"},
        {"other_origin", "the request comes from a page of another origin"},
        {"no_such_address", "there is nothing at this address"},
        {"other_method", "{method} is not for this address"},
        {"bad_query", "the query is badly encoded"},
        {"websocket_only", "this address is a WebSocket"},
        {"token_needed", "a token is needed"},
        {"token_unknown", "this token is unknown"},
        {"ticket_unknown", "this ticket is used, too old or unknown"},
        {"tokens_wait", "too many tokens wait to be looked at"},
        {"too_many_wrong_tokens", "too many wrong tokens came from this address"},
        {"no_right", "this token has not the right for this operation"},
        {"body_encoded", "the body is encoded"},
        {"body_of_wrong_type", "the body is of the wrong type"},
        {"body_not_taken", "this operation takes no body"},
        {"body_too_large", "the body is too large: {bytes} bytes"},
        {"body_too_large", "the body is too large"},
        {"body_padded", "what stands around the chunks of the body is too large"},
        {"body_too_deep", "the body nests too deep"},
        {"body_no_json", "the body is no JSON, at byte {byte}"},
        {"number_too_large", "the body holds a number that is too large: {number}"},
        {"folded_header", "a header goes on on the next line"},
        {"address_too_long", "the address is too long"},
        {"no_clear_end", "the request leaves open where it ends"},
        {"head_too_large", "the request's head is too large"},
        {"http_version", "the request is of an unknown version"},
        {"no_http", "the request is no HTTP: {why}"},
        {"websocket_version", "the WebSocket request is of an unknown version"},
        {"websocket_key", "the WebSocket request has no proper key"},
        {"websocket_too_early", "data came before the WebSocket was open"},
        {"request_too_slow", "the request did not come in time"},
        {"failed", "the controller failed to handle this request"},
        {"failed", "the controller failed: {why}"},
        {"other_files", "other files are being stored"},
        {"other_thumbnails", "many thumbnails are being made"},
        {"other_rehearsals", "other rehearsals are under way"},
        {"agent_not_running", "the agent is not running"},
        {"ending", "the controller is ending"},
    };
}

Rows SentValues() {
    return {
        {"address_no_number", "\"{text}\" in the address is no number"},
        {"address_no_id", "{text} in the address names nothing"},
        {"limit_out_of_range", "limit: \"{text}\" is out of range"},
        {"before_no_entry", "before: \"{text}\" is no id of the history"},
        {"member_unknown", "unknown member {member}"},
        {"member_missing", "{member} is missing"},
        {"value_no_object", "{member} is no object"},
        {"value_no_list", "{member} is no list"},
        {"value_no_truth", "{member}: {value} is no truth value"},
        {"value_no_text", "{member}: {value} is no text"},
        {"value_no_text", "{member} is no text"},
        {"value_no_integer", "{member}: {value} is no integer"},
        {"value_out_of_range", "{member}: {value} is out of range"},
        {"value_too_long", "{member} is too long: {bytes} bytes"},
        {"value_too_long", "{member} is too long"},
        {"value_twice", "{member} stands in the list already"},
        {"id_differs", "{member} is not the announcement's"},
        {"character_not_kept", "a text of the announcement holds a character that cannot be kept"},
    };
}

Rows OfTheHouse() {
    return {
        {"no_announcement", "there is no announcement {announcement}"},
        {"announcement_changed", "announcement {announcement} has been changed meanwhile"},
        {"announcement_removed", "the announcement has been removed meanwhile"},
        {"announcement_without_room", "announcement {announcement} has no room {room}"},
        {"announcement_without_navigator", "announcement {announcement} has no navigator {navigator}"},
        {"agent_knows_no_announcement", "Invalid announcement id on {operation}"},
        {"agent_cannot_modify", "Unable to modify announcement"},
        {"agent_takes_no_such", "Unable to dom xml to create announcement"},
        {"agent_has_no", "the agent has no {name}"},
        {"agent_failed", "the agent failed: {why}"},
        {"no_room", "the house has no room {room}"},
        {"no_output", "there is no output \"{output}\""},
        {"no_navigator", "the house has no navigator {navigator}"},
        {"no_variable", "the house has no variable {variable} of device {device}"},
        {"no_ok_button", "this popup has no OK button"},
        {"no_such_entry", "no such entry waits"},
        {"too_many_wait", "{number} announcements wait already"},
        {"plays_already", "an announcement is playing"},
        {"began_meanwhile", "an announcement has begun meanwhile"},
        {"nothing_to_say", "there is nothing to say"},
        {"nobody_there", "nobody would hear or see it"},
        {"not_on_disk", "the change is made, but not on the disk yet: {why}"},
        {"history_unreadable", "the history cannot be read: {why}"},
    };
}

Rows WhatWouldBeRight() {
    return {
        {"later", "another try in a moment"},
        {"later_when_over", "another try when it is over"},
        {"later_when_played", "another try when some of them have been played or taken back"},
        {"token_made", "`announcement-controller token add` makes one"},
        {"token_in_a_minute", "a right one, in a minute"},
        {"the_right", "the right {right}"},
        {"whole_request", "a whole request"},
        {"text_or_sound", "a text, or the name of a sound"},
        {"room_or_navigator", "at least one room or navigator"},
        {"voice_or_screen", "another voice, or a screen to show it"},
        {"shorter_text", "a shorter text, or a higher speed"},
        {"variables_in_braces", "names of variables of the house in { }"},
        {"some_bytes", "a text of 1 to {most} bytes"},
        {"room_on_disk", "room and leave to write in the data folder; it is tried again by itself"},
        {"id_of_rooms", "an id that GET /api/rooms lists"},
        {"listed_output", "one that GET /api/outputs lists"},
        {"id_of_navigators", "an id that GET /api/navigators lists"},
        {"one_of_variables", "one that GET /api/variables lists"},
        {"readable_parameters", "parameters that the agent can read"},
        {"stored_id", "the id of a stored announcement"},
        {"waiting_entry", "an entry that GET /api/queue lists"},
        {"file_itself", "the file itself"},
        {"good_name",
         "1 to {most} letters, digits, -, _ and ., a letter or digit first, ending in one of {endings}"},
        {"image_ending", "an image that ends in one of {endings}"},
        {"unused_file", "a file that nobody uses: change or delete what stands in users first"},
        {"name_of_sound", "the name of a sound"},
        {"name_without_wav", "the name of a sound file, without \".wav\""},
        {"one_removed", "one of them removed before"},
        {"other_name_or_removed", "another name, or the file removed before"},
        {"other_name_or_spoken_removed", "another name, or the spoken sound removed before"},
        {"smaller_image", "a picture of at most 100 million pixels, or 1,920 on a side where it is animated"},
        {"whole_sound", "a whole sound file of at most {most}"},
        {"whole_file", "a whole file"},
        {"playable_sound", "a sound file that can be played"},
        {"part_of_it", "a part of it: from_ms and to_ms (\"announce media add --from --to\") say which"},
        {"known_kinds",
         "a sound (MP3, M4A, AAC, OGG, Opus, FLAC, WebM, AIFF, WAV) or an image (PNG, JPEG, GIF, WebP)"},
        {"other_file_or_wav", "another file, or the sound as a WAV file of 16 bits"},
        {"bytes_at_most", "at most {most} bytes"},
        {"entries_at_most", "at most {most} entries"},
        {"one_of", "one of {choices}"},
        {"integer_between", "an integer from {least} to {most}"},
    };
}

Rows Loose() {
    return {
        {"list", "{why}; {rest}"},
        {Meaning::kOther, "{what}: {why}"},
        {"damaged", "{file}: {why}"}, // by its code alone
    };
}

/// How many letters of the text stand outside of braces.
std::size_t OwnLetters(const MeantText& row) {
    std::size_t letters = 0;
    bool isInside = false;
    for (const char* letter = row.text; *letter != '\0'; ++letter) {
        isInside = *letter == '{' || (isInside && *letter != '}');
        letters += isInside ? 0 : 1;
    }
    return letters;
}

} // namespace

const std::vector<MeantText>& MeantTexts() {
    static const Rows kAll = [] {
        Rows all;
        for (const Rows& some :
             {Requests(), SentValues(), OfTheHouse(), MeantTextsOfSounds(), WhatWouldBeRight(), Loose()})
            all.insert(all.end(), some.begin(), some.end());
        std::stable_sort(all.begin(), all.end(), [](const MeantText& one, const MeantText& other) {
            return OwnLetters(one) > OwnLetters(other);
        });
        return all;
    }();
    return kAll;
}

} // namespace controller
