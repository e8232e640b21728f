#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "frame/Failure.h"
#include "host/ObjectJson.h"

namespace kv::host {
namespace {

using namespace std::string_literals;

template <class Body>
std::optional<KvError> Raised(Body&& Run) {
    try {
        Run();
    } catch (const Failure& Caught) {
        return Caught.Error();
    }
    return std::nullopt;
}

RegObject Read(std::string_view Text) { return FromJsonText(Text, L"FILTER/PROVA"); }

// The reason for which a text is refused; fails the test when it is not.
std::wstring Reason(std::string_view Text) {
    const std::optional<KvError> Error = Raised([&] { Read(Text); });
    if (!Error) {
        ADD_FAILURE() << "not refused: " << Text.substr(0, 200);
        return {};
    }
    EXPECT_EQ(Error->Number, 20000);
    const std::wstring Head = L"Dati errati nell'oggetto FILTER/PROVA: ";
    EXPECT_EQ(Error->Description.substr(0, Head.size()), Head);
    return Error->Description.substr(std::min(Head.size(), Error->Description.size()));
}

// An object of so many levels.
RegObject Nested(std::size_t Levels) {
    RegObject Made;
    Made.Name = L"LIVELLO";
    while (--Levels > 0) {
        RegObject Outer;
        Outer.Name = L"LIVELLO";
        Outer.Children.push_back(std::move(Made));
        Made = std::move(Outer);
    }
    return Made;
}

std::string Repeated(std::string_view Text, std::size_t Times) {
    std::string Made;
    while (Times-- > 0) Made += Text;
    return Made;
}

RegObject Full() {
    RegObject Made;
    Made.Name = L"PROVA";
    Made.Text = L"testo";
    Made.Id = 7;
    Made.Version = -3;
    Made.Desc = L"perch\u00E9 \"no\"\r\n\t\\";
    Made.Number2 = 2;
    Made.Number3 = std::numeric_limits<std::int32_t>::min();
    Made.String3 = L"tre";
    Made.String4 = L"quattro";
    Made.UserList = L"ROSSI BIANCHI";
    Made.String5 = L"cinque";
    Made.Values = {{L"Zeta", 1},
                   {L"alfa", true},
                   {L"Alfa", false},
                   {L"", std::wstring()},
                   {L"Massimo", std::numeric_limits<std::int32_t>::max()},
                   {L"Nullo", L"a\0b"s},
                   {L"Alto", std::wstring(L"\U0001F600\u20AC")}};
    Made.Children.resize(3);
    Made.Children[0].Name = L"Fields";
    Made.Children[0].Children.resize(2);
    Made.Children[0].Children[1].Values = {{L"Code", std::wstring(L"A")}};
    Made.Children[2].Name = L"Fields";
    return Made;
}

TEST(ObjectJson, HasOneForm) {
    EXPECT_EQ(ToJsonText({}),
              R"({"Name":"","Desc":"","Version":0,"Id":0,"UserList":"","Values":{},"Children":[]})");
    RegObject Object = Full();
    Object.Children.resize(1);
    Object.Children[0].Children.resize(1);
    EXPECT_EQ(ToJsonText(Object),
              R"({"Name":"PROVA","Desc":"perché \"no\"\r\n\t\\","Version":-3,"Id":7,)"
              R"("UserList":"ROSSI BIANCHI","Text":"testo","Number2":2,"Number3":-2147483648,)"
              R"("String3":"tre","String4":"quattro","String5":"cinque",)"
              R"("Values":{"Zeta":1,"alfa":true,"Alfa":false,"":"","Massimo":2147483647,)"
              R"("Nullo":"a\u0000b","Alto":"😀€"},)"
              R"("Children":[{"Name":"Fields","Desc":"","Version":0,"Id":0,"UserList":"","Values":{},)"
              R"("Children":[{"Name":"","Desc":"","Version":0,"Id":0,"UserList":"","Values":{},)"
              R"("Children":[]}]}]})");
    EXPECT_EQ(ToJson(Object).dump(), ToJsonText(Object));
    EXPECT_EQ(ToJson(Object)["Values"]["Alfa"], false);
}

TEST(ObjectJson, EachFieldThatIsNotEmptyIsWritten) {
    RegObject Object;
    Object.String4 = L"x";
    EXPECT_EQ(ToJsonText(Object), R"({"Name":"","Desc":"","Version":0,"Id":0,"UserList":"",)"
                                  R"("String4":"x","Values":{},"Children":[]})");
    Object.String4.clear();
    Object.Number3 = -1;
    EXPECT_EQ(ToJsonText(Object), R"({"Name":"","Desc":"","Version":0,"Id":0,"UserList":"",)"
                                  R"("Number3":-1,"Values":{},"Children":[]})");
}

TEST(ObjectJson, ComesBackAsItWas) {
    EXPECT_EQ(Read(ToJsonText({})), RegObject{});
    EXPECT_EQ(Read(ToJsonText(Full())), Full());
    EXPECT_EQ(Read(ToJson(Full()).dump(2)), Full()) << "blanks and line ends between the members";
    EXPECT_EQ(Read(ToJsonText(Nested(64))), Nested(64));
}

TEST(ObjectJson, AbsentAndUnknownMembersAreTolerated) {
    EXPECT_EQ(Read("{}"), RegObject{});
    EXPECT_EQ(Read(" {\"Colore\":\"rosso\"} "), RegObject{});
    RegObject Named;
    Named.Name = L"A";
    Named.Values = {{L"X", 1}};
    Named.Children.resize(1);
    Named.Children[0].Id = 4;
    EXPECT_EQ(Read(R"({"u":null,"Name":"A","v":[1,{"Name":"B","Values":[]},[[]]],"Values":{"X":1},)"
                   R"("w":{"Children":{"Children":[3]},"Name":1.5},"x":1e99,"name":7,)"
                   R"("Children":[{"y":[[],{}],"Id":4,"z":true}],"v":2,"v":99999999999})"),
              Named);
    EXPECT_EQ(Read("{\"u\":" + Repeated("[", 64) + Repeated("]", 64) + "}"), RegObject{});
}

TEST(ObjectJson, NamesOfMembersMayBeNamesOfValues) {
    RegObject Object;
    Object.Values = {{L"Values", 1}, {L"Children", true}, {L"Name", L"x"s}};
    EXPECT_EQ(Read(ToJsonText(Object)), Object);
}

TEST(ObjectJson, TextThatIsNoJsonIsRefused) {
    EXPECT_EQ(Reason(""), L"il testo non è JSON valido (byte 1).");
    EXPECT_EQ(Reason("{\"Name\""), L"il testo non è JSON valido (byte 8).");
    EXPECT_EQ(Reason("{} {}"), L"il testo non è JSON valido (byte 4).");
    EXPECT_EQ(Reason("{}\0"s), L"il testo non è JSON valido (byte 3).");
    EXPECT_EQ(Reason("{'Name':1}"), L"il testo non è JSON valido (byte 2).");
    EXPECT_EQ(Reason("{\"x\":1e999}"), L"il testo non è JSON valido (byte 10).");
    const std::string Whole = ToJsonText(Full());
    for (std::size_t Length = 0; Length < Whole.size(); ++Length) Reason(Whole.substr(0, Length));
}

TEST(ObjectJson, TextThatIsNoUnicodeIsRefused) {
    for (const char* Text : {"{\"Name\":\"\xFF\"}", "{\"Name\":\"\xC3\"}", "{\"Name\":\"\xED\xA0\x80\"}",
                             "{\"\xC0\x80\":1}", R"({"Name":"\ud800"})", R"({"Name":"\udc00"})",
                             R"({"Name":"\ud800\u0041"})", R"({"Values":{"\ud800":1}})", R"({"u":"\ud800"})"})
        EXPECT_EQ(Reason(Text).substr(0, 27), L"il testo non è JSON valido ") << Text;
    EXPECT_EQ(Read(R"({"Name":"\ud83d\ude00"})").Name, L"\U0001F600");
}

TEST(ObjectJson, WrongTypesAreRefused) {
    EXPECT_EQ(Reason("[]"), L"il testo non è un oggetto.");
    EXPECT_EQ(Reason("7"), L"il testo non è un oggetto.");
    EXPECT_EQ(Reason("null"), L"il testo non è un oggetto.");
    EXPECT_EQ(Reason("\"Name\""), L"il testo non è un oggetto.");
    EXPECT_EQ(Reason("1.5"), L"il testo non è un oggetto.");
    for (const char* Member : {"Name", "Desc", "UserList", "Text", "String3", "String4", "String5"})
        for (const char* Value : {"1", "-1", "1.5", "true", "null", "[]", "{}"})
            EXPECT_EQ(Reason("{\""s + Member + "\":" + Value + "}"),
                      L"il membro " + std::wstring(Member, Member + std::strlen(Member)) +
                          L" non è del tipo giusto.")
                << Value;
    for (const char* Member : {"Version", "Id", "Number2", "Number3"})
        for (const char* Value : {"\"1\"", "false", "null", "[]", "{}"})
            EXPECT_EQ(Reason("{\""s + Member + "\":" + Value + "}"),
                      L"il membro " + std::wstring(Member, Member + std::strlen(Member)) +
                          L" non è del tipo giusto.")
                << Value;
    for (const char* Value : {"1", "1.5", "\"\"", "true", "null", "[]"})
        EXPECT_EQ(Reason("{\"Values\":"s + Value + "}"), L"il membro Values non è del tipo giusto.") << Value;
    for (const char* Value : {"1", "1.5", "\"\"", "true", "null", "{}"})
        EXPECT_EQ(Reason("{\"Children\":"s + Value + "}"), L"il membro Children non è del tipo giusto.")
            << Value;
    for (const char* Value : {"null", "[]", "{}", "[1]"})
        EXPECT_EQ(Reason("{\"Values\":{\"X\":"s + Value + "}}"), L"il valore X non è del tipo giusto.")
            << Value;
    for (const char* Value : {"1", "1.5", "\"\"", "true", "null", "[]"})
        EXPECT_EQ(Reason("{\"Children\":[{},"s + Value + "]}"), L"un elemento di Children non è un oggetto.")
            << Value;
    EXPECT_EQ(Reason(R"({"Children":[{"Children":[{"Name":1}]}]})"),
              L"il membro Name non è del tipo giusto.");
}

TEST(ObjectJson, NumbersAreWholeAndOf32Bits) {
    EXPECT_EQ(Read(R"({"Id":2147483647,"Version":-2147483648})").Version,
              std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(Read(R"({"Id":-0})").Id, 0);
    for (const char* Number : {"2147483648", "-2147483649", "9223372036854775807", "-9223372036854775808",
                               "18446744073709551615", "18446744073709551616", "4294967296", "1.0", "1e3"}) {
        EXPECT_EQ(Reason("{\"Id\":"s + Number + "}"), L"il membro Id non è un numero intero a 32 bit.")
            << Number;
        EXPECT_EQ(Reason("{\"Values\":{\"X\":"s + Number + "}}"),
                  L"il valore X non è un numero intero a 32 bit.")
            << Number;
    }
}

TEST(ObjectJson, WhatStandsTwiceIsRefused) {
    EXPECT_EQ(Reason(R"({"Values":{"X":1,"Y":2,"X":1}})"), L"il valore X è ripetuto.");
    EXPECT_EQ(Reason(R"({"Name":"a","Name":"a"})"), L"il membro Name è ripetuto.");
    EXPECT_EQ(Reason(R"({"Values":{},"Values":{}})"), L"il membro Values è ripetuto.");
    EXPECT_EQ(Reason(R"({"Children":[],"Id":1,"Children":[]})"), L"il membro Children è ripetuto.");
    EXPECT_EQ(Reason(R"({"Children":[{"Id":1,"Id":2}]})"), L"il membro Id è ripetuto.");
    const RegObject Twins = Read(R"({"Children":[{"Id":1,"Values":{"X":1}},{"Id":1,"Values":{"X":1}}]})");
    EXPECT_EQ(Twins.Children.size(), 2U);
}

TEST(ObjectJson, DepthIsBounded) {
    const auto Levels = [](std::size_t Count) {
        return Repeated("{\"Children\":[", Count - 1) + "{\"Values\":{\"X\":1},\"Children\":[]}" +
               Repeated("]}", Count - 1);
    };
    EXPECT_NO_THROW(Read(Levels(64)));
    EXPECT_EQ(Reason(Levels(65)), L"troppi livelli.");
    EXPECT_EQ(Reason("{\"u\":" + Repeated("[", 65) + Repeated("]", 65) + "}"), L"troppi livelli.");
    EXPECT_EQ(Reason(Repeated("{\"Children\":[", 1000000)), L"troppi livelli.");
    EXPECT_EQ(Reason("{\"u\":" + Repeated("[", 5000000)), L"troppi livelli.");
    EXPECT_EQ(Reason(Repeated("[", 5000000)), L"il testo non è un oggetto.");
    EXPECT_EQ(Reason("{\"Values\":" + Repeated("{\"a\":", 5000000)), L"il valore a non è del tipo giusto.");

    EXPECT_NO_THROW(ToJsonText(Nested(64)));
    const std::optional<KvError> Error = Raised([] { ToJson(Nested(65)); });
    ASSERT_TRUE(Error);
    EXPECT_EQ(Error->Number, 20000);
    EXPECT_EQ(Error->Description, L"Dati errati nell'oggetto LIVELLO: troppi livelli.");
}

TEST(ObjectJson, WhatIsNoUnicodeIsNotWritten) {
    const std::wstring Half{L'x', static_cast<wchar_t>(0xD800)};
    const auto Text = [](const RegObject& Object) {
        const std::optional<KvError> Error = Raised([&] { ToJsonText(Object); });
        EXPECT_TRUE(Error);
        if (!Error) return std::wstring();
        EXPECT_EQ(Error->Number, 20000);
        return Error->Description;
    };
    RegObject Object;
    Object.Name = Half;
    EXPECT_EQ(Text(Object), L"Testo non valido nell'oggetto " + Half + L": Name.");
    const std::pair<std::wstring RegObject::*, const wchar_t*> kFields[] = {
        {&RegObject::Desc, L"Desc"},       {&RegObject::UserList, L"UserList"},
        {&RegObject::Text, L"Text"},       {&RegObject::String3, L"String3"},
        {&RegObject::String4, L"String4"}, {&RegObject::String5, L"String5"},
    };
    for (const auto& [Place, Member] : kFields) {
        Object = {};
        Object.Name = L"PROVA";
        Object.*Place = Half;
        EXPECT_EQ(Text(Object), L"Testo non valido nell'oggetto PROVA: " + std::wstring(Member) + L".");
    }
    Object = {};
    Object.Name = L"PROVA";
    Object.Values = {{L"Path", Half}};
    EXPECT_EQ(Text(Object), L"Testo non valido nell'oggetto PROVA: Path.");
    Object.Values = {{Half, 1}};
    EXPECT_EQ(Text(Object), L"Testo non valido nell'oggetto PROVA: Values.");
    Object.Values.clear();
    Object.Children.resize(1);
    Object.Children[0].Desc = std::wstring(1, static_cast<wchar_t>(0x110000));
    EXPECT_EQ(Text(Object), L"Testo non valido nell'oggetto PROVA: Desc.");
}

TEST(ObjectJson, TwoValuesOfOneNameAreNotWritten) {
    RegObject Object;
    Object.Name = L"PROVA";
    Object.Values = {{L"X", 1}, {L"x", 1}, {L"X", 2}};
    const std::optional<KvError> Error = Raised([&] { ToJsonText(Object); });
    ASSERT_TRUE(Error);
    EXPECT_EQ(Error->Number, 20000);
    EXPECT_EQ(Error->Description, L"Dati errati nell'oggetto PROVA: il valore X è ripetuto.");
}

TEST(ObjectJson, LargeObjectsTakeTheirLength) {
    RegObject Object;
    for (std::int32_t I = 0; I < 100000; ++I) {
        Object.Values.push_back({L"V" + std::to_wstring(I), I});
        Object.Children.emplace_back().Id = I;
    }
    EXPECT_TRUE(Read(ToJsonText(Object)) == Object);
}

}  // namespace
}  // namespace kv::host
