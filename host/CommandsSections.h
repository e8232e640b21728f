// The commands on the tree of an object and on its sections.
#pragma once

#include <optional>
#include <string>

#include "host/CommandsSession.h"

namespace kv::host {

/// What a command line names: an object, and in it a section and the places that lead to it.
struct Target {
    std::wstring Clsid;
    std::wstring Name;
    std::wstring Section;
    Place At;
};

// All answer the exit code; what is refused and what fails is thrown (CommandsSession.h). What changes the
// object saves it; what is refused leaves it as it was.

int ShowTree(Session& Work, const std::wstring& Clsid, const std::wstring& Name);
int ShowSection(Session& Work, const Target& Of);
/// Every section, headed, in the order of the tree. One that can't be shown is told; the others follow.
int ShowSections(Session& Work, const std::wstring& Clsid, const std::wstring& Name);
/// Takes the section text from the input.
int SetSection(Session& Work, const Target& Of);
/// Hands the section text to the operator's editor, again and again until it is accepted or left as it is.
int EditSection(Session& Work, const Target& Of);
/// Adds an element or leaf; prints its key.
int AddElement(Session& Work, const Target& To);
/// Moves an element one place, up is towards the front; prints its new key.
int MoveElement(Session& Work, const Target& Of, bool Up);
/// Removes an element, or with `All` all elements of a folder.
int RemoveElement(Session& Work, const Target& Of, bool All);

}  // namespace kv::host
