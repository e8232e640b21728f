// The native window of an object: what the operator does in it, by messages and keys, in the real window.

#include <deque>
#include <set>
#include <stdexcept>

#include "tests/com/WindowDriver.h"

namespace kv::com::test {
namespace {

using Window = WindowTest;

/// What a section demands that a new object does not have.
struct Needed {
    std::wstring_view Clsid;
    std::wstring_view Keyword;
    std::wstring_view Value;
};
constexpr Needed kNeeded[] = {
    {L"RETRIEVAL", L"PATH=", L"\"C:\\\\base\""},
    {L"MAIL", L"PATH=", L"\"C:\\\\posta\""},
    {L"PROFILE", L"TABLE=", L"LIBRI"},
    {L"QUERY", L"BROWSE=", L"\"LIBRI\""},
    {L"TABLE", L"STYLE=", L"RECORD"},
    {L"TABLE", L"INDEX=", L"\"NUMERO\""},
    {L"WEBSERVER", L"BROWSEROWS=", L"10"},
};

/// The text with another value behind a keyword.
std::wstring WithLine(std::wstring Text, std::wstring_view Keyword, std::wstring_view Value) {
    const std::size_t At = (L"\n" + Text).find(L"\n" + std::wstring(Keyword));
    if (At == std::wstring::npos) return Text;
    return Text.replace(At, Text.find(L'\r', At) - At, std::wstring(Keyword) + L" " + std::wstring(Value));
}

// Objects.

TEST_F(Window, EveryClassIsOpenedEditedRefusedCorrectedSavedAndReopened) {
    for (const std::wstring_view Word : ClassWords()) {
        SCOPED_TRACE(Narrow(Word));
        const auto Object = Fresh(Word);
        std::wstring Good;
        EXPECT_FALSE(InWindow(Object, [&](Shown& On) {
            EXPECT_NE(On.Title().find(L" - " + std::wstring(Word) + L" - kvdesign"), std::wstring::npos)
                << Narrow(On.Title());
            EXPECT_EQ(On.Viewed(), On.Modelled());
            EXPECT_EQ(On.Selected(), kRootKey);
            EXPECT_EQ(On.Text(), L"");
            if (On.Tree.Count() < 3) {  // a list alone, and nothing in it
                On.Click(On.Tree.Root()->Children.At(1)->Key);
                On.Do(command::kNew);
            }
            On.FirstLeaf();
            Good = On.Text();
            for (const Needed& Each : kNeeded)
                if (Each.Clsid == Word) Good = WithLine(Good, Each.Keyword, Each.Value);
            ASSERT_FALSE(Good.empty()) << Narrow(On.Message());

            // Refused: as typed, told, the cursor at the line, and nothing is changed.
            const bool Before = On.Tree.Modified();
            const std::wstring Bad = Good + L"=SBAGLIATO\r\n";
            const LRESULT Lines = SendMessageW(On.Editor(), EM_GETLINECOUNT, 0, 0);
            On.Type(Bad);
            EXPECT_TRUE(On.Offered(command::kApply));
            EXPECT_NE(On.Title().find(L"* - kvdesign"), std::wstring::npos);
            On.Do(command::kApply);
            if (Word != L"STOPWORD") {
                EXPECT_NE(On.Message().find(L"Riga " + std::to_wstring(Lines) + L": "), std::wstring::npos)
                    << Narrow(On.Message());
                EXPECT_EQ(On.Text(), Bad);
                EXPECT_TRUE(On.Offered(command::kApply));
                DWORD Cursor = 0;
                SendMessageW(On.Editor(), EM_GETSEL, reinterpret_cast<WPARAM>(&Cursor), 0);
                EXPECT_EQ(Cursor, Good.size());
                EXPECT_EQ(On.Tree.Modified(), Before);
            }
            // Corrected.
            On.Type(Good + L"'nota\r\n");
            On.Do(command::kApply);
            EXPECT_EQ(On.Message(), L"Testo applicato.") << Narrow(Good);
            Good = On.Text();
            EXPECT_FALSE(On.Offered(command::kApply));
            EXPECT_TRUE(On.Tree.Modified());
            EXPECT_NE(On.Title().find(L"* - kvdesign"), std::wstring::npos);
            On.Do(command::kSave);
            EXPECT_EQ(On.Message(), L"Oggetto salvato.");
            EXPECT_FALSE(On.Tree.Modified());
            EXPECT_EQ(On.Title().find(L"* - kvdesign"), std::wstring::npos);
        }));
        EXPECT_TRUE(Object->Written());
        EXPECT_TRUE(Object->Saving());
        InWindow(Object, [&](Shown& On) {
            On.FirstLeaf();
            EXPECT_EQ(On.Text(), Good);
        });
    }
}

// The text.

std::wstring CopiedText() {
    if (!OpenClipboard(nullptr)) return L"no clipboard";
    std::wstring Text;
    if (const HANDLE Memory = GetClipboardData(CF_UNICODETEXT)) {
        if (const auto* const At = static_cast<const wchar_t*>(GlobalLock(Memory))) Text = At;
        GlobalUnlock(Memory);
    }
    CloseClipboard();
    return Text;
}

TEST_F(Window, KeysTypeApplyRevertUndoAndWalk) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        On.Leaf(L"PARMS");
        const std::wstring Before = On.Text();
        ASSERT_TRUE(Until([&] { return GetForegroundWindow() == On.Window; }));
        const auto Focus = [&] {
            GUITHREADINFO Of{};
            Of.cbSize = sizeof Of;
            GetGUIThreadInfo(GetWindowThreadProcessId(On.Window, nullptr), &Of);
            return Of.hwndFocus;
        };
        EXPECT_TRUE(Until([&] { return Focus() == On.View(); }));
        On.Press(VK_F6);
        ASSERT_TRUE(Until([&] { return Focus() == On.Editor(); }));
        On.Press(VK_OEM_7);  // what it types is the keyboard's own
        On.Press('N');
        ASSERT_TRUE(Until([&] { return On.Text().size() == Before.size() + 2; }));
        EXPECT_TRUE(On.Offered(command::kRevert));
        On.Press('R', {VK_CONTROL});
        EXPECT_TRUE(Until([&] { return On.Text() == Before; }));
        EXPECT_FALSE(On.Offered(command::kRevert));
        On.Press('N');
        ASSERT_TRUE(Until([&] { return On.Text() == L"n" + Before; }));
        On.Press('Z', {VK_CONTROL});
        EXPECT_TRUE(Until([&] { return On.Text() == Before; }));
        EXPECT_TRUE(Until([&] { return !On.Offered(command::kApply); })) << "undo back is no change";

        std::wstring Good = WithLine(Before, L"TABLEID=", L"7");
        for (const Needed& Each : kNeeded)
            if (Each.Clsid == L"TABLE") Good = WithLine(Good, Each.Keyword, Each.Value);
        On.Type(Good);
        On.Press('A', {VK_CONTROL});
        On.Press('C', {VK_CONTROL});
        EXPECT_EQ(CopiedText(), Good);
        On.Press('X', {VK_CONTROL});
        EXPECT_EQ(On.Text(), L"");
        On.Press('V', {VK_CONTROL});
        EXPECT_EQ(On.Text(), Good);
        On.Press(VK_RETURN, {VK_CONTROL});
        EXPECT_TRUE(Until([&] { return On.Message() == L"Testo applicato."; })) << Narrow(On.Message());
        EXPECT_NE(On.Text().find(L"TABLEID= 7"), std::wstring::npos);
        On.Press('S', {VK_CONTROL});
        EXPECT_TRUE(Until([&] { return On.Message() == L"Oggetto salvato."; })) << Narrow(On.Message());

        // Tab walks through all that takes the keyboard and comes back.
        std::vector<HWND> Passed;
        for (int Step = 0; Step < 5; ++Step) {
            const HWND From = Focus();
            On.Press(VK_TAB);
            EXPECT_TRUE(Until([&] { return Focus() != From; }));
            Passed.push_back(Focus());
        }
        EXPECT_EQ(Passed, (std::vector<HWND>{On.Control(command::kStrict), On.Control(control::kMessage),
                                             On.Control(control::kSearch), On.View(), On.Editor()}));
        On.Press(VK_TAB, {VK_SHIFT});
        EXPECT_TRUE(Until([&] { return Focus() == On.View(); }));
        EXPECT_TRUE(On.Tree.SyntaxOn());
        On.Press('K', {VK_CONTROL});
        EXPECT_TRUE(Until([&] { return !On.Tree.SyntaxOn(); }));
        EXPECT_TRUE(Until(
            [&] { return SendMessageW(On.Control(command::kStrict), BM_GETCHECK, 0, 0) == BST_UNCHECKED; }));
    });
}

TEST_F(Window, TheKeysOfTheTreeAddMoveAndDelete) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        On.Click(L"FIELDS");
        ASSERT_TRUE(Until([&] { return GetForegroundWindow() == On.Window; }));
        const auto Fields = [&] { return On.Tree.Find(L"FIELDS")->Children.Count(); };
        On.Press(VK_INSERT);
        ASSERT_TRUE(Until([&] { return Fields() == 1; }));
        On.Press(VK_INSERT);
        ASSERT_TRUE(Until([&] { return Fields() == 2; }));
        On.Settle();
        EXPECT_EQ(On.Viewed(), On.Modelled());
        On.Click(On.Tree.Find(L"FIELDS")->Children.At(2)->Key);
        On.Press(VK_UP, {VK_MENU});
        EXPECT_EQ(On.Tree.Find(L"FIELDS")->Children.At(1)->Key, On.Selected());
        EXPECT_EQ(On.Message(), L"");
        EXPECT_EQ(On.Viewed(), On.Modelled());
        On.Press(VK_UP, {VK_MENU});  // there is no place to go
        EXPECT_TRUE(Until([&] { return On.Message() == L"Operazione non eseguita."; }));
        On.Press(VK_DELETE);
        On.Answer(L"Eliminare \"", IDYES);
        EXPECT_TRUE(Until([&] { return Fields() == 1; }));
        On.Settle();
        EXPECT_EQ(On.Viewed(), On.Modelled());
    });
}

TEST_F(Window, TheStrictSwitchDecidesWhatIsRefused) {
    InWindow(Fresh(L"FILTER"), [](Shown& On) {
        On.Leaf(L"PARMS");
        EXPECT_EQ(SendMessageW(On.Control(command::kStrict), BM_GETCHECK, 0, 0), BST_CHECKED);
        On.Type(L"AUTOMATIC= FORSE\r\n");
        On.Do(command::kApply);
        EXPECT_EQ(On.Message(), L"Riga 1: Valore sconosciuto per il parametro AUTOMATIC=(FORSE)");
        SendMessageW(On.Control(command::kStrict), BM_CLICK, 0, 0);
        EXPECT_FALSE(On.Tree.SyntaxOn());
        On.Do(command::kApply);
        EXPECT_EQ(On.Message(), L"Testo applicato.");
        On.Do(command::kStrict);
        EXPECT_TRUE(On.Tree.SyntaxOn());
    });
}

TEST_F(Window, TextThatIsNotAppliedIsAskedAboutBeforeItIsLeft) {
    InWindow(Fresh(L"SORT"), [](Shown& On) {
        const std::wstring First = On.Leaf(L"PARMS");
        const std::wstring Text = On.Text();
        On.Type(L"=SBAGLIATO");
        On.Click(std::wstring(kRootKey));
        On.Answer(L"non è stato applicato", L"Annulla");
        EXPECT_EQ(On.Selected(), First);
        EXPECT_EQ(On.Text(), L"=SBAGLIATO");
        On.Click(std::wstring(kRootKey));
        On.Answer(L"non è stato applicato", L"Applica");
        EXPECT_EQ(On.Selected(), First) << "refused: the text is not left";
        EXPECT_EQ(On.Text(), L"=SBAGLIATO");
        EXPECT_NE(On.Message(), L"");
        On.Click(std::wstring(kRootKey));
        On.Answer(L"non è stato applicato", L"Scarta");
        EXPECT_EQ(On.Selected(), kRootKey);
        On.Click(First);
        EXPECT_EQ(On.Text(), Text);
        On.Type(Text + L"'nota\r\n");
        On.Click(std::wstring(kRootKey));
        On.Answer(L"non è stato applicato", L"Applica");
        EXPECT_EQ(On.Selected(), kRootKey);
        EXPECT_TRUE(On.Tree.Modified());
    });
}

TEST_F(Window, LineEndsOfAnyKindAreHandedOverAsCarriageReturnAndLineFeed) {
    InWindow(Fresh(L"FILTER"), [](Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(L"'uno\nAUTOMATIC= FORSE\n");
        On.Do(command::kApply);
        EXPECT_EQ(On.Message().substr(0, 7), L"Riga 2:") << Narrow(On.Message());
    });
}

// The tree.

TEST_F(Window, ElementsAreAddedMovedAndDeletedWithTheirNodes) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        On.Click(L"FIELDS");
        for (int I = 0; I < 4; ++I) On.Do(command::kNew);
        ASSERT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 4);
        EXPECT_EQ(On.Viewed(), On.Modelled());
        // They take a name each, so that the order can be seen.
        for (int I = 1; I <= 4; ++I) {
            On.Leaf(L"FIELDPARMS", I);
            std::wstring Text = On.Text();
            const std::size_t At = Text.find(L"NAME=");
            ASSERT_NE(At, std::wstring::npos) << Narrow(Text);
            Text.replace(At, Text.find(L'\r', At) - At, L"NAME= \"campo" + std::to_wstring(I) + L"\"");
            On.Type(Text);
            On.Do(command::kApply);
            EXPECT_EQ(On.Message(), L"Testo applicato.") << Narrow(Text);
        }
        const auto Names = [&] {
            std::wstring All;
            const TreeNode& Folder = *On.Tree.Find(L"FIELDS");
            for (std::int32_t I = 1; I <= Folder.Children.Count(); ++I)
                All += Folder.Children.At(I)->Text + L" ";
            return All;
        };
        EXPECT_EQ(On.Viewed(), On.Modelled());
        const std::wstring Before = Names();
        const std::wstring Second = On.Tree.Find(L"FIELDS")->Children.At(2)->Text;
        On.Click(On.Tree.Find(L"FIELDS")->Children.At(2)->Key);
        SendMessageW(On.View(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(On.ItemOf(On.Selected())));
        On.Do(command::kMoveDown);
        EXPECT_EQ(On.Tree.Find(L"FIELDS")->Children.At(3)->Text, Second);
        EXPECT_EQ(On.Tree.Find(On.Selected())->Text, Second);
        EXPECT_TRUE(SendMessageW(On.View(), TVM_GETITEMSTATE,
                                 reinterpret_cast<WPARAM>(On.ItemOf(On.Selected())), TVIS_EXPANDED) &
                    TVIS_EXPANDED)
            << "it stays open";
        EXPECT_EQ(On.Viewed(), On.Modelled());
        EXPECT_TRUE(On.Tree.Modified());
        On.Do(command::kMoveUp);
        EXPECT_EQ(Names(), Before);
        On.Do(command::kDelete, L"Eliminare \"" + Second + L"\"?", IDNO);
        EXPECT_EQ(Names(), Before);
        On.Do(command::kDelete, L"Eliminare \"" + Second + L"\"?", IDYES);
        EXPECT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 3);
        EXPECT_EQ(On.Viewed(), On.Modelled());
        EXPECT_NE(On.Selected(), L"");
        On.Click(L"FIELDS");
        On.Do(command::kDeleteAll, L"Sono 3.", IDNO);
        EXPECT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 3);
        On.Do(command::kDeleteAll, L"Eliminare tutti gli elementi di \"", IDYES);
        EXPECT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 0);
        EXPECT_EQ(On.Selected(), L"FIELDS");
        EXPECT_EQ(On.Viewed(), On.Modelled());
        EXPECT_FALSE(On.Offered(command::kDeleteAll));
    });
}

TEST_F(Window, TheContextMenuOffersWhatTheKindAllows) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        const auto Menu = [&](bool Take = false) {
            PostMessageW(On.Window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(On.View()), -1);
            HWND Open = nullptr;
            EXPECT_TRUE(Until([&] {
                Open = FindWindowW(L"#32768", nullptr);
                return Open && IsWindowVisible(Open);
            }));
            const auto Bar = reinterpret_cast<HMENU>(SendMessageW(Open, 0x01E1 /* MN_GETHMENU */, 0, 0));
            std::wstring All;
            for (int I = 0; I < GetMenuItemCount(Bar); ++I) {
                wchar_t Text[80]{};
                GetMenuStringW(Bar, static_cast<UINT>(I), Text, 80, MF_BYPOSITION);
                std::wstring Label = Text;
                Label.resize(std::min(Label.size(), Label.find(L'\t')));
                std::erase(Label, L'&');
                All += Label + L"|";
            }
            PostMessageW(On.Window, WM_KEYDOWN, Take ? VK_DOWN : VK_ESCAPE, 0);
            if (Take) PostMessageW(On.Window, WM_KEYDOWN, VK_RETURN, 0);
            EXPECT_TRUE(Until([&] { return !FindWindowW(L"#32768", nullptr); }));
            On.Settle();
            On.Settle();
            return Narrow(All);
        };
        EXPECT_EQ(Menu(), "Copia|Incolla|Proprietà|");
        On.Leaf(L"PARMS");
        EXPECT_EQ(Menu(), "Copia|Incolla|Proprietà|");
        On.Click(L"FIELDS");
        EXPECT_EQ(Menu(true), "Nuovo elemento||Copia|Incolla|Proprietà|");
        ASSERT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 1);
        On.Click(L"FIELDS");
        EXPECT_EQ(Menu(true), "Nuovo elemento|Elimina tutti||Copia|Incolla|Proprietà|");
        ASSERT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 2);
        On.Click(On.Tree.Find(L"FIELDS")->Children.At(1)->Key);
        EXPECT_EQ(Menu(), "Nuovo elemento|Elimina|Sposta su|Sposta giù||Copia|Incolla|Proprietà|");
        EXPECT_TRUE(On.Offered(command::kMoveUp));
        EXPECT_FALSE(On.Offered(command::kDeleteAll));
    });
}

bool IsOpen(const Shown& On, std::wstring_view Key) {
    return (SendMessageW(On.View(), TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(On.ItemOf(Key)),
                         TVIS_EXPANDED) &
            TVIS_EXPANDED) != 0;
}

void Expand(const Shown& On, std::wstring_view Key) {
    SendMessageW(On.View(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(On.ItemOf(Key)));
}

/// Elements in the list of fields, the first three with names.
void MakeFields(const Shown& On) {
    for (const wchar_t* const Name : {L"TITOLO", L"AUTORE", L"ANNO"}) {
        On.Click(L"FIELDS");
        On.Do(command::kNew);
        On.Leaf(L"FIELDPARMS", On.Tree.Find(L"FIELDS")->Children.Count());
        On.Type(WithLine(On.Text(), L"NAME=", L"\"" + std::wstring(Name) + L"\""));
        On.Do(command::kApply);
        EXPECT_EQ(On.Message(), L"Testo applicato.");
    }
}

std::wstring Fields(const Shown& On) {
    std::wstring All;
    const TreeNode& Folder = *On.Tree.Find(L"FIELDS");
    for (std::int32_t I = 1; I <= Folder.Children.Count(); ++I) All += Folder.Children.At(I)->Text + L" ";
    return All;
}

std::wstring Field(const Shown& On, std::int32_t Place) {
    return On.Tree.Find(L"FIELDS")->Children.At(Place)->Key;
}

TEST_F(Window, WhatTakesAwayAsksWithNoAsItsDefault) {
    InWindow(Fresh(L"TABLE"), [this](Shown& On) {
        On.Click(L"FIELDS");
        On.Do(command::kNew);
        const std::wstring Key = Field(On, 1);
        const auto Refuses = [&](int Id, const std::wstring& Said) {
            On.Do(Id);
            HWND Box = nullptr;
            ASSERT_TRUE(Until([&] { return (Box = OpenBox()) != nullptr; })) << Narrow(Said);
            EXPECT_EQ(GetWindowLongW(GetDlgItem(Box, IDNO), GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON)
                << Narrow(Said);
            On.Answer(Said, IDNO);
        };
        Refuses(command::kReload, L"andranno perse. Ricaricare l'oggetto?");
        On.Click(Key);
        Refuses(command::kDelete, L"Eliminare \"");
        Refuses(command::kCut, L"Negli appunti va l'intero oggetto. Copiarlo ed eliminare \"");
        EXPECT_EQ(Clipboard.ClassWord, L"") << "called off before it is copied";
        On.Click(L"FIELDS");
        Refuses(command::kDeleteAll, L"Sono 1.");
        On.Do(command::kCopy);
        Refuses(command::kPaste, L"andranno perse. Incollare?");
        EXPECT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 1);
        EXPECT_EQ(Field(On, 1), Key);
    });
}

TEST_F(Window, CuttingTakesTheElementAndCopiesTheObjectItStoodIn) {
    InWindow(Fresh(L"TABLE"), [this](Shown& On) {
        On.Do(command::kCut);  // nothing that could be cut
        EXPECT_EQ(OpenBox(), nullptr);
        EXPECT_EQ(Clipboard.ClassWord, L"");
        MakeFields(On);
        On.Click(Field(On, 2));
        On.Do(command::kCut, L"Copiarlo ed eliminare \"1:AUTORE\"?", IDYES);
        EXPECT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 2);
        EXPECT_EQ(Fields(On).find(L"AUTORE"), std::wstring::npos);
        EXPECT_EQ(On.Viewed(), On.Modelled());
        EXPECT_EQ(Clipboard.ClassWord, L"TABLE");
    });
    ASSERT_NE(Clipboard.DataObj, nullptr);
    EXPECT_EQ(Clipboard.DataObj->Read().Child(L"Fields")->Children.size(), 3U);
}

TEST_F(Window, TheTextIsSettledBeforeAnElementIsTakenAway) {
    InWindow(Fresh(L"ALIAS"), [](Shown& On) {
        On.Click(L"FIELDS");
        On.Do(command::kNew);
        const std::wstring Key = On.Leaf(L"FIELDS");
        ASSERT_TRUE(On.Offered(command::kDelete));
        On.Type(L"=SBAGLIATO");
        for (const int Id : {command::kDelete, command::kCut}) {
            On.Do(Id, L"non è stato applicato", L"Annulla");
            EXPECT_EQ(OpenBox(), nullptr) << "nothing else is asked";
            EXPECT_EQ(On.Text(), L"=SBAGLIATO");
        }
        On.Do(command::kDelete, L"non è stato applicato", L"Scarta");
        On.Answer(L"Eliminare \"", IDYES);
        EXPECT_EQ(On.Tree.Find(Key), nullptr);
    });
}

TEST_F(Window, WhatIsOpenAndSelectedStaysSoWhenTheObjectIsLoadedAnew) {
    const auto Object = Fresh(L"TABLE");
    InWindow(Object, [](Shown& On) {
        MakeFields(On);
        On.Leaf(L"PARMS");
        std::wstring Good = On.Text();
        for (const Needed& Each : kNeeded)
            if (Each.Clsid == L"TABLE") Good = WithLine(Good, Each.Keyword, Each.Value);
        On.Type(Good);
        On.Do(command::kSave);
        ASSERT_EQ(On.Message(), L"Oggetto salvato.");
        const std::wstring Saved = Fields(On);

        On.Do(command::kCopy);
        for (const int Place : {1, 3})
            SendMessageW(On.View(), TVM_EXPAND, TVE_COLLAPSE,
                         reinterpret_cast<LPARAM>(On.ItemOf(Field(On, Place))));
        On.Click(Field(On, 2));
        const auto Stays = [&](const char* What) {
            EXPECT_EQ(On.Viewed(), On.Modelled()) << What;
            EXPECT_TRUE(IsOpen(On, L"FIELDS")) << What;
            EXPECT_TRUE(IsOpen(On, Field(On, 2))) << What;
            EXPECT_FALSE(IsOpen(On, Field(On, 1))) << What;
            EXPECT_EQ(On.Selected(), Field(On, 2)) << What;
        };
        On.Do(command::kPaste);
        EXPECT_TRUE(On.Tree.Modified()) << Narrow(On.Message());
        Stays("pasted");
        On.Do(command::kReload, L"andranno perse. Ricaricare l'oggetto?", IDYES);
        EXPECT_FALSE(On.Tree.Modified());
        Stays("loaded anew");

        On.Do(command::kMoveDown);
        EXPECT_NE(Fields(On), Saved);
        On.Leaf(L"PARMS");
        On.Type(L"=SBAGLIATO");
        On.Do(command::kReload, L"andranno perse.", IDNO);
        EXPECT_EQ(On.Text(), L"=SBAGLIATO");
        EXPECT_NE(Fields(On), Saved);
        On.Press(VK_F5);
        On.Answer(L"andranno perse.", IDYES);
        EXPECT_EQ(Fields(On), Saved);
        EXPECT_EQ(On.Text(), Good);
        EXPECT_FALSE(On.Offered(command::kApply));
        EXPECT_EQ(On.Title().find(L"* - kvdesign"), std::wstring::npos);
        On.Do(command::kReload);  // nothing would be lost
        EXPECT_EQ(OpenBox(), nullptr);
        EXPECT_EQ(On.Viewed(), On.Modelled());
    });
}

TEST_F(Window, APasteIsTakenBackByLoadingAnew) {
    const auto Object = Fresh(L"FILTER");
    std::wstring Text;
    InWindow(Object, [&](Shown& On) {
        On.Leaf(L"PARMS");
        Text = On.Text();
        On.Type(WithLine(Text, L"AUTOMATIC=", L"TRUE"));
        On.Do(command::kApply);
        On.Do(command::kCopy);
        On.Do(command::kReload, L"andranno perse.", IDYES);
        EXPECT_EQ(On.Text(), Text);
        On.Do(command::kPaste);
        EXPECT_NE(On.Text(), Text) << Narrow(On.Message());
        On.Do(command::kReload, L"andranno perse.", IDYES);
        EXPECT_EQ(On.Text(), Text);
        EXPECT_FALSE(On.Tree.Modified());
    });
    InWindow(Object, [&](Shown& On) {
        On.Leaf(L"PARMS");
        EXPECT_EQ(On.Text(), Text);
    });
}

TEST_F(Window, TheSearchGoesFromNodeToNodeAndRoundTheEnd) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        MakeFields(On);
        On.Click(std::wstring(kRootKey));
        ASSERT_TRUE(Until([&] { return GetForegroundWindow() == On.Window; }));
        On.Press('F', {VK_CONTROL});
        for (const WORD Key : {'P', 'A', 'R', 'A', 'M', 'E', 'T', 'R', 'I'}) On.Press(Key);
        EXPECT_EQ(TextIn(On.Control(control::kSearch)), L"parametri");
        std::vector<std::wstring> All, Met;
        On.Tree.ForEach([&](const TreeNode& Node) {
            if (Node.Text == L"Parametri") All.push_back(Node.Key);
        });
        ASSERT_GE(All.size(), 4U) << "of the object and of its fields";
        All.push_back(All.front());
        while (Met.size() < All.size()) {
            On.Press(Met.size() % 2 ? VK_F3 : VK_RETURN);
            On.Settle();
            Met.push_back(On.Selected());
        }
        EXPECT_EQ(Met, All);
        const std::wstring Last = On.Selected();
        SetWindowTextW(On.Control(control::kSearch), L"non c'è");
        On.Do(command::kFindNext);
        EXPECT_EQ(On.Message(), L"\"non c'è\" non si trova nell'albero.");
        EXPECT_EQ(On.Selected(), Last);
        // The keys of a text work on the line.
        On.Press('A', {VK_CONTROL});
        On.Press('C', {VK_CONTROL});
        EXPECT_EQ(CopiedText(), L"non c'è");
        On.Press(VK_DELETE);
        EXPECT_EQ(TextIn(On.Control(control::kSearch)), L"");
        EXPECT_EQ(OpenBox(), nullptr);
    });
}

TEST_F(Window, ADragMovesWithinTheListOnly) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        MakeFields(On);
        Expand(On, L"FIELDS");
        const auto Take = [&](const std::wstring& Key) {
            NMTREEVIEWW Told{};
            Told.hdr.hwndFrom = On.View();
            Told.hdr.idFrom = control::kTree;
            Told.hdr.code = TVN_BEGINDRAGW;
            Told.itemNew.hItem = On.ItemOf(Key);
            SendMessageW(On.Window, WM_NOTIFY, control::kTree, reinterpret_cast<LPARAM>(&Told));
        };
        // In the upper or the lower half of a node's row.
        const auto Over = [&](const std::wstring& Key, bool Lower, UINT Message) {
            RECT At{};
            const HTREEITEM Item = On.ItemOf(Key);
            *reinterpret_cast<HTREEITEM*>(&At) = Item;
            SendMessageW(On.View(), TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&At));
            POINT Where{At.left + 2, Lower ? At.bottom - 2 : At.top + 2};
            MapWindowPoints(On.View(), On.Window, &Where, 1);
            SendMessageW(On.Window, Message, MK_LBUTTON, MAKELPARAM(Where.x, Where.y));
        };
        const auto Drag = [&](int From, const std::wstring& To, bool Lower = false) {
            Take(Field(On, From));
            Over(To, Lower, WM_MOUSEMOVE);
            Over(To, Lower, WM_LBUTTONUP);
            On.Settle();
            EXPECT_EQ(On.Viewed(), On.Modelled());
        };
        const std::wstring First = On.Tree.Find(Field(On, 1))->Text;
        const std::wstring Second = On.Tree.Find(Field(On, 2))->Text;
        const std::wstring Third = On.Tree.Find(Field(On, 3))->Text;
        const auto Is = [&](std::initializer_list<std::wstring> Wanted) {
            std::wstring All;
            for (const std::wstring& Each : Wanted) All += Each + L" ";
            EXPECT_EQ(Narrow(Fields(On)), Narrow(All));
        };
        Drag(3, Field(On, 1));
        Is({Third, First, Second});
        EXPECT_EQ(On.Tree.Find(On.Selected())->Text, Third) << "what was dragged is selected";
        Drag(1, Field(On, 2), true);
        Is({First, Third, Second});
        Drag(1, L"FIELDS");
        Is({Third, Second, First});
        Drag(1, L"PARMS");
        Drag(1, std::wstring(kRootKey));
        Drag(1, Field(On, 1));
        Drag(1, Field(On, 2));  // where it stands already
        Is({Third, Second, First});
        EXPECT_EQ(On.Message(), L"");
        // Called off, and what does not move at all.
        Take(Field(On, 1));
        Over(Field(On, 3), true, WM_MOUSEMOVE);
        SendMessageW(On.Window, WM_CAPTURECHANGED, 0, 0);
        Over(Field(On, 3), true, WM_LBUTTONUP);
        Take(L"PARMS");
        Over(Field(On, 3), true, WM_LBUTTONUP);
        On.Settle();
        Is({Third, Second, First});
    });
}

// The tools.

TEST_F(Window, TheToolBarIsThatOfTheServer) {
    const auto Buttons = [](const Shown& On) {
        std::string All;
        const HWND Bar = On.Control(control::kToolBar);
        for (LRESULT I = 0; I < SendMessageW(Bar, TB_BUTTONCOUNT, 0, 0); ++I) {
            TBBUTTON Of{};
            SendMessageW(Bar, TB_GETBUTTON, static_cast<WPARAM>(I), reinterpret_cast<LPARAM>(&Of));
            if (Of.fsStyle & BTNS_SEP) {
                All += "| ";
                continue;
            }
            EXPECT_GE(Of.iBitmap, 0) << "a picture";
            wchar_t Tip[100]{};
            NMTBGETINFOTIPW Asked{};
            Asked.hdr.hwndFrom = Bar;
            Asked.hdr.code = TBN_GETINFOTIPW;
            Asked.iItem = Of.idCommand;
            Asked.pszText = Tip;
            Asked.cchTextMax = 100;
            SendMessageW(On.Window, WM_NOTIFY, control::kToolBar, reinterpret_cast<LPARAM>(&Asked));
            All += Narrow(Tip) + ((Of.fsState & TBSTATE_ENABLED) ? "+ " : "- ");
        }
        return All;
    };
    InWindow(Fresh(L"TABLE"), [&](Shown& On) {
        EXPECT_EQ(
            Buttons(On),
            "Copia (Ctrl+C)+ Taglia (Ctrl+X)+ Incolla (Ctrl+V)+ | Trova tag libero+ Rinumera tags+ "
            "Campi dalla TABLE- Export VB module+ | Salva (Ctrl+S)+ | Nuovo elemento (Ins)- "
            "Elimina (Canc)- Sposta su (Alt+Su)- Sposta giù (Alt+Giù)- | Applica il testo (Ctrl+Invio)- "
            "Annulla il testo (Ctrl+R)- ");
    });
    InWindow(Fresh(L"MENU"), [&](Shown& On) {
        EXPECT_NE(Buttons(On).find("Trova tag libero- Rinumera tags- Campi dalla TABLE- Export VB module- "),
                  std::string::npos)
            << Buttons(On);
    });
}

constexpr int kFindTag = command::kFirstTool + 4;
constexpr int kRenumTag = command::kFirstTool + 5;
constexpr int kConstants = command::kFirstTool + 7;

TEST_F(Window, TheToolsShowAndAsk) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        On.Click(L"FIELDS");
        On.Do(command::kNew);
        On.Do(command::kNew);
        On.Do(kFindTag);
        HWND Box = nullptr;
        ASSERT_TRUE(Until([&] { return (Box = OpenBox()) != nullptr; })) << Narrow(On.Message());
        EXPECT_EQ(TextIn(Box), L"Tag disponibili");
        EXPECT_GT(SendMessageW(GetDlgItem(Box, 1000), LB_GETCOUNT, 0, 0), 0);
        SendMessageW(GetDlgItem(Box, 1001), BM_CLICK, 0, 0);
        EXPECT_EQ(CopiedText(), L"3 - 32767\r\n");
        On.Answer(L"Tag disponibili", L"Chiudi");
        On.Do(kRenumTag);
        ASSERT_TRUE(Until([&] { return (Box = OpenBox()) != nullptr; })) << Narrow(On.Message());
        PostMessageW(Box, WM_COMMAND, IDCANCEL, 0);
        EXPECT_TRUE(Until([&] { return !OpenBox(); }));
        On.Settle();
        On.Do(kConstants);
        ASSERT_TRUE(Until([&] { return (Box = OpenBox()) != nullptr; })) << Narrow(On.Message());
        PostMessageW(Box, WM_COMMAND, IDCANCEL, 0);
        EXPECT_TRUE(Until([&] { return !OpenBox(); }));
        On.Settle();
    });
}

TEST_F(Window, PropertiesAndSenselessCommandsChangeNothing) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        On.Do(command::kProperties);
        for (const int Id : {0, 99, 150, 299, 303, 308, 5000, 65535}) On.Do(Id);
        On.Do(command::kDelete);
        On.Do(command::kDeleteAll);
        On.Do(command::kNew);
        On.Do(command::kMoveUp);
        EXPECT_EQ(OpenBox(), nullptr);
        EXPECT_FALSE(On.Tree.Modified());
        EXPECT_EQ(On.Viewed(), On.Modelled());
    });
}

TEST_F(Window, AnObjectGoesOverTheClipboardIntoAnotherOfItsClass) {
    std::wstring Text;
    InWindow(Fresh(L"FILTER"), [&](Shown& On) {
        On.Leaf(L"PARMS");
        Text = On.Text();
        Text.replace(Text.find(L"AUTOMATIC= FALSE"), 16, L"AUTOMATIC= TRUE");
        On.Type(Text);
        On.Do(command::kApply);
        On.Do(command::kCopy);
        EXPECT_EQ(On.Message(), L"Negli appunti: un oggetto della classe FILTER.");
    });
    EXPECT_EQ(Clipboard.ClassWord, L"FILTER");
    InWindow(Fresh(L"SORT"), [&](Shown& On) {
        On.Do(command::kPaste);
        EXPECT_EQ(On.Message(), L"I dati memorizzati sono di una classe diversa da SORT");
        EXPECT_FALSE(On.Tree.Modified());
        EXPECT_EQ(On.Viewed(), On.Modelled());
    });
    InWindow(Fresh(L"FILTER"), [&](Shown& On) {
        On.Do(command::kPaste);
        EXPECT_TRUE(On.Tree.Modified()) << Narrow(On.Message());
        EXPECT_EQ(On.Viewed(), On.Modelled());
        On.Leaf(L"PARMS");
        EXPECT_EQ(On.Text(), Text);
        On.Do(command::kPaste, L"andranno perse. Incollare?", IDNO);
        EXPECT_EQ(On.Text(), Text);
    });
}

// Saving and closing.

TEST_F(Window, ClosingAsksWhatBecomesOfTheChanges) {
    const auto Object = Fresh(L"FILTER");
    const auto Change = [](const Shown& On) {
        On.Leaf(L"PARMS");
        std::wstring Text = On.Text();
        Text.replace(Text.find(L"AUTOMATIC= FALSE"), 16, L"AUTOMATIC= TRUE");
        On.Type(Text);
    };
    InWindow(Object, [&](Shown& On) {
        Change(On);
        On.Do(command::kClose, L"non è stato applicato", L"Annulla");
        EXPECT_TRUE(IsWindow(On.Window));
        EXPECT_TRUE(On.Offered(command::kApply));
        PostMessageW(On.Window, WM_CLOSE, 0, 0);
        On.Answer(L"non è stato applicato", L"Applica");
        On.Answer(L"Salvare le modifiche all'oggetto \"PROVA\"?", IDCANCEL);
        EXPECT_TRUE(IsWindow(On.Window));
        EXPECT_TRUE(On.Tree.Modified());
        On.Do(command::kClose, L"Salvare le modifiche", IDNO);
        EXPECT_TRUE(Until([&] { return !IsWindow(On.Window); }));
    });
    EXPECT_FALSE(Object->Written());
    InWindow(Object, [&](Shown& On) {
        Change(On);
        On.Do(command::kClose, L"non è stato applicato", L"Scarta");
        EXPECT_TRUE(Until([&] { return !IsWindow(On.Window); })) << "nothing else has changed";
    });
    EXPECT_FALSE(Object->Written());
    InWindow(Object, [&](Shown& On) {
        Change(On);
        On.Do(command::kClose, L"non è stato applicato", L"Applica");
        On.Answer(L"Salvare le modifiche", IDYES);
        EXPECT_TRUE(Until([&] { return !IsWindow(On.Window); }));
    });
    EXPECT_TRUE(Object->Written());
}

/// An object that cannot be written, or read, for as long as it is told so.
class FailingRegData final : public RegData {
  public:
    std::wstring Name() const override { return L"PROVA"; }
    std::wstring Clsid() const override { return L"FILTER"; }
    std::wstring UserList() const override { return L""; }
    void SetSaving(bool) override {}
    const RegObject& Read() override {
        if (Unreadable) throw std::runtime_error("not to be read");
        return Content;
    }
    void Write(RegObject New) override {
        if (ReadOnly) Raise(L"L'archivio è di sola lettura");
        Content = std::move(New);
    }
    RegObject Content;
    bool Unreadable = false;
    bool ReadOnly = false;
};

TEST_F(Window, WhatCannotBeSavedIsKeptAndSavedLater) {
    const auto Object = std::make_shared<FailingRegData>();
    Object->ReadOnly = true;
    InWindow(Object, [&](Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(On.Text() + L"'nota\r\n");
        On.Do(command::kSave);
        EXPECT_EQ(On.Message(), L"L'archivio è di sola lettura");
        EXPECT_TRUE(On.Tree.Modified());
        // Closing with yes does not close.
        On.Do(command::kClose, L"Salvare le modifiche", IDYES);
        EXPECT_TRUE(IsWindow(On.Window));
        EXPECT_EQ(On.Message(), L"L'archivio è di sola lettura");
        Object->ReadOnly = false;
        On.Do(command::kSave);
        EXPECT_EQ(On.Message(), L"Oggetto salvato.");
        EXPECT_FALSE(On.Tree.Modified());
    });
    EXPECT_FALSE(Object->Content.Values.empty());
}

TEST_F(Window, AnObjectThatCannotBeReadOpensNoWindow) {
    kv::test::TestPlatform Silent;
    const auto Object = std::make_shared<FailingRegData>();
    Object->Unreadable = true;
    EXPECT_TRUE(InWindow(Object, L"FILTER", [](Shown&) { ADD_FAILURE() << "a window"; }));
    EXPECT_EQ(Silent.Shown.size(), 1U);
    EXPECT_EQ(&CoreUtil::Instance().Door(), &Silent);
}

/// An operator whose boxes cannot be shown.
class BrokenPlatform final : public SilentPlatform {
  public:
    kv::Answer MessageBox(std::wstring_view, std::int32_t) override {
        if (Nameless) throw 1;
        throw std::runtime_error("no screen");
    }
    void Beep() override { throw std::runtime_error("no speaker"); }
    void SetPointer(std::int32_t) override {
        if (NoPointer) throw std::runtime_error("no pointer");
    }
    bool Nameless = false;
    bool NoPointer = false;
};

TEST_F(Window, NothingEscapesFromTheWindow) {
    BrokenPlatform Broken;
    kv::Platform* const Before = CoreUtil::Instance().SetPlatform(&Broken);
    const auto Object = Fresh(L"TABLE");
    EXPECT_FALSE(InWindow(Object, [&](Shown& On) {
        On.Click(L"FIELDS");
        On.Do(command::kNew);
        On.Do(command::kNew);
        On.Click(On.Tree.Find(L"FIELDS")->Children.At(1)->Key);
        On.Do(command::kDelete);
        EXPECT_EQ(On.Message(), L"no screen");
        On.Do(command::kMoveUp);
        EXPECT_EQ(On.Message(), L"no speaker");
        EXPECT_EQ(On.Viewed(), On.Modelled());
        Broken.NoPointer = true;
        On.Do(command::kSave);
        EXPECT_EQ(On.Message(), L"no pointer");
        Broken.NoPointer = false;
        Broken.Nameless = true;
        On.Do(command::kClose);
        EXPECT_EQ(On.Message(), L"Errore imprevisto.");
        EXPECT_TRUE(IsWindow(On.Window));
        EXPECT_EQ(On.Tree.Find(L"FIELDS")->Children.Count(), 2);
        On.Do(command::kSave);
        EXPECT_EQ(On.Message(), L"Oggetto salvato.");
        On.Do(command::kClose);
        EXPECT_TRUE(Until([&] { return !IsWindow(On.Window); }));
    }));
    EXPECT_EQ(&CoreUtil::Instance().Door(), &Broken);
    CoreUtil::Instance().SetPlatform(Before);
}

// The window itself.

TEST_F(Window, TheOwnerWaits) {
    const HWND Owner = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300,
                                       200, nullptr, nullptr, nullptr, nullptr);
    InWindow(
        Fresh(L"MENU"), L"MENU",
        [&](Shown& On) {
            EXPECT_FALSE(IsWindowEnabled(Owner));
            EXPECT_EQ(GetWindow(On.Window, GW_OWNER), Owner);
        },
        Owner);
    EXPECT_TRUE(IsWindowEnabled(Owner));
    EnableWindow(Owner, FALSE);
    InWindow(
        Fresh(L"MENU"), L"MENU", [](Shown&) {}, Owner);
    EXPECT_FALSE(IsWindowEnabled(Owner)) << "as it was";
    DestroyWindow(Owner);
}

TEST_F(Window, TheHostsQuitIsHandedOn) {
    const DWORD Thread = GetCurrentThreadId();
    const auto Object = Fresh(L"MENU");
    EXPECT_FALSE(InWindow(Object, [&](Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(On.Text() + L"'nota\r\n");
        On.Do(command::kApply);
        PostThreadMessageW(Thread, WM_QUIT, 42, 0);
        EXPECT_TRUE(Until([&] { return !IsWindow(On.Window); }));
    }));
    EXPECT_EQ(Quit, 42U);
    EXPECT_FALSE(Object->Written());
}

TEST_F(Window, AWindowThatIsTakenAwayEndsTheShowing) {
    const auto Object = Fresh(L"MENU");
    EXPECT_FALSE(InWindow(Object, [](Shown& On) {
        On.Leaf(L"PARMS");
        On.Type(On.Text() + L"'nota\r\n");
        On.Do(command::kApply);
        On.TakeAway();
        EXPECT_FALSE(IsWindow(On.Window));
    }));
    EXPECT_FALSE(Object->Written());
    EXPECT_EQ(&CoreUtil::Instance().Door(), &Platform);
    EXPECT_FALSE(InWindow(Object, [](Shown& On) { EXPECT_EQ(On.Viewed(), On.Modelled()); }));
}

TEST_F(Window, EverythingIsDrawn) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        MakeFields(On);
        On.Leaf(L"FIELDPARMS", 2);
        On.Type(WithLine(On.Text(), L"DATATYPE=", L"PAROLA"));
        On.Do(command::kApply);
        EXPECT_NE(On.Message().find(L"PAROLA"), std::wstring::npos) << Narrow(On.Message());
        for (const int Id : {control::kToolBar, control::kSearch, control::kTree, control::kHeading,
                             control::kText, control::kSign, control::kMessage, control::kStatus}) {
            UpdateWindow(On.Control(Id));
            EXPECT_GT(TakePicture(On.Control(Id), nullptr), 1U) << Id;
        }
        EXPECT_GT(TakePicture(On.Window, std::getenv("KV_PICTURE")), 10U);
    });
}

TEST_F(Window, NothingIsCutOffAtAnySize) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        On.Leaf(L"PARMS");
        for (const auto& [Width, Height] : {std::pair{1, 1}, {640, 400}, {1000, 700}, {5000, 3000}}) {
            SetWindowPos(On.Window, nullptr, 0, 0, Width, Height, SWP_NOZORDER | SWP_NOMOVE);
            On.Settle();
            RECT In{};
            GetClientRect(On.Window, &In);
            MapWindowPoints(On.Window, nullptr, reinterpret_cast<POINT*>(&In), 2);
            const int Ids[] = {control::kToolBar, control::kSearch, control::kTree,  control::kHeading,
                               control::kText,    command::kStrict, command::kApply, command::kRevert,
                               control::kMessage, control::kStatus};
            std::vector<RECT> Places;
            for (const int Id : Ids) {
                RECT Of{};
                GetWindowRect(On.Control(Id), &Of);
                EXPECT_TRUE(Of.left >= In.left && Of.top >= In.top && Of.right <= In.right &&
                            Of.bottom <= In.bottom)
                    << Id << " at " << Width;
                EXPECT_GT(Of.right - Of.left, 20) << Id;
                EXPECT_GT(Of.bottom - Of.top, 10) << Id;
                for (const RECT& Other : Places) {
                    RECT Common{};
                    EXPECT_FALSE(IntersectRect(&Common, &Of, &Other)) << Id << " at " << Width;
                }
                Places.push_back(Of);
            }
            for (const int Id : {command::kStrict, command::kApply, command::kRevert}) {
                const auto Font = reinterpret_cast<HFONT>(SendMessageW(On.Control(Id), WM_GETFONT, 0, 0));
                RECT Of{};
                GetWindowRect(On.Control(Id), &Of);
                EXPECT_GT(Of.right - Of.left, WidthOf(Font, TextIn(On.Control(Id))) + 8)
                    << Id << " at " << Width;
            }
        }
    });
}

TEST_F(Window, TheSplitFollowsTheMouse) {
    InWindow(Fresh(L"TABLE"), [](Shown& On) {
        const auto Right = [&] {
            RECT Of{};
            GetWindowRect(On.View(), &Of);
            MapWindowPoints(nullptr, On.Window, reinterpret_cast<POINT*>(&Of), 2);
            return Of.right;
        };
        const LONG Before = Right();
        SendMessageW(On.Window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(Before + 2, 200));
        SendMessageW(On.Window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(Before + 52, 200));
        SendMessageW(On.Window, WM_LBUTTONUP, 0, MAKELPARAM(Before + 52, 200));
        EXPECT_EQ(Right(), Before + 50);
        SendMessageW(On.Window, WM_MOUSEMOVE, 0, MAKELPARAM(10, 200));
        EXPECT_EQ(Right(), Before + 50);
    });
}

BOOL CALLBACK CountOne(HWND, LPARAM Into) {
    ++*reinterpret_cast<int*>(Into);
    return TRUE;
}

int OpenWindows() {
    int Count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountOne, reinterpret_cast<LPARAM>(&Count));
    return Count;
}

// How many objects the system would still make for this process.
std::size_t FreeGdiObjects() {
    std::vector<HGDIOBJ> Made;
    while (const HGDIOBJ One = CreateSolidBrush(static_cast<COLORREF>(Made.size()))) Made.push_back(One);
    for (const HGDIOBJ One : Made) DeleteObject(One);
    return Made.size();
}

TEST_F(Window, NoHandleIsLeftBehind) {
    const auto Round = [&] {
        InWindow(Fresh(L"TABLE"), [](Shown& On) {
            On.Click(L"FIELDS");
            On.Do(command::kNew);
            On.Do(kFindTag);
            On.Answer(L"Tag disponibili", L"Chiudi");
            On.Leaf(L"PARMS");
            On.Type(L"=");
            On.Do(command::kClose, L"non è stato applicato", L"Scarta");
            On.Answer(L"Salvare", IDNO);
        });
    };
    // What the system makes for itself comes first: fonts, the windows of its tool tips.
    Round();
    const int Windows = OpenWindows();
    const std::size_t Free = FreeGdiObjects();
    EXPECT_GT(Free, 100U);
    const DWORD User = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    for (int I = 0; I < 10; ++I) Round();
    EXPECT_EQ(OpenWindows(), Windows);
    EXPECT_EQ(FreeGdiObjects(), Free);
    EXPECT_LE(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS),
              User);  // 0 where the system does not count
    WNDCLASSW Class{};
    EXPECT_FALSE(GetClassInfoW(OwnModule(), L"KvDesSvrObject", &Class)) << "the class is taken back";
}

}  // namespace
}  // namespace kv::com::test
