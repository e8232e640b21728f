// The word section of a table of words against the way it is told: a text that grows and is searched from its
// front for each word. Whatever the lines hold, both give the same packed text or the same refusal.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/items/Reading.h"

namespace kv::test {
namespace {

struct Told {
    std::wstring Packed = std::wstring(1, L'\0');
    std::wstring Message;  // of the refusal, empty for none
    int Line = 0;
};

bool IsQuoted(std::wstring_view Half) { return !Half.empty() && Half.front() == L'"' && Half.back() == L'"'; }
std::wstring_view Blanks(std::wstring_view Half) {
    while (!Half.empty() && Half.front() == L' ') Half.remove_prefix(1);
    while (!Half.empty() && Half.back() == L' ') Half.remove_suffix(1);
    return Half;
}
std::wstring_view Inner(std::wstring_view Half) {
    return Half.size() < 2 ? std::wstring_view{} : Half.substr(1, Half.size() - 2);
}

Told Walk(const std::vector<std::wstring>& Lines, std::wstring_view Separator) {
    Told Out;
    const auto Refuse = [&](const std::wstring& What) {
        Out.Message = L"La riga #" + std::to_wstring(Out.Line) + What;
        return Out;
    };
    for (const std::wstring& Each : Lines) {
        ++Out.Line;
        const std::wstring_view Line = Blanks(Each);
        if (Line.empty() || Line.front() == L'\'') continue;
        const std::size_t At = Line.find(Separator);
        if (At == Line.npos) return Refuse(L" non contiene il separatore (" + std::wstring(Separator) + L")");
        const std::wstring_view First = Blanks(Line.substr(0, At));
        if (!IsQuoted(First)) return Refuse(L" contiene parole non racchiuse fra doppi apici.");
        const std::wstring Word(Inner(First));
        if (Word.empty()) return Refuse(L" contiene una stringa vuota.");
        if (Out.Packed.find(L'\0' + Word + L'\t') != std::wstring::npos)
            return Refuse(L" contiene la parola " + Word + L" più di una volta.");
        Out.Packed += Word + L'\t';
        const std::wstring_view Rest = Blanks(Line.substr(At + Separator.size()));
        if (!IsQuoted(Rest)) return Refuse(L" contiene parole non racchiuse fra doppi apici.");
        Out.Packed.append(Inner(Rest)).push_back(L'\0');
    }
    return Out;
}

TEST(PackedWords, RepeatsAreThoseOfTheToldWalk) {
    Desk On(L"STOPWORD");
    ASSERT_TRUE(Accepted(On.Opened));
    const std::wstring Words = On.Leaf(L"MESSAGE");
    std::mt19937 Random(20241121);
    const auto Below = [&](unsigned Bound) {
        return std::uniform_int_distribution<unsigned>(0, Bound - 1)(Random);
    };
    std::size_t Repeats = 0;
    std::size_t Across = 0;  // repeats of a word that no line has typed as a word
    std::size_t Whole = 0;
    for (int Round = 0; Round < 4000; ++Round) {
        // Few letters, so that words meet; the further ones part words, pairs and halves.
        const std::wstring_view Letters = Round % 4 == 0   ? std::wstring_view(L"ab\t\0", 4)
                                          : Round % 4 == 1 ? std::wstring_view(L"ab\t", 3)
                                          : Round % 4 == 2 ? std::wstring_view(L"abcdefgh \"", 10)
                                                           : std::wstring_view(L"ab \"='\t", 7);
        const auto Text = [&](unsigned Longest) {
            std::wstring Made;
            for (unsigned Left = Below(Longest + 1); Left > 0; --Left)
                Made.push_back(Letters[Below(static_cast<unsigned>(Letters.size()))]);
            return Made;
        };
        std::vector<std::wstring> Lines;
        for (unsigned Left = 1 + Below(12); Left > 0; --Left) {
            switch (Below(30)) {
                case 0:
                    Lines.emplace_back(L"' una nota");
                    break;
                case 1:
                    Lines.emplace_back();
                    break;
                case 2:
                    Lines.push_back(L"\"" + Text(4) + L"\"");
                    break;
                default:
                    Lines.push_back(L"\"" + Text(5) + L"\"" + (Below(4) == 0 ? L" = " : L"=") + L"\"" +
                                    Text(6) + L"\"");
                    break;
            }
        }
        std::wstring Buffer;
        for (const std::wstring& Line : Lines) Buffer.append(Line).append(L"\r\n");
        const Told Wanted = Walk(Lines, L"=");
        const Outcome Got = On.Put(Words, Buffer);
        if (Wanted.Message.empty()) {
            ++Whole;
            ASSERT_TRUE(Accepted(Got)) << Narrow(Buffer);
            ASSERT_EQ(TextOf(SavedBy(On), L"Table"), Wanted.Packed) << Narrow(Buffer);
        } else {
            ASSERT_TRUE(Refused(Got, 20000, L"diStopWord.SaveTable", Wanted.Message, Wanted.Line))
                << Narrow(Buffer) << "\nwanted " << Narrow(Wanted.Message);
            if (!Wanted.Message.ends_with(L"più di una volta.")) continue;
            ++Repeats;
            const std::wstring& Last = Lines[static_cast<std::size_t>(Wanted.Line) - 1];
            const std::wstring Half = Last.substr(0, Last.find(L'=') + 1);
            bool Typed = false;
            for (int Line = 0; Line + 1 < Wanted.Line; ++Line)
                Typed = Typed || Lines[static_cast<std::size_t>(Line)].starts_with(Blanks(Half));
            if (!Typed) ++Across;
        }
    }
    // The rounds have met what they are for.
    EXPECT_GT(Repeats, 300U);
    EXPECT_GT(Across, 30U);
    EXPECT_GT(Whole, 300U);
}

}  // namespace
}  // namespace kv::test
