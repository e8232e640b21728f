// Every section that the editor owns, and the repository's: each keyword, each value word, what is refused
// and with which words, what a text leaves out, and that text and record are each other's picture.
#include "tests/editor/Sections.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/frame/Told.h"
#include "tests/records/Filled.h"

namespace kv::test {
namespace {

/// A value as it may be typed, and what the property then holds.
struct Typed {
    std::wstring Text;
    RegValue Value;
};

std::wstring Lower(std::wstring_view Words) {
    std::wstring Out(Words);
    for (wchar_t& C : Out)
        if (C >= L'A' && C <= L'Z') C = static_cast<wchar_t>(C + 32);
    return Out;
}

std::vector<Typed> AcceptedBy(const Row& Each) {
    switch (Each.How) {
        case Reads::Name:
            return {{L"\"Libri è\"", L"LIBRI È"},
                    {L"libri", L"LIBRI"},
                    {L"\" a b \"", L" A B "},
                    {L"A=B", L"A=B"},
                    {L"\"a|b\"", L"A|B"},
                    {L"\"\"", L""},
                    {L"", L""},
                    {L"\"dopo", L"\"DOPO"},
                    {L"\"", L""}};
        case Reads::Kept:
            return {{L"\"C:\\Dati è\"", L"C:\\Dati è"},
                    {L"C:\\Dati", L"C:\\Dati"},
                    {L"\" a B \"", L" a B "},
                    {L"A=b", L"A=b"},
                    {L"\"a\"b\"", L"a\"b"},
                    {L"\"\"", L""},
                    {L"", L""},
                    {L"'x", L"'x"}};
        case Reads::Boolean:
            return {{L"TRUE", true},   {L"true", true},   {L"Vero", true}, {L"VERO", true},
                    {L"FALSE", false}, {L"falso", false}, {L"", false},    {L"False", false}};
        case Reads::Flags: {
            std::vector<Typed> Out{
                {L"NONE", std::int32_t{0}}, {L"none", std::int32_t{0}}, {L"", std::int32_t{0}}};
            std::wstring All;
            std::int32_t Bits = 0;
            for (const auto& [Word, Bit] : Each.Words) {
                Out.push_back({std::wstring(Word), Bit});
                Out.push_back({Lower(Word), Bit});
                Out.push_back({std::wstring(Word) + L"|", Bit});
                All = std::wstring(Word) + L" | " + All;
                Bits |= Bit;
                Out.push_back({All, Bits});
            }
            return Out;
        }
        case Reads::OneWord: {
            std::vector<Typed> Out;
            for (const auto& [Word, Code] : Each.Words) {
                Out.push_back({std::wstring(Word), Code});
                Out.push_back({Lower(Word), Code});
            }
            return Out;
        }
        case Reads::Number:
            return {{L"12", std::int32_t{12}},
                    {L"-3", std::int32_t{-3}},
                    {L"", std::int32_t{0}},
                    {L"2.5", std::int32_t{2}},
                    {L"3.5", std::int32_t{4}},
                    {L"1e2", std::int32_t{100}},
                    {L"12pt", std::int32_t{12}},
                    {L"abc", std::int32_t{0}},
                    {L"2147483647", std::int32_t{2147483647}}};
        case Reads::Bits: {
            std::vector<Typed> Out{{L"", std::int32_t{0}}};
            std::wstring All;
            std::int32_t Set = 0;
            for (const auto& [Word, Bit] : Each.Words) {
                Out.push_back({std::wstring(Word), Bit});
                Out.push_back({L"\"" + Lower(Word) + L"\"", Bit});
                All = std::wstring(Word) + L" | " + All;
                Set |= Bit;
                Out.push_back({All, Set});
            }
            return Out;
        }
        case Reads::Ceiling:
            return {{L"NONE", std::int32_t{-1}},     {L"none", std::int32_t{-1}}, {L"0", std::int32_t{0}},
                    {L"", std::int32_t{0}},          {L"12", std::int32_t{12}},   {L"2.5", std::int32_t{2}},
                    {L"12 schede", std::int32_t{12}}};
    }
    return {};
}

/// A value that no word list holds, with what its message shows; only for keywords that have words.
struct Unknown {
    std::wstring Text;
    std::wstring Message;  // between the brackets
    RegValue Lax;          // what the property holds in lax mode
};

std::vector<Unknown> UnknownTo(const Row& Each, const RegValue& Default) {
    switch (Each.How) {
        case Reads::Boolean:
            return {{L"forse", L"FORSE", Default}, {L"1", L"1", Default}, {L"sì", L"SÌ", Default}};
        case Reads::Flags: {
            std::vector<Unknown> Out{{L"pippo", L"", std::int32_t{0}},
                                     {L"pippo|Pluto", L"PLUTO", std::int32_t{0}},
                                     {L"NONE|pluto", L"PLUTO", std::int32_t{0}}};
            if (!Each.Words.empty()) {
                const auto& [Word, Bit] = Each.Words.back();
                Out.push_back({L"pippo|" + Lower(Word), std::wstring(Word), Bit});
                Out.push_back({std::wstring(Word) + L"|pippo", L"", Bit});
            }
            return Out;
        }
        case Reads::OneWord:
            return {{L"pippo", L"PIPPO", Default}, {L"\"Pippo Pluto\"", L"PIPPO PLUTO", Default}};
        case Reads::Bits: {
            const auto& [Word, Bit] = Each.Words[1];
            return {{L"pippo", L"", std::int32_t{0}},
                    {L"NONE", L"", std::int32_t{0}},
                    {L"\"prevail|" + Lower(Word) + L"\"", std::wstring(Word), Bit},
                    {std::wstring(Word) + L"|disponly", L"", Bit}};
        }
        case Reads::Ceiling:
            return {{L"-5", L"-5", Default},
                    {L"pippo", L"PIPPO", Default},
                    {L"\"none\"", L"\"NONE\"", Default},
                    {L"schede 12", L"SCHEDE 12", Default}};
        default:
            return {};
    }
}

template <class S>
class Section : public FrameTest {
  protected:
    using Fields = typename S::Record;

    static bool Save(Fields& Into, std::wstring Text, bool Strict) {
        const std::wstring Before = Text;
        const bool Failed = S::Save(Into, Text, Strict);
        EXPECT_EQ(Text, Before) << "the text is never changed";
        return Failed;
    }
    static std::wstring Shown(const Fields& From) {
        std::wstring Buffer;
        EXPECT_TRUE(Succeeds(S::Disp(From, Buffer)));
        return Buffer;
    }
    static RegValue Value(const Fields& From, std::wstring_view Property) {
        const auto Found = From.ByName(Property);
        EXPECT_TRUE(Found.has_value()) << Narrow(Property);
        return Found.value_or(RegValue{});
    }
    static std::wstring Line(const Row& Each, std::wstring_view Text) {
        return std::wstring(Each.Keyword) + L" " + std::wstring(Text) + L"\r\n";
    }
    /// What a text needs besides the row under test, so that strict mode has nothing to say about it.
    static std::wstring Needed(const Row& Each) {
        if (Mandatory<S>().empty() || Each.Keyword == Mandatory<S>()) return L"";
        return std::wstring(Mandatory<S>()) + L" ITA\r\n";
    }
    static bool StrictRefuses(const Row& Each, const Typed& Value) {
        return Each.Keyword == Mandatory<S>() && Value.Value == RegValue(std::wstring());
    }
    /// A text with a value, other than the default, for every keyword.
    static std::wstring FullText() {
        std::wstring Text;
        for (const Row& Each : S::Rows()) Text += Line(Each, FullValue(Each));
        return Text;
    }
    static std::wstring FullValue(const Row& Each) {
        switch (Each.How) {
            case Reads::Name:
                return L"\"NOME\"";
            case Reads::Kept:
                return L"\"Testo di prova\"";
            case Reads::Boolean:
                return Value(Fields{}, Each.Property) == RegValue(true) ? L"FALSE" : L"TRUE";
            case Reads::Flags:
            case Reads::OneWord:
                return std::wstring(Each.Words.empty() ? L"NONE" : Each.Words.back().first);
            case Reads::Bits:
                return std::wstring(Each.Words[1].first);
            case Reads::Number:
            case Reads::Ceiling:
                return L"12";
        }
        return L"";
    }
    static Fields Full() {
        Fields Made;
        Made.Id = 17;
        Made.Name = L"Soggetti";
        Made.Version = 3;
        EXPECT_TRUE(Succeeds(Save(Made, FullText(), true)));
        return Made;
    }
};

using Sections =
    ::testing::Types<AliasSection, CatalogueSection, CatalogueOfImportSection, CatProcSection,
                     CatProcFieldSection, FilterSection, ImportSection, CaptionSection, TitleSection,
                     HtmlSection, FontSection, CommandSection, PopupSection, BrowseSection,
                     BrowseFilterSection, RepositorySection, ApplicationSection, FormFontSection,
                     MessageFontSection, TitleFontSection, MessageSection, MessageTextSection,
                     ToolCommandSection, LoanSection, LoanClientSection, LoanMenuSection>;
TYPED_TEST_SUITE(Section, Sections);

TYPED_TEST(Section, EveryKeywordTakesItsValuesStrictOrLax) {
    using Record = typename TypeParam::Record;
    for (const Row& Each : TypeParam::Rows()) {
        for (const Typed& Value : AcceptedBy(Each)) {
            for (const bool Strict : {true, false}) {
                if (Strict && this->StrictRefuses(Each, Value)) continue;
                SCOPED_TRACE(Narrow(Each.Keyword) + " " + Narrow(Value.Text) + (Strict ? " strict" : " lax"));
                Record Into;
                ASSERT_TRUE(
                    Succeeds(this->Save(Into, this->Line(Each, Value.Text) + this->Needed(Each), Strict)));
                EXPECT_TRUE(this->Value(Into, Each.Property) == Value.Value);
                const Record Plain;
                for (const Row& Other : TypeParam::Rows()) {
                    if (Other.Keyword == Each.Keyword || Other.Keyword == Mandatory<TypeParam>()) continue;
                    EXPECT_TRUE(this->Value(Into, Other.Property) == this->Value(Plain, Other.Property))
                        << Narrow(Other.Keyword) << " has changed";
                }
            }
        }
    }
}

TYPED_TEST(Section, AnUnknownWordIsRefusedStrictAndIgnoredLax) {
    using Record = typename TypeParam::Record;
    const Record Plain;
    for (const Row& Each : TypeParam::Rows()) {
        for (const Unknown& Value : UnknownTo(Each, this->Value(Plain, Each.Property))) {
            SCOPED_TRACE(Narrow(Each.Keyword) + " " + Narrow(Value.Text));
            const std::wstring Text = L"'prima\r\n" + this->Line(Each, Value.Text) + this->Needed(Each);
            const std::wstring Message = L"Valore sconosciuto per il parametro " +
                                         std::wstring(Each.Keyword) + L"(" + Value.Message + L")";
            Record Into;
            EXPECT_TRUE(FailsWith(
                this->Save(Into, Text, true),
                {.Number = 20000, .Source = TypeParam::kSource, .Description = Message, .Line = 2}));
            EXPECT_TRUE(Into == Plain);
            ASSERT_TRUE(Succeeds(this->Save(Into, Text, false)));
            EXPECT_TRUE(this->Value(Into, Each.Property) == Value.Lax);
        }
    }
}

TYPED_TEST(Section, AKeywordStandsOnce) {
    using Record = typename TypeParam::Record;
    for (const Row& Each : TypeParam::Rows()) {
        for (const bool Strict : {true, false}) {
            Record Into;
            const std::wstring Line = this->Line(Each, this->FullValue(Each));
            const std::wstring Message = L"Ripetizone del parametro " + std::wstring(Each.Keyword) + L".";
            EXPECT_TRUE(
                FailsWith(this->Save(Into, Line + L"\r\n" + Line, Strict), {.Number = 20000,
                                                                            .Source = TypeParam::kSource,
                                                                            .Description = Message,
                                                                            .Line = 3,
                                                                            .HelpFile = L"65536"}));
        }
    }
    Record Into;
    EXPECT_TRUE(Succeeds(this->Save(Into, this->FullText(), true)));
    EXPECT_TRUE(Succeeds(this->Save(Into, this->FullText(), true))) << "but again in the next text";
}

TYPED_TEST(Section, AnUnknownKeywordIsRefusedStrictOrLax) {
    using Record = typename TypeParam::Record;
    std::vector<std::wstring> Keywords{L"PIPPO=", L"=", L"\tX="};
    for (const Row& Each : TypeParam::Rows()) Keywords.push_back(Lower(Each.Keyword));
    for (const std::wstring& Keyword : Keywords) {
        for (const bool Strict : {true, false}) {
            Record Into;
            const std::wstring Message = L"Parametro non riconosciuto: " + Keyword + L"5";
            EXPECT_TRUE(FailsWith(
                this->Save(Into, L"\r\n" + Keyword + L" 5", Strict),
                {.Number = 20000, .Source = TypeParam::kSource, .Description = Message, .Line = 2}));
        }
    }
}

TYPED_TEST(Section, ALineWithoutEqualsIsToldByTheCodec) {
    using Record = typename TypeParam::Record;
    for (const bool Strict : {true, false}) {
        Record Into;
        EXPECT_TRUE(FailsWith(this->Save(Into, L"'x\r\n\r\nsenza uguale\r\nPIPPO=", Strict),
                              {.Number = 20018,
                               .Source = L"vDesignPar.GetFieldValue",
                               .Description = L"Errore di sintassi: senza uguale.",
                               .Line = 3}));
    }
}

TYPED_TEST(Section, WhatTheTextLeavesOutReturnsToItsDefaultOrIsKept) {
    using Record = typename TypeParam::Record;
    const Record Plain;
    for (const Row& Missing : TypeParam::Rows()) {
        SCOPED_TRACE(Narrow(Missing.Keyword));
        std::wstring Text;
        for (const Row& Each : TypeParam::Rows())
            if (Each.Keyword != Missing.Keyword) Text += this->Line(Each, this->FullValue(Each));
        Record Into = this->Full();
        const bool Strict = Missing.Keyword != Mandatory<TypeParam>();
        ASSERT_TRUE(Succeeds(this->Save(Into, Text, Strict)));
        const Record& Expected = TypeParam::kKeeps || Missing.Identity ? this->Full() : Plain;
        EXPECT_TRUE(this->Value(Into, Missing.Property) == this->Value(Expected, Missing.Property));
        for (const Row& Each : TypeParam::Rows()) {
            if (Each.Keyword == Missing.Keyword) continue;
            EXPECT_TRUE(this->Value(Into, Each.Property) == this->Value(this->Full(), Each.Property))
                << Narrow(Each.Keyword);
        }
    }
}

TYPED_TEST(Section, ATextWithoutParametersClearsOrKeepsThemAll) {
    using Record = typename TypeParam::Record;
    for (const std::wstring_view Text : {L"", L"   ", L"\r\n\r\n", L"'a\r\n;b\r\n  *c"}) {
        Record Into = this->Full();
        const Record Before = Into;
        ASSERT_TRUE(Succeeds(this->Save(Into, std::wstring(Text), false)));
        EXPECT_EQ(Into.Id, 17);
        EXPECT_EQ(Into.Name, Before.Name);
        EXPECT_EQ(Into.Version, 3) << "the identity stays";
        if constexpr (TypeParam::kKeeps) {
            EXPECT_TRUE(Into == Before);
        } else {
            const Record Plain;
            for (const Row& Each : TypeParam::Rows()) {
                if (Each.Identity) continue;
                EXPECT_TRUE(this->Value(Into, Each.Property) == this->Value(Plain, Each.Property));
            }
        }
    }
}

TYPED_TEST(Section, AnyFaultLeavesTheRecordAsItWas) {
    if constexpr (TypeParam::kKeeps) {
        SUCCEED() << "its item parses a copy of it";
    } else {
        auto Record = this->Full();
        const auto Before = Record;
        std::wstring Changes;
        for (const Row& Each : TypeParam::Rows())
            Changes += this->Line(Each, Each.How == Reads::Name   ? L"ALTRO"
                                        : Each.How == Reads::Kept ? L"altro"
                                                                  : L"");
        std::vector<std::wstring> Faults{L"PIPPO= 1", L"senza uguale", this->FullText()};
        for (const std::wstring& Fault : Faults) {
            for (const bool Strict : {true, false}) {
                // Words that have no empty form are ignored in lax mode only; either way the text has a
                // fault.
                EXPECT_TRUE(this->Save(Record, Changes + Fault, Strict));
                CoreUtil::Instance().ForgetError();
                EXPECT_TRUE(Record == Before) << Narrow(Fault);
            }
        }
    }
}

TYPED_TEST(Section, EveryKeywordIsAlwaysRenderedInOrderAndThenTheIdentity) {
    using Record = typename TypeParam::Record;
    Record Plain;
    Plain.Id = 17;
    Plain.Version = 3;
    for (const Record& From : {Plain, this->Full()}) {
        std::wstring Expected;
        for (const Row& Each : TypeParam::Rows()) {
            const RegValue Value = this->Value(From, Each.Property);
            std::wstring Text;
            switch (Each.How) {
                case Reads::Name:
                case Reads::Kept:
                    Text = L"\"" + std::get<std::wstring>(Value) + L"\"";
                    break;
                case Reads::Boolean:
                    Text = std::get<bool>(Value) ? L"TRUE" : L"FALSE";
                    break;
                case Reads::Flags:
                    for (const auto& [Word, Bit] : Each.Words)
                        if ((std::get<std::int32_t>(Value) & Bit) != 0)
                            Text += (Text.empty() ? L"" : L"|") + std::wstring(Word);
                    if (Text.empty()) Text = L"NONE";
                    break;
                case Reads::OneWord:
                    for (const auto& [Word, Code] : Each.Words)
                        if (std::get<std::int32_t>(Value) == Code) Text = Word;
                    break;
                case Reads::Bits: {
                    const std::int32_t Bits = std::get<std::int32_t>(Value);
                    const bool InFront = Each.Words[0].second == 0;
                    for (const auto& [Word, Bit] : Each.Words)
                        if ((Bits & Bit) != 0 || (InFront && Bit == 0 && (Bits & Each.Words[1].second) == 0))
                            Text += (Text.empty() ? L"" : L"|") + std::wstring(Word);
                    if (Text.empty()) Text = Each.Words.back().first;
                    break;
                }
                case Reads::Number:
                    Text = std::to_wstring(std::get<std::int32_t>(Value));
                    break;
                case Reads::Ceiling: {
                    const std::int32_t Most = std::get<std::int32_t>(Value);
                    Text = Most < 0 ? L"NONE" : std::to_wstring(Most);
                    break;
                }
            }
            Expected += std::wstring(Each.Keyword) + L" " + Text + L"\r\n";
        }
        Expected += L"'[ID= " + std::to_wstring(From.Id) + L"]\r\n'[NAME= " + From.Name +
                    L"]\r\n'[VERSION= " + std::to_wstring(From.Version) + L"]\r\n";
        EXPECT_EQ(Narrow(this->Shown(From)), Narrow(Expected));
    }
    std::wstring Buffer = L"prima\r\n";
    ASSERT_FALSE(TypeParam::Disp(Plain, Buffer));
    EXPECT_EQ(Buffer, L"prima\r\n" + this->Shown(Plain)) << "the text is appended";
}

TYPED_TEST(Section, TheRenderedTextReadsBackStrictly) {
    using Record = typename TypeParam::Record;
    const Record From = this->Full();
    const std::wstring Text = this->Shown(From);
    Record Into;
    Into.Id = From.Id;
    Into.Name = From.Name;
    Into.Version = From.Version;
    ASSERT_TRUE(Succeeds(this->Save(Into, Text, true)));
    EXPECT_TRUE(Into == From);
    EXPECT_EQ(this->Shown(Into), Text);
}

// Whatever the store holds: the text that is shown is accepted, and from then on stands still.
TYPED_TEST(Section, RandomRecordsReachAFixpointAfterOneReading) {
    using Record = typename TypeParam::Record;
    Filler Random(31);
    for (int Round = 0; Round < 200; ++Round) {
        Record From = Random.Record<Record>();
        const auto OneLine = [](std::wstring& Text) {
            std::erase_if(Text, [](wchar_t C) { return C == L'\r' || C == L'\n'; });
        };
        OneLine(From.Name);
        OneLine(From.Desc);
        Record::Properties([&](const auto&... P) {
            const auto Each = [&](auto& Member) {
                if constexpr (std::is_same_v<std::remove_cvref_t<decltype(Member)>, std::wstring>)
                    OneLine(Member);
            };
            (Each(From.*P.Place), ...);
        });
        if constexpr (TypeParam::kNeedsLanguage) From.Language += L"X";
        if constexpr (Mandatory<TypeParam>() == L"NAME=") From.Name += L"X";
        const std::wstring Text = this->Shown(From);
        Record Into = From;
        ASSERT_TRUE(Succeeds(this->Save(Into, Text, true))) << Narrow(Text);
        for (const Row& Each : TypeParam::Rows()) {
            if (Each.How == Reads::Kept || Each.How == Reads::Boolean || Each.How == Reads::Number) {
                EXPECT_TRUE(this->Value(Into, Each.Property) == this->Value(From, Each.Property))
                    << Narrow(Each.Keyword);
            }
        }
        const std::wstring Again = this->Shown(Into);
        Record Third = Into;
        ASSERT_TRUE(Succeeds(this->Save(Third, Again, true)));
        ASSERT_TRUE(Third == Into);
        ASSERT_EQ(this->Shown(Third), Again);
    }
}

// Texts put together at random: refused ones change nothing, accepted ones render to a text that says the
// same.
TYPED_TEST(Section, RandomTextsAreRefusedOrTaken) {
    using Record = typename TypeParam::Record;
    std::mt19937 Random(41);
    const auto Below = [&](std::size_t N) { return static_cast<std::size_t>(Random() % N); };
    const std::vector<Row> Rows = TypeParam::Rows();
    int Taken = 0;
    Record Into;
    for (int Round = 0; Round < 500; ++Round) {
        std::wstring Text;
        for (const Row& Each : Rows) {
            if (Below(3) == 0) continue;
            const std::vector<Typed> Values = AcceptedBy(Each);
            Text += this->Line(Each, Values[Below(Values.size())].Text);
            if (Below(30) == 0) Text += this->Line(Each, L"pippo");
            if (Below(20) == 0) Text += L"  'commento\r\n\r\n";
            if (Below(60) == 0) Text += L"senza uguale\r\n";
        }
        const bool Strict = Below(2) == 0;
        const Record Before = Into;
        Record Scratch = Into;
        const bool Failed = this->Save(Scratch, Text, Strict);
        if (Failed) {
            EXPECT_FALSE(CoreUtil::Instance().LastError().Empty());
            CoreUtil::Instance().ForgetError();
            if constexpr (!TypeParam::kKeeps) {
                ASSERT_TRUE(Scratch == Before);
            }
            continue;
        }
        ++Taken;
        Into = Scratch;
        Record Back = Into;
        ASSERT_TRUE(Succeeds(this->Save(Back, this->Shown(Into), false)));
        ASSERT_TRUE(Back == Into) << Narrow(Text);
    }
    EXPECT_GT(Taken, 50);
}

}  // namespace
}  // namespace kv::test
