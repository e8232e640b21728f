#include "items/definitions/diImportProc.h"

#include <utility>

#include "editor/ParmEditor.h"
#include "frame/ElementSection.h"
#include "frame/ListSection.h"
#include "frame/TagTools.h"
#include "frame/vdbcModule.h"
#include "records/CopiedTable.h"

namespace kv {

using vdbShared::kParms;
namespace {

using R = ImportProcRecord;

constexpr std::wstring_view kClassWord = L"IMPORTPROC";
constexpr std::wstring_view kFields = L"FIELDS";
constexpr std::wstring_view kFieldParms = L"FIELDPARMS";
constexpr std::wstring_view kIndexes = L"INDEXES";
constexpr std::wstring_view kIndexParms = L"INDEXPARMS";
constexpr std::wstring_view kScripts = L"SCRIPTS";
constexpr std::wstring_view kScriptParms = L"SCRIPTPARMS";
constexpr std::wstring_view kTools[] = {L"FINDTAG", L"RENUMTAG", L"MAPTABLE"};

/// Kind of a field that is made from a table.
constexpr std::int32_t kFromTable = 32;

constexpr auto kFlagChoices = ThenNone(kImportProcFlags);
constexpr auto kProcTypeChoices = ThenNone(kProcTypes);
constexpr auto kActionChoices = WordsOf(kImportProcActions);
constexpr auto kIndexFlagChoices = WordsOf(kImportIndexFlags);
constexpr auto kFieldFlagChoices = ThenNone(kImportFieldFlags);
constexpr auto kFieldActionChoices = WordsBehindFirst(kImportFieldActions);
constexpr auto kScriptChoices = WordsOf(kScriptLanguages);

// A list of libraries, or a file that holds one.
constexpr std::array<std::wstring_view, 2> kLibraryForms{L"<LIBLIST>", L"@nomefile"};

constexpr Choice kChoices[] = {
    {kParms, L"FLAGS=", kFlagChoices},
    {kParms, L"SELECTED=", kBooleanWords},
    {kParms, L"LOCKED=", kBooleanWords},
    {kParms, L"INCLUDEDLIB=", kLibraryForms},
    {kParms, L"EXCLUDEDLIB=", kLibraryForms},
    {kParms, L"INCLUDEDLIBISBD=", kLibraryForms},
    {kParms, L"EXCLUDEDLIBISBD=", kLibraryForms},
    {kParms, L"LIBRARYORDER=", kLibraryForms},
    {kParms, L"PROCTYPE=", kProcTypeChoices},
    {kParms, L"ACTION=", kActionChoices},
    {kIndexParms, L"KEY=", kKeyForms},
    {kIndexParms, L"FLAGS=", kIndexFlagChoices},
    {kFieldParms, L"FLAGS=", kFieldFlagChoices},
    {kFieldParms, L"ACTION=", kFieldActionChoices},
    {kScriptParms, L"LANG=", kScriptChoices},
};

constexpr vdbShared::ElementShape kFieldShape{
    .Word = kFields, .ParmsWord = kFieldParms, .ParmsCaption = L"Parametri"};
constexpr vdbShared::ElementShape kIndexShape{
    .Word = kIndexes, .ParmsWord = kIndexParms, .ParmsCaption = L"Parametri"};
constexpr vdbShared::ElementShape kScriptShape{
    .Word = kScripts, .ParmsWord = kScriptParms, .ParmsCaption = L"Script"};

template <class Element>
const std::wstring& CaptionOf(const Element& Of) {
    if constexpr (requires { Of.Table; })
        return Of.Table;
    else
        return Of.Name;
}

using Fields = InRecord<&R::Fields>;
using Indexes = InRecord<&R::Indexes>;
using Scripts = InRecord<&R::Scripts>;

template <class L, const vdbShared::ElementShape& Shape>
bool SetElementNode(DesignTree& Tree, R& Record, const Place& At, std::int32_t Index, std::wstring& Key,
                    std::optional<std::int32_t> Relationship) {
    vdbShared::AddElementNodes(Tree, Shape, CaptionOf(L::Of(Record, At).Item(Index)), {}, Key, Relationship);
    return false;
}

constexpr ListSection<R> kLists[] = {
    {kFields, 0, vdbShared::ListOf<Fields>, vdbShared::NewIn<Fields>, SetElementNode<Fields, kFieldShape>,
     NewAt::BehindSelected, Move::Yes, Delete::Yes},
    {kIndexes, 0, vdbShared::ListOf<Indexes>, vdbShared::NewIn<Indexes>, SetElementNode<Indexes, kIndexShape>,
     NewAt::BehindSelected, Move::Yes, Delete::Yes},
    {kScripts, 0, vdbShared::ListOf<Scripts>, vdbShared::NewIn<Scripts>,
     SetElementNode<Scripts, kScriptShape>, NewAt::BehindSelected, Move::Yes, Delete::Yes},
};

/// The sections of the elements, with the word of the list that each belongs to, in the order of the export.
struct NamedSection {
    std::wstring_view Word;
    std::wstring_view ListWord;
    ElementSection<R> Edits;
};

template <class L, auto Save, auto Disp, auto Caption>
constexpr NamedSection Row(std::wstring_view Word, std::wstring_view ListWord) {
    return {Word, ListWord, vdbShared::Edits<L, Save, Disp, Caption>(Word, Self::No)};
}

constexpr NamedSection kElements[] = {
    Row<Fields, ParmEditor::SaveImportField, ParmEditor::DispImportField, CaptionOf<ImportFieldRecord>>(
        kFieldParms, kFields),
    Row<Indexes, ParmEditor::SaveImportIndex, ParmEditor::DispImportIndex, CaptionOf<ImportIndexRecord>>(
        kIndexParms, kIndexes),
    Row<Scripts, ParmEditor::SaveImportScript, ParmEditor::DispImportScript, CaptionOf<ParmItem>>(
        kScriptParms, kScripts),
};

[[noreturn]] void BadImport() { Raise(L"Errore nei dati di import."); }

/// The lines of an exported text: trimmed, without their tabs; empty lines and those that begin with "'" are
/// skipped.
class ImportReader {
  public:
    explicit ImportReader(std::wstring_view Text) : Rest_(Text) {}

    // False at the end of the text.
    bool Next(std::wstring& Line) {
        while (!Rest_.empty()) {
            const std::size_t End = Rest_.find(StrUtil::kLineEnd);
            Line = Rest_.substr(0, End);
            Rest_.remove_prefix(End == Rest_.npos ? Rest_.size() : End + StrUtil::kLineEnd.size());
            Line = std::wstring(StrUtil::Trim(Line));
            std::erase(Line, L'\t');
            if (!Line.empty() && Line.front() != L'\'') return true;
        }
        return false;
    }

    // The word of a line "BEGIN <word>" (or "END <word>") in any case, empty for any other line.
    static std::wstring WordBehind(std::wstring_view Mark, std::wstring_view Line) {
        const std::wstring Folded = StrUtil::UpperCase(Line);
        if (Folded.rfind(Mark, 0) != 0) return {};
        return std::wstring(StrUtil::TrimLeft(std::wstring_view(Folded).substr(Mark.size())));
    }

    // Gathers the lines up to the one that ends the block, each followed by a line end.
    std::wstring Block(std::wstring_view Word) {
        std::wstring Gathered;
        std::wstring Line;
        for (;;) {
            if (!Next(Line)) BadImport();
            if (WordBehind(L"END ", Line) == Word) return Gathered;
            Gathered.append(Line).append(StrUtil::kLineEnd);
        }
    }

    std::wstring_view Rest() const noexcept { return Rest_; }

  private:
    std::wstring_view Rest_;
};

}  // namespace

bool diImportProc::SaveData(const Head& At, std::wstring& NewItemKey, std::wstring& Buffer,
                            RegData* ExternalSource) {
    return Trap(L"diImportProc.SaveData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        if (At.Key == kParms) return ParmEditor::SaveImportProc(Record(), Buffer, Flags);
        const auto* const Element = FindSection(kElements, At.Key);
        if (!Element) return false;
        // An import brings its elements along; the tree knows nothing of them.
        if (ExternalSource) {
            const auto& List = *FindSection(kLists, Element->ListWord);
            const std::int32_t Index = List.New(Record(), {}, 0);
            return Element->Edits.Save(Record(), Place({&Index, 1}), Buffer, Flags);
        }
        return vdbShared::SaveElement(Tree(), Record(), Element->Edits, At, NewItemKey, Buffer, Flags);
    });
}

bool diImportProc::Save(RegData& Clsid) {
    return Trap(L"diImportProc.Save", [&] {
        CheckTags(Record().Fields);
        return Record().Save(Clsid);
    });
}

bool diImportProc::MoveData(Head& At, std::int32_t Direction) {
    return vdbShared::MoveData(L"diImportProc.MoveData", Tree(), Record(), kLists, At, Direction);
}

bool diImportProc::LoadData(RegData& Clsid) {
    return Trap(L"diImportProc.LoadData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid) || Tree().SetTools(kTools)) return true;
        vdbShared::StartPlainTree(Tree(), Clsid);
        vdbShared::AddFolder(Tree(), kFields, L"Campi", kind::kList);
        vdbShared::AddFolder(Tree(), kIndexes, L"Indici", kind::kList);
        vdbShared::AddFolder(Tree(), kScripts, L"Scripts", kind::kList);
        return vdbShared::BuildLists(Tree(), Record(), kLists) || AddChoices(Tree(), kChoices);
    });
}

// The text replaces what the object holds; its identity stays the stored object's.
bool diImportProc::ImportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diImportProc.ImportData", [&] {
        const RegObject& Stored = Clsid.Read();
        auto Fresh = std::make_unique<R>();
        Fresh->Id = Stored.Id;
        Fresh->Name = Stored.Name;
        Fresh->Desc = Stored.Desc;
        Fresh->Version = Stored.Version;
        Record_ = std::move(Fresh);
        ImportReader Outer(Buffer);
        std::wstring Line;
        if (!Outer.Next(Line) || ImportReader::WordBehind(L"BEGIN ", Line) != kClassWord) BadImport();
        std::wstring Gathered = Outer.Block(kClassWord);
        const std::size_t LastFeed = Gathered.rfind(L'\n');
        if (LastFeed == std::wstring::npos) BadImport();
        Gathered.resize(LastFeed - 1);  // without its last line end
        Buffer = std::wstring(Outer.Rest());
        if (ImportSections(Gathered)) return true;
        Clsid.SetSaving(true);
        return Save(Clsid);
    });
}

bool diImportProc::ImportSections(std::wstring_view Text) {
    ImportReader Sections(Text);
    std::wstring Line;
    // The object itself is no part of the text; that there is one tells SaveData where its elements come
    // from.
    MemoryRegData Imported(kClassWord);
    for (std::int32_t Index = 1; Sections.Next(Line); ++Index) {
        const std::wstring Word = ImportReader::WordBehind(L"BEGIN ", Line);
        if (Word.empty()) BadImport();
        std::wstring Section = Sections.Block(Word);
        std::wstring NewItemKey;
        if (SaveData({.Index = Index, .Key = Word}, NewItemKey, Section, &Imported)) return true;
    }
    return false;
}

bool diImportProc::GetObjectInfo(std::wstring& Name, std::wstring& Desc, std::int16_t& Version,
                                 std::wstring& Id) {
    return Trap(L"diImportProc.GetObjectInfo", [&] {
        vdbShared::ObjectInfo(Record(), Name, Desc, Version, Id);
        return false;
    });
}

bool diImportProc::ExportData(RegData& Clsid, std::wstring& Buffer) {
    return Trap(L"diImportProc.ExportData", [&] {
        if (vdbShared::LoadFresh(Record_, Clsid)) return true;
        return vdbShared::WrapSection(Buffer, kClassWord, true, 0, [&] {
            vdbShared::Exporter Out(*this, Buffer);
            if (Out.One(kParms, 1)) return true;
            for (const NamedSection& Element : kElements)
                if (Out.Each(Element.Word, FindSection(kLists, Element.ListWord)->List(Record(), {}), 1))
                    return true;
            return false;
        });
    });
}

bool diImportProc::EditData(const Head& At, std::wstring& NewItemKey) {
    return vdbShared::EditData(L"diImportProc.EditData", Tree(), Record(), kLists, At, NewItemKey, [&] {
        if (At.Key == kParms || FindSection(kElements, At.Key))
            vdbShared::AddPlainLeaf(Tree(), At, NewItemKey);
        return false;
    });
}

bool diImportProc::DispData(const Head& At, std::wstring& Buffer, bool ExternalTarget, Positions Item,
                            std::int32_t) {
    return Trap(L"diImportProc.DispData", [&] {
        SaveFlags Flags;
        if (SetSaveFlags(Flags, Tree().SyntaxOn())) return true;
        return vdbShared::WrapSection(Buffer, At.Key, ExternalTarget, 0, [&] {
            if (At.Key == kParms) return ParmEditor::DispImportProc(Record(), Buffer, Flags);
            const auto* const Element = FindSection(kElements, At.Key);
            return Element &&
                   vdbShared::DispElement(Tree(), Record(), Element->Edits, At, Item, Buffer, Flags);
        });
    });
}

bool diImportProc::TlbrButtonClick(const std::wstring& Method, const std::wstring&, const std::wstring&,
                                   const std::wstring&) {
    return vdbShared::RunTool(L"diImportProc.TlbrButtonClick", [&] {
        if (Method == L"MAPTABLE") return MapTable();
        return RunTagTool(Method, kClassWord, TagFieldsOf(Record().Fields), Tree());
    });
}

bool diImportProc::MapTable() {
    return Trap(L"diImportProc.MapTable", [&] {
        return MapCopiedTable(Record().Fields, Tree(), [](const FieldRecord& Source) {
            ImportFieldRecord Field;
            Field.Kind = kFromTable;
            Field.Id = Source.Id;
            Field.Name = Source.Name;
            Field.Tag = Source.Tag;
            return Field;
        });
    });
}

bool diImportProc::CopyData(const Head&, bool, ClipItem& DataObj) {
    return Trap(L"diImportProc.CopyData", [&] { return vdbShared::CopyTo(*this, DataObj); });
}

bool diImportProc::DeleteData(const Head& At, bool Group) {
    return vdbShared::DeleteData(L"diImportProc.DeleteData", Tree(), Record(), kLists, At, Group);
}

}  // namespace kv
