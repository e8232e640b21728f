// The parts of the demonstration, by subject, and what they are written with.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "frame/SectionTable.h"
#include "host/Demo.h"

namespace kv::host {

std::vector<DemoObject> DemoServices();    // ALIAS, CATALOGUE, CATPROC, FILTER, IMPORT, MEMBER, REPOSITORY
std::vector<DemoObject> DemoTables();      // TABLE, records and indexes
std::vector<DemoObject> DemoSorts();       // SORT
std::vector<DemoObject> DemoStopWords();   // STOPWORD
std::vector<DemoObject> DemoImports();     // IMPORTPROC
std::vector<DemoObject> DemoForms();       // MATER, STEM
std::vector<DemoObject> DemoMessages();    // STRINGTABLE
std::vector<DemoObject> DemoClients();     // PROFILE, RETRIEVAL, VCLIENT, WEBCLIENT
std::vector<DemoObject> DemoLoans();       // COMMAND, LOAN, LOANCLIENT, LOANMENU
std::vector<DemoObject> DemoMail();        // MAIL, MAILGROUP
std::vector<DemoObject> DemoNavigation();  // BROWSE, HELP, MENU, QUERY, SETOPS, WEBSERVER

/// A field of a record table, as other objects refer to it.
struct DemoField {
    std::int32_t Tag;
    std::wstring_view Name;
};

/// The fields of a record table of the demonstration, in its order.
std::vector<DemoField> DemoFieldsOf(std::wstring_view Table);

/// The languages of what speaks to readers and at the desk.
inline constexpr std::array<std::wstring_view, 5> kDemoLanguages{L"ITA", L"ENG", L"FRE", L"GER", L"SPA"};

struct DemoMessage {
    std::wstring_view Name;
    std::array<std::wstring_view, kDemoLanguages.size()> Texts;  // as in kDemoLanguages
};

/// A text in each language that it is told in: language, text.
using DemoTexts = std::vector<std::pair<std::wstring_view, std::wstring_view>>;

struct DemoButton {
    std::wstring_view Code;
    std::wstring_view Action;
    DemoTexts Tips;
};

struct DemoPopup {
    std::wstring_view Text;
    std::wstring_view Language;
    std::wstring_view Code;
    std::wstring_view Action;
};

struct DemoPage {
    std::wstring_view FileName;
    std::wstring_view Language;
    std::wstring_view Action;
};

struct DemoFont {
    std::wstring_view Name;
    std::int32_t Size;
    bool Bold = false;
};

/// Whether the server makes an element with a first text.
enum class Born { Empty, WithText };

/// An object put together step by step.
class DemoDraft {
  public:
    DemoDraft(std::wstring_view Clsid, std::wstring_view Name, std::wstring_view Desc)
        : Object_{Clsid, Name, Desc, {}} {}

    /// A section with this text.
    void Section(std::wstring_view Word, Place At, std::wstring_view Text) {
        Object_.Sections.push_back({Word, std::move(At), std::wstring(Text)});
    }
    /// A section that `Write(LineWriter&)` writes.
    template <class Lines>
    requires std::is_invocable_v<Lines, LineWriter&>
    void Section(std::wstring_view Word, Place At, Lines&& Write) {
        std::wstring Text;
        LineWriter Out{Text, 0};
        Write(Out);
        Object_.Sections.push_back({Word, std::move(At), std::move(Text)});
    }
    /// A new last element of a list, which stands in the elements that `In` tells.
    void Element(std::wstring_view List, Place In = {}) {
        Object_.Sections.push_back({List, std::move(In), std::nullopt});
    }
    /// A new last text of a list of texts by language, and its two lines; `Of` is the place of the new one.
    void Caption(std::wstring_view List, Place Of, std::wstring_view Language, std::wstring_view Text) {
        Element(List, Place(Of.begin(), Of.end() - 1));
        SetCaption(List, std::move(Of), Language, Text);
    }
    void SetCaption(std::wstring_view List, Place Of, std::wstring_view Language, std::wstring_view Text) {
        Section(List, std::move(Of), [&](LineWriter& Out) {
            Out.Quoted(L"TEXT=", Text);
            Out.Quoted(L"LANG=", Language);
        });
    }

    /// The parameters of a button that is there.
    void Button(std::wstring_view Word, std::int32_t At, const DemoButton& Of);

    // New last elements of a list that is empty so far, and their texts.

    /// Texts of a list by language, which stands in the elements that `In` tells.
    void Captions(std::wstring_view List, const Place& In, const DemoTexts& All, Born As = Born::Empty);
    /// Messages that have a name, each told in all of kDemoLanguages.
    void Messages(std::span<const DemoMessage> All, Born As);
    void Buttons(const std::vector<DemoButton>& All, Born As = Born::Empty);
    void Popups(const std::vector<DemoPopup>& All);
    void Pages(std::wstring_view List, const std::vector<DemoPage>& All);
    void Fonts(std::wstring_view List, const std::vector<DemoFont>& All);

    DemoObject Take() { return std::move(Object_); }

  private:
    DemoObject Object_;
};

}  // namespace kv::host
