#include "announce/documents/Topics.h"

namespace topics {

const std::string& Description() {
    static const std::string kText =
        "Drives a running announcement controller over its HTTP and WebSocket API, for scripts and for "
        "people. Announcements, rooms, screens and variables are given by name, in small or capital "
        "letters, or by id. What several have in common as their name has to be given by its id; the message "
        "lists them.\n\n"
        "Tables are for people, and on a terminal they are shortened to its width. With `--json` a command "
        "prints what the API gives, for programs. With `--watch` a view is shown again whenever something "
        "changes; together with `--json` it is a JSON object a line. Messages go to standard error.";
    return kText;
}

const std::string& Connecting() {
    static const std::string kText =
        "The address is that of `--address`, else that of `ANNOUNCE_ADDRESS`, else that of the configuration "
        "file, else `http://127.0.0.1:8765`. Without a scheme it is `http://`, without a port `8765`.\n\n"
        "The token is that of `--token` or `--token-file`, else that of `ANNOUNCE_TOKEN`, else that of the "
        "configuration file. A house without tokens needs none. A file with a token that other users can "
        "read is warned about.\n\n"
        "Of an `https://` address the certificate is verified: its name, and by the system's authorities, or "
        "by those of `--ca` alone.";
    return kText;
}

const Rows& Environment() {
    static const Rows kRows{
        {"ANNOUNCE_ADDRESS", "Where the controller answers."},
        {"ANNOUNCE_TOKEN", "The token."},
        {"VISUAL", "The editor of `edit`."},
        {"EDITOR", "The editor, when VISUAL is not set; vi when neither is."},
        {"NO_COLOR", "When it is set and not empty, there is no colour on terminals either."},
        {"XDG_CONFIG_HOME", "The folder of configurations; ~/.config when it is not set."},
    };
    return kRows;
}

const Rows& Files() {
    static const Rows kRows{{"~/.config/announce/config.yaml",
                             "The configuration file, YAML with these keys, all of which "
                             "may be left out. Files in it are relative to its folder."}};
    return kRows;
}

const Rows& ConfigurationKeys() {
    static const Rows kRows{
        {"address", "Where the controller answers."},
        {"token", "The token."},
        {"token_file", "A file whose first line is the token; it goes before token."},
        {"ca", "A PEM file with the authority of the controller's certificate."},
    };
    return kRows;
}

} // namespace topics
