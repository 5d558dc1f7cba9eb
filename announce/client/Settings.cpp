#include "announce/client/Settings.h"

#include "announce/basics/Failure.h"
#include "announce/basics/Words.h"
#include "announce/output/Output.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <optional>

#include <sys/stat.h>
#include <yaml-cpp/yaml.h>

namespace {

namespace fs = std::filesystem;

std::optional<std::string> Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? std::optional<std::string>(value) : std::nullopt;
}

/// A secret that others can read is none.
void WarnIfOthersCanRead(const fs::path& file) {
    struct stat facts {};
    if (stat(file.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode) ||
        (facts.st_mode & (S_IRGRP | S_IROTH)) == 0)
        return;
    Tell("announce: warning: " + file.string() +
             " holds a token, and other users can read it; right: chmod 600 " + file.string(),
         Style::Warning);
}

std::string FirstLine(std::istream& stream, const std::string& name) {
    std::string line;
    if (!std::getline(stream, line))
        throw Failure(ExitStatus::Usage, name + " holds no token, or cannot be read",
                      "a file whose first line is the token");
    line.erase(line.find_last_not_of(" \t\r") + 1);
    return line;
}

std::string ReadTokenFile(const std::string& file) {
    if (file == "-")
        return FirstLine(std::cin, "standard input");
    WarnIfOthersCanRead(file);
    std::ifstream stream(file);
    return FirstLine(stream, file);
}

[[noreturn]] void
Refuse(const fs::path& file, const YAML::Mark& mark, const std::string& why, const std::string& right) {
    const std::string line = mark.line >= 0 ? ":" + std::to_string(mark.line + 1) : "";
    throw Failure(ExitStatus::Usage, file.string() + line + ": " + why, right);
}

/// Keys and values, which are found as those of the command line are.
Arguments ReadConfiguration(const fs::path& file) {
    static const std::vector<std::string> kKeys{"address", "token", "token_file", "ca"};
    Arguments::Values read;
    YAML::Node root;
    try {
        root = YAML::LoadFile(file.string());
    } catch (const YAML::BadFile&) {
        throw Failure(ExitStatus::Usage, file.string() + " cannot be read");
    } catch (const YAML::Exception& error) {
        Refuse(file, error.mark, error.msg, "YAML with the keys " + words::Choice(kKeys));
    }
    if (!root.IsMap() && !root.IsNull())
        Refuse(file, root.Mark(), "it is no map of keys and values",
               "lines such as address: http://house.local:8765");
    for (const auto& entry : root) {
        const std::string key = entry.first.IsScalar() ? entry.first.Scalar() : "";
        if (std::find(kKeys.begin(), kKeys.end(), key) == kKeys.end())
            Refuse(file, entry.first.Mark(), "there is no key \"" + key + "\"", words::Choice(kKeys));
        if (!entry.second.IsScalar())
            Refuse(file, entry.second.Mark(), key + " is no text", "one line of text");
        read[key] = {entry.second.Scalar()};
    }
    return Arguments(std::move(read));
}

/// Files in the configuration are relative to its folder.
std::string BesideConfiguration(const fs::path& configuration, const std::string& file) {
    return (configuration.parent_path() / file).string();
}

std::string FindToken(const Arguments& arguments, const fs::path& file, const Arguments& configuration) {
    if (arguments.Has("token") && arguments.Has("token-file"))
        throw Failure(ExitStatus::Usage, "there are two tokens", "either --token or --token-file");
    if (const auto token = arguments.Find("token"))
        return *token;
    if (const auto tokenFile = arguments.Find("token-file"))
        return ReadTokenFile(*tokenFile);
    if (const auto token = Environment("ANNOUNCE_TOKEN"))
        return *token;
    const auto token = configuration.Find("token");
    if (token)
        WarnIfOthersCanRead(file);
    if (const auto tokenFile = configuration.Find("token_file"))
        return ReadTokenFile(BesideConfiguration(file, *tokenFile));
    return token.value_or("");
}

/// It goes into a header: a line break there would end it.
void RequireHeaderText(const std::string& token) {
    if (token.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~+/=") !=
        std::string::npos)
        throw Failure(ExitStatus::Usage, "the token has characters that no token has",
                      "NAME.SECRET, as it was printed");
}

} // namespace

fs::path ConfigurationFile() {
    const auto folder = Environment("XDG_CONFIG_HOME");
    const auto home = Environment("HOME");
    const fs::path base = folder ? fs::path(*folder) : home ? fs::path(*home) / ".config" : fs::path();
    return base.empty() ? base : base / "announce" / "config.yaml";
}

Connection FindConnection(const Arguments& arguments) {
    const fs::path file = ConfigurationFile();
    std::error_code error; // a file that cannot be looked for is none
    const bool hasFile = !file.empty() && fs::exists(file, error);
    const Arguments configuration = hasFile ? ReadConfiguration(file) : Arguments();
    Connection connection;
    const auto option = arguments.Find("address");
    const auto environment = Environment("ANNOUNCE_ADDRESS");
    if (const auto address = option ? option : environment ? environment : configuration.Find("address"))
        connection.address = Address::Read(*address);
    connection.token = FindToken(arguments, file, configuration);
    RequireHeaderText(connection.token);
    if (const auto ca = arguments.Find("ca"))
        connection.caFile = *ca;
    else if (const auto beside = configuration.Find("ca"))
        connection.caFile = BesideConfiguration(file, *beside);
    connection.otherAddress = "--address, ANNOUNCE_ADDRESS" + (file.empty() ? "" : " or " + file.string());
    return connection;
}
