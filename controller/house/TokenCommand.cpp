#include "controller/house/TokenCommand.h"

#include "controller/access/Rights.h"
#include "controller/access/TokenSecret.h"
#include "controller/house/HouseFile.h"
#include "controller/house/TokenText.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace controller {

namespace fs = std::filesystem;

namespace token_command {
namespace {

std::string ReadText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    return text.str();
}

/// A service reads the file as a user of its own, also when somebody else has changed it.
void KeepOwner(const fs::path& of, const fs::path& scrap) {
    struct stat status {};
    if (::stat(of.c_str(), &status) == 0 && ::chown(scrap.c_str(), status.st_uid, status.st_gid) == 0)
        return;
    std::error_code error;
    fs::remove(scrap, error); // an empty file
    throw std::runtime_error("cannot leave " + of.string() +
                             " to its owner and group; run this as its owner, or as root");
}

/// Puts the text in the file's place, whole or not at all.
void WriteText(const fs::path& file, const std::string& text) {
    // A house file that is a link stays one.
    const fs::path target = fs::canonical(file);
    const fs::path scrap = target.string() + ".new";
    {
        std::ofstream stream(scrap, std::ios::binary | std::ios::trunc);
        KeepOwner(target, scrap);
        fs::permissions(scrap, fs::status(target).permissions());
        stream << text << std::flush;
        if (!stream)
            throw std::runtime_error("cannot write " + scrap.string());
    }
    fs::rename(scrap, target);
}

/// The changed text, once it is known to be a house; throws its mistakes otherwise.
House Checked(const fs::path& file, const std::string& text) {
    return ReadHouse(text, file.parent_path(), file);
}

bool HasToken(const House& house, const std::string& name) {
    return std::any_of(house.tokens.begin(), house.tokens.end(),
                       [&](const Token& token) { return token.name == name; });
}

} // namespace

void Add(const fs::path& house, const std::string& name, const std::vector<std::string>& rights) {
    if (!token_secret::IsName(name))
        throw std::runtime_error("\"" + name +
                                 "\" cannot name a token; a name is 1 to 64 letters, digits, - and _");
    const Rights allowed = Rights::Read(rights); // throws for what is no right
    const std::string secret = token_secret::Chance(32);
    const std::string text = token_text::Add(ReadText(house), {name, token_secret::Hash(secret), allowed});
    if (!HasToken(Checked(house, text), name))
        throw std::runtime_error("the token could not be put into " + house.string() +
                                 "; it is left as it was");
    WriteText(house, text);
    std::cout << name << '.' << secret << '\n'
              << "This is the token; it is not kept anywhere, and cannot be shown again.\n"
              << "A controller that is running knows it after its next start.\n";
}

void List(const fs::path& house) {
    const House read = ReadHouseFile(house);
    if (read.tokens.empty())
        std::cout << "There are no tokens: everybody on this machine may do everything.\n";
    for (const Token& token : read.tokens) {
        std::cout << token.name << ':';
        for (const std::string& right : token.rights.Texts())
            std::cout << ' ' << right;
        std::cout << '\n';
    }
}

void Remove(const fs::path& house, const std::string& name) {
    const std::string text = token_text::Remove(ReadText(house), name);
    if (HasToken(Checked(house, text), name))
        throw std::runtime_error("the token could not be taken out of " + house.string() +
                                 "; it is left as it was");
    WriteText(house, text);
    std::cout << "The token " << name
              << " is removed; a controller that is running forgets it at its next start.\n";
}

} // namespace token_command

} // namespace controller
