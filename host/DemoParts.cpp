#include "host/DemoParts.h"

namespace kv::host {

void DemoDraft::Captions(std::wstring_view List, const Place& In, const DemoTexts& All, Born As) {
    Place Of = In;
    Of.push_back(0);
    for (const auto& [Language, Text] : All) {
        if (++Of.back() == 1 && As == Born::WithText)
            SetCaption(List, Of, Language, Text);
        else
            Caption(List, Of, Language, Text);
    }
}

void DemoDraft::Button(std::wstring_view Word, std::int32_t At, const DemoButton& Of) {
    Section(Word, {At}, [&](LineWriter& Out) {
        Out.Quoted(L"CODE=", Of.Code);
        Out.Plain(L"ACTION=", Of.Action);
        Out.Bool(L"ENABLED=", true);
        Out.Bool(L"VISIBLE=", true);
    });
}

void DemoDraft::Buttons(const std::vector<DemoButton>& All, Born As) {
    std::int32_t At = 0;
    for (const DemoButton& Each : All) {
        Element(L"COMMANDS");
        Button(L"COMMANDPARMS", ++At, Each);
        Captions(L"COMMANDTIPS", {At}, Each.Tips, As);
    }
}

void DemoDraft::Messages(std::span<const DemoMessage> All, Born As) {
    std::int32_t At = 0;
    for (const DemoMessage& Each : All) {
        Element(L"FIELDS");
        Section(L"FIELDPARMS", {++At}, [&](LineWriter& Out) { Out.Quoted(L"NAME=", Each.Name); });
        DemoTexts Texts;
        for (std::size_t I = 0; I < kDemoLanguages.size(); ++I)
            Texts.emplace_back(kDemoLanguages[I], Each.Texts[I]);
        Captions(L"FIELDCAPTION", {At}, Texts, As);
    }
}

void DemoDraft::Popups(const std::vector<DemoPopup>& All) {
    std::int32_t At = 0;
    for (const DemoPopup& Each : All) {
        Element(L"POPUPS");
        Section(L"POPUPS", {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"TEXT=", Each.Text);
            Out.Quoted(L"LANG=", Each.Language);
            Out.Quoted(L"CODE=", Each.Code);
            Out.Plain(L"ACTION=", Each.Action);
        });
    }
}

void DemoDraft::Pages(std::wstring_view List, const std::vector<DemoPage>& All) {
    std::int32_t At = 0;
    for (const DemoPage& Each : All) {
        Element(List);
        Section(List, {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"FILENAME=", Each.FileName);
            Out.Quoted(L"LANG=", Each.Language);
            Out.Plain(L"ACTION=", Each.Action);
        });
    }
}

void DemoDraft::Fonts(std::wstring_view List, const std::vector<DemoFont>& All) {
    std::int32_t At = 0;
    for (const DemoFont& Each : All) {
        Element(List);
        Section(List, {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"NAME=", Each.Name);
            Out.Number(L"SIZE=", Each.Size);
            Out.Bool(L"BOLD=", Each.Bold);
        });
    }
}

}  // namespace kv::host
