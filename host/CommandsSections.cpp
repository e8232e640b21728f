#include "host/CommandsSections.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>
#include <vector>

#include "host/CommandsEditor.h"
#include "host/Text.h"

namespace kv::host {
namespace {

using Json = nlohmann::ordered_json;
using window::Selection;
using window::TreeNode;
using window::WindowCore;

Selection At(const Address& Node) {
    return {.CurrItem = Node.Node->Key, .CurrFolder = {}, .Index = {}, .Key = {}};
}

Json AddressJson(const Address& Node) {
    return {{"Section", ToUtf8Lossy(Node.Section)}, {"Position", Node.At}};
}

Json SectionJson(const Address& Node, const std::wstring& Buffer) {
    Json Section = AddressJson(Node);
    Section["Key"] = ToUtf8Lossy(Node.Node->Key);
    Section["Text"] = ToUtf8Lossy(Node.Node->Text);
    Section["Buffer"] = ToUtf8Lossy(Buffer);
    return Section;
}

/// Message for a text that is no text: "Errore nei dati."
constexpr std::int32_t kWrongData = 20026;

// Structural changes are saved; what changed nothing is told, since it is no failure either.
void SaveChange(Session& Work, WindowCore& Core) {
    if (Core.Tree().Modified())
        Work.MustSave(Core.Save());
    else
        TellTrouble("nothing has changed: the class does not do that to this section", Work.Err());
}

// In a window a section is shown before it is saved, and some items count on it: showing fills in what a new
// record lacks, without which they refuse. What can't be shown can still be set.
void ShowFirst(Session& Work, WindowCore& Core, const Selection& Node) {
    std::wstring Shown;
    if (Core.DispData(Node, Shown)) static_cast<void>(Work.Platform().TakeShown());
}

/// What the operator's editor is given in front of a text that was refused: the messages, as comment lines.
std::string Comment(const std::vector<KvError>& Errors) {
    const auto Write = [&](std::int32_t LinesAbove) {
        std::string Lines;
        for (KvError Error : Errors) {
            if (Error.Line > 0)
                Error.Line += LinesAbove;  // where the line stands in the file that comes back
            Lines.append("' ");
            for (const char C : PlainText(ErrorText(Error))) {
                Lines.push_back(C);
                if (C == '\n') Lines.append("' ");
            }
            Lines.push_back('\n');
        }
        return Lines;
    };
    const std::string Measured = Write(0);
    return Write(static_cast<std::int32_t>(std::count(Measured.begin(), Measured.end(), '\n')));
}

}  // namespace

int ShowTree(Session& Work, const std::wstring& Clsid, const std::wstring& Name) {
    Work.InWindow(Clsid, Name, [&](WindowCore& Core) {
        const window::TreeModel& Tree = Core.Tree();
        const std::vector<Address> Named = Addresses(Tree);  // all nodes but the first, in the same order
        auto Next = Named.begin();
        Json Nodes = Json::array();
        Tree.ForEach([&](const TreeNode& Node) {
            if (Work.Chosen().Json) {
                Json One = {{"Key", ToUtf8Lossy(Node.Key)},
                            {"Parent", Node.Parent ? ToUtf8Lossy(Node.Parent->Key) : ""},
                            {"Text", ToUtf8Lossy(Node.Text)},
                            {"Kind", ToUtf8Lossy(Tree.Kind(Node))},
                            {"Image", Node.Image},
                            {"SelectedImage", Node.SelectedImage}};
                if (Node.Parent) One.update(AddressJson(*Next++));
                Nodes.push_back(std::move(One));
                return;
            }
            std::size_t Depth = 0;
            for (const TreeNode* Above = Node.Parent; Above; Above = Above->Parent) ++Depth;
            Work.Out() << std::string(4 * Depth, ' ') << ToUtf8Lossy(OneLine(Node.Text)) << "  ["
                       << ToUtf8Lossy(Node.Key) << "]\n";
        });
        if (Work.Chosen().Json) Work.Out() << Nodes.dump(2) << '\n';
    });
    return exit_code::kDone;
}

int ShowSection(Session& Work, const Target& Of) {
    Work.InWindow(Of.Clsid, Of.Name, [&](WindowCore& Core) {
        const Address Node = Addressed(Core.Tree(), Of.Section, Of.At, Want::Text);
        std::wstring Buffer;
        Work.Must(Core.DispData(At(Node), Buffer));
        if (!Work.Chosen().Json) {
            Work.Out() << PlainText(Buffer);
            return;
        }
        Work.Out() << SectionJson(Node, Buffer).dump(2) << '\n';
    });
    return exit_code::kDone;
}

int ShowSections(Session& Work, const std::wstring& Clsid, const std::wstring& Name) {
    int Result = exit_code::kDone;
    Work.InWindow(Clsid, Name, [&](WindowCore& Core) {
        Json All = Json::array();
        bool First = true;
        for (const Address& Node : Addresses(Core.Tree())) {
            if (!Node.Leaf) continue;
            std::wstring Buffer;
            try {
                Work.Must(Core.DispData(At(Node), Buffer));
            } catch (const Refused& No) {
                Result = std::max(Result, TellRefused(No.Errors(), Work.Err()));
                continue;
            }
            if (Work.Chosen().Json) {
                All.push_back(SectionJson(Node, Buffer));
                continue;
            }
            if (!std::exchange(First, false)) Work.Out() << '\n';
            std::wstring Heading(Node.Section);
            Heading.append(L" ").append(PlaceText(Node.At));
            if (!Node.Node->Text.empty()) Heading.append(L": ").append(OneLine(Node.Node->Text));
            Work.Out() << "== " << ToUtf8Lossy(Heading) << " ==\n" << PlainText(Buffer);
        }
        if (Work.Chosen().Json) Work.Out() << All.dump(2) << '\n';
    });
    return Result;
}

int SetSection(Session& Work, const Target& Of) {
    const std::shared_ptr<RegistryObject> Object = Work.Open(Of.Clsid, Of.Name);
    std::wstring Buffer = Work.ReadSection();
    Work.InWindow(Object, [&](WindowCore& Core) {
        const Selection Node = At(Addressed(Core.Tree(), Of.Section, Of.At, Want::Text));
        ShowFirst(Work, Core, Node);
        std::wstring NewItemKey;
        Work.Must(Core.SaveData(Node, Buffer, NewItemKey));
        Work.MustSave(Core.Save());
    });
    return exit_code::kDone;
}

int EditSection(Session& Work, const Target& Of) {
    Work.InWindow(Of.Clsid, Of.Name, [&](WindowCore& Core) {
        const Selection Node = At(Addressed(Core.Tree(), Of.Section, Of.At, Want::Text));
        std::wstring Shown;
        Work.Must(Core.DispData(Node, Shown));
        EditedText File(Work.Chosen().Temp, ToUtf8Lossy(Of.Section));
        std::string Text = PlainText(Shown);
        std::vector<KvError> Errors;
        // What the operator has typed is not thrown away.
        const auto Keep = [&] {
            TellTrouble("nothing was saved; the text is in " + PathText(File.Keep()), Work.Err());
        };
        for (;;) {
            const std::string Header = Comment(Errors);
            std::string Edited = File.Edit(Header + Text);
            if (Edited.starts_with(Header)) Edited.erase(0, Header.size());
            if (Edited == Text) {
                if (Errors.empty()) return;
                Keep();
                throw Refused(std::move(Errors));
            }
            Text = std::move(Edited);
            try {
                std::optional<std::wstring> Buffer = SectionFrom(Text);
                if (!Buffer) RefuseWith(kWrongData, {});
                std::wstring NewItemKey;
                Work.Must(Core.SaveData(Node, *Buffer, NewItemKey));
            } catch (const Refused& No) {
                Errors = No.Errors();
                continue;
            }
            try {
                Work.MustSave(Core.Save());
            } catch (const std::exception&) {
                Keep();
                throw;
            }
            return;
        }
    });
    return exit_code::kDone;
}

int AddElement(Session& Work, const Target& To) {
    Work.InWindow(To.Clsid, To.Name, [&](WindowCore& Core) {
        const Address Node = Addressed(Core.Tree(), To.Section, To.At, Want::Folder);
        std::wstring NewItemKey;
        Work.Must(Core.EditData(At(Node), NewItemKey));
        SaveChange(Work, Core);
        if (!NewItemKey.empty()) Work.Out() << ToUtf8Lossy(NewItemKey) << '\n';
    });
    return exit_code::kDone;
}

int MoveElement(Session& Work, const Target& Of, bool Up) {
    Work.InWindow(Of.Clsid, Of.Name, [&](WindowCore& Core) {
        const Address Node = Addressed(Core.Tree(), Of.Section, Of.At, Want::Text);
        std::wstring CurrItem;
        Work.Must(Core.MoveData(At(Node), Up ? 1 : -1, CurrItem));
        SaveChange(Work, Core);
        Work.Out() << ToUtf8Lossy(CurrItem) << '\n';
    });
    return exit_code::kDone;
}

int RemoveElement(Session& Work, const Target& Of, bool All) {
    Work.InWindow(Of.Clsid, Of.Name, [&](WindowCore& Core) {
        const Address Node = Addressed(Core.Tree(), Of.Section, Of.At, All ? Want::Folder : Want::Text);
        Work.Must(Core.DeleteData(At(Node), All));
        SaveChange(Work, Core);
    });
    return exit_code::kDone;
}

}  // namespace kv::host
