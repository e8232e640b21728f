#include "tests/support/Desk.h"

namespace kv::test {
namespace {

// `PARMS 17` as `PARMS #`: ids carry no meaning.
std::wstring WithoutIds(const std::wstring& Key) {
    std::wstring Out;
    bool InId = false;
    for (const wchar_t C : Key) {
        const bool Digit = C >= L'0' && C <= L'9';
        if (Digit && (InId || (!Out.empty() && (Out.back() == L' ' || Out.back() == L'-')))) {
            if (!InId) Out.push_back(L'#');
            InId = true;
            continue;
        }
        InId = false;
        Out.push_back(C);
    }
    return Out == L"PARMS #" && Key == L"PARMS 0" ? Key : Out;
}

}  // namespace

RegObject Desk::Named(std::wstring_view Name) {
    RegObject Made;
    Made.Id = 7;
    Made.Name = Name;
    Made.Desc = L"Oggetto di prova";
    Made.Version = 3;
    Made.UserList = L"ADMIN";
    return Made;
}

Desk::Desk(std::wstring_view ClassWord, RegObject Content)
    : Object(std::make_shared<MemoryRegData>(ClassWord, std::move(Content))),
      Server(nullptr, [this] { return Tree; }),
      Core(Server, *Tree, *Object, Clipboard) {
    Tree->SetFace(this);
    RegData* Target = nullptr;
    if (Server.ShowData(nullptr, Object, std::wstring(ClassWord), Target, false)) {
        Opened = CoreUtil::Instance().LastError();
        CoreUtil::Instance().ForgetError();
        return;
    }
    Opened = Try([&] { return Core.LoadData(); });
}

Desk::~Desk() { Tree->SetFace(nullptr); }

std::wstring Desk::Leaf(std::wstring_view Section, int Nth) const {
    std::wstring Found;
    Tree->ForEach([&](const window::TreeNode& Node) {
        if (window::IsLeafKey(Node.Key) && window::SectionWord(Node.Key) == Section && --Nth == 0)
            Found = Node.Key;
    });
    return Found;
}

std::wstring Desk::Text(const std::wstring& Key) {
    std::wstring Buffer;
    const Outcome Got = Try([&] { return Core.DispData({.CurrItem = Key}, Buffer); });
    EXPECT_TRUE(Accepted(Got));
    return Buffer;
}

Outcome Desk::Put(const std::wstring& Key, std::wstring Text, bool Strict) {
    Tree->SetSyntaxOn(Strict);
    std::wstring NewItemKey;
    return Try([&] { return Core.SaveData({.CurrItem = Key}, Text, NewItemKey); });
}

std::wstring Desk::Picture() const {
    std::wstring Out;
    Tree->ForEach([&](const window::TreeNode& Node) {
        for (const window::TreeNode* N = Node.Parent; N; N = N->Parent) Out.append(L"  ");
        Out.append(WithoutIds(Node.Key)).append(L" \"").append(Node.Text).append(L"\" ");
        Out.append(std::to_wstring(Node.Image)).append(L",").append(std::to_wstring(Node.SelectedImage));
        const std::wstring_view Kind = Tree->Kind(Node);
        if (!Kind.empty()) Out.append(L" ").append(Kind);
        Out.append(L"\n");
    });
    return Out;
}

std::wstring Desk::Offered() const {
    std::wstring Out;
    for (const window::ValueWords& Row : Tree->Choices()) {
        Out.append(Row.Section).append(L" ").append(Row.Keyword);
        for (const std::wstring& Word : Row.Words) Out.append(L" ").append(Word);
        Out.append(L"\n");
    }
    return Out;
}

std::wstring Desk::Exported() {
    // On a server object of its own, as a host does it: the place of the open item is not to be used.
    vdSvr Exporter(nullptr, [] { return std::make_shared<window::TreeModel>(); });
    std::wstring Buffer;
    EXPECT_TRUE(Accepted(Try([&] { return Exporter.Export(Object, Object->Clsid(), Buffer); })));
    return Buffer;
}

::testing::AssertionResult Refused(const Outcome& Got, std::int32_t Number, std::wstring_view Source,
                                   std::wstring_view Description, std::optional<int> Line) {
    if (!Got) return ::testing::AssertionFailure() << "nothing was refused";
    if (Got->Number == Number && Got->Source == Source && Got->Description == Description &&
        (!Line || Got->Line == *Line))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "refused with " << Got->Number << " [" << Narrow(Got->Source)
                                         << "] " << Narrow(Got->Description) << " line " << Got->Line;
}

::testing::AssertionResult RefusedSilently(const Outcome& Got) { return Refused(Got, 0, L"", L""); }

::testing::AssertionResult Accepted(const Outcome& Got) {
    if (!Got) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "refused with " << Got->Number << " [" << Narrow(Got->Source)
                                         << "] " << Narrow(Got->Description) << " line " << Got->Line;
}

}  // namespace kv::test
