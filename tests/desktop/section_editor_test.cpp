// The editor of a section, driven by the keys that an operator presses.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QFontInfo>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "host/desktop/SectionEditor.h"

namespace kv::desktop {

namespace {

const QString kImport = QStringLiteral(
    "'una riga di commento\r\n"
    "SOURCEPATH= \"D:\\Digitale\"\r\n"
    "PROCTYPE= NODBR | refresh|ALTRO\r\n"
    "LOCKED= TRUE\r\n"
    "'[ID= 17]\r\n");

SectionWords ImportWords() {
    return {{QStringLiteral("SOURCEPATH="), QStringLiteral("TARGETPATH="), QStringLiteral("PROCTYPE="),
             QStringLiteral("FLAGS="), QStringLiteral("LOCKED="), QStringLiteral("LOGFILE="),
             QStringLiteral("MIRROROF=")},
            [](const QString& Keyword) -> QStringList {
                if (Keyword == u"PROCTYPE=")
                    return {QStringLiteral("NODBR"), QStringLiteral("ONLYDBR"),
                            QStringLiteral("NONULLMAINKEY"), QStringLiteral("REFRESH")};
                if (Keyword == u"LOCKED=") return {QStringLiteral("TRUE"), QStringLiteral("FALSE")};
                if (Keyword == u"TARGETPATH=")
                    return {QStringLiteral("FILE:<target>[;<ziptmppath>]"),
                            QStringLiteral("FTP:[user,pwd@]<target>[;<ziptmppath>]")};
                if (Keyword == u"FLAGS=") return {QStringLiteral("ZIPFILES"), QStringLiteral("EXTERN(")};
                return {};
            }};
}

QStringList Words(const char* List) { return QString::fromUtf8(List).split(u' ', Qt::SkipEmptyParts); }

// Contrast of two colours, from 1 to 21.
double Contrast(const QColor& A, const QColor& B) {
    const auto Luminance = [](const QColor& C) {
        const auto Linear = [](double V) {
            return V <= 0.04045 ? V / 12.92 : std::pow((V + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * Linear(C.redF()) + 0.7152 * Linear(C.greenF()) + 0.0722 * Linear(C.blueF());
    };
    const double L = Luminance(A);
    const double M = Luminance(B);
    return (std::max(L, M) + 0.05) / (std::min(L, M) + 0.05);
}

QPalette PaletteOf(const QColor& Base, const QColor& Text) {
    QPalette P;
    P.setColor(QPalette::Base, Base);
    P.setColor(QPalette::Text, Text);
    return P;
}

class SectionEditorTest : public testing::Test {
  protected:
    SectionEditorTest() {
        auto* Column = new QVBoxLayout(&Window);
        Column->addWidget(&Editor);
        Column->addWidget(&Next);
        Window.resize(Editor.fontMetrics().averageCharWidth() * 70, Editor.fontMetrics().height() * 24);
        Window.show();
        Window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Window));
        Editor.setFocus();
    }

    void Show(const char* Text) { Editor.ShowSection(QString::fromUtf8(Text), ImportWords()); }

    // Keys go to the window, as those of a keyboard: an open popup gets them first.
    void Type(const char* Text) {
        for (const char* C = Text; *C != 0; ++C) QTest::keyClick(Window.windowHandle(), *C);
    }
    void Press(Qt::Key Key, Qt::KeyboardModifiers With = Qt::NoModifier) {
        QTest::keyClick(Window.windowHandle(), Key, With);
    }
    void GoTo(int Line, int Column) {
        const QTextBlock Block = Editor.document()->findBlockByNumber(Line);
        ASSERT_TRUE(Block.isValid());
        ASSERT_LE(Column, Block.length() - 1);
        QTextCursor Cursor(Block);
        Cursor.setPosition(Block.position() + Column);
        Editor.setTextCursor(Cursor);
    }

    bool Open() const { return Editor.Completer()->popup()->isVisible(); }
    // What the popup shows; empty where it is closed.
    QStringList Offered() const {
        QStringList Result;
        if (!Open()) return Result;
        const QAbstractItemModel* Rows = Editor.Completer()->popup()->model();
        for (int I = 0; I < Rows->rowCount(); ++I) Result.append(Rows->index(I, 0).data().toString());
        return Result;
    }
    QString Chosen() const { return Editor.Completer()->popup()->currentIndex().data().toString(); }
    QString Line(int At) const { return Editor.document()->findBlockByNumber(At).text(); }

    // The format that the highlighter gave a letter.
    QTextCharFormat FormatAt(int LineAt, int Column) const {
        const auto Formats = Editor.document()->findBlockByNumber(LineAt).layout()->formats();
        for (const QTextLayout::FormatRange& R : Formats)
            if (R.start <= Column && Column < R.start + R.length) return R.format;
        return {};
    }
    // One letter a column: what it is coloured as, "." for nothing.
    QString Picture(int LineAt) const {
        const SectionColours& C = Editor.Highlighter()->Colours();
        QString Result;
        for (int Column = 0; Column < Line(LineAt).size(); ++Column) {
            const QTextCharFormat F = FormatAt(LineAt, Column);
            const QColor Colour = F.foreground().color();
            Result += !F.hasProperty(QTextFormat::ForegroundBrush) ? u'.'
                      : Colour == C.Keyword                        ? u'k'
                      : Colour == C.Comment                        ? u'c'
                      : Colour == C.String                         ? u's'
                      : Colour == C.Word                           ? u'w'
                                                                   : u'?';
        }
        return Result;
    }
    // The lines (from 0) with a background of that colour.
    QList<int> LinesMarked(const QColor& Colour) const {
        QList<int> Result;
        for (const auto& S : Editor.extraSelections())
            if (S.format.background().color() == Colour) Result.append(S.cursor.blockNumber());
        return Result;
    }

    QWidget Window;
    SectionEditor Editor;
    QLineEdit Next;
};

// Texts.

TEST_F(SectionEditorTest, IsEmptyAndReadOnlyAtFirstAndWithNothingToShow) {
    EXPECT_TRUE(Editor.isReadOnly());
    Show("LOCKED= TRUE\r\n");
    EXPECT_FALSE(Editor.isReadOnly());
    Editor.ShowNothing();
    EXPECT_TRUE(Editor.isReadOnly());
    Type("X");
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_FALSE(Open());
    EXPECT_EQ(Editor.SectionText(), QString());
    EXPECT_FALSE(Editor.HasChanges());
}

TEST_F(SectionEditorTest, AnUnchangedTextComesBackLetterByLetter) {
    for (const QString& Text : {QString(), QStringLiteral("A= 1"), QStringLiteral("A= 1\r\n"),
                                QStringLiteral("A= 1\nB= 2"), QStringLiteral("A= 1\r\nB= 2\nC= 3\r\n\r\n"),
                                QStringLiteral("\r\n"), QStringLiteral("A= x\u00a0y \u2028z\r\n\tB= 1  ")}) {
        Editor.ShowSection(Text, ImportWords());
        EXPECT_EQ(Editor.SectionText(), Text);
        Type("x");
        Press(Qt::Key_Backspace);
        EXPECT_EQ(Editor.SectionText(), Text);
    }
}

TEST_F(SectionEditorTest, AChangedTextHasBothCharactersAtEveryLineEndAndKeepsAllOthers) {
    Editor.ShowSection(QStringLiteral("A= x\u00a0y\nB= \u00e0\u20ac\t1\r\nC= 3"), ImportWords());
    Press(Qt::Key_End, Qt::ControlModifier);
    Type("4");
    Press(Qt::Key_Return);
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("A= x\u00a0y\r\nB= \u00e0\u20ac\t1\r\nC= 34\r\n"));
}

TEST_F(SectionEditorTest, CopyAndPasteKeepBlanksThatDoNotBreak) {
    Editor.ShowSection(QStringLiteral("A= x\u00a0y\r\nB= 2"), ImportWords());
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("A= x\u00a0y\nB= 2"));
    EXPECT_FALSE(QApplication::clipboard()->mimeData()->hasHtml());
    Press(Qt::Key_End, Qt::ControlModifier);
    Press(Qt::Key_Return);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("A= x\u00a0y\r\nB= 2\r\nA= x\u00a0y\r\nB= 2"));
}

// Changes and undo.

TEST_F(SectionEditorTest, TellsWhenTheTextBeginsAndCeasesToDiffer) {
    Show("LOGFILE= A");
    QSignalSpy Changes(&Editor, &SectionEditor::ChangesChanged);
    GoTo(0, 10);
    Type("B");
    EXPECT_TRUE(Editor.HasChanges());
    ASSERT_EQ(Changes.size(), 1);
    EXPECT_TRUE(Changes[0][0].toBool());
    Type("C");
    EXPECT_EQ(Changes.size(), 1);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(Editor.HasChanges());
    ASSERT_EQ(Changes.size(), 2);
    EXPECT_FALSE(Changes[1][0].toBool());
    Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(Editor.HasChanges());
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("LOGFILE= ABC"));
}

TEST_F(SectionEditorTest, TypedBackToTheBeginningIsNoChange) {
    Show("LOGFILE= AB");
    GoTo(0, 11);
    Press(Qt::Key_Backspace);
    Type("C");
    EXPECT_TRUE(Editor.HasChanges()) << "of the same length";
    Press(Qt::Key_Backspace);
    Type("B");
    EXPECT_FALSE(Editor.HasChanges());
}

TEST_F(SectionEditorTest, UndoStaysInTheSection) {
    Show("LOGFILE= A");
    Type("X");
    QSignalSpy Changes(&Editor, &SectionEditor::ChangesChanged);
    Show("LOCKED= TRUE");
    ASSERT_EQ(Changes.size(), 1);
    EXPECT_FALSE(Changes[0][0].toBool());
    EXPECT_FALSE(Editor.document()->isUndoAvailable());
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("LOCKED= TRUE"));
    EXPECT_FALSE(Editor.HasChanges());
}

// Colours.

TEST_F(SectionEditorTest, ColoursWhatALineIsMadeOf) {
    struct Case {
        const char* Text;
        const char* Picture;
    };
    for (const Case& C : {
             Case{"'nota = \"x\"", "ccccccccccc"},
             Case{"  ;nota", "..ccccc"},
             Case{"*[x", "ccc"},
             Case{"'[ID= 17]", "ccccccccc"},
             Case{"\t'[ID= 17]", "kkkkkk...."},
             Case{"LOGFILE= A=B", "kkkkkkkk...."},
             Case{"LOGFILE = A", "kkkkkkkkk.."},
             Case{"LOGFILE", "......."},
             Case{"", ""},
             Case{"=5", "k."},
             Case{"LOGFILE= \"D:\\x\"", "kkkkkkkk.ssssss"},
             Case{"LOGFILE= \"a\"b\" ", "kkkkkkkk.sssss."},
             Case{"LOGFILE= \"aperta", "kkkkkkkk.sssssss"},
             Case{"MASTER= N=\"T\", \"U\"", "kkkkkkk...sss..sss"},
             Case{"\"cercata\"=\"sost\"", "sssssssss.ssssss"},
             Case{"PROCTYPE= NODBR | refresh|ALTRO", "kkkkkkkkk.wwwww...wwwwwww......"},
             Case{"proctype= nodbr", "kkkkkkkkk.wwwww"},
             Case{"LOCKED= NODBR", "kkkkkkk......"},
             Case{"LOCKED= \"TRUE\"", "kkkkkkk.ssssss"},
             Case{"TARGETPATH= FILE:<target>[;<ziptmppath>]", "kkkkkkkkkkk............................."},
         }) {
        Show(C.Text);
        EXPECT_EQ(Picture(0).toStdString(), C.Picture) << C.Text;
    }
}

TEST_F(SectionEditorTest, ColoursFollowWhatIsTyped) {
    Show("");
    Type("locked= tru");
    EXPECT_EQ(Picture(0), QStringLiteral("kkkkkkk...."));
    Type("e");
    EXPECT_EQ(Picture(0), QStringLiteral("kkkkkkk.wwww"));
    Press(Qt::Key_Home);
    Type("'");
    EXPECT_EQ(Picture(0), QStringLiteral("ccccccccccccc"));
    EXPECT_TRUE(FormatAt(0, 0).fontItalic());
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Picture(0), QStringLiteral("kkkkkkk.wwww"));
    EXPECT_EQ(FormatAt(0, 0).fontWeight(), static_cast<int>(QFont::Bold));
}

TEST_F(SectionEditorTest, ColoursReadWellOnEveryPaletteAndAreRenewedWithIt) {
    Editor.ShowSection(kImport, ImportWords());
    QList<QColor> Keywords;
    for (const auto& [Base, Text] : {std::pair{QColor(Qt::white), QColor(Qt::black)},
                                     std::pair{QColor(30, 30, 30), QColor(230, 230, 230)},
                                     std::pair{QColor(Qt::black), QColor(Qt::white)},
                                     std::pair{QColor(253, 246, 227), QColor(60, 70, 75)}}) {
        Editor.setPalette(PaletteOf(Base, Text));
        const SectionColours& C = Editor.Highlighter()->Colours();
        EXPECT_EQ(C.Base, Base);
        for (const QColor& On : {C.Base, C.CurrentLine, C.FaultLine}) {
            for (const QColor& Letter : {C.Keyword, C.Comment, C.String, C.Word, C.Number, C.FaultSign})
                EXPECT_GE(Contrast(Letter, On), 4.5)
                    << Base.name().toStdString() << Letter.name().toStdString();
        }
        EXPECT_NE(C.CurrentLine, C.Base);
        EXPECT_NE(C.FaultLine, C.CurrentLine);
        EXPECT_EQ(FormatAt(1, 0).foreground().color(), C.Keyword);
        EXPECT_EQ(Picture(0), QString(21, u'c'));
        EXPECT_EQ(LinesMarked(C.CurrentLine), QList<int>{0});
        Keywords.append(C.Keyword);
    }
    EXPECT_LT(Keywords[0].lightnessF(), 0.5F);
    EXPECT_GT(Keywords[1].lightnessF(), 0.5F);
    EXPECT_FALSE(Editor.HasChanges());
}

TEST_F(SectionEditorTest, WordsThatCannotBeHadAreNoFault) {
    Editor.ShowSection(QStringLiteral("LOCKED= TRUE"),
                       {{QStringLiteral("LOCKED=")},
                        [](const QString&) -> QStringList { throw std::runtime_error("no words"); }});
    EXPECT_EQ(Picture(0), QStringLiteral("kkkkkkk....."));
    GoTo(0, 8);
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_FALSE(Open());
    Editor.ShowSection(QStringLiteral("LOCKED= TRUE"), {{QStringLiteral("LOCKED=")}, {}});
    EXPECT_EQ(Picture(0), QStringLiteral("kkkkkkk....."));
}

// Completion of keywords.

TEST_F(SectionEditorTest, OffersKeywordsWhileOneIsTypedAndThoseThatStandLast) {
    Show("LOCKED= TRUE\r\n");
    GoTo(1, 0);
    Type("l");
    EXPECT_EQ(Offered(), Words("LOGFILE= LOCKED="));
    EXPECT_EQ(Chosen(), QStringLiteral("LOGFILE="));
    Press(Qt::Key_Down);
    EXPECT_EQ(Chosen(), QStringLiteral("LOCKED="));
    Press(Qt::Key_Down);
    EXPECT_EQ(Chosen(), QStringLiteral("LOCKED="));
    Press(Qt::Key_Up);
    Press(Qt::Key_Return);
    EXPECT_FALSE(Open());
    EXPECT_EQ(Line(1), QStringLiteral("LOGFILE= "));
    Type("x");
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("LOCKED= TRUE\r\nLOGFILE= x"));
}

TEST_F(SectionEditorTest, TheOfferFollowsTheLettersAndGoesWithTheLastOfThem) {
    Show("");
    Type("L");
    EXPECT_EQ(Offered(), Words("LOCKED= LOGFILE="));
    Type("O");
    Type("G");
    EXPECT_EQ(Offered(), Words("LOGFILE="));
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Offered(), Words("LOCKED= LOGFILE="));
    Type("x");
    EXPECT_FALSE(Open());
    Press(Qt::Key_Backspace);
    EXPECT_FALSE(Open()) << "only typing opens it";
    Type("C");
    EXPECT_EQ(Offered(), Words("LOCKED="));
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    Press(Qt::Key_Backspace);
    EXPECT_FALSE(Open());
    EXPECT_EQ(Editor.SectionText(), QString());
}

TEST_F(SectionEditorTest, WithoutLettersOnlyWhoAsksIsOffered) {
    Show("LOCKED= TRUE\r\nFLAGS=\r\n");
    GoTo(2, 0);
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Offered(), Words("SOURCEPATH= TARGETPATH= PROCTYPE= LOGFILE= MIRROROF= FLAGS= LOCKED="));
    EXPECT_EQ(Chosen(), QStringLiteral("SOURCEPATH="));
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Open());
    Type("  ");
    EXPECT_FALSE(Open());
    Press(Qt::Key_Return);
    EXPECT_FALSE(Open());
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("LOCKED= TRUE\r\nFLAGS=\r\n  \r\n"));
}

TEST_F(SectionEditorTest, AKeywordTakesThePlaceOfTheOneThatStands) {
    Show("  LOGFILE = x");
    GoTo(0, 4);
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Offered(), Words("LOCKED= LOGFILE="));
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(0), QStringLiteral("  LOCKED= x"));
    EXPECT_EQ(Editor.textCursor().positionInBlock(), 10);
    EXPECT_EQ(Offered(), QStringList()) << "the value has letters already";
}

TEST_F(SectionEditorTest, TheSameKeywordAgainOnlyMovesTheCursor) {
    Show("LOGFILE= x");
    GoTo(0, 3);
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Offered(), Words("LOGFILE="));
    Press(Qt::Key_Return);
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("LOGFILE= x"));
    EXPECT_EQ(Editor.textCursor().positionInBlock(), 9);
    EXPECT_FALSE(Editor.HasChanges());
}

TEST_F(SectionEditorTest, KeywordsOfTheTextAreKnownAsLinesComeAndGo) {
    Show("LOCKED= TRUE\r\nLOCKED= FALSE\r\nLOGFILE= x\r\n");
    const auto Stand = [this](const char* Keyword) {
        return Editor.Highlighter()->LinesWith(QString::fromUtf8(Keyword));
    };
    EXPECT_EQ(Stand("LOCKED="), 2);
    EXPECT_EQ(Stand("LOGFILE="), 1);
    GoTo(1, 0);
    Press(Qt::Key_Down, Qt::ShiftModifier);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Stand("LOCKED="), 1);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Stand("LOCKED="), 2);
    GoTo(2, 0);
    Type("'");
    EXPECT_EQ(Stand("LOGFILE="), 0);
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_Delete);
    EXPECT_EQ(Stand("LOCKED="), 0);
    Show("FLAGS= X");
    EXPECT_EQ(Stand("LOGFILE="), 0);
    EXPECT_EQ(Stand("FLAGS="), 1);
}

// Completion of value words.

TEST_F(SectionEditorTest, OffersValueWordsBehindTheEqualsSignAndTheBars) {
    Show("");
    Type("PROCTYPE=");
    EXPECT_EQ(Offered(), Words("NODBR ONLYDBR NONULLMAINKEY REFRESH"));
    EXPECT_EQ(Chosen(), QString()) << "nothing is taken by who only ends the line";
    Type(" ");
    EXPECT_EQ(Offered().size(), 4);
    Type("no");
    EXPECT_EQ(Offered(), Words("NODBR NONULLMAINKEY"));
    Press(Qt::Key_Tab);
    EXPECT_EQ(Line(0), QStringLiteral("PROCTYPE= NODBR"));
    EXPECT_TRUE(Editor.hasFocus());
    Type("|");
    EXPECT_EQ(Offered(), Words("ONLYDBR NONULLMAINKEY REFRESH"));
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    Press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(Line(0), QStringLiteral("PROCTYPE= NODBR|NONULLMAINKEY"));
    EXPECT_FALSE(Open());
    EXPECT_EQ(Picture(0), QStringLiteral("kkkkkkkkk.wwwww.wwwwwwwwwwwww"));
}

TEST_F(SectionEditorTest, WordsThatStandBetweenOtherBarsAreLeftOutAndOthersReplaced) {
    Show("PROCTYPE= nodbr | ON | REFRESH");
    GoTo(0, 20);
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Offered(), Words("ONLYDBR"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(0), QStringLiteral("PROCTYPE= nodbr | ONLYDBR | REFRESH"));
    GoTo(0, 11);  // within "nodbr"
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Offered(), Words("NODBR NONULLMAINKEY"));
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(0), QStringLiteral("PROCTYPE= NONULLMAINKEY | ONLYDBR | REFRESH"));
    GoTo(0, 10);  // before the word, where the blank is behind
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Offered(), Words("NODBR NONULLMAINKEY"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(0), QStringLiteral("PROCTYPE= NODBR | ONLYDBR | REFRESH"));
}

TEST_F(SectionEditorTest, AKeywordThatIsTakenOffersItsWordsAtOnce) {
    Show("");
    Type("LOC");
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(0), QStringLiteral("LOCKED= "));
    EXPECT_EQ(Offered(), Words("TRUE FALSE"));
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("LOCKED= TRUE"));
}

TEST_F(SectionEditorTest, ReturnEndsTheLineWhereNothingIsChosenOrAllIsTyped) {
    Show("");
    Type("LOCKED=");
    ASSERT_TRUE(Open());
    Press(Qt::Key_Return);
    EXPECT_FALSE(Open());
    Type("LOCKED= TRU");
    ASSERT_TRUE(Open());
    Type("E");
    EXPECT_FALSE(Open()) << "the word stands in full";
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Offered(), Words("TRUE"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("LOCKED=\r\nLOCKED= TRUE\r\n"));
}

TEST_F(SectionEditorTest, OfATemplateThePlaceToFillIsSelected) {
    Show("");
    Type("TARGETPATH= ft");
    EXPECT_EQ(Offered(), Words("FTP:[user,pwd@]<target>[;<ziptmppath>]"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(0), QStringLiteral("TARGETPATH= FTP:[user,pwd@]<target>[;<ziptmppath>]"));
    EXPECT_EQ(Editor.textCursor().selectedText(), QStringLiteral("<target>"));
    Type("srv");
    EXPECT_EQ(Line(0), QStringLiteral("TARGETPATH= FTP:[user,pwd@]srv[;<ziptmppath>]"));
    Show("FLAGS= ");
    GoTo(0, 7);
    Type("ex");
    Press(Qt::Key_Return);
    Type("7)");
    EXPECT_EQ(Line(0), QStringLiteral("FLAGS= EXTERN(7)"));
}

TEST_F(SectionEditorTest, NothingIsOfferedInStringsAndComments) {
    for (const char* Text : {"'LOCKED= ", "  ;L", "* ", "LOCKED= \"T", "LOCKED= \"TRUE\"", "LOCKED= X \"T",
                             "\"L\"=\"\"", "LOGFILE= ", "UNKNOWN= "}) {
        Show(Text);
        const int Last = static_cast<int>(Line(0).size());
        for (int Column = std::max(0, Last - 1); Column <= Last; ++Column) {
            GoTo(0, Column);
            Press(Qt::Key_Space, Qt::ControlModifier);
            EXPECT_FALSE(Open()) << Text << " at " << Column;
        }
    }
    Show("LOCKED= \"");
    GoTo(0, 9);
    Type("T");
    EXPECT_FALSE(Open());
    Show("'");
    GoTo(0, 1);
    Type("LOCKED=");
    EXPECT_FALSE(Open());
}

TEST_F(SectionEditorTest, ThePopupGoesWhenTheCursorGoes) {
    Show("x= 1\r\n");
    for (const Qt::Key Key : {Qt::Key_Left, Qt::Key_Home, Qt::Key_Escape}) {
        GoTo(1, static_cast<int>(Line(1).size()));
        Type("L");
        ASSERT_TRUE(Open());
        Press(Key);
        EXPECT_FALSE(Open());
        Press(Qt::Key_Z, Qt::ControlModifier);
    }
    GoTo(1, 0);
    Type("L");
    ASSERT_TRUE(Open());
    Show("LOGFILE= 1");
    EXPECT_FALSE(Open());
}

TEST_F(SectionEditorTest, ShortcutsOfTheWindowWorkWhileThePopupIsOpen) {
    QAction Apply;
    Apply.setShortcut(QKeySequence(Qt::ControlModifier | Qt::Key_Return));
    Window.addAction(&Apply);
    QSignalSpy Applied(&Apply, &QAction::triggered);
    Show("");
    Type("L");
    ASSERT_TRUE(Open());
    Press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Applied.size(), 1);
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("L"));
    Editor.MarkFault(1);
    EXPECT_FALSE(Open());
}

TEST_F(SectionEditorTest, AClickTakesAWordToo) {
    Show("");
    Type("L");
    ASSERT_TRUE(Open());
    QAbstractItemView* Popup = Editor.Completer()->popup();
    QTest::mouseClick(Popup->viewport(), Qt::LeftButton, {},
                      Popup->visualRect(Popup->model()->index(1, 0)).center());
    EXPECT_EQ(Line(0), QStringLiteral("LOGFILE= "));
}

TEST_F(SectionEditorTest, WhatAnInputMethodTypesIsTypedToo) {
    Show("");
    QInputMethodEvent Event;
    Event.setCommitString(QStringLiteral("LO"));
    QApplication::sendEvent(&Editor, &Event);
    EXPECT_EQ(Offered(), Words("LOCKED= LOGFILE="));
}

TEST_F(SectionEditorTest, OneUndoTakesBackAWordThatWasTaken) {
    Show("");
    Type("LOG");
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(0), QStringLiteral("LOGFILE= "));
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Line(0), QStringLiteral("LOG"));
}

TEST_F(SectionEditorTest, KeysThatAProgramSendsDriveThePopupAsWell) {
    Show("");
    QTest::keyClicks(&Editor, QStringLiteral("L"));
    ASSERT_TRUE(Open());
    QTest::keyClick(&Editor, Qt::Key_Down);
    QTest::keyClick(&Editor, Qt::Key_Return);
    EXPECT_EQ(Line(0), QStringLiteral("LOGFILE= "));
}

// Focus, faults, looks.

TEST_F(SectionEditorTest, TabMovesTheFocusUnlessThePopupIsOpen) {
    Show("");
    Press(Qt::Key_Tab);
    EXPECT_TRUE(Next.hasFocus());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(Editor.hasFocus());
    Type("LOG");
    Press(Qt::Key_Tab);
    EXPECT_TRUE(Editor.hasFocus());
    EXPECT_EQ(Editor.SectionText(), QStringLiteral("LOGFILE= "));
}

TEST_F(SectionEditorTest, MarksTheFaultUntilTheNextChange) {
    Editor.ShowSection(kImport, ImportWords());
    Editor.MarkFault(3);
    const SectionColours& C = Editor.Highlighter()->Colours();
    EXPECT_EQ(Editor.FaultLine(), 3);
    EXPECT_EQ(Editor.textCursor().blockNumber(), 2);
    EXPECT_EQ(LinesMarked(C.FaultLine), QList<int>{2});
    EXPECT_EQ(LinesMarked(C.CurrentLine), QList<int>{});
    EXPECT_EQ(Editor.accessibleDescription(), QStringLiteral("Riga 3 rifiutata"));
    Press(Qt::Key_Up);
    EXPECT_EQ(Editor.FaultLine(), 3) << "moving changes nothing";
    EXPECT_EQ(LinesMarked(C.FaultLine), QList<int>{2});
    EXPECT_EQ(LinesMarked(C.CurrentLine), QList<int>{1});
    Editor.setPalette(PaletteOf(Qt::black, Qt::white));
    EXPECT_EQ(LinesMarked(C.FaultLine), QList<int>{2});
    Type("x");
    EXPECT_EQ(Editor.FaultLine(), 0);
    EXPECT_EQ(LinesMarked(C.FaultLine), QList<int>{});
    EXPECT_EQ(Editor.accessibleDescription(), QString());
}

TEST_F(SectionEditorTest, AFaultMayBeTakenAwayAndLinesThatAreNotThereMarkTheNearest) {
    Editor.ShowSection(QStringLiteral("A= 1\r\nB= 2"), ImportWords());
    Editor.MarkFault(9);
    EXPECT_EQ(Editor.FaultLine(), 2);
    Editor.MarkFault(0);
    EXPECT_EQ(Editor.FaultLine(), 0);
    EXPECT_EQ(Editor.textCursor().blockNumber(), 1);
    Editor.MarkFault(1);
    Show("LOGFILE= x");
    EXPECT_EQ(Editor.FaultLine(), 0);
    EXPECT_EQ(LinesMarked(Editor.Highlighter()->Colours().FaultLine), QList<int>{});
}

TEST_F(SectionEditorTest, TheSignOfTheFaultStandsBesideItsLine) {
    Editor.ShowSection(kImport, ImportWords());
    const auto Signs = [this] {
        const QImage Image = Editor.grab().toImage();
        const QRgb Sign = Editor.Highlighter()->Colours().FaultSign.rgb();
        const double Scale = Image.devicePixelRatio();
        const QRect In(0, 0, Editor.viewport()->x(), Editor.height());
        std::pair Found(-1, -1);
        for (int Y = 0; Y < static_cast<int>(In.height() * Scale); ++Y) {
            for (int X = 0; X < static_cast<int>(In.width() * Scale); ++X) {
                if (Image.pixel(X, Y) != Sign) continue;
                Found.second = static_cast<int>(Y / Scale);
                if (Found.first < 0) Found.first = Found.second;
            }
        }
        return Found;
    };
    EXPECT_EQ(Signs(), std::pair(-1, -1));
    Editor.MarkFault(3);
    const QRect Line = Editor.cursorRect().translated(Editor.viewport()->pos());
    EXPECT_GE(Signs().first, Line.top());
    EXPECT_LE(Signs().second, Line.bottom());
    EXPECT_GT(Signs().second, Signs().first);
}

TEST_F(SectionEditorTest, TheFontIsFixedAndTheNumbersScaleWithItAndWithTheLines) {
    EXPECT_TRUE(QFontInfo(Editor.font()).fixedPitch());
    Show("A= 1");
    const int Narrow = Editor.viewport()->x();
    EXPECT_GT(Narrow, 3 * Editor.fontMetrics().horizontalAdvance(u'9'));
    Editor.ShowSection(QString(20000, u'\n'), ImportWords());
    EXPECT_EQ(Editor.viewport()->x(), Narrow + 2 * Editor.fontMetrics().horizontalAdvance(u'9'));
    Show("A= 1");
    EXPECT_EQ(Editor.viewport()->x(), Narrow);
    QFont Larger = Editor.font();
    Larger.setPointSizeF(Larger.pointSizeF() * 2);
    Editor.setFont(Larger);
    EXPECT_GT(Editor.viewport()->x(), Narrow * 3 / 2);
    EXPECT_DOUBLE_EQ(Editor.tabStopDistance(), 4 * Editor.fontMetrics().horizontalAdvance(u' '));
    EXPECT_EQ(Editor.Completer()->popup()->font().pointSizeF(), Larger.pointSizeF());
}

TEST_F(SectionEditorTest, HasNamesForScreenReaders) {
    EXPECT_EQ(Editor.accessibleName(), QStringLiteral("Testo della sezione"));
    EXPECT_EQ(Editor.Completer()->popup()->accessibleName(), QStringLiteral("Parole proposte"));
}

TEST_F(SectionEditorTest, AHundredThousandLinesOpenScrollAndComplete) {
    QString Text;
    for (int I = 0; I < 100000; ++I) Text += QStringLiteral("PROCTYPE= NODBR|REFRESH|X%1\r\n").arg(I);
    Editor.ShowSection(Text, ImportWords());
    EXPECT_EQ(Editor.blockCount(), 100001);
    EXPECT_EQ(Editor.Highlighter()->LinesWith(QStringLiteral("PROCTYPE=")), 100000);
    EXPECT_EQ(Picture(99999), QStringLiteral("kkkkkkkkk.wwwww.wwwwwww......."));
    for (int Page = 0; Page < 50; ++Page) {
        Editor.verticalScrollBar()->setValue(Page * 2000);
        QApplication::processEvents();
    }
    Press(Qt::Key_End, Qt::ControlModifier);
    Type("LOCKED= T");
    EXPECT_EQ(Offered(), Words("TRUE"));
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(100000), QStringLiteral("LOCKED= TRUE"));
    Editor.MarkFault(50000);
    EXPECT_EQ(Editor.textCursor().blockNumber(), 49999);
    Editor.setPalette(PaletteOf(Qt::black, Qt::white));
    EXPECT_EQ(FormatAt(99999, 0).foreground().color(), Editor.Highlighter()->Colours().Keyword);
    EXPECT_EQ(Editor.SectionText(), Text + QStringLiteral("LOCKED= TRUE"));
}

}  // namespace
}  // namespace kv::desktop
