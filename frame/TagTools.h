// The tag tools: they work on a record's list of fields, each with a numeric tag, and reach the operator
// through Platform. They answer True on failure (source "vdbcModule.<name>").
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/Failure.h"
#include "frame/StrUtil.h"

namespace kv {

/// A field as the tools see it. GroupTag is null for fields that know no groups; Level then counts as 1.
struct TagField {
    const std::wstring* Name;
    std::int32_t* Tag;
    std::int32_t* GroupTag;
    std::int32_t Level;
};
using TagFields = std::vector<TagField>;

/// The fields of a list, in its order.
template <class List>
TagFields TagFieldsOf(List& Fields) {
    TagFields Seen;
    Seen.reserve(static_cast<std::size_t>(Fields.Count()));
    for (std::int32_t I = 1; I <= Fields.Count(); ++I) {
        auto& Field = Fields.Item(I);
        if constexpr (requires { Field.GroupTag; })
            Seen.push_back({&Field.Name, &Field.Tag, &Field.GroupTag, Field.Level});
        else
            Seen.push_back({&Field.Name, &Field.Tag, nullptr, 1});
    }
    return Seen;
}

/// A message as the module of constants takes it: its name, and a text a language.
struct TagMessage {
    struct LanguageText {
        const std::wstring* Language;
        const std::wstring* Text;
    };
    const std::wstring* Name;
    std::vector<LanguageText> Texts;
};
using TagMessages = std::vector<TagMessage>;

/// The messages of a list, in its order.
template <class List>
TagMessages TagMessagesOf(const List& Messages) {
    TagMessages Seen;
    Seen.reserve(static_cast<std::size_t>(Messages.Count()));
    for (std::int32_t I = 1; I <= Messages.Count(); ++I) {
        const auto& Message = Messages.Item(I);
        TagMessage& One = Seen.emplace_back(TagMessage{&Message.Name, {}});
        for (std::int32_t J = 1; J <= Message.Message.Count(); ++J)
            One.Texts.push_back({&Message.Message.Item(J).Language, &Message.Message.Item(J).Text});
    }
    return Seen;
}

/// What the operator is told of a tool that does not serve the class.
inline constexpr std::wstring_view kToolNotServed = L"Funzione non disponibile per questo oggetto.";

/// The greatest tag that the list of free tags knows.
inline constexpr std::int32_t kGreatestTag = 32767;

/// The tag for a new field: the largest one plus 1, gaps are not reused; 1 for an empty list. 0 on failure:
/// the fault "Overflow" when the largest is the last number there is (source "vdbcModule.GetFreeTag").
template <class List>
std::int32_t GetFreeTag(const List& Fields) {
    std::int32_t Free = 0;
    static_cast<void>(Trap(L"vdbcModule.GetFreeTag", [&] {
        std::int32_t Largest = 0;
        for (std::int32_t I = 1; I <= Fields.Count(); ++I) Largest = std::max(Largest, Fields.Item(I).Tag);
        if (Largest == INT32_MAX) RaiseFault(fault::kOverflow);
        Free = Largest + 1;
        return false;
    }));
    return Free;
}

/// Refuses a list in which two fields bear the same tag: "Tag duplicato: <tag>", a line end, and what
/// `Pair(Earlier, Later)` says of their places. The later field is the first that repeats a tag, the earlier
/// one the first that bears it.
template <class List, class Describe>
void CheckTags(const List& Fields, Describe&& Pair) {
    std::unordered_map<std::int32_t, std::int32_t> First;
    First.reserve(static_cast<std::size_t>(Fields.Count()));
    for (std::int32_t I = 1; I <= Fields.Count(); ++I) {
        const std::int32_t Tag = Fields.Item(I).Tag;
        const auto [Seen, New] = First.emplace(Tag, I);
        if (!New)
            Raise(L"Tag duplicato: " + std::to_wstring(Tag) + std::wstring(StrUtil::kLineEnd) +
                  Pair(Seen->second, I));
    }
}
/// The same, told by name: "<earlier>=<later>".
template <class List>
void CheckTags(const List& Fields) {
    CheckTags(Fields, [&](std::int32_t Earlier, std::int32_t Later) {
        return Fields.Item(Earlier).Name + L"=" + Fields.Item(Later).Name;
    });
}

/// Shows the runs of free tags, "3 - 4" or "7", up to 32767, in a list "Tag disponibili". Tags under 1 or
/// over 32767 are passed over.
[[nodiscard]] bool FindFreeTags(std::wstring_view ClassWord, const TagFields& Fields);

/// Asks "Confermi la rinumerazione dei Tag?" (No as default), then numbers the fields 1 to n in list order
/// and lets the group tags follow: a field of level 1 in a group heads it, a deeper one gets the tag of the
/// nearest group field one level up, 0 when there is none. `Changed` tells whether the operator agreed.
[[nodiscard]] bool RenumTags(std::wstring_view ClassWord, const TagFields& Fields, bool& Changed);

/// Asks for a file and writes one line `Public Const FTG_<name>=<tag>` a field, blanks in the name as "_",
/// lines ended by CR LF, Windows-1252. A cancelled dialog ends the tool silently. A file that can't be made
/// is refused with "Impossibile creare il file <name>" and the number of OpenFile.
[[nodiscard]] bool ExportFieldsToConsts(std::wstring_view ClassWord, const TagFields& Fields);

/// The same for the messages of the class VCLIENT: behind a comment line `MSG_<name>_<language>=` with each
/// text between quote marks, message by message; then for each message `MSG_<name>_STR=` with its name as it
/// stands; then `MSG_<name>_COD=` with 9999 and its place, which a message without texts has not.
[[nodiscard]] bool ExportFieldsToConsts(std::wstring_view ClassWord, const TagMessages& Messages);

class DesignTree;

/// The tag tools of the buttons FINDTAG and RENUMTAG; a renumbering marks the tree. Any other `Method` does
/// nothing.
[[nodiscard]] bool RunTagTool(std::wstring_view Method, std::wstring_view ClassWord, const TagFields& Fields,
                              DesignTree& Tree);

}  // namespace kv
