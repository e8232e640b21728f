// A display profile with two of everything, open on a desk.
#pragma once

#include <gtest/gtest.h>

#include "tests/items/Reading.h"

namespace kv::test {

inline RegObject TextIn(std::int32_t Id, std::wstring_view Language, std::wstring_view Text) {
    return Element(Id, L"", {{L"Language", RegText(Language)}, {L"Text", RegText(Text)}});
}
inline RegObject Page(std::int32_t Id, std::wstring_view Language, std::wstring_view File) {
    return Element(Id, L"",
                   {{L"Language", RegText(Language)}, {L"FileName", RegText(File)}, {L"Action", 37}});
}

inline RegObject FullProfile() {
    RegObject Made =
        With(Desk::Named(L"PROVA"), {{L"Align", 3}, {L"Width", -1}, {L"Table", RegText(L"LIBRI")}});
    Made = WithList(std::move(Made), L"Masters",
                    {Element(8, L"ITA", {{L"Text", RegText(L"SCHEDA")}}),
                     Element(9, L"ENG", {{L"Text", RegText(L"CARD")}})});
    Made =
        WithList(std::move(Made), L"Commands",
                 {WithList(Element(11, L"", {{L"Code", RegText(L"STAMPA")}, {L"Action", 10}}), L"ToolTips",
                           {TextIn(12, L"ITA", L"Stampa la scheda"), TextIn(13, L"ENG", L"Print the card")}),
                  WithList(Element(14, L"", {{L"Code", RegText(L"ESCI")}}), L"ToolTips", {})});
    Made = WithList(std::move(Made), L"Popups",
                    {With(TextIn(21, L"ITA", L"Apri"), {{L"Code", RegText(L"APRI")}, {L"Action", 39}}),
                     TextIn(22, L"ITA", L"Chiudi")});
    Made = WithList(
        std::move(Made), L"Titles",
        {TextIn(31, L"ITA", L"Scheda del catalogo generale"), TextIn(32, L"ENG", L"Catalogue card")});
    Made = WithList(std::move(Made), L"RecHtml",
                    {Page(41, L"ITA", L"scheda.htm"), Page(42, L"ENG", L"card.htm")});
    Made = WithList(std::move(Made), L"LoanHtml",
                    {Page(43, L"ITA", L"prestito.htm"), Page(44, L"ENG", L"loan.htm")});
    Made = WithList(std::move(Made), L"TextFonts",
                    {Element(51, L"Arial", {{L"Size", 10}}), Element(52, L"Courier", {{L"Size", 8}})});
    RegObject Card = Element(61, L"SCHEDA",
                             {{L"Style", 0x0502},
                              {L"DefStyle", true},
                              {L"DispType", 5},
                              {L"Server", RegText(L"6:export3:uno3:due")}});
    Card = WithList(std::move(Card), L"Cookies",
                    {Element(62, L"", {{L"Tag", 12}, {L"Language", RegText(L"ITA")}}),
                     Element(63, L"", {{L"Tag", 13}, {L"Language", RegText(L"ENG")}})});
    Card =
        WithList(std::move(Card), L"Captions", {TextIn(64, L"ITA", L"Scheda"), TextIn(65, L"ENG", L"Card")});
    Made = WithList(std::move(Made), L"Formats",
                    {std::move(Card), WithList(Element(66, L"NUOVO"), L"Captions", {})});
    Made =
        WithList(std::move(Made), L"LoanTables",
                 {WithList(Element(81, L"", {{L"Nature", RegText(L"M")}, {L"Level", RegText(L"1")}}),
                           L"Captions", {TextIn(82, L"ITA", L"Prestabile"), TextIn(83, L"ENG", L"For loan")}),
                  WithList(Element(84, L""), L"Captions", {})});
    Made = WithList(std::move(Made), L"Fields",
                    {WithList(Element(71, L"TITOLO",
                                      {{L"Tag", 12},
                                       {L"Browse", RegText(L"TITOLI")},
                                       {L"Profile", RegText(L"OPERA")},
                                       {L"Flags", 0x0D}}),
                              L"Captions", {TextIn(72, L"ITA", L"Titolo: "), TextIn(73, L"ENG", L"Title: ")}),
                     WithList(Element(74, L"", {{L"Tag", 30}}), L"Captions", {})});
    return WithList(std::move(Made), L"Html",
                    {Page(91, L"ITA", L"pagina.htm"), Page(92, L"ENG", L"page.htm")});
}

class Profile : public ::testing::Test {
  protected:
    using Words = std::vector<std::wstring>;

    Desk On{L"PROFILE", FullProfile()};

    std::wstring Node(std::wstring_view Folder, std::size_t Nth) const { return KeyBelow(On, Folder, Nth); }
    Words Names(std::wstring_view List) {
        Words Found;
        for (const RegObject& Each : ListOf(SavedBy(On), List)) Found.push_back(Each.Name);
        return Found;
    }
    std::vector<std::int32_t> Ids(std::wstring_view List) {
        std::vector<std::int32_t> Found;
        for (const RegObject& Each : ListOf(SavedBy(On), List)) Found.push_back(Each.Id);
        return Found;
    }
    /// The line of a section's text that begins with the keyword.
    std::wstring LineOf(const std::wstring& Key, std::wstring_view Keyword) {
        const std::wstring Shown = L"\r\n" + On.Text(Key);
        const std::size_t At = Shown.find(L"\r\n" + std::wstring(Keyword));
        EXPECT_NE(At, std::wstring::npos) << Narrow(Keyword);
        return At == std::wstring::npos ? std::wstring()
                                        : Shown.substr(At + 2, Shown.find(L"\r\n", At + 2) - At - 2);
    }
    /// The tree is what the stored record builds.
    void ExpectSameTree() {
        const RegObject& Saved = SavedBy(On);
        Desk Again(L"PROFILE", Saved);
        std::vector<std::wstring> Here;
        std::vector<std::wstring> There;
        On.Tree->ForEach([&](const window::TreeNode& N) {
            Here.push_back(window::IsLeafKey(N.Key) ? On.Text(N.Key) : N.Text);
        });
        Again.Tree->ForEach([&](const window::TreeNode& N) {
            There.push_back(window::IsLeafKey(N.Key) ? Again.Text(N.Key) : N.Text);
        });
        EXPECT_EQ(Here, There);
    }
};

}  // namespace kv::test
