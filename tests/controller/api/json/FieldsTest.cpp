#include "controller/api/json/Fields.h"

#include "controller/api/ApiError.h"
#include "controller/api/json/ParseJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace controller {

using fields::Made;
using fields::Member;
using fields::Object;

namespace {

struct Wheel {
    std::uint32_t id = 0;
    std::int64_t turns = -3;

    static Object Table() {
        return {"Wheel", {Member<&Wheel::id>("id").AsId().Required(), Member<&Wheel::turns>("turns")}};
    }
};

struct Load {
    std::string what = "sand";
};

struct Cart {
    bool isOpen = true;
    std::int32_t speed = 5;
    std::uint64_t distance = 0;
    std::string name;
    std::optional<Wheel> spare;
    std::optional<std::uint32_t> driver;
    std::vector<Wheel> wheels;
    std::vector<std::string> stickers;
    Load load;

    static Object Table() {
        return {"Cart",
                {Member<&Cart::isOpen>("open"), Member<&Cart::speed>("speed", "In km/h").Between(-5, 30),
                 Member<&Cart::distance>("distance"),
                 Member<&Cart::name>("name").AtMostBytes(4).Required("a name"), Member<&Cart::spare>("spare"),
                 Member<&Cart::driver>("driver").AsId().LeftOutWhenEmpty(),
                 Member<&Cart::wheels>("wheels").AtMostEntries(2).EachOnce(),
                 Member<&Cart::stickers>("stickers").AtMostBytes(3).EachOnce().LeftOutWhenEmpty(),
                 Member<&Cart::load, &Load::what>("load").NullWhenEmpty()}};
    }
};

std::string WhatOf(const Load& load) {
    return "a cart of " + load.what;
}

/// What is only given.
struct Report {
    std::chrono::system_clock::time_point time{std::chrono::milliseconds(1500)};
    Load load;
    std::shared_ptr<const Wheel> wheel;
    fields::Written<Wheel> written{R"({"id":9})"};
    std::string state = "new";

    static std::string Words(const Report& report) { return WhatOf(report.load); }

    static Object Table() {
        return {"Report",
                {fields::Constant("type", "report"), Member<&Report::time>("time"), Made<&Words>("words"),
                 Member<&Report::wheel>("wheel").NullWhenEmpty(), Member<&Report::written>("written"),
                 Member<&Report::state>("state").OneOf({"new", "old"})}};
    }
};

struct Empty {
    static Object Table() { return {"Empty", {}}; }
};

template <class Value>
std::string Refusal(const std::string& text, std::string_view path = {}) {
    try {
        return "taken: " + fields::ToText(fields::Read<Value>(ParseJson(text), path));
    } catch (const ApiError& error) {
        EXPECT_EQ(error.Status(), 400U);
        return std::string(error.what()) + " | " + error.Right();
    }
}

std::string CartRefusal(const std::string& member) {
    return Refusal<Cart>(R"({"name":"n",)" + member + "}");
}

struct Described {
    nlohmann::ordered_json given = nlohmann::ordered_json::object();
    nlohmann::ordered_json schemas = nlohmann::ordered_json::object();
};

template <class Value>
Described Describe(bool isAlsoGiven, bool isTaken) {
    Described described;
    fields::Components components{described.schemas};
    if (isAlsoGiven)
        fields::TypeOf<Value>().Describe(described.given, {}, components);
    components.isTaken = isTaken;
    if (isTaken)
        fields::TypeOf<Value>().Describe(described.given, {}, components);
    return described;
}

} // namespace

TEST(FieldsTest, WhatIsReadIsWrittenInTheOrderOfTheTable) {
    const std::string all =
        R"({"open":false,"speed":-5,"distance":7,"name":"abcd","spare":{"id":4294967295,"turns":9},"driver":3,)"
        R"("wheels":[{"id":1,"turns":0},{"id":2,"turns":-3}],"stickers":["a","b"],"load":"hay"})";

    EXPECT_EQ(Refusal<Cart>(all), "taken: " + all);
    EXPECT_EQ(Refusal<Cart>(R"({"load":"hay","stickers":["a","b"],"wheels":[{"turns":0,"id":1},{"id":2}],)"
                            R"("driver":3,"spare":{"turns":9,"id":4294967295},"name":"abcd","distance":7,)"
                            R"("speed":-5,"open":false})"),
              "taken: " + all);
}

TEST(FieldsTest, WhatIsLeftOutOrNullIsAsTheStructureBegins) {
    const std::string first =
        R"(taken: {"open":true,"speed":5,"distance":0,"name":"n","spare":null,"wheels":[],"load":"sand"})";

    EXPECT_EQ(Refusal<Cart>(R"({"name":"n"})"), first);
    EXPECT_EQ(Refusal<Cart>(R"({"name":"n","open":null,"speed":null,"spare":null,"driver":null,)"
                            R"("wheels":null,"stickers":null,"load":null})"),
              first);
}

TEST(FieldsTest, EmptyIsWrittenAsTheTableSays) {
    EXPECT_EQ(
        Refusal<Cart>(R"({"name":"","stickers":[],"load":""})"),
        R"(taken: {"open":true,"speed":5,"distance":0,"name":"","spare":null,"wheels":[],"load":null})");
    EXPECT_EQ(Refusal<Empty>("{}"), "taken: {}");
}

TEST(FieldsTest, WhatIsMissingIsNamed) {
    EXPECT_EQ(Refusal<Cart>("{}"), "name is missing | a name");
    EXPECT_EQ(Refusal<Cart>(R"({"name":null})"), "name is missing | a name");
    EXPECT_EQ(CartRefusal(R"("spare":{})"), "spare.id is missing | ");
    EXPECT_EQ(CartRefusal(R"("wheels":[{"id":1},{"turns":2}])"), "wheels[1].id is missing | ");
}

TEST(FieldsTest, WhatIsOfAnotherKindIsNamed) {
    EXPECT_EQ(Refusal<Cart>("[]"), "the body is no object | a JSON object");
    EXPECT_EQ(Refusal<Cart>("7", "cart"), "cart is no object | a JSON object");
    EXPECT_EQ(Refusal<Cart>(R"({"name":1})", "cart"), "cart.name: 1 is no text | a text");
    EXPECT_EQ(CartRefusal(R"("open":1)"), "open: 1 is no truth value | true or false");
    EXPECT_EQ(CartRefusal(R"("speed":"1")"), R"(speed: "1" is no integer | an integer from -5 to 30)");
    EXPECT_EQ(CartRefusal(R"("speed":1.0)"), "speed: 1.0 is no integer | an integer from -5 to 30");
    EXPECT_EQ(CartRefusal(R"("spare":[])"), "spare is no object | a JSON object");
    EXPECT_EQ(CartRefusal(R"("wheels":{})"), "wheels is no list | a list of objects");
    EXPECT_EQ(CartRefusal(R"("stickers":"a")"), "stickers is no list | a list of texts");
    EXPECT_EQ(CartRefusal(R"("stickers":["a",["b"]])"), R"(stickers[1]: ["b"] is no text | a text)");
    EXPECT_EQ(
        CartRefusal(R"("load":")" + std::string(100, 'x') + R"(","open":")" + std::string(100, 'y') + "\""),
        "open: \"" + std::string(56, 'y') + "... is no truth value | true or false");
}

TEST(FieldsTest, LimitIsTakenAndWhatIsBeyondRefused) {
    EXPECT_EQ(CartRefusal(R"("speed":30)").substr(0, 5), "taken");
    EXPECT_EQ(CartRefusal(R"("speed":31)"), "speed: 31 is out of range | an integer from -5 to 30");
    EXPECT_EQ(CartRefusal(R"("speed":-6)"), "speed: -6 is out of range | an integer from -5 to 30");
    EXPECT_EQ(CartRefusal(R"("distance":9223372036854775807)").substr(0, 5), "taken");
    EXPECT_EQ(CartRefusal(R"("distance":9223372036854775808)"),
              "distance: 9223372036854775808 is out of range | an integer from 0 to 9223372036854775807");
    EXPECT_EQ(CartRefusal(R"("distance":-1)"),
              "distance: -1 is out of range | an integer from 0 to 9223372036854775807");
    EXPECT_EQ(CartRefusal(R"("driver":0)"), "driver: 0 is out of range | an integer from 1 to 4294967295");
    EXPECT_EQ(CartRefusal(R"("driver":4294967296)"),
              "driver: 4294967296 is out of range | an integer from 1 to 4294967295");
    EXPECT_EQ(Refusal<Cart>(R"({"name":"abcde"})"), "name is too long: 5 bytes | at most 4 bytes");
    EXPECT_EQ(CartRefusal(R"("wheels":[{"id":1},{"id":2},{"id":3}])"),
              "wheels is too long | at most 2 entries");
    EXPECT_EQ(CartRefusal(R"("stickers":["abc","abcd"])"),
              "stickers[1] is too long: 4 bytes | at most 3 bytes");
}

TEST(FieldsTest, NothingStandsTwiceWhereEachMayStandOnce) {
    EXPECT_EQ(CartRefusal(R"("wheels":[{"id":1},{"id":1,"turns":2}])"),
              "wheels[1].id stands in the list already | each id once");
    EXPECT_EQ(CartRefusal(R"("stickers":["a","b","a"])"),
              "stickers[2] stands in the list already | each text once");
}

TEST(FieldsTest, UnknownMemberIsRefusedWithThoseThatAreKnown) {
    EXPECT_EQ(
        CartRefusal(R"("nmae":"n")"),
        "unknown member nmae | only distance, driver, load, name, open, spare, speed, stickers, wheels");
    EXPECT_EQ(CartRefusal(R"("wheels":[{"id":1,"x":2}])"), "unknown member wheels[0].x | only id, turns");
    EXPECT_EQ(Refusal<Empty>(R"({"x":1})"), "unknown member x | an empty object");
}

TEST(FieldsTest, WhatIsMadeForRepliesIsWritten) {
    Report report;
    EXPECT_EQ(fields::ToText(report),
              R"({"type":"report","time":"1970-01-01T00:00:01.500Z","words":"a cart of sand","wheel":null,)"
              R"("written":{"id":9},"state":"new"})");

    report.wheel = std::make_shared<const Wheel>(Wheel{4, 5});
    EXPECT_NE(fields::ToText(report).find(R"("wheel":{"id":4,"turns":5})"), std::string::npos);
}

TEST(FieldsTest, SchemaOfWhatIsGivenNeedsAllThatIsAlwaysThere) {
    const auto described = Describe<Cart>(true, false);

    EXPECT_EQ(described.given.dump(), R"({"$ref":"#/components/schemas/Cart"})");
    EXPECT_EQ(described.schemas.at("Cart").dump(),
              R"({"type":"object","required":["open","speed","distance","name","spare","wheels","load"],)"
              R"("properties":{"open":{"type":"boolean"},)"
              R"("speed":{"type":"integer","minimum":-5,"maximum":30,"description":"In km/h"},)"
              R"("distance":{"type":"integer","minimum":0},"name":{"type":"string","maxLength":4},)"
              R"("spare":{"oneOf":[{"$ref":"#/components/schemas/Wheel"},{"type":"null"}]},)"
              R"("driver":{"type":"integer","minimum":1,"maximum":4294967295},)"
              R"("wheels":{"type":"array","maxItems":2,"items":{"$ref":"#/components/schemas/Wheel"}},)"
              R"("stickers":{"type":"array","items":{"type":"string","maxLength":3}},)"
              R"("load":{"type":["string","null"]}}})");
}

TEST(FieldsTest, SchemaOfWhatIsTakenNeedsOnlyWhatIsRequiredAndHasDefaults) {
    const auto described = Describe<Wheel>(false, true);
    const std::string body =
        R"({"type":"object","required":["id"],"additionalProperties":false,"properties":)"
        R"({"id":{"type":"integer","minimum":1,"maximum":4294967295},)"
        R"("turns":{"type":"integer","default":-3}}})";

    EXPECT_EQ(described.given.dump(), R"({"$ref":"#/components/schemas/Wheel"})");
    EXPECT_EQ(described.schemas.dump(), R"({"Wheel":)" + body + "}");

    const auto both = Describe<Wheel>(true, true);
    EXPECT_EQ(both.given.dump(), R"({"$ref":"#/components/schemas/WheelBody"})");
    EXPECT_EQ(both.schemas.at("WheelBody").dump(), body);
    EXPECT_EQ(both.schemas.at("Wheel").at("required").dump(), R"(["id","turns"])");
}

TEST(FieldsTest, SchemaNamesTimesTextsAndConstants) {
    const auto properties = Describe<Report>(true, false).schemas.at("Report").at("properties");

    EXPECT_EQ(properties.dump(),
              R"({"type":{"type":"string","const":"report"},"time":{"type":"string","format":"date-time"},)"
              R"("words":{"type":"string"},)"
              R"("wheel":{"oneOf":[{"$ref":"#/components/schemas/Wheel"},{"type":"null"}]},)"
              R"("written":{"$ref":"#/components/schemas/Wheel"},)"
              R"("state":{"type":"string","enum":["new","old"]}})");
}

TEST(FieldsTest, TextsAreWrittenAsTheJsonLibraryWritesThem) {
    const auto asLibrary = [](const std::string& text) {
        return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    };
    std::vector<std::string> texts{"", "plain", "\"\\/\b\f\n\r\t", "é€😀", "a\x7fz"};
    for (int byte = 0; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        for (const char* around : {"", "x", "\xc3", "\xe2\x82", "\xf0\x9f\x98", "\xed", "\xf4", "12345678"})
            texts.insert(texts.end(), {around + one, one + around, around + one + "\xbf" + around});
    }
    for (const std::string& text : texts)
        EXPECT_EQ(fields::ToText(text), asLibrary(text)) << testing::PrintToString(text);
}

} // namespace controller
