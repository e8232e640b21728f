// The commands of a window on an object: what its menus hold, whatever draws them.
#pragma once

#include <iterator>

namespace kv::window {

enum class Command {
    kSave,
    kReload,
    kClose,
    kCopy,
    kCut,
    kPaste,
    kNew,
    kDelete,
    kDeleteAll,
    kMoveUp,
    kMoveDown,
    kProperties,
    kApply,
    kRevert,
    kStrict,
    kFind,
    kFindNext,
    kOtherPane,
};

enum class Menu { kObject, kEdit, kText, kGo, kTools };

struct CommandRow {
    Command Id;
    Menu In;
    const char* Name;
    const wchar_t* Caption;  // with the mark of its key
};

/// In the order of the menus, and of the enumeration. The menu of the tools holds those of the server.
// clang-format off
inline constexpr CommandRow kCommands[] = {
    {Command::kSave, Menu::kObject, "save", L"&Salva"},
    {Command::kReload, Menu::kObject, "reload", L"&Ricarica"},
    {Command::kClose, Menu::kObject, "close", L"&Chiudi"},
    {Command::kCopy, Menu::kEdit, "copy", L"&Copia"},
    {Command::kCut, Menu::kEdit, "cut", L"&Taglia"},
    {Command::kPaste, Menu::kEdit, "paste", L"&Incolla"},
    {Command::kNew, Menu::kEdit, "new", L"&Nuovo elemento"},
    {Command::kDelete, Menu::kEdit, "delete", L"&Elimina"},
    {Command::kDeleteAll, Menu::kEdit, "deleteAll", L"Elimina t&utti"},
    {Command::kMoveUp, Menu::kEdit, "moveUp", L"Sposta &su"},
    {Command::kMoveDown, Menu::kEdit, "moveDown", L"Sposta &giù"},
    {Command::kProperties, Menu::kEdit, "properties", L"&Proprietà"},
    {Command::kApply, Menu::kText, "apply", L"&Applica il testo"},
    {Command::kRevert, Menu::kText, "revert", L"A&nnulla il testo"},
    {Command::kStrict, Menu::kText, "strict", L"Controllo &sintassi"},
    {Command::kFind, Menu::kGo, "find", L"&Trova nell'albero"},
    {Command::kFindNext, Menu::kGo, "findNext", L"Trova &successivo"},
    {Command::kOtherPane, Menu::kGo, "otherPane", L"Albero o t&esto"},
};
// clang-format on

/// In the order of the enumeration.
inline constexpr const wchar_t* kMenus[] = {L"&Oggetto", L"&Modifica", L"&Testo", L"&Vai", L"&Strumenti"};

constexpr const CommandRow& RowOf(Command Id) noexcept { return kCommands[static_cast<std::size_t>(Id)]; }

/// The context menu of a node: what is offered on it, and behind a line what always is.
inline constexpr Command kNodeMenu[] = {Command::kNew, Command::kDelete, Command::kDeleteAll,
                                        Command::kMoveUp, Command::kMoveDown};
inline constexpr Command kObjectMenu[] = {Command::kCopy, Command::kPaste, Command::kProperties};

}  // namespace kv::window
