#include "announce/announcements/Options.h"

#include "announce/announcements/Targets.h"

#include <algorithm>

namespace announcement_options {
namespace {

std::string KeyOf(const fields::Field& field) {
    return field.option.substr(2);
}

OptionDefinition RemovalFrom(const fields::Field& list) {
    const std::string value = list.kind == fields::Kind::Rooms ? "ROOM" : "SCREEN";
    return {"--remove-" + KeyOf(list), value, list.removal, list.completes, false, true};
}

void ApplyList(const fields::Field& list, const Arguments& arguments, House& house, Json& items) {
    for (const std::string& text : arguments.All(RemovalFrom(list).Key()))
        targets::TakeOut(list, items, text, house);
    for (const std::string& text : arguments.All(KeyOf(list)))
        targets::PutInto(items, targets::Read(list, targets::TakenApart(list, text, house), house));
}

} // namespace

Options Describing(Options before) {
    for (const fields::Field& field : fields::All())
        before.push_back({field.option, field.value, field.help, field.completes, false, field.IsList()});
    return before;
}

Options Changing(Options before) {
    Options options = Describing(std::move(before));
    for (const fields::Field& field : fields::All()) {
        if (field.IsList())
            options.push_back(RemovalFrom(field));
    }
    return options;
}

void Apply(const Arguments& arguments, House& house, Json& announcement) {
    for (const fields::Field& field : fields::All()) {
        if (field.IsList())
            ApplyList(field, arguments, house, announcement[field.member]);
        else if (const auto text = arguments.Find(KeyOf(field)))
            announcement[field.member] = fields::Read(field, field.option, *text, house);
    }
}

bool AreAny(const Arguments& arguments) {
    const Options all = Changing({});
    return std::any_of(all.begin(), all.end(),
                       [&](const OptionDefinition& option) { return arguments.Has(option.Key()); });
}

} // namespace announcement_options
