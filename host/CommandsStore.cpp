#include "host/CommandsStore.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <vector>

#include "frame/StrUtil.h"
#include "frame/vdbInclude.h"
#include "host/ObjectJson.h"
#include "host/References.h"
#include "host/Text.h"
#include "host/WholeObject.h"

namespace kv::host {
namespace {

using Json = nlohmann::ordered_json;

std::wstring Padded(std::wstring Text, std::size_t Width) {
    if (Text.size() < Width) Text.append(Width - Text.size(), L' ');
    return Text;
}

std::wstring ValueText(const RegValue& Value) {
    if (const auto* Number = std::get_if<std::int32_t>(&Value)) return std::to_wstring(*Number);
    if (const auto* Flag = std::get_if<bool>(&Value)) return *Flag ? L"True" : L"False";
    return L"\"" + std::get<std::wstring>(Value) + L"\"";
}

// One line an object, what is empty or 0 left out, its values and children below it.
void PrintObject(std::ostream& Out, const RegObject& Object, std::size_t Depth) {
    const auto Line = [&](std::size_t Deep, const std::wstring& Text) {
        Out << std::string(4 * Deep, ' ') << ToUtf8Lossy(OneLine(Text)) << '\n';
    };
    std::wstring Head = Object.Name.empty() ? L"(senza nome)" : Object.Name;
    if (!Object.Text.empty()) Head.append(L" = \"").append(Object.Text).append(L"\"");
    const auto Number = [&](std::wstring_view Label, std::int32_t Value) {
        if (Value != 0) Head.append(L", ").append(Label).append(L" ").append(std::to_wstring(Value));
    };
    const auto Words = [&](std::wstring_view Label, const std::wstring& Value) {
        if (!Value.empty()) Head.append(L", ").append(Label).append(L" \"").append(Value).append(L"\"");
    };
    Number(L"Id", Object.Id);
    Number(L"Version", Object.Version);
    Words(L"Desc", Object.Desc);
    Number(L"Number2", Object.Number2);
    Number(L"Number3", Object.Number3);
    Words(L"String3", Object.String3);
    Words(L"String4", Object.String4);
    Words(L"UserList", Object.UserList);
    Words(L"String5", Object.String5);
    Line(Depth, Head);
    for (const RegNamedValue& Value : Object.Values)
        Line(Depth + 1, Value.Name + L" = " + ValueText(Value.Value));
    for (const RegObject& Child : Object.Children) PrintObject(Out, Child, Depth + 1);
}

// What the object itself names of itself goes with it.
void RefuseIfUsed(Session& Work, const std::wstring& Clsid, const std::wstring& Name) {
    References All(Work.Registry());
    if (!All.Knows(Clsid, Name)) return;  // the registry tells it
    const auto Another = [&](const auto& By) { return By.Clsid != Clsid || By.Name != Name; };
    bool Used = false;
    std::wstring Lines;
    std::vector<ObjectName> Unread;
    for (const Use& Each : All.UsersOf(Clsid, Name, &Unread)) {
        if (!Another(Each)) continue;
        Used = true;
        Lines.append(StrUtil::kLineEnd).append(OneLine(UseText(Each)));
    }
    for (const ObjectName& Each : Unread)
        if (Another(Each))
            Lines.append(StrUtil::kLineEnd)
                .append(OneLine(StandsAt(Each.Clsid, Each.Name, {}, {})))
                .append(L": istanza illeggibile");
    if (Lines.empty()) return;
    KvError Error;
    Error.Number = kDesignFault;
    Error.Description = L"L'istanza " + Name + (Used ? L" è in uso" : L" potrebbe essere in uso") +
                        L"; si elimina con --force." + Lines;
    throw Refused({std::move(Error)});
}

}  // namespace

int ListObjects(Session& Work, const std::optional<std::wstring>& Clsid) {
    const std::vector<RegistryEntry> All = Work.Registry().List(Clsid);
    if (All.empty() && Clsid) MustBeClass(*Clsid);
    if (Work.Chosen().Json) {
        Json Entries = Json::array();
        for (const RegistryEntry& Entry : All)
            Entries.push_back({{"Clsid", ToUtf8Lossy(Entry.Clsid)},
                               {"Name", ToUtf8Lossy(Entry.Name)},
                               {"Id", Entry.Id},
                               {"Desc", ToUtf8Lossy(Entry.Desc)},
                               {"Version", Entry.Version},
                               {"UserList", ToUtf8Lossy(Entry.UserList)},
                               {"Revision", Entry.Revision}});
        Work.Out() << Entries.dump(2) << '\n';
        return exit_code::kDone;
    }
    std::size_t ClassWidth = 0;
    std::size_t NameWidth = 0;
    for (const RegistryEntry& Entry : All) {
        ClassWidth = std::max(ClassWidth, Entry.Clsid.size());
        NameWidth = std::max(NameWidth, Entry.Name.size());
    }
    for (const RegistryEntry& Entry : All) {
        std::wstring Line = Padded(Entry.Clsid, ClassWidth) + L"  ";
        Line += Entry.Desc.empty() ? Entry.Name : Padded(Entry.Name, NameWidth) + L"  " + Entry.Desc;
        Work.Out() << ToUtf8Lossy(OneLine(Line)) << '\n';
    }
    return exit_code::kDone;
}

int NewObject(Session& Work, const std::wstring& Clsid, const std::wstring& Name, const std::wstring& Desc) {
    MustBeClass(Clsid);
    Work.Registry().Create(Clsid, Name, Desc);
    return exit_code::kDone;
}

int DeleteObject(Session& Work, const std::wstring& Clsid, const std::wstring& Name, bool Force) {
    if (!Force) RefuseIfUsed(Work, Clsid, Name);
    Work.FromRegistry(Clsid, [&](KvRegSvr& Registry) { Registry.Delete(Clsid, Name); });
    return exit_code::kDone;
}

int ShowUses(Session& Work, const std::wstring& Clsid, const std::wstring& Name) {
    References All(Work.Registry());
    if (!All.Knows(Clsid, Name)) static_cast<void>(Work.Open(Clsid, Name));  // refuses
    Json Uses = Json::array();
    std::vector<ObjectName> Unread;
    for (const Use& Each : All.UsersOf(Clsid, Name, &Unread)) {
        if (Work.Chosen().Json)
            Uses.push_back({{"Clsid", ToUtf8Lossy(Each.Clsid)},
                            {"Name", ToUtf8Lossy(Each.Name)},
                            {"Section", ToUtf8Lossy(Each.By.Row->Section)},
                            {"Position", Each.By.At},
                            {"Line", Each.By.Line},
                            {"Keyword", ToUtf8Lossy(Each.By.Row->Keyword)},
                            {"Reference", ToUtf8Lossy(Each.By.Name)}});
        else
            Work.Out() << ToUtf8Lossy(OneLine(UseText(Each))) << '\n';
    }
    if (Work.Chosen().Json) Work.Out() << Uses.dump(2) << '\n';
    for (const ObjectName& Each : Unread)
        TellTrouble(ToUtf8Lossy(OneLine(StandsAt(Each.Clsid, Each.Name, {}, {}))) +
                        " can't be read: what it names is not known",
                    Work.Err());
    return exit_code::kDone;
}

int ExportObject(Session& Work, const std::wstring& Clsid, const std::wstring& Name) {
    const std::shared_ptr<RegistryObject> Object = Work.Open(Clsid, Name);
    std::wstring Buffer;
    Work.Must(ExportText(Work.Registry(), Object, Work.Chosen().SyntaxOn, Buffer));
    Work.Out() << ToUtf8Lossy(Buffer);
    return exit_code::kDone;
}

int ImportObject(Session& Work, const std::wstring& Clsid, const std::wstring& Name) {
    const std::shared_ptr<RegistryObject> Object = Work.Open(Clsid, Name);
    bool Taken = false;
    Work.MustSave(ImportText(Work.Registry(), Object, Work.Chosen().SyntaxOn, Work.ReadSection(), Taken));
    if (!Taken) TellTrouble("nothing has changed: this class takes no exported text", Work.Err());
    return exit_code::kDone;
}

int ShowClipboard(Session& Work, const std::optional<std::filesystem::path>& File, std::int32_t Index) {
    RegObject Object;
    std::wstring Name;
    std::wstring Path = File ? WideArgument(File->string()) : std::wstring();
    Work.Must(ClipboardLoad(Object, Name, Path, Index));
    if (Work.Chosen().Json)
        Work.Out() << (Index == 0 ? Json() : ToJson(Object)).dump(2) << '\n';
    else if (Index != 0)
        PrintObject(Work.Out(), Object, 0);
    return exit_code::kDone;
}

}  // namespace kv::host
