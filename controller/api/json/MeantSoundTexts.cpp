#include "controller/api/json/Meaning.h"

namespace controller {

namespace {

std::vector<MeantText> OfFiles() {
    return {
        {"no_media_name", "no media file can have this name"},
        {"no_sound_name", "no sound can have this name"},
        {"other_image", "{file} is {kind} image, which not every screen can show"},
        {"file_empty", "the body is empty"},
        {"one_time_over", "there is no such sound, or it is over"},
        {"bad_query_value", "{name} is \"{text}\""},
        {"no_file", "there is no file {file} in the media folder"},
        {"file_in_use", "{file} is used by {number} announcement"},
        {"file_in_use", "{file} is used by {number} announcements"},
        {"image_not_heard", "{file} is an image, and not to be heard"},
        {"image_has_no_parts", "{file} is an image, and has no parts in time"},
        {"too_large", "{file} claims to be {width} by {height} pixels large"},
        {"too_large", "{file} is animated, and {width} by {height} pixels large"},
        {"too_large", "{file} takes too much memory to be decoded"},
        {"too_large", "{file} takes too much memory to be decoded, as a progressive JPEG of its size"},
        {"no_thumbnail", "{file} is no image, and has no thumbnail"},
        {"too_long", "{what} lasts {length}; at most {most} can be played"},
        {"too_long", "{what} would last {length}, and a sound lasts {most} at most"},
        {"nothing_there", "{file} lasts {length}, and the wanted part begins behind that"},
        {"cannot_decode", "{file} cannot be decoded here: {why}"},
        {"cannot_decode", "{file} is no picture that is known here"},
        {"cannot_decode", "{file} holds no sound"},
        {"cannot_decode", "{file} is empty"},
        {"damaged", "{file} is damaged: {why}"},
        {"conversion_failed", "{file} could not be converted: the converter {why}"},
        {"part_empty", "the wanted part of {file} is empty"},
        {"part_too_long", "the wanted part of {file} is {length} long"},
        {"folder_unreadable", "the media folder cannot be read: {why}"},
        {"file_too_large", "{file} is too large to be sent"},
        {"no_plain_file", "{file} is in the media folder already, and is no file"},
        {"file_not_written", "{file} cannot be written to the media folder: {why}"},
        {"file_not_removed", "{file} cannot be removed: {why}"},
    };
}

std::vector<MeantText> OfSounds() {
    return {
        {"sound_missing", "there is no sound file \"{file}\" in the media folder"},
        {"no_such_sound", "there is no such sound file"},
        {"truncated", "truncated: its header promises {promised} bytes of sound, only {there} are there"},
        {"truncated",
         "truncated or damaged: its header promises {promised} samples, only {there} can be decoded"},
        {"sound_empty", "an empty file; a sound file (WAV) is needed"},
        {"header_only", "a WAV header without any sound behind it"},
        {"ends_before_sound", "a WAV file that ends before its sound begins (no \"data\" chunk)"},
        {"holds_no_sound", "holds no sound"},
        {"not_playable", "not a playable sound file: {why}"},
        {"strange_rate", "has a sample rate of {rate} Hz; 8000 to 192000 Hz are usual"},
        {"strange_channels", "has {channels} channels; 1 (mono) to 8 (7.1) can be played"},
        {"ended_while_played", "ended while it was played, after {there} of {promised} samples"},
        {"unreadable", "cannot be read: {why}"},
        {"read_too_slowly", "the file cannot be read as fast as it plays"},
        {"no_room_heard", "no room can be heard: {why}"},
        {"every_room_removed", "every room was removed from the stream"},
        {"stream_closed", "the stream was closed"},
        {"not_opened", "did not open within {time}"},
        {"not_opened", "the output does not open"},
        {"not_closed", "did not close within {time}"},
        {"took_no_sound", "took no sound for {time}"},
        {"still_hangs", "its output still hangs in {number} earlier announcements"},
        {"beginning_missing", "the beginning of the announcement is missing"},
        {"no_sound_device", "this machine has no sound device, and no sound server runs"},
        {"server_without_device", "the sound server has no sound device"},
        {"no_sound_server", "no sound server answers: {why}"},
        {"sound_server_hangs", "the sound server does not answer"},
        {"no_sink", "the sound server has no sink \"{sink}\""},
        {"no_sink", "the sound server has no sink \"{sink}\"; it has {others}"},
        {"card_forbidden", "this program may not use the sound card: its user must be in the group audio"},
        {"zone_unreachable_through", "nothing can be sent to {place} through {interface}: {why}"},
        {"zone_unreachable", "nothing can be sent to {place}: {why}"},
        {"test_running", "another output is being tested"},
        {"tests_hang", "the outputs of earlier tests still hang"},
        {"test_interrupted", "an announcement has begun"},
        {"test_too_long", "it took too long"},
        {"output_hangs", "its output does not answer"},
        {"not_writable", "nothing can be written to \"{folder}\""},
        {"default_unusable", "the default sound device cannot be used"},
        {"nothing_decoded", "nothing could be decoded"},
        {"nothing_decoded", "nothing could be decoded in time"},
        {"breaks_off", "it breaks off before its sound begins"},
        {"no_whole_picture", "it holds no whole picture"},
        {"broken", "it is cut short or broken"},
        {"no_size", "it does not say how large it is"},
        {"stops_midway", "it stops in its midst"},
        {"took_too_long", "took longer than {time} and was ended"},
        {"ended_by_signal", "was ended by the signal {signal}"},
        {"ended_with_status", "ended with the status {status}"},
    };
}

std::vector<MeantText> OfSnapcast() {
    return {
        {"snapcast_unreachable", "the Snapcast server {server} cannot be reached: {why}"},
        {"snapcast_unreachable", "the Snapcast server {server} cannot be found: {why}"},
        {"snapcast_hangs", "the Snapcast server {server} does not answer"},
        {"snapcast_hangs", "the Snapcast server {server} does not do as it is told"},
        {"snapcast_ended", "the Snapcast server {server} has closed the connection"},
        {"snapcast_nonsense", "the Snapcast server {server} answers what is no Snapcast server's"},
        {"snapcast_refuses", "the Snapcast server {server} refuses {what}: {why}"},
        {"snapcast_no_client", "the Snapcast server {server} knows no client {client}"},
        {"snapcast_client_away", "the client {client} is not connected to the Snapcast server {server}"},
        {"snapcast_no_stream", "the Snapcast server {server} has no stream {stream}; {right}"},
        {"snapcast_stream_unusable", "the stream {stream} of the Snapcast server {server} is {why}"},
        {"snapcast_source",
         "the source of the stream {stream} at port {port} of the Snapcast server {server} {why}"},
    };
}

std::vector<MeantText> OfPages() {
    return {
        {"page_not_open", "the page of screen {screen} is not open anywhere"},
        {"page_not_armed",
         "the page of screen {screen} waits for somebody to tap on it once, before which its browser plays "
         "nothing"},
        {"page_too_late", "the page of screen {screen} did not begin to play in time"},
        {"page_gone", "the page of screen {screen} went away while it played"},
        {"page_silenced", "the page of screen {screen} was silenced while it played"},
        {"page_stopped", "the page of screen {screen} stopped before the end"},
        {"page_cannot_play", "the page of screen {screen} cannot play the sound"},
        {"sound_not_for_pages", "the sound is too long for a page, or cannot be read to its end"},
        {"sound_not_offered", "the sound cannot be offered to pages"},
        {"no_pages", "there is no way to the pages of screens"},
    };
}

std::vector<MeantText> OfVoices() {
    return {
        {"no_voice", "there is no voice {voice}"},
        {"no_speed", "a speed of {speed} % is none"},
        {"one_speed", "the voice {voice} has one speed"},
        {"no_text", "there is no text to speak"},
        {"text_too_long", "the text is too long"},
        {"text_too_long_filled", "the text is too long with the values of its variables"},
        {"unknown_variable", "there is no variable {{name}}; the house has none"},
        {"unknown_variable", "there is no variable {{name}}; the house has {others}"},
        {"chime_unplayable", "the chime cannot be played: {why}"},
        {"too_many_spoken", "there are {number} spoken sounds already"},
        {"is_file", "there is a file {file} in the media folder"},
        {"is_spoken", "{file} is a spoken sound"},
        {"sound_removed", "the sound has been removed meanwhile"},
        {"named_removed", "{file} has been removed meanwhile"},
        {"not_spoken", "it is not spoken: {why}"},
        {"cannot_be_spoken", "it cannot be spoken: {why}"},
        {"voice_too_slow", "the voice {voice} has not spoken within {time}"},
        {"voice_not_installed", "the voice {voice} is not there: no program {program} is installed"},
        {"voice_has_too_many", "the voice {voice} has {number} texts before it"},
        {"voice_silent", "the voice {voice} has said nothing"},
        {"voice_silent", "the voice {voice} has nothing to say"},
        {"voice_unreachable", "the voice {voice} cannot be reached: {why}"},
        {"voice_failed", "the voice {voice} failed with status {why}"},
        {"voice_killed", "the voice {voice} was ended by signal {why}"},
        {"voice_stopped", "the voice {voice} was stopped, for the controller ends"},
        {"voice_floods", "the voice {voice} has printed more than {size}"},
        {"voice_broken_off", "the voice {voice} has broken off before its {end}"},
        {"voice_answers", "the voice {voice} answers: {why}"},
        {"voice_gives_no_wav", "the voice {voice} gives what is no WAV file"},
        {"the_speech", "the speech"},
    };
}

std::vector<MeantText> OfHouses() {
    return {
        {"house_token_unreadable", "the token of Home Assistant cannot be read from {file}: {why}"},
        {"house_token_open",
         "everybody on this machine can read the token in {file}; `chmod 640` takes that away"},
        {"house_no_token",
         "there is no token of Home Assistant in {file}, or more than one; it is one long word"},
        {"house_refuses", "{house} does not take the token in {file}"},
        {"house_no_player", "{house} knows no {player}"},
        {"house_answers", "{house} answers {status} to {player}"},
        {"house_other_answer", "{house} answers as Home Assistant does not"},
        {"house_unreachable", "{house} cannot be reached: {why}"},
        {"house_unsafe", "{house} cannot be reached safely: {why}"},
        {"house_slow", "{house} has not answered within {time}"},
        {"house_broken_off", "{house} has broken off: {why}"},
        {"house_lost", "in the midst of the sound: {why}"},
        {"player_unavailable", "{player} is unavailable at {house}"},
        {"player_is_group", "{player} is a group of players, which would not go on with its music "
                            "afterwards; name a single one"},
        {"player_not_stopped", "{player} could not be stopped: {why}"},
        {"player_fetches_nothing", "{player} has not fetched the sound from {address} within {time}"},
        {"player_too_late", "has come too late for this announcement, which was begun without it"},
        {"sound_no_address", "there is no address at which a player could fetch the sound"},
        {"sound_no_file", "the sound cannot be handed on as a file, for it cannot be decoded or lasts longer "
                          "than a minute"},
    };
}

} // namespace

std::vector<MeantText> MeantTextsOfSounds() {
    std::vector<MeantText> all = OfFiles();
    for (const auto& some : {OfSounds(), OfPages(), OfSnapcast(), OfVoices(), OfHouses()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace controller
