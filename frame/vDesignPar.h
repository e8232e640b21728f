// The codec of section text. A section travels as plain text, one parameter to a line, `KEYWORD= value`,
// lines ended by carriage return and line feed. These procedures take such text apart and write it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/Identity.h"
#include "frame/StrUtil.h"

namespace kv {

/// A section text on its way through a parser: a cursor over the operator's text, which must outlive it.
/// Taking a line off its front costs the length of that line. Blanks in front of a line are never part of it.
class SectionText {
  public:
    explicit SectionText(std::wstring_view Text) noexcept : Rest_(StrUtil::TrimLeft(Text)) {}
    /// A text that is itself part of line `Within` of another: that is the line it reports.
    SectionText(std::wstring_view Text, std::int32_t Within) noexcept
        : Rest_(StrUtil::TrimLeft(Text)), Line_(Within), Within_(true) {}

    /// Whether the text is used up.
    bool Empty() const noexcept { return Rest_.empty(); }
    /// 1-based number of the line taken last; 0 before the first, and once the parser is through with the
    /// text and checks the whole of it.
    std::int32_t Line() const noexcept { return Line_; }
    /// Says that what follows concerns the whole text and no line of it.
    void EndOfLines() noexcept { Line_ = 0; }

    /// Takes one line: what stands before the next line end, or to the end of the text, right-trimmed.
    std::wstring_view TakeLine() noexcept;

  private:
    friend bool GetFieldValue(SectionText&, std::wstring_view&, std::wstring_view&, bool);

    std::wstring_view Rest_;
    std::int32_t Line_ = 0;
    bool Within_ = false;
    std::wstring Keyword_;  // holds a keyword that blanks part from its "="
};

/// Takes one line off `Buffer`. A blank or comment line (first character "'", ";" or "*") gives an empty
/// `Keyword` and leaves `Value` alone. With `WholeLine` the line stays in Keyword as it is. Else Keyword is
/// what stands up to the first "=", right-trimmed, with the "=" put back, and Value what follows,
/// left-trimmed; both point into Buffer's text or Buffer itself and hold until the next call. True (failure)
/// for a line without "=": number 20018, reported as "vDesignPar.GetFieldValue".
[[nodiscard]] bool GetFieldValue(SectionText& Buffer, std::wstring_view& Keyword, std::wstring_view& Value,
                                 bool WholeLine = false);

/// Notes that `Keyword` has been read. Raises 20000 "Ripetizone del parametro <keyword>." with the help-file
/// field "65536" when it was noted since the last ClearParmCheck, in whatever case. The list of keywords is
/// one for the process and survives between calls.
void CheckParmOnce(std::wstring_view Keyword);
/// Empties the list.
void ClearParmCheck() noexcept;
/// The keyword noted last, upper-cased; empty if none.
std::wstring LastParmChecked();

/// The trimmed value without the quote marks that enclose it. One lone mark counts as both: the result is
/// then empty. Inner marks stay; there is no escape.
std::wstring_view Unquote(std::wstring_view Value) noexcept;

/// Takes the next word off a list joined by "|". `Value` keeps the rest, empty at the end.
std::wstring_view NextFlag(std::wstring_view& Value) noexcept;

/// Upper-cases `Value` in place, an empty one becomes "FALSE". -1 for "VERO" and "TRUE", 0 for "FALSO" and
/// "FALSE", 1 for any other word.
int BoolWord(std::wstring& Value);

/// Raises 20000 "Valore sconosciuto per il parametro <keyword>(<value>)".
[[noreturn]] void BadValue(std::wstring_view Keyword, std::wstring_view Value);
/// Raises 20000 "Parametro non riconosciuto: <keyword><value>".
[[noreturn]] void UnknownParm(std::wstring_view Keyword, std::wstring_view Value);

/// One whole line: keyword, a blank, the value between `Quote` (none when 0), the line end.
std::wstring FormatParm(std::wstring_view Keyword, std::wstring_view Value, wchar_t Quote = 0);

/// Appends `Indent` tabs; a negative or zero indent appends none.
void AppendTabs(std::wstring& Buffer, std::int32_t Indent);
/// Appends the tabs and the line of FormatParm without making it first.
void AppendParm(std::wstring& Buffer, std::int32_t Indent, std::wstring_view Keyword, std::wstring_view Value,
                wchar_t Quote = 0);

/// Appends the three comment lines that tell which object a text came from:
/// `'[ID= 17]`, `'[NAME= Soggetti]`, `'[VERSION= 3]`.
void DispHeader(std::wstring& Buffer, const Identity& Record, std::int32_t Indent);

// A server and the names that go with it, as two keywords: the one names the server, the other may repeat.

/// Turns `Main` and the names in `Others`, joined (and perhaps ended) by characters of code 0, into the form
/// that is stored. Names without a server are refused with "Non è stato specificato il server."; neither
/// gives the empty text. True on failure (source "vDesignPar.ServerParmsSave"): `Result` is as it was.
[[nodiscard]] bool ServerParmsSave(std::wstring_view Main, std::wstring_view Others, std::wstring& Result);

/// Appends the line of the server, quoted, and one for each further name. True on failure (source
/// "vDesignPar.ServerParmsDisp"), when `Code` is no such stored form: nothing is appended.
[[nodiscard]] bool ServerParmsDisp(std::wstring_view Code, std::wstring_view Keyword1,
                                   std::wstring_view Keyword2, std::wstring& Buffer, std::int32_t Indent);

}  // namespace kv
