// A query with two of everything, open on a desk.
#pragma once

#include <gtest/gtest.h>

#include "tests/items/Profile.h"

namespace kv::test {

inline RegObject Value(std::int32_t Id, std::wstring_view Name, std::wstring_view Desc,
                       std::vector<RegObject> Captions) {
    RegObject Made = WithList(Element(Id, Name), L"Message", std::move(Captions));
    Made.Desc = Desc;
    return Made;
}
/// A field with the values that it offers.
inline RegObject WithValues(RegObject Field, std::vector<RegObject> Values) {
    RegObject& Defaults = Field.Children.emplace_back();
    Defaults.Name = L"Defaults";
    Defaults = WithList(std::move(Defaults), L"Message", std::move(Values));
    return Field;
}

inline RegObject FullQuery() {
    RegObject Made = With(Desk::Named(L"PROVA"), {{L"Browse", RegText(L"TITOLI")},
                                                  {L"Rows", 5},
                                                  {L"SetSelect", true},
                                                  {L"Tips", RegText(L"CONSIGLI")},
                                                  {L"TipsAlign", 4},
                                                  {L"TipsWidth", 30},
                                                  {L"ToolAlign", 1}});
    Made = WithList(
        std::move(Made), L"Commands",
        {WithList(Element(11, L"", {{L"Code", RegText(L"CERCA")}, {L"Action", 15}}), L"ToolTips",
                  {TextIn(12, L"ITA", L"Avvia la ricerca"), TextIn(13, L"ENG", L"Start the search")}),
         WithList(Element(14, L"", {{L"Code", RegText(L"ESCI")}}), L"ToolTips", {})});
    Made = WithList(std::move(Made), L"Popups",
                    {With(TextIn(21, L"ITA", L"Apri"), {{L"Code", RegText(L"APRI")}, {L"Action", 39}}),
                     TextIn(22, L"ITA", L"Chiudi")});
    const struct {
        const wchar_t* List;
        std::int32_t Id;
        const wchar_t* Italian;
        const wchar_t* English;
    } kTexts[] = {
        {L"Titles", 31, L"Ricerca nel catalogo generale", L"Catalogue search"},
        {L"Message", 33, L"Riempire almeno un campo", L"Fill in one field"},
        {L"OptionMsg1", 35, L"Insieme A", L"Set A"},
        {L"OptionMsg2", 37, L"Insieme B", L"Set B"},
    };
    for (const auto& Row : kTexts)
        Made = WithList(std::move(Made), Row.List,
                        {TextIn(Row.Id, L"ITA", Row.Italian), TextIn(Row.Id + 1, L"ENG", Row.English)});
    const struct {
        const wchar_t* List;
        std::int32_t Id;
        const wchar_t* Italian;
        const wchar_t* English;
    } kPages[] = {
        {L"Html", 41, L"ricerca.htm", L"search.htm"},
        {L"HtmlRes", 43, L"esito.htm", L"result.htm"},
        {L"HtmlTempl", 45, L"modello.htm", L"template.htm"},
        {L"HtmlResTempl", 47, L"modelloesito.htm", L"resulttemplate.htm"},
    };
    for (const auto& Row : kPages)
        Made = WithList(std::move(Made), Row.List,
                        {Page(Row.Id, L"ITA", Row.Italian), Page(Row.Id + 1, L"ENG", Row.English)});
    RegObject Language = Element(71, L"LINGUA",
                                 {{L"Flags", 1},
                                  {L"Semantic", 8},
                                  {L"Selected", 2},
                                  {L"StopWord", RegText(L"ARTICOLI")},
                                  {L"Tables", RegText(L"LIBRI")},
                                  {L"Words", true}});
    Language =
        WithList(std::move(Language), L"Captions",
                 {TextIn(72, L"ITA", L"Lingua dell'originale"), TextIn(73, L"ENG", L"Original language")});
    Language = WithValues(std::move(Language),
                          {Value(74, L"ITA", L"Italiano",
                                 {TextIn(75, L"ITA", L"Lingua italiana"), TextIn(76, L"ENG", L"Italian")}),
                           Value(77, L"FRA", L"Francese", {})});
    return WithList(std::move(Made), L"Fields",
                    {std::move(Language), WithValues(WithList(Element(81, L"ANNO"), L"Captions", {}), {})});
}

class Query : public ::testing::Test {
  protected:
    using Words = std::vector<std::wstring>;

    Desk On{L"QUERY", FullQuery()};

    std::wstring Node(std::wstring_view Folder, std::size_t Nth) const { return KeyBelow(On, Folder, Nth); }
    // The folders below an element: of a button 1 parameters, 2 tool tips; of a field 1 parameters, 2
    // captions, 3 values; of a value 1 parameters, 2 captions.
    std::wstring Tips(std::size_t Button) const { return Node(Node(L"COMMANDS", Button), 2); }
    std::wstring Captions(std::size_t Field) const { return Node(Node(L"FIELDS", Field), 2); }
    std::wstring Values(std::size_t Field) const { return Node(Node(L"FIELDS", Field), 3); }
    std::wstring ValueCaptions(std::size_t Field, std::size_t Nth) const {
        return Node(Node(Values(Field), Nth), 2);
    }

    /// Field and value as they would be stored now.
    RegObject StoredField(std::size_t Nth) { return ListOf(SavedBy(On), L"Fields").at(Nth - 1); }
    std::vector<RegObject> StoredValues(std::size_t Field) {
        const RegObject Of = StoredField(Field);
        const RegObject* const Defaults = Of.Child(L"Defaults");
        return Defaults ? ListOf(*Defaults, L"Message") : std::vector<RegObject>{};
    }
    static std::vector<std::int32_t> IdsOf(const std::vector<RegObject>& List) {
        std::vector<std::int32_t> Found;
        for (const RegObject& Each : List) Found.push_back(Each.Id);
        return Found;
    }

    /// The line of a section's text that begins with the keyword, empty where there is none.
    std::wstring LineOf(const std::wstring& Key, std::wstring_view Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Key);
        const std::size_t At = Shown.find(L"\r\n" + std::wstring(Keyword));
        return At == std::wstring::npos ? std::wstring()
                                        : Shown.substr(At + 2, Shown.find(L"\r\n", At + 2) - At - 2);
    }
    /// The tree, and what its nodes show, is what the stored record builds, but for the keys of tool tips
    /// that are new or have moved.
    void ExpectSameTree() {
        Desk Again(L"QUERY", SavedBy(On));
        EXPECT_EQ(Narrow(PlainTips(On.Picture())), Narrow(Again.Picture()));
        EXPECT_EQ(Texts(On), Texts(Again));
    }
    static std::wstring PlainTips(std::wstring Picture) {
        const std::wstring_view OfFolder = L"COMMANDTIPS-# #";
        for (std::size_t At = 0; (At = Picture.find(OfFolder, At)) != std::wstring::npos;)
            Picture.replace(At, OfFolder.size(), L"COMMANDTIPS #");
        return Picture;
    }
    static Words Texts(Desk& Of) {
        Words Shown;
        Of.Tree->ForEach([&](const window::TreeNode& N) { Shown.push_back(Of.Text(N.Key)); });
        return Shown;
    }
};

}  // namespace kv::test
