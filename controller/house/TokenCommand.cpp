#include "controller/house/TokenCommand.h"

#include "controller/access/Rights.h"
#include "controller/access/TokenSecret.h"
#include "controller/driver/Durable.h"
#include "controller/house/HouseFile.h"
#include "controller/house/TokenText.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

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

/// Puts the text in the file's place. A service reads it as a user of its own, also when somebody else has
/// changed it; and a house file that is a link stays one.
void WriteText(const fs::path& file, const std::string& text) {
    const fs::path target = fs::canonical(file);
    durable::Draft::Sweep(target.parent_path());
    durable::Draft draft(target, 0600);
    draft.TakeOwnerAndMode();
    draft.Write(text);
    draft.Place();
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
