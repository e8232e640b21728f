#include "host/RpcPlatform.h"

#include <algorithm>
#include <utility>

#include "host/Text.h"

namespace kv::host {
namespace {

struct Button {
    Answer Means;
    std::string_view Word;
};
constexpr Button kOkButtons[] = {{Answer::Ok, "Ok"}};
constexpr Button kYesNoButtons[] = {{Answer::Yes, "Yes"}, {Answer::No, "No"}};
constexpr Button kYesNoCancelButtons[] = {
    {Answer::Yes, "Yes"}, {Answer::No, "No"}, {Answer::Cancel, "Cancel"}};

struct ButtonRow {
    std::int32_t Style;
    std::string_view Word;
    std::span<const Button> Buttons;
};
constexpr ButtonRow kButtonRows[] = {
    {box::kYesNo, "YesNo", kYesNoButtons},
    {box::kYesNoCancel, "YesNoCancel", kYesNoCancelButtons},
};
constexpr ButtonRow kOkRow{box::kOk, "Ok", kOkButtons};

struct IconRow {
    std::int32_t Style;
    std::string_view Word;
};
constexpr IconRow kIconRows[] = {
    {box::kCritical, "critical"},
    {box::kQuestion, "question"},
    {box::kExclamation, "exclamation"},
    {box::kInformation, "information"},
};

const ButtonRow& ButtonsOf(std::int32_t Style) noexcept {
    for (const ButtonRow& Row : kButtonRows)
        if (Row.Style == (Style & box::kButtons)) return Row;
    return kOkRow;
}

std::string_view IconOf(std::int32_t Style) noexcept {
    for (const IconRow& Row : kIconRows)
        if (Row.Style == (Style & box::kIcons)) return Row.Word;
    return {};
}

}  // namespace

std::optional<KvError> RpcPlatform::TakeShown() { return std::exchange(Shown_, std::nullopt); }

void RpcPlatform::ShowError(const KvError& Error) {
    if (!Shown_) Shown_ = Error;
}

Answer RpcPlatform::MessageBox(std::wstring_view Text, std::int32_t Style) {
    const ButtonRow& Row = ButtonsOf(Style);
    const Answer Default = DefaultAnswer(Style);
    const auto Place = std::find_if(Row.Buttons.begin(), Row.Buttons.end(),
                                    [&](const Button& B) { return B.Means == Default; });
    const auto Answered = Channel_.Ask("window/messageBox", Json{{"Text", TextJson(Text)},
                                                                 {"Buttons", Row.Word},
                                                                 {"Default", Place - Row.Buttons.begin() + 1},
                                                                 {"Icon", IconOf(Style)},
                                                                 {"Style", Style}});
    if (!Answered) return Default;
    const std::optional<std::string> Word = Answered->Text();
    for (const Button& B : Row.Buttons)
        if (Word == B.Word) return B.Means;
    return Default;
}

std::optional<std::wstring> RpcPlatform::SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                                  std::int32_t FilterIndex, std::int32_t Flags) {
    const auto Answered = Channel_.Ask("window/saveFile", Json{{"Title", TextJson(Title)},
                                                               {"Filter", TextJson(Filter)},
                                                               {"FilterIndex", FilterIndex},
                                                               {"Flags", Flags}});
    if (!Answered) return std::nullopt;
    const std::optional<std::string> Path = Answered->Text();
    if (!Path || Path->empty()) return std::nullopt;
    return FromUtf8(*Path);
}

void RpcPlatform::ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) {
    Json Lines = Json::array();
    for (const std::wstring& Item : Items) Lines.push_back(TextJson(Item));
    Json Params{{"Caption", TextJson(Caption)}};
    Params["Items"] = std::move(Lines);
    static_cast<void>(Channel_.Ask("window/list", std::move(Params)));
}

void RpcPlatform::Beep() { Channel_.Notify("window/beep"); }

void RpcPlatform::SetPointer(std::int32_t Pointer) {
    Channel_.Notify("window/pointer", Json::object({{"Value", Pointer}}));
}

}  // namespace kv::host
