#include "host/DemoParts.h"

namespace kv::host {

void DemoDraft::Captions(std::wstring_view List, const Place& In, const DemoTexts& All) {
    Place Of = In;
    Of.push_back(0);
    for (const auto& [Language, Text] : All) {
        ++Of.back();
        Caption(List, Of, Language, Text);
    }
}

void DemoDraft::Buttons(const std::vector<DemoButton>& All) {
    std::int32_t At = 0;
    for (const DemoButton& Each : All) {
        Element(L"COMMANDS");
        Section(L"COMMANDPARMS", {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"CODE=", Each.Code);
            Out.Plain(L"ACTION=", Each.Action);
            Out.Bool(L"ENABLED=", true);
            Out.Bool(L"VISIBLE=", true);
        });
        Captions(L"COMMANDTIPS", {At}, Each.Tips);
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
