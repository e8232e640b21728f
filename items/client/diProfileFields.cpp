// The fields of a display profile, and the tool that makes them from a table.
#include <utility>

#include "frame/SectionTable.h"
#include "frame/vdbcModule.h"
#include "items/client/diProfile.h"
#include "items/client/diProfileNodes.h"
#include "records/CopiedTable.h"
#include "records/Sections.h"

namespace kv {
namespace {

using R = ProfileRecord;
using F = ProfileFieldRecord;

constexpr LadderRow<F> kFieldLadder[] = {
    {L"TAG=",
     [](F& Into, Parm& P) {
         const double Tag = StrUtil::Number(P.Value);
         if (Tag > 0)
             Into.Tag = StrUtil::ToLong(Tag);
         else
             P.BadIfStrict();
         return false;
     }},
    {L"BROWSE=", read::Upper<&F::Browse>},
    {L"PROFILE=", read::Upper<&F::Profile>},
    {L"FLAGS=", read::Flags<&F::Flags, kProfileFieldFlags>},
};

constexpr LineRow<const F> kFieldLines[] = {
    {L"TAG=", write::Number<&F::Tag>},
    {L"BROWSE=", write::Quoted<&F::Browse>},
    {L"PROFILE=", write::Quoted<&F::Profile>},
    {L"FLAGS=", write::FlagsNoBlank<&F::Flags, kProfileFieldFlags>},
};

constexpr vdbShared::ElementShape kFieldShape{.Word = L"FIELDS",
                                              .ParmsWord = L"FIELDPARMS",
                                              .ParmsCaption = L"Parametri",
                                              .ParmsLeaf = vdbShared::LeafKeys::OfSection,
                                              .InnerWord = L"FIELDCAPTION",
                                              .InnerCaption = L"Etichette",
                                              .InnerLeaf = vdbShared::LeafKeys::OfSection};

// A field of the profile for one of the copied table, with its name as its Italian label.
F FieldFor(const FieldRecord& Source) {
    ParmItem Label;
    Label.Id = CoreUtil::Instance().NextNodeId();
    Label.Version = ParmItem::CurrentVersion();
    Label.Language = L"ITA";
    Label.Text = Source.Name + L": ";
    F Field;
    Field.Id = Source.Id;
    Field.Name = Source.Name;
    Field.Version = F::CurrentVersion();
    Field.Tag = Source.Tag;
    Field.Captions.Add(std::move(Label));
    return Field;
}

}  // namespace

bool profile::SetFieldNode(DesignTree& Tree, R& Record, const Place&, std::int32_t Index, std::wstring& Key,
                           std::optional<std::int32_t> Relationship) {
    return Trap(L"diProfile.SetFieldNode", [&] {
        const F& Field = Record.Fields.Item(Index);
        vdbShared::AddElementNodes(
            Tree, kFieldShape, Field.Captions.Count() == 0 ? L"Campo: #####" : FieldNode(Field),
            vdbShared::CaptionsOf(Field.Captions, CaptionNode<ParmItem>), Key, Relationship);
        return false;
    });
}

bool diProfile::SaveFieldParm(std::wstring& Buffer, std::int32_t Index, bool SyntaxOn,
                              std::wstring& NewCaption) {
    return SaveSection(L"diProfile.SaveFieldParm", Scratch::Header, kFieldLadder, Record().Fields.Item(Index),
                       Buffer, SyntaxOn, [&](const F& Read) {
                           if (SyntaxOn && Read.Tag == 0) Raise(L"Non è stato specificato il TAG.");
                           NewCaption = FieldNode(Read);
                       });
}

bool diProfile::DispFieldParm(std::wstring& Buffer, std::int32_t Index, std::int32_t Indent) {
    return DispSection(L"diProfile.DispFieldParm", kFieldLines, std::as_const(Record().Fields.Item(Index)),
                       Buffer, Indent);
}

bool diProfile::MapTable() {
    return Trap(L"diProfile.MapTable", [&] { return MapCopiedTable(Record().Fields, Tree(), FieldFor); });
}

}  // namespace kv
