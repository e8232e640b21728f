#include "host/CommandsCheck.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>
#include <vector>

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
    explicit Checker(Session& Work) : Work_(Work) {}

    void Check(const std::wstring& Clsid, const std::wstring& Name);
    /// Prints what is not printed yet. Answers the exit code.
    int Finish();

  private:
    bool Try(const Subject& Of, const std::function<void()>& Step);
    void Tell(const Subject& Of, const KvError& Error);
    void CheckSections(const Subject& Whole, WindowCore& Core);

    Session& Work_;
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

void Checker::Tell(const Subject& Of, const KvError& Error) {
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
        Faults_.push_back(std::move(Fault));
        return;
    }
    std::wstring Line = Of.Clsid + L"/" + Of.Name;
    if (!Of.Section.empty()) Line += L" " + Of.Section + L"[" + PlaceText(Of.At) + L"]";
    Line += L": " + Error.Description;
    Work_.Out() << ToUtf8Lossy(OneLine(Line)) << '\n';
}

void Checker::CheckSections(const Subject& Whole, WindowCore& Core) {
    std::vector<std::pair<Subject, Selection>> Leaves;
    for (const Address& Node : Addresses(Core.Tree()))
        if (Node.Leaf)
            Leaves.push_back({{Whole.Clsid, Whole.Name, std::wstring(Node.Section), Node.At},
                              {.CurrItem = Node.Node->Key, .CurrFolder = {}, .Index = {}, .Key = {}}});
    for (const auto& [Leaf, At] : Leaves)
        Try(Leaf, [&, &Node = At] {
            std::wstring Buffer;
            Work_.Must(Core.DispData(Node, Buffer));
            std::wstring NewItemKey;
            Work_.Must(Core.SaveData(Node, Buffer, NewItemKey));
        });
    Try(Whole, [&] { Work_.Must(Core.Save()); });
}

void Checker::Check(const std::wstring& Clsid, const std::wstring& Name) {
    const Subject Whole{Clsid, Name, {}, {}};
    Try(Whole, [&] {
        const auto Copy = std::make_shared<MemoryRegData>(Clsid, Work_.Registry().ReadStored(Clsid, Name));
        Work_.InWindow(Copy, [&](WindowCore& Core) { CheckSections(Whole, Core); });
    });
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
