// What this window alone says, in the operator's language; the rest stands in window/Texts.h.
#pragma once

namespace kv::com {

namespace text {

inline constexpr const wchar_t* kTitle = L"%1 - %2%3 - kvdesign";
inline constexpr const wchar_t* kModified = L"*";
inline constexpr const wchar_t* kCopy = L"&Copia";
inline constexpr const wchar_t* kCloseForm = L"C&hiudi";

inline constexpr const wchar_t* kNoWindow = L"La finestra dell'oggetto non si apre.";

}  // namespace text

}  // namespace kv::com
