#include "com/CallBackPlatform.h"

#include <vector>

#include "com/Failing.h"

namespace kv::com {

std::optional<Variant> CallBackPlatform::Answered(const wchar_t* Name,
                                                  const std::function<HRESULT(::CallBack&, VARIANT&)>& Early,
                                                  std::initializer_list<const VARIANT*> Arguments) {
    // What it does may set another object in its place.
    const Ref<IDispatch> Asked(CallBack_);
    if (!Asked) return std::nullopt;
    const Ref<::CallBack> Bound = As<::CallBack>(Asked.Get());
    if (!Bound) return ByName(Asked).TryCall(Name, Arguments);
    Variant Answer;
    const HRESULT Called = Early(*Bound.Get(), Answer.Get());
    if (Called == E_NOTIMPL) return std::nullopt;
    Check(Called, Name);
    return Answer;
}

void CallBackPlatform::ShowError(const KvError& Error) {
    const Variant Source{std::wstring_view(Error.Source)};
    const Variant Description{std::wstring_view(Error.Description)};
    if (!Answered(L"ShowError",
                  [&](::CallBack& Asked, VARIANT&) {
                      return Asked.ShowError(Error.Number, Source.Get().bstrVal, Description.Get().bstrVal);
                  },
                  {&Variant(Error.Number).Get(), &Source.Get(), &Description.Get()}))
        System_.ShowError(Error);
}

Answer CallBackPlatform::MessageBox(std::wstring_view Text, std::int32_t Style) {
    const Variant Words(Text);
    const std::optional<Variant> Pressed =
        Answered(L"MsgBox",
                 [&](::CallBack& Asked, VARIANT& Into) {
                     Into.vt = VT_I4;
                     return Asked.MsgBox(Words.Get().bstrVal, Style, &Into.lVal);
                 },
                 {&Words.Get(), &Variant(Style).Get()});
    if (!Pressed) return System_.MessageBox(Text, Style);
    switch (Taken(L"MsgBox", Pressed->Get(), NumberOf)) {
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
    const Variant Caption(Title);
    const Variant Kinds(Filter);
    const std::optional<Variant> Named =
        Answered(L"SaveFile",
                 [&](::CallBack& Asked, VARIANT& Into) {
                     Into.vt = VT_BSTR;
                     return Asked.SaveFile(Caption.Get().bstrVal, Kinds.Get().bstrVal, FilterIndex, Flags,
                                           &Into.bstrVal);
                 },
                 {&Caption.Get(), &Kinds.Get(), &Variant(FilterIndex).Get(), &Variant(Flags).Get()});
    if (!Named) return System_.SaveFile(Title, Filter, FilterIndex, Flags);
    std::wstring Path = Taken(L"SaveFile", Named->Get(), TextOf);
    return Path.empty() ? std::nullopt : std::optional(std::move(Path));
}

void CallBackPlatform::ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) {
    const std::vector<std::wstring_view> Words(Items.begin(), Items.end());
    const Variant Title(Caption);
    const Variant Lines = ToArray(Words);
    if (!Answered(
            L"ShowList",
            [&](::CallBack& Asked, VARIANT&) { return Asked.ShowList(Title.Get().bstrVal, Lines.Get()); },
            {&Title.Get(), &Lines.Get()}))
        System_.ShowList(Caption, Items);
}

void CallBackPlatform::Beep() {
    if (!Answered(L"Beep", [](::CallBack& Asked, VARIANT&) { return Asked.Beep(); }, {})) System_.Beep();
}

void CallBackPlatform::SetPointer(std::int32_t Pointer) {
    if (!Answered(L"SetPointer", [&](::CallBack& Asked, VARIANT&) { return Asked.SetPointer(Pointer); },
                  {&Variant(Pointer).Get()}))
        System_.SetPointer(Pointer);
}

}  // namespace kv::com
