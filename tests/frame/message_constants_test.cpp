// The module of constants of an application's messages: three passes over the list.
#include <gtest/gtest.h>

#include "frame/ParmList.h"
#include "frame/TagTools.h"
#include "frame/vdbInclude.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

struct Text {
    std::wstring Language;
    std::wstring Text;
};
struct Named {
    std::wstring Name;
    ParmList<struct Text> Message;
};

Named Message(std::wstring_view Name, std::initializer_list<Text> Texts = {}) {
    Named Made{std::wstring(Name), {}};
    for (const Text& Each : Texts) Made.Message.Add(Each);
    return Made;
}

class MessageConstants : public FrameTest {
  protected:
    const std::filesystem::path File = Platform.Folder / "Messaggi.bas";

    std::string Written(std::initializer_list<Named> Messages) {
        ParmList<Named> List;
        for (const Named& Each : Messages) List.Add(Each);
        Platform.SavePath = File.wstring();
        EXPECT_TRUE(Succeeds(ExportFieldsToConsts(L"VCLIENT", TagMessagesOf(List))));
        return ReadFile(File);
    }
};

TEST_F(MessageConstants, NoMessages) {
    EXPECT_EQ(Written({}), "'vdbApplication Messages\r\n");
    ASSERT_EQ(Platform.FileQuestions.size(), 1U);
    EXPECT_EQ(Platform.FileQuestions[0].Title, L"File di uscita");
    EXPECT_EQ(Platform.FileQuestions[0].Filter, L"Moduli VB|*.BAS|Tutti i file|*.*");
    EXPECT_EQ(Platform.FileQuestions[0].FilterIndex, 1);
    EXPECT_EQ(Platform.FileQuestions[0].Flags, 2664450);
}

TEST_F(MessageConstants, TextsThenNamesThenCodes) {
    EXPECT_EQ(Written({Message(L"FINE", {{L"ITA", L"Fine"}, {L"ENG", L"End"}}),
                       Message(L"INIZIO", {{L"ITA", L"Inizio"}})}),
              "'vdbApplication Messages\r\n"
              "Public Const MSG_FINE_ITA=\"Fine\"\r\n"
              "Public Const MSG_FINE_ENG=\"End\"\r\n"
              "Public Const MSG_INIZIO_ITA=\"Inizio\"\r\n"
              "Public Const MSG_FINE_STR=\"FINE\"\r\n"
              "Public Const MSG_INIZIO_STR=\"INIZIO\"\r\n"
              "Public Const MSG_FINE_COD=10000\r\n"
              "Public Const MSG_INIZIO_COD=10001\r\n");
}

TEST_F(MessageConstants, BlanksOfANameBecomeUnderscoresInTheConstantAlone) {
    EXPECT_EQ(Written({Message(L"DUE  PAROLE ", {{L"ITA", L"È \"tutto\" €"}})}),
              "'vdbApplication Messages\r\n"
              "Public Const MSG_DUE__PAROLE__ITA=\"\xC8 \"tutto\" \x80\"\r\n"
              "Public Const MSG_DUE__PAROLE__STR=\"DUE  PAROLE \"\r\n"
              "Public Const MSG_DUE__PAROLE__COD=10000\r\n");
}

TEST_F(MessageConstants, AnyLanguageGivesACodeAndNoTextGivesNone) {
    EXPECT_EQ(Written({Message(L"A", {{L"ENG", L"a"}, {L"ita", L"b"}}), Message(L"B"),
                       Message(L"C", {{L"FRA", L"c"}}), Message(L"D", {{L"", L""}})}),
              "'vdbApplication Messages\r\n"
              "Public Const MSG_A_ENG=\"a\"\r\n"
              "Public Const MSG_A_ita=\"b\"\r\n"
              "Public Const MSG_C_FRA=\"c\"\r\n"
              "Public Const MSG_D_=\"\"\r\n"
              "Public Const MSG_A_STR=\"A\"\r\n"
              "Public Const MSG_B_STR=\"B\"\r\n"
              "Public Const MSG_C_STR=\"C\"\r\n"
              "Public Const MSG_D_STR=\"D\"\r\n"
              "Public Const MSG_A_COD=10000\r\n"
              "Public Const MSG_C_COD=10002\r\n"
              "Public Const MSG_D_COD=10003\r\n");
}

TEST_F(MessageConstants, AFileThatExistsIsReplaced) {
    WriteFile(File, std::string(1000, 'x'));
    EXPECT_EQ(Written({}), "'vdbApplication Messages\r\n");
}

TEST_F(MessageConstants, OtherClassesAreTold) {
    for (const wchar_t* Class : {L"STRINGTABLE", L"TABLE", L"vclient", L""}) {
        Platform.Asked.clear();
        EXPECT_TRUE(Succeeds(ExportFieldsToConsts(Class, TagMessages{})));
        EXPECT_EQ(Platform.Asked, std::vector<std::wstring>{L"Funzione non disponibile per questo oggetto."});
    }
    EXPECT_TRUE(Platform.FileQuestions.empty());
}

TEST_F(MessageConstants, ACancelledDialogEndsItSilently) {
    EXPECT_TRUE(Succeeds(ExportFieldsToConsts(L"VCLIENT", TagMessages{})));
    EXPECT_EQ(Platform.FileQuestions.size(), 1U);
    EXPECT_TRUE(std::filesystem::is_empty(Platform.Folder));
}

TEST_F(MessageConstants, AFileThatCannotBeMadeIsRefused) {
    const std::wstring Path = (Platform.Folder / "manca" / "X.BAS").wstring();
    FileNumber Number;
    const std::int32_t Expected = OpenFile(Path, 148, 16, 0, Number);
    Platform.SavePath = Path;
    const std::wstring Told = L"Impossibile creare il file " + Path;
    EXPECT_TRUE(
        FailsWith(ExportFieldsToConsts(L"VCLIENT", TagMessages{}),
                  {.Number = Expected, .Source = L"vdbcModule.ExportFieldsToConsts", .Description = Told}));
}

}  // namespace
}  // namespace kv::test
