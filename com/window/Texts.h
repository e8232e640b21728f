// What the window says, in the operator's language; %1 and %2 stand for what differs.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace kv::com {

namespace text {

inline constexpr const wchar_t* kTitle = L"%1 - %2%3 - kvdesign";
inline constexpr const wchar_t* kModified = L"*";
inline constexpr const wchar_t* kVersion = L"Versione %1";
inline constexpr const wchar_t* kId = L"Id %1";

inline constexpr const wchar_t* kTree = L"Sezioni dell'oggetto";
inline constexpr const wchar_t* kSectionText = L"Testo della sezione";
inline constexpr const wchar_t* kMessage = L"Messaggio";
inline constexpr const wchar_t* kTools = L"Strumenti";
inline constexpr const wchar_t* kStrict = L"Controllo sintassi";
inline constexpr const wchar_t* kApplyText = L"Applica il testo";
inline constexpr const wchar_t* kRevertText = L"Annulla il testo";
inline constexpr const wchar_t* kPathArrow = L" › ";

inline constexpr const wchar_t* kFaultAtLine = L"Riga %1: %2";
inline constexpr const wchar_t* kApplied = L"Testo applicato.";
inline constexpr const wchar_t* kSaved = L"Oggetto salvato.";
inline constexpr const wchar_t* kNotDone = L"Operazione non eseguita.";
inline constexpr const wchar_t* kClipboardEmpty = L"Gli appunti sono vuoti.";
inline constexpr const wchar_t* kClipboardHolds = L"Negli appunti: un oggetto della classe %1.";

inline constexpr const wchar_t* kAskDelete = L"Eliminare \"%1\"?";
inline constexpr const wchar_t* kAskDeleteAll = L"Eliminare tutti gli elementi di \"%1\"? Sono %2.";
inline constexpr const wchar_t* kAskPaste =
    L"L'oggetto ha modifiche non salvate, che andranno perse. Incollare?";
inline constexpr const wchar_t* kAskSave = L"Salvare le modifiche all'oggetto \"%1\"?";
inline constexpr const wchar_t* kNotApplied = L"Il testo della sezione \"%1\" non è stato applicato.";
inline constexpr const wchar_t* kApplyIt = L"&Applica";
inline constexpr const wchar_t* kDropIt = L"&Scarta";
inline constexpr const wchar_t* kCancel = L"Annulla";
inline constexpr const wchar_t* kCopy = L"&Copia";
inline constexpr const wchar_t* kCloseForm = L"C&hiudi";

inline constexpr const wchar_t* kNoWindow = L"La finestra dell'oggetto non si apre.";
inline constexpr const wchar_t* kUnknownFault = L"Errore imprevisto.";

}  // namespace text

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

}  // namespace kv::com
