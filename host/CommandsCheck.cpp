#include "host/CommandsCheck.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>
#include <vector>

#include "host/References.h"
#include "host/Text.h"

namespace kv::host {
namespace {

using Json = nlohmann::ordered_json;
using window::Selection;
using window::WindowCore;

/// What is being read: an object, and in it a section, or none where the object is meant as a whole.
struct Subject {
    std::wstring Clsid;
    std::wstring Name;
    std::wstring Section;
    Place At;
};

class Checker {
  public:
    explicit Checker(Session& Work) : Work_(Work), Names_(Work.Registry()) {}

    void Check(const std::wstring& Clsid, const std::wstring& Name);
    /// Prints what is not printed yet. Answers the exit code.
    int Finish();

  private:
    bool Try(const Subject& Of, const std::function<void()>& Step);
    void Tell(const Subject& Of, const KvError& Error, const Reference* By = nullptr);
    std::vector<SectionAsText> CheckSections(const Subject& Whole, WindowCore& Core);
    void CheckReferences(const Subject& Whole, const std::vector<SectionAsText>& Texts);

    Session& Work_;
    References Names_;
    Json Faults_ = Json::array();
    bool Found_ = false;
};

// Runs one step; a fault is told and ends the step, not the check. True when there was none.
bool Checker::Try(const Subject& Of, const std::function<void()>& Step) {
    try {
        Step();
        return true;
    } catch (const Refused& No) {
        for (const KvError& Error : No.Errors()) Tell(Of, Error);
        if (No.Errors().empty()) Tell(Of, {});
    } catch (const Failure& No) {
        Tell(Of, No.Error());
    }
    return false;
}

// `By` is the reference that the fault lies in, where it lies in one.
void Checker::Tell(const Subject& Of, const KvError& Error, const Reference* By) {
    Found_ = true;
    if (Work_.Chosen().Json) {
        Json Fault = {{"Clsid", ToUtf8Lossy(Of.Clsid)},
                      {"Name", ToUtf8Lossy(Of.Name)},
                      {"Section", ToUtf8Lossy(Of.Section)},
                      {"Position", Of.At},
                      {"Number", Error.Number},
                      {"Source", ToUtf8Lossy(Error.Source)},
                      {"Message", ToUtf8Lossy(Error.Description)}};
        if (Error.Line > 0) Fault["Line"] = Error.Line;
        if (By) {
            Fault["Keyword"] = ToUtf8Lossy(By->Row->Keyword);
            Fault["Reference"] = ToUtf8Lossy(By->Name);
            Fault["Wanted"] = ToUtf8Lossy(By->Row->Wanted);
            if (!By->Holder.empty()) Fault["Holder"] = ToUtf8Lossy(By->Holder);
        }
        Faults_.push_back(std::move(Fault));
        return;
    }
    const std::wstring Line = StandsAt(Of.Clsid, Of.Name, Of.Section, Of.At) + L": " + Error.Description;
    Work_.Out() << ToUtf8Lossy(OneLine(Line)) << '\n';
}

// Answers the texts of the sections, as they were before anything was saved.
std::vector<SectionAsText> Checker::CheckSections(const Subject& Whole, WindowCore& Core) {
    std::vector<SectionAsText> Texts;
    std::vector<std::pair<Subject, Selection>> Leaves;
    for (const Address& Node : Addresses(Core.Tree()))
        if (Node.Leaf)
            Leaves.push_back({{Whole.Clsid, Whole.Name, std::wstring(Node.Section), Node.At},
                              {.CurrItem = Node.Node->Key, .CurrFolder = {}, .Index = {}, .Key = {}}});
    for (const auto& [Leaf, At] : Leaves)
        Try(Leaf, [&, &Leaf = Leaf, &Node = At] {
            std::wstring Buffer;
            Work_.Must(Core.DispData(Node, Buffer));
            Texts.push_back({Leaf.Section, Leaf.At, Buffer});
            std::wstring NewItemKey;
            Work_.Must(Core.SaveData(Node, Buffer, NewItemKey));
        });
    Try(Whole, [&] { Work_.Must(Core.Save()); });
    return Texts;
}

void Checker::CheckReferences(const Subject& Whole, const std::vector<SectionAsText>& Texts) {
    for (const Reference& Each : ReferencesIn(Whole.Clsid, Whole.Name, Texts)) {
        const std::optional<std::wstring> Message = Names_.FaultOf(Each);
        if (!Message) continue;
        KvError Fault;
        Fault.Number = kDesignFault;
        Fault.Source = L"References.FaultOf";
        Fault.Description = *Message;
        Fault.Line = Each.Line;
        Tell({Whole.Clsid, Whole.Name, std::wstring(Each.Row->Section), Each.At}, Fault, &Each);
    }
}

void Checker::Check(const std::wstring& Clsid, const std::wstring& Name) {
    const Subject Whole{Clsid, Name, {}, {}};
    std::vector<SectionAsText> Texts;
    Try(Whole, [&] {
        const auto Copy = std::make_shared<MemoryRegData>(Clsid, Work_.Registry().ReadStored(Clsid, Name));
        Work_.InWindow(Copy, [&](WindowCore& Core) { Texts = CheckSections(Whole, Core); });
    });
    CheckReferences(Whole, Texts);
}

int Checker::Finish() {
    if (Work_.Chosen().Json) Work_.Out() << Faults_.dump(2) << '\n';
    return Found_ ? exit_code::kRefused : exit_code::kDone;
}

}  // namespace

int CheckObjects(Session& Work, const std::optional<std::wstring>& Clsid,
                 const std::optional<std::wstring>& Name) {
    std::vector<std::pair<std::wstring, std::wstring>> Objects;
    for (const RegistryEntry& Entry : Work.Registry().List(Clsid))
        if (!Name || Entry.Name == *Name) Objects.emplace_back(Entry.Clsid, Entry.Name);
    if (Objects.empty() && Name) static_cast<void>(Work.Open(*Clsid, *Name));  // refuses
    if (Objects.empty() && Clsid) MustBeClass(*Clsid);
    Checker Run(Work);
    for (const auto& [Class, Object] : Objects) Run.Check(Class, Object);
    return Run.Finish();
}

}  // namespace kv::host
