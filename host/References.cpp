#include "host/References.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "frame/CoreUtil.h"
#include "frame/StrUtil.h"
#include "frame/vDesignPar.h"
#include "host/ObjectWindow.h"

namespace kv::host {
namespace {

constexpr std::wstring_view kParms = L"PARMS";
constexpr std::wstring_view kFieldParms = L"FIELDPARMS";
constexpr std::wstring_view kIndexParms = L"INDEXPARMS";
constexpr std::wstring_view kScriptParms = L"SCRIPTPARMS";
constexpr std::wstring_view kFilter = L"FILTER";

constexpr std::wstring_view kName = L"NAME=";
constexpr std::wstring_view kStyle = L"STYLE=";
constexpr std::wstring_view kTable = L"TABLE=";
constexpr std::wstring_view kStartAction = L"STARTACTION=";
constexpr std::wstring_view kHelpType = L"HELPTYPE=";
constexpr std::wstring_view kIndexStyle = L"INDEX";

using enum Letters;
using enum Named;
using enum Naming;

// clang-format off
// ALIAS, MAIL, MAILGROUP, MATER, MEMBER, STRINGTABLE and WEBSERVER name no object.
constexpr ReferenceRow kRows[] = {
    {L"BROWSE", kFilter, L"TABLE=", L"TABLE"},
    {L"BROWSE", kFilter, L"HELP=", L"HELP"},
    {L"BROWSE", kFilter, L"MIRROROF=", L"FILTER", Kept},
    {L"BROWSE", kParms, L"TABLE=", L"TABLE"},
    {L"BROWSE", kParms, L"PROFILE=", L"PROFILE"},
    {L"BROWSE", kParms, L"HELP=", L"HELP"},
    {L"BROWSE", kParms, L"HELPWWW=", L"HELP"},
    {L"BROWSE", kParms, L"STEM=", L"STEM"},
    {L"BROWSE", kParms, L"TIPS=", L"HELP"},
    {L"BROWSE", kParms, L"MIRROROF=", L"BROWSE", Kept},

    {L"CATALOGUE", kParms, L"RETRIEVAL=", L"RETRIEVAL"},
    {L"CATALOGUE", kParms, L"TABLE=", L"TABLE"},
    {L"CATALOGUE", kParms, L"PROFILE=", L"PROFILE"},
    {L"CATALOGUE", kParms, L"QUERY=", L"QUERY"},
    {L"CATALOGUE", kParms, L"BROWSE=", L"BROWSE"},
    {L"CATALOGUE", kParms, L"HELP=", L"HELP"},
    {L"CATALOGUE", kParms, L"HELPWWW=", L"HELP"},
    {L"CATALOGUE", kParms, L"MIRROROF=", L"CATALOGUE", Kept},

    {L"CATPROC", kParms, L"CATALOGUE=", L"CATALOGUE"},
    {L"CATPROC", kParms, L"RETRIEVAL=", L"RETRIEVAL"},
    {L"CATPROC", kParms, L"MIRROROF=", L"CATPROC", Kept},

    {L"COMMAND", kParms, L"HELP=", L"HELP"},
    {L"COMMAND", kParms, L"MIRROROF=", L"COMMAND", Kept},

    {L"FILTER", kParms, L"TABLE=", L"TABLE"},
    {L"FILTER", kParms, L"HELP=", L"HELP"},
    {L"FILTER", kParms, L"MIRROROF=", L"FILTER", Kept},

    {L"HELP", kParms, L"HELP=", L"HELP"},
    {L"HELP", kParms, L"HELPWWW=", L"HELP"},
    {L"HELP", kParms, L"TIPS=", L"HELP"},
    {L"HELP", kParms, L"MIRROROF=", L"HELP", Kept},

    {L"IMPORT", kParms, L"PROCEDURE=", L"IMPORTPROC"},
    {L"IMPORT", kParms, L"RETRIEVAL=", L"RETRIEVAL"},
    {L"IMPORT", kParms, L"MIRROROF=", L"IMPORT", Kept},

    {L"IMPORTPROC", kFieldParms, L"SCRIPT=", L"IMPORTPROC", Folded, Script},
    {L"IMPORTPROC", kIndexParms, L"TABLE=", L"TABLE", Folded, Index},
    {L"IMPORTPROC", kParms, L"TABLE=", L"TABLE"},
    {L"IMPORTPROC", kParms, L"MIRROROF=", L"IMPORTPROC", Kept},

    {L"LOAN", kParms, L"RETRIEVAL=", L"RETRIEVAL"},
    {L"LOAN", kParms, L"HELP=", L"HELP"},
    {L"LOAN", kParms, L"MIRROROF=", L"LOAN", Kept},

    {L"LOANCLIENT", kParms, L"LOAN=", L"LOAN"},
    {L"LOANCLIENT", kParms, L"MENU=", L"LOANMENU"},
    {L"LOANCLIENT", kParms, L"HELP=", L"HELP"},
    {L"LOANCLIENT", kParms, L"MIRROROF=", L"LOANCLIENT", Kept},

    {L"LOANMENU", kParms, L"MIRROROF=", L"LOANMENU", Kept},

    {L"MENU", kParms, L"HELP=", L"HELP"},
    {L"MENU", kParms, L"HELPWWW=", L"HELP"},
    {L"MENU", kParms, L"TIPS=", L"HELP"},
    {L"MENU", kParms, L"MIRROROF=", L"MENU", Kept},

    {L"PROFILE", kFieldParms, L"BROWSE=", L"BROWSE"},
    {L"PROFILE", kFieldParms, L"PROFILE=", L"PROFILE"},
    {L"PROFILE", kParms, L"TABLE=", L"TABLE"},
    {L"PROFILE", kParms, L"HELP=", L"HELP"},
    {L"PROFILE", kParms, L"HELPWWW=", L"HELP"},
    {L"PROFILE", kParms, L"TIPS=", L"HELP"},
    {L"PROFILE", kParms, L"LOANHELP=", L"HELP"},
    {L"PROFILE", kParms, L"LOANTIPS=", L"HELP"},
    {L"PROFILE", kParms, L"MASTER=", L"MATER", Folded, Object, Master},
    {L"PROFILE", kParms, L"MIRROROF=", L"PROFILE", Kept},
    {L"PROFILE", kParms, L"IMAGEKEYFIELD=", L"TABLE", Kept, Field},

    {L"QUERY", kFieldParms, L"STOPWORD=", L"STOPWORD"},
    {L"QUERY", kFieldParms, L"TABLES=", L"TABLE", Folded, Object, Joined},
    {L"QUERY", kParms, L"BROWSE=", L"BROWSE"},
    {L"QUERY", kParms, L"HELP=", L"HELP"},
    {L"QUERY", kParms, L"HELPWWW=", L"HELP"},
    {L"QUERY", kParms, L"TIPS=", L"HELP"},
    {L"QUERY", kParms, L"MIRROROF=", L"QUERY", Kept},

    {L"REPOSITORY", kParms, L"TABLE=", L"TABLE"},
    {L"REPOSITORY", kParms, L"KEYFIELD=", L"TABLE", Folded, Field},
    {L"REPOSITORY", kParms, L"MIRROROF=", L"REPOSITORY", Kept},

    {L"RETRIEVAL", kParms, L"HELP=", L"HELP", Folded, Object, One, {kHelpType, L"STANDARD"}},
    {L"RETRIEVAL", kParms, L"MIRROROF=", L"RETRIEVAL", Kept},

    {L"SETOPS", kParms, L"HELP=", L"HELP"},
    {L"SETOPS", kParms, L"HELPWWW=", L"HELP"},
    {L"SETOPS", kParms, L"TIPS=", L"HELP"},

    {L"SORT", kParms, L"MIRROROF=", L"SORT", Kept},

    {L"STEM", kFieldParms, L"STOPWORD=", L"STOPWORD"},
    {L"STEM", kParms, L"HELP=", L"HELP"},
    {L"STEM", kParms, L"HELPWWW=", L"HELP"},
    {L"STEM", kParms, L"MIRROROF=", L"STEM", Kept},

    {L"STOPWORD", kParms, L"MIRROROF=", L"STOPWORD", Kept},

    {L"TABLE", kFieldParms, L"LINKTABLE=", L"TABLE"},
    {L"TABLE", kFieldParms, L"VALIDATIONTABLE=", L"TABLE"},
    {L"TABLE", kParms, L"INDEX=", L"TABLE", Folded, Index},
    {L"TABLE", kParms, L"SORT=", L"SORT", Folded, Object, List},
    {L"TABLE", kParms, L"MIRROROF=", L"TABLE", Kept},

    {L"VCLIENT", kParms, L"RETRIEVAL=", L"RETRIEVAL"},
    {L"VCLIENT", kParms, L"HELP=", L"HELP"},
    {L"VCLIENT", kParms, L"HELPWWW=", L"HELP"},
    {L"VCLIENT", kParms, L"STARTOBJECT=", L"BROWSE", Folded, Object, One, {kStartAction, L"BROWSE"}},
    {L"VCLIENT", kParms, L"STARTOBJECT=", L"HELP", Folded, Object, One, {kStartAction, L"HELP"}},
    {L"VCLIENT", kParms, L"STARTOBJECT=", L"MENU", Folded, Object, One, {kStartAction, L"MENU"}},
    {L"VCLIENT", kParms, L"STARTOBJECT=", L"QUERY", Folded, Object, One, {kStartAction, L"QUERY"}},
    {L"VCLIENT", kParms, L"STARTOBJECT=", L"SETOPS", Folded, Object, One, {kStartAction, L"SETOPS"}},
    {L"VCLIENT", kParms, L"STARTOBJECT=", L"WEBCLIENT", Folded, Object, One, {kStartAction, L"WEBCLIENT"}},
    {L"VCLIENT", kParms, L"MIRROROF=", L"VCLIENT", Kept},

    {L"WEBCLIENT", kParms, L"MIRROROF=", L"WEBCLIENT", Kept},
};
// clang-format on

std::span<const ReferenceRow> RowsOf(std::wstring_view Clsid, std::wstring_view Section) {
    const auto In = [&](const ReferenceRow& Row) { return Row.Clsid == Clsid && Row.Section == Section; };
    const auto* const First = std::find_if(std::begin(kRows), std::end(kRows), In);
    return {First, std::find_if_not(First, std::end(kRows), In)};
}

/// While it lives the server speaks to nobody; the folders stay what they were.
class Quiet final : public SilentPlatform {
  public:
    Quiet() : Before_(CoreUtil::Instance().SetPlatform(this)) {}
    ~Quiet() override {
        CoreUtil::Instance().ForgetError();
        CoreUtil::Instance().SetPlatform(Before_);
    }

    std::wstring ProgramFolder() override {
        return Before_ ? Before_->ProgramFolder() : SilentPlatform::ProgramFolder();
    }
    std::wstring TempFolder() override {
        return Before_ ? Before_->TempFolder() : SilentPlatform::TempFolder();
    }

  private:
    Platform* Before_;
};

/// Calls `Take(Keyword, Value, Line)` for each parameter of a text; a line that is none is passed over.
template <class Taker>
void ForEachParm(std::wstring_view Text, Taker&& Take) {
    SectionText Lines(Text);
    std::wstring_view Keyword;
    std::wstring_view Value;
    while (!Lines.Empty()) {
        if (GetFieldValue(Lines, Keyword, Value))
            CoreUtil::Instance().ForgetError();
        else if (!Keyword.empty())
            Take(Keyword, Value, Lines.Line());
    }
}

/// Calls `Take(Name)` for each name of a value.
template <class Taker>
void ForEachName(Naming How, std::wstring_view Value, Taker&& Take) {
    const auto Told = [&](std::wstring_view Name) {
        if (!Name.empty()) Take(Name);
    };
    switch (How) {
        case Naming::One:
            return Told(Unquote(Value));
        case Naming::List:
        case Naming::Joined: {
            std::unordered_set<std::wstring_view> Passed;  // one that stands twice is told once
            for (std::wstring_view Rest = How == Joined ? Unquote(Value) : Value; !Rest.empty();) {
                const std::wstring_view Piece = Rest.substr(0, Rest.find(L','));
                Rest.remove_prefix(std::min(Piece.size() + 1, Rest.size()));
                const std::wstring_view Name = How == Joined ? StrUtil::Trim(Piece) : Unquote(Piece);
                if (Passed.insert(Name).second) Told(Name);
            }
            return;
        }
        case Naming::Master:
            return ForEachParm(
                Value, [&](std::wstring_view, std::wstring_view Text, std::int32_t) { Told(Unquote(Text)); });
    }
}

std::wstring Key(std::wstring_view First, std::wstring_view Second) {
    return std::wstring(First).append(L"/").append(Second);
}

std::wstring_view PartSection(Named What) { return What == Named::Script ? kScriptParms : kFieldParms; }

bool IsPart(Named What) { return What == Named::Field || What == Named::Script; }

}  // namespace

std::span<const ReferenceRow> ReferenceTable() noexcept { return kRows; }

std::vector<Reference> ReferencesIn(std::wstring_view Clsid, std::wstring_view Name,
                                    std::span<const SectionAsText> Texts) {
    std::vector<Reference> All;
    for (const SectionAsText& Each : Texts) {
        const std::span<const ReferenceRow> Rows = RowsOf(Clsid, Each.Section);
        if (Rows.empty()) continue;
        // Lines of the same text that say what others name.
        std::wstring Table;
        std::unordered_map<std::wstring_view, std::wstring> Words;  // by the keyword of a condition
        const std::size_t First = All.size();
        ForEachParm(Each.Text, [&](std::wstring_view Keyword, std::wstring_view Value, std::int32_t Line) {
            if (Keyword == kTable) Table = Unquote(Value);
            for (const ReferenceRow& Row : Rows) {
                if (Row.Beside.Keyword == Keyword)
                    Words[Row.Beside.Keyword] = StrUtil::UpperCase(Unquote(Value));
                if (Row.Keyword == Keyword)
                    ForEachName(Row.How, Value, [&](std::wstring_view Told) {
                        All.push_back({&Row, Each.At, Line, std::wstring(Told), {}});
                    });
            }
        });
        for (std::size_t I = First; I < All.size(); ++I)
            if (IsPart(All[I].Row->What)) All[I].Holder = All[I].Row->What == Script ? Name : Table;
        const auto Idle = [&](const Reference& Of) {
            const Condition& Beside = Of.Row->Beside;
            return !Beside.Keyword.empty() && Words[Beside.Keyword] != Beside.Word;
        };
        All.erase(std::remove_if(All.begin() + static_cast<std::ptrdiff_t>(First), All.end(), Idle),
                  All.end());
    }
    return All;
}

std::wstring StandsAt(std::wstring_view Clsid, std::wstring_view Name, std::wstring_view Section,
                      std::span<const std::int32_t> At) {
    std::wstring Text = Key(Clsid, Name);
    if (!Section.empty()) Text.append(L" ").append(Section).append(L"[").append(PlaceText(At)).append(L"]");
    return Text;
}

std::wstring UseText(const Use& Of) {
    return StandsAt(Of.Clsid, Of.Name, Of.By.Row->Section, Of.By.At)
        .append(L": ")
        .append(Of.By.Row->Keyword)
        .append(L" ")
        .append(Of.By.Name);
}

References::References(KvRegSvr& Registry) : Registry_(Registry) {
    for (RegistryEntry& Entry : Registry.List())
        Objects_.push_back({std::move(Entry.Clsid), std::move(Entry.Name)});
    for (const ObjectName& Each : Objects_) ByName_[StrUtil::UpperCase(Each.Name)].push_back(&Each);
}

// The objects that a name may mean, of one class or, where none is given, of all.
std::vector<const ObjectName*> References::Meant(std::wstring_view Clsid, std::wstring_view Name,
                                                 Letters Case) const {
    std::vector<const ObjectName*> Same;
    std::vector<const ObjectName*> Alike;
    if (const auto Found = ByName_.find(StrUtil::UpperCase(Name)); Found != ByName_.end())
        for (const ObjectName* const Each : Found->second)
            if (Clsid.empty() || Each->Clsid == Clsid) (Each->Name == Name ? Same : Alike).push_back(Each);
    return Same.empty() && Case == Folded ? Alike : Same;
}

bool References::Knows(std::wstring_view Clsid, std::wstring_view Name) const {
    return !Meant(Clsid, Name, Kept).empty();
}

// The sections that `Section(word)` wants.
template <class Wants>
References::Reading References::Read(const std::wstring& Clsid, const std::wstring& Name, Wants&& Section) {
    const Quiet Hush;
    std::shared_ptr<MemoryRegData> Copy;
    try {
        Copy = std::make_shared<MemoryRegData>(Clsid, Registry_.ReadStored(Clsid, Name));
    } catch (const Failure&) {
        return {};
    }
    Reading Found{.Whole = true, .Texts = {}};
    ObjectWindow Window(&Registry_, Copy, Clipboard_);
    const bool Failed = Window.Show(false, [&](window::WindowCore& Core) {
        for (const Address& Node : Addresses(Core.Tree())) {
            if (!Node.Leaf || !Section(Node.Section)) continue;
            std::wstring Buffer;
            if (Core.DispData({.CurrItem = Node.Node->Key}, Buffer))
                Found.Whole = false;
            else
                Found.Texts.push_back({std::wstring(Node.Section), Node.At, std::move(Buffer)});
        }
    });
    return Failed ? Reading{} : Found;
}

std::vector<Reference> References::Of(const std::wstring& Clsid, const std::wstring& Name, bool& Whole) {
    if (std::none_of(std::begin(kRows), std::end(kRows),
                     [&](const ReferenceRow& Row) { return Row.Clsid == Clsid; }))
        return {};
    const auto Wanted = [&](std::wstring_view Section) { return !RowsOf(Clsid, Section).empty(); };
    const Reading Found = Read(Clsid, Name, Wanted);
    if (!Found.Whole) Whole = false;
    return ReferencesIn(Clsid, Name, Found.Texts);
}

std::vector<Reference> References::Of(const std::wstring& Clsid, const std::wstring& Name) {
    bool Whole = true;
    return Of(Clsid, Name, Whole);
}

const References::Parts& References::PartsOf(const ObjectName& Of) {
    const auto [At, New] = Parts_.try_emplace(Key(Of.Clsid, Of.Name));
    Parts& Found = At->second;
    if (!New) return Found;
    const auto Wanted = [](std::wstring_view Section) {
        return Section == kParms || Section == kFieldParms || Section == kScriptParms;
    };
    const Reading Told = Read(Of.Clsid, Of.Name, Wanted);
    Found.Readable = Told.Whole;
    for (const SectionAsText& Each : Told.Texts)
        ForEachParm(Each.Text, [&](std::wstring_view Keyword, std::wstring_view Value, std::int32_t) {
            if (Keyword == kName) Found.Names.insert(Key(Each.Section, Unquote(Value)));
            if (Keyword == kStyle && Each.Section == kParms) Found.IsIndex = Unquote(Value) == kIndexStyle;
        });
    return Found;
}

std::vector<Use> References::UsersOf(std::wstring_view Clsid, std::wstring_view Name,
                                     std::vector<ObjectName>* Unread) {
    const auto Wanted = [&](const ReferenceRow& Row) { return Row.Wanted == Clsid && !IsPart(Row.What); };
    std::unordered_set<std::wstring_view> Makers;  // the classes that may name one of this class
    for (const ReferenceRow& Row : kRows)
        if (Wanted(Row)) Makers.insert(Row.Clsid);
    const std::wstring Upper = StrUtil::UpperCase(Name);
    const auto Same = [&](const Reference& By) {
        if (By.Name == Name) return true;
        return By.Row->Case == Folded && StrUtil::UpperCase(By.Name) == Upper && !Knows(Clsid, By.Name);
    };
    std::vector<Use> All;
    for (const ObjectName& Maker : Objects_) {
        if (Makers.count(Maker.Clsid) == 0) continue;
        bool Whole = true;
        for (Reference& Each : Of(Maker.Clsid, Maker.Name, Whole))
            if (Wanted(*Each.Row) && Same(Each)) All.push_back({Maker.Clsid, Maker.Name, std::move(Each)});
        if (!Whole && Unread) Unread->push_back(Maker);
    }
    return All;
}

// What is wrong with the name itself.
std::optional<std::wstring> References::NameFault(const Reference& Of) const {
    const ReferenceRow& Row = *Of.Row;
    if (!Meant(Row.Wanted, Of.Name, Row.Case).empty()) return std::nullopt;
    std::wstring Text(Row.Keyword);
    std::vector<std::wstring_view> Others;  // classes that have an object of that name
    for (const ObjectName* const Each : Meant({}, Of.Name, Row.Case))
        if (Others.empty() || Others.back() != Each->Clsid) Others.push_back(Each->Clsid);
    if (Others.empty()) {
        Text.append(L" nomina un'istanza sconosciuta della classe ").append(Row.Wanted);
    } else {
        Text.append(L" nomina un'istanza ").append(Others.size() == 1 ? L"della classe " : L"delle classi ");
        for (std::size_t I = 0; I < Others.size(); ++I) Text.append(I == 0 ? L"" : L", ").append(Others[I]);
        Text.append(L" e non della classe ").append(Row.Wanted);
    }
    return Text.append(L": ").append(Of.Name).append(L".");
}

std::optional<std::wstring> References::FaultOf(const Reference& Of) {
    const Named What = Of.Row->What;
    // An object that can't be read may hold anything.
    const auto AnyHas = [&](std::wstring_view Name, Letters Case, const auto& Has) {
        const std::vector<const ObjectName*> All = Meant(Of.Row->Wanted, Name, Case);
        // What is not there is told by the line that names it.
        return All.empty() || std::any_of(All.begin(), All.end(), [&](const ObjectName* Each) {
                   const Parts& Held = PartsOf(*Each);
                   return !Held.Readable || Has(Held);
               });
    };
    std::wstring Text(Of.Row->Keyword);
    if (!IsPart(What)) {
        std::optional<std::wstring> Fault = NameFault(Of);
        if (Fault || What == Object) return Fault;
        if (AnyHas(Of.Name, Of.Row->Case, [](const Parts& Held) { return Held.IsIndex; }))
            return std::nullopt;
        return Text.append(L" nomina una tabella che non è un indice: ").append(Of.Name).append(L".");
    }
    const std::wstring Part = Key(PartSection(What), StrUtil::UpperCase(Of.Name));
    if (AnyHas(Of.Holder, What == Script ? Kept : Folded,
               [&](const Parts& Held) { return Held.Names.count(Part) != 0; }))
        return std::nullopt;
    if (What == Script)
        Text.append(L" nomina uno script sconosciuto: ");
    else
        Text.append(L" nomina un campo sconosciuto della tabella ").append(Of.Holder).append(L": ");
    return Text.append(Of.Name).append(L".");
}

std::vector<ReferenceFault> References::Faults() {
    std::vector<ReferenceFault> All;
    for (const ObjectName& Maker : Objects_)
        for (Reference& Each : Of(Maker.Clsid, Maker.Name))
            if (std::optional<std::wstring> Fault = FaultOf(Each))
                All.push_back({{Maker.Clsid, Maker.Name, std::move(Each)}, *std::move(Fault)});
    return All;
}

}  // namespace kv::host
