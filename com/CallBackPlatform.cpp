#include "com/CallBackPlatform.h"

#include <vector>

namespace kv::com {

// By name also where the object has the interface: a member that it lacks can be told so only by name.
std::optional<Variant> CallBackPlatform::Told(const wchar_t* Name,
                                              std::initializer_list<const VARIANT*> Arguments) {
    if (!CallBack_) return std::nullopt;
    // What it does may set another object in its place.
    const ByName Asked(CallBack_);
    return Asked.TryCall(Name, Arguments);
}

void CallBackPlatform::ShowError(const KvError& Error) {
    if (!Told(L"ShowError", {&Variant(Error.Number).Get(), &Variant(std::wstring_view(Error.Source)).Get(),
                             &Variant(std::wstring_view(Error.Description)).Get()}))
        System_.ShowError(Error);
}

Answer CallBackPlatform::MessageBox(std::wstring_view Text, std::int32_t Style) {
    const std::optional<Variant> Answered = Told(L"MsgBox", {&Variant(Text).Get(), &Variant(Style).Get()});
    if (!Answered) return System_.MessageBox(Text, Style);
    switch (NumberOf(Answered->Get())) {
        case IDYES:
            return Answer::Yes;
        case IDNO:
            return Answer::No;
        case IDOK:
            return Answer::Ok;
        case IDCANCEL:
            return Answer::Cancel;
        default:
            return DefaultAnswer(Style);
    }
}

std::optional<std::wstring> CallBackPlatform::SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                                       std::int32_t FilterIndex, std::int32_t Flags) {
    const std::optional<Variant> Answered = Told(
        L"SaveFile",
        {&Variant(Title).Get(), &Variant(Filter).Get(), &Variant(FilterIndex).Get(), &Variant(Flags).Get()});
    if (!Answered) return System_.SaveFile(Title, Filter, FilterIndex, Flags);
    std::wstring Path = TextOf(Answered->Get());
    return Path.empty() ? std::nullopt : std::optional(std::move(Path));
}

void CallBackPlatform::ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) {
    const std::vector<std::wstring_view> Words(Items.begin(), Items.end());
    if (!Told(L"ShowList", {&Variant(Caption).Get(), &ToArray(Words).Get()}))
        System_.ShowList(Caption, Items);
}

void CallBackPlatform::Beep() {
    if (!Told(L"Beep", {})) System_.Beep();
}

void CallBackPlatform::SetPointer(std::int32_t Pointer) {
    if (!Told(L"SetPointer", {&Variant(Pointer).Get()})) System_.SetPointer(Pointer);
}

}  // namespace kv::com
