// What every window on an object says, in the operator's language; %1 and %2 stand for what differs. A window
// that speaks other languages translates from here.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace kv::window {

enum class Phrase {
    kTree,
    kSearch,
    kSectionText,
    kMessage,
    kTools,
    kVersion,
    kId,

    kFaultAtLine,
    kUnknownFault,
    kApplied,
    kSaved,
    kNotDone,
    kNotFound,
    kClipboardEmpty,
    kClipboardHolds,

    kAskDelete,
    kAskDeleteAll,
    kAskCut,
    kAskPaste,
    kAskReload,
    kAskSave,
    kNotApplied,
    kApplyIt,
    kDropIt,
    kCancel,
};

struct PhraseRow {
    Phrase Of;
    const wchar_t* Text;
};

/// In the order of the enumeration.
// clang-format off
inline constexpr PhraseRow kPhrases[] = {
    {Phrase::kTree, L"Sezioni dell'oggetto"},
    {Phrase::kSearch, L"Cerca nell'albero"},
    {Phrase::kSectionText, L"Testo della sezione"},
    {Phrase::kMessage, L"Messaggio"},
    {Phrase::kTools, L"Strumenti"},
    {Phrase::kVersion, L"Versione %1"},
    {Phrase::kId, L"Id %1"},
    {Phrase::kFaultAtLine, L"Riga %1: %2"},
    {Phrase::kUnknownFault, L"Errore imprevisto."},
    {Phrase::kApplied, L"Testo applicato."},
    {Phrase::kSaved, L"Oggetto salvato."},
    {Phrase::kNotDone, L"Operazione non eseguita."},
    {Phrase::kNotFound, L"\"%1\" non si trova nell'albero."},
    {Phrase::kClipboardEmpty, L"Gli appunti sono vuoti."},
    {Phrase::kClipboardHolds, L"Negli appunti: un oggetto della classe %1."},
    {Phrase::kAskDelete, L"Eliminare \"%1\"?"},
    {Phrase::kAskDeleteAll, L"Eliminare tutti gli elementi di \"%1\"? Sono %2."},
    {Phrase::kAskCut, L"Negli appunti va l'intero oggetto. Copiarlo ed eliminare \"%1\"?"},
    {Phrase::kAskPaste, L"L'oggetto ha modifiche non salvate, che andranno perse. Incollare?"},
    {Phrase::kAskReload, L"Le modifiche non salvate andranno perse. Ricaricare l'oggetto?"},
    {Phrase::kAskSave, L"Salvare le modifiche all'oggetto \"%1\"?"},
    {Phrase::kNotApplied, L"Il testo della sezione \"%1\" non è stato applicato."},
    {Phrase::kApplyIt, L"&Applica"},
    {Phrase::kDropIt, L"&Scarta"},
    {Phrase::kCancel, L"Annulla"},
};
// clang-format on

constexpr const wchar_t* TextOf(Phrase Of) noexcept { return kPhrases[static_cast<std::size_t>(Of)].Text; }

/// `Text` with the arguments in the places of %1, %2, ...; what an argument holds is not looked at.
inline std::wstring Filled(std::wstring_view Text, std::initializer_list<std::wstring_view> Arguments) {
    std::wstring Made;
    for (std::size_t At = 0; At < Text.size(); ++At) {
        const std::size_t Next = At + 1;
        if (Text[At] == L'%' && Next < Text.size() && Text[Next] >= L'1' && Text[Next] <= L'9') {
            const auto Number = static_cast<std::size_t>(Text[Next] - L'1');
            if (Number < Arguments.size()) Made += Arguments.begin()[Number];
            At = Next;
        } else {
            Made += Text[At];
        }
    }
    return Made;
}

}  // namespace kv::window
