// The type library read back from the file: the interfaces, slot by slot, with the kinds of their arguments.

#include "tests/com/Host.h"

namespace kv::com::host {
namespace {

std::wstring Word(const TYPEDESC& Type, ITypeInfo* In) {
    switch (Type.vt) {
        case VT_PTR:
            return Word(*Type.lptdesc, In) + L"*";
        case VT_BSTR:
            return L"BSTR";
        case VT_BOOL:
            return L"Boolean";
        case VT_I2:
            return L"short";
        case VT_I4:
            return L"long";
        case VT_VARIANT:
            return L"Variant";
        case VT_DISPATCH:
            return L"Object";
        case VT_HRESULT:
        case VT_VOID:
            return L"";
        case VT_USERDEFINED: {
            Ref<ITypeInfo> Named;
            Bstr Name;
            if (FAILED(In->GetRefTypeInfo(Type.hreftype, Named.Out()))) return L"?";
            Named->GetDocumentation(MEMBERID_NIL, Name.Out(), nullptr, nullptr, nullptr);
            return Name.Text();
        }
        default:
            return L"?" + std::to_wstring(Type.vt);
    }
}

/// The members of an interface in slot order, one a line: arguments with "~" for in/out and "?" for optional,
/// and the result behind the colon.
std::wstring Picture(REFIID Interface) {
    Ref<ITypeInfo> Dispatched;
    EXPECT_EQ(Library()->GetTypeInfoOfGuid(Interface, Dispatched.Out()), S_OK);
    TYPEATTR* Attributes = nullptr;
    EXPECT_EQ(Dispatched->GetTypeAttr(&Attributes), S_OK);
    EXPECT_TRUE(Attributes->wTypeFlags & TYPEFLAG_FDUAL);
    Dispatched->ReleaseTypeAttr(Attributes);
    // The other half of a dual interface tells the slots.
    Ref<ITypeInfo> Slots;
    HREFTYPE Half = 0;
    EXPECT_EQ(Dispatched->GetRefTypeOfImplType(static_cast<UINT>(-1), &Half), S_OK);
    EXPECT_EQ(Dispatched->GetRefTypeInfo(Half, Slots.Out()), S_OK);
    EXPECT_EQ(Slots->GetTypeAttr(&Attributes), S_OK);
    const UINT Functions = Attributes->cFuncs;
    EXPECT_EQ(Attributes->typekind, TKIND_INTERFACE);
    Slots->ReleaseTypeAttr(Attributes);

    std::wstring Made;
    SHORT Before = static_cast<SHORT>(6 * sizeof(void*));  // the seven slots of IDispatch come first
    for (UINT I = 0; I < Functions; ++I) {
        FUNCDESC* Function = nullptr;
        EXPECT_EQ(Slots->GetFuncDesc(I, &Function), S_OK);
        EXPECT_EQ(Function->oVft, Before + static_cast<SHORT>(sizeof(void*))) << I;
        Before = Function->oVft;
        EXPECT_EQ(Function->elemdescFunc.tdesc.vt, VT_HRESULT);
        BSTR Names[20] = {};
        UINT Known = 0;
        Slots->GetNames(Function->memid, Names, 20, &Known);
        constexpr std::wstring_view kKinds[] = {L"", L"", L"get ", L"", L"put ", L"", L"", L"", L"set "};
        Made.append(kKinds[Function->invkind]).append(FromBstr(Names[0])).append(L"(");
        std::wstring Result;
        for (SHORT P = 0; P < Function->cParams; ++P) {
            const ELEMDESC& Parameter = Function->lprgelemdescParam[P];
            const USHORT Flags = Parameter.paramdesc.wParamFlags;
            std::wstring Type = Word(Parameter.tdesc, Slots.Get());
            if (Flags & PARAMFLAG_FRETVAL) {
                EXPECT_EQ(P, Function->cParams - 1);
                Type.pop_back();
                Result = L": " + Type;
                continue;
            }
            if (P > 0) Made.append(L", ");
            Made.append(Type);
            if (static_cast<UINT>(P) + 1 < Known) Made.append(L" ").append(FromBstr(Names[P + 1]));
            if ((Flags & PARAMFLAG_FIN) && (Flags & PARAMFLAG_FOUT)) Made.append(L"~");
            if (Flags & PARAMFLAG_FOPT) Made.append(L"?");
        }
        Made.append(L")").append(Result).append(L"\n");
        for (UINT N = 0; N < Known; ++N) SysFreeString(Names[N]);
        Slots->ReleaseFuncDesc(Function);
    }
    return Made;
}

#define KV_HEAD L"BSTR CurrFolder, BSTR CurrItem, long Index, BSTR Key"

constexpr const wchar_t* kEditor =
    L"Export(Object RegData, BSTR Clsid, BSTR* Buffer~, Variant* Extra~?): Boolean\n"
    L"LastError(long* Number~, BSTR* Source~, BSTR* Description~, BSTR* HelpFile~, BSTR* HelpContext~, "
    L"long* LastDLLError~)\n"
    L"Import(Object RegData, BSTR Clsid, BSTR* Buffer~, Variant Extra?): Boolean\n"
    L"ShowData(Object CallBack, Object RegData, BSTR Clsid, Object* Target~, Boolean Flag, Boolean* "
    L"Cancel~): "
    L"Boolean\n"
    L"CurrVersion(): Variant\n"
    L"ShutDown()\n";

constexpr const wchar_t* kTreeDll =
    L"CopyData(BSTR Path, " KV_HEAD L", Boolean Group, Boolean* Failed~, Object ClipItem)\n"
    L"DeleteData(BSTR Path, " KV_HEAD L", Boolean Group): Boolean\n"
    L"DispData(BSTR Path, " KV_HEAD L", BSTR* Buffer~): Boolean\n"
    L"EditData(BSTR Path, " KV_HEAD L", BSTR* NewItemKey~): Boolean\n"
    L"GetObjectInfo(BSTR Path, BSTR* Name~, BSTR* Desc~, short* Version~, BSTR* Clsid~, BSTR* Id~, "
    L"BSTR* UserList~): Boolean\n"
    L"HelpShow(BSTR Path, BSTR CurrFolder, BSTR CurrItem, BSTR HelpItem): Boolean\n"
    L"LoadData(BSTR Path): Boolean\n"
    L"MoveData(BSTR Path, BSTR* CurrFolder~, BSTR* CurrItem~, long* Index~, BSTR* Key~, long Direction): Boolean\n"
    L"PasteData(BSTR Path, " KV_HEAD L", BSTR* NewItemKey~, Boolean* Failed~, Object ExternalSource)\n"
    L"Terminate(BSTR Path, Object* RegData~): Boolean\n"
    L"Quit(Boolean* Cancel~): Boolean\n"
    L"Save(BSTR Path): Boolean\n"
    L"SaveData(BSTR Path, " KV_HEAD L", BSTR* NewItemKey~, BSTR* Buffer~): Boolean\n"
    L"ShowPropTable(BSTR Path, BSTR CurrFolder, BSTR CurrItem): Boolean\n"
    L"TlbrButtonClick(BSTR Method, BSTR CurrFolder, BSTR CurrItem, BSTR Key)\n";

TEST(TypeLibrary, EditorOperationsInSlotOrder) { EXPECT_EQ(Picture(__uuidof(::iKvEditor)), kEditor); }

TEST(TypeLibrary, TreeOperationsInSlotOrder) { EXPECT_EQ(Picture(__uuidof(::TreeDll)), kTreeDll); }

TEST(TypeLibrary, TheDefaultInterfaceOffersThemAll) {
    EXPECT_EQ(Picture(__uuidof(::_vdSvr)),
              std::wstring(L"get DesignTree(): Object\nset DesignTree(Object Tree)\n"
                           L"get CallBack(): Object\nset CallBack(Object Object)\n"
                           L"get RegistryServer(): Object\nset RegistryServer(Object Object)\n"
                           L"NewNode(BSTR Name): Object\nNewObject(BSTR Clsid, BSTR Name): Object\n"
                           L"NewClipItem(): Object\n") +
                  kEditor + kTreeDll);
}

TEST(TypeLibrary, DesignItemOperationsInSlotOrder) {
    EXPECT_EQ(Picture(__uuidof(::iKvTree)),
              L"ShowPropTable(BSTR CurrFolder, BSTR CurrItem): Boolean\n"
              L"SaveData(" KV_HEAD L", BSTR* NewItemKey~, BSTR* Buffer~, Object ExternalSource): Boolean\n"
              L"Save(Object Clsid): Boolean\n"
              L"ShowUsers(" KV_HEAD L"): Boolean\n"
              L"MoveData(BSTR* CurrFolder~, BSTR* CurrItem~, long* Index~, BSTR* Key~, long Direction): Boolean\n"
              L"LoadData(Object Clsid): Boolean\n"
              L"ImportData(Object Clsid, BSTR* Buffer~): Boolean\n"
              L"GetObjectInfo(BSTR* Name~, BSTR* Desc~, short* Version~, BSTR* Id~): Variant\n"
              L"ExportData(Object Clsid, BSTR* Buffer~): Boolean\n"
              L"EditData(" KV_HEAD L", BSTR* NewItemKey~): Boolean\n"
              L"DispData(" KV_HEAD L", BSTR* Buffer~, Boolean* ExternalTarget~, Variant Item?, long* Indent~): "
              L"Boolean\n"
              L"TlbrButtonClick(BSTR Method, BSTR CurrFolder, BSTR CurrItem, BSTR Key): Boolean\n"
              L"PasteData(" KV_HEAD L", BSTR* NewItemKey~, Object ExternalSource): Boolean\n"
              L"CopyData(" KV_HEAD L", Boolean Group, Object DataObj): Boolean\n"
              L"DeleteData(" KV_HEAD L", Boolean Group): Boolean\n"
              L"get DesignTree(): Object\n"
              L"set DesignTree(Object Tree)\n");
}

TEST(TypeLibrary, TheTreesMembersBeginInTheOrderTold) {
    const std::wstring Told = Picture(__uuidof(::DesignTree));
    EXPECT_EQ(
        Told.substr(0, Told.find(L"ClearNodes")),
        L"MarkModified(Boolean Modified)\n"
        L"AddNode(Variant Relative?, Variant Relationship?, Variant Key?, Variant Text?, Variant Image?, "
        L"Variant SelectedImage?, BSTR* Kind~?): Object\n"
        L"AddIconNode(Variant Relative?, Variant Relationship?, Variant Key?, Variant Text?, Variant Image?, "
        L"Variant SelectedImage?, BSTR* Kind~?): Object\n"
        L"AddDefault(BSTR Section, BSTR Keyword, BSTR Word): Boolean\n"
        L"AddToolButton(BSTR Key, BSTR ToolTip, long Style, long Bitmap, Object Picture)\n"
        L"SetTools(Variant Words): Boolean\n"
        L"ShowTree(Object CallBack, BSTR Clsid, Object* Target~, Boolean Flag): Boolean\n"
        L"Dispose()\n"
        L"MoveListItem(Object List, long Direction, BSTR* RelativeKey~, long* NewIndex~): Boolean\n"
        L"get SyntaxOn(): Boolean\n"
        L"NodeId(BSTR Key): long\n"
        L"get TreeControl(): Object\n");
}

TEST(TypeLibrary, TheTreesMembersEndWithThoseOfANode) {
    const std::wstring Told = Picture(__uuidof(::DesignTree));
    EXPECT_EQ(Told.substr(Told.find(L"ClearNodes")),
              L"ClearNodes()\n"
              L"RemoveNode(BSTR Key)\n"
              L"RemoveChildren(BSTR Key)\n"
              L"HasNode(BSTR Key): Boolean\n"
              L"get NodeText(BSTR Key): BSTR\n"
              L"put NodeText(BSTR Key, BSTR Text)\n"
              L"NodeParent(BSTR Key): BSTR\n"
              L"NodeAt(BSTR Folder, long Place): BSTR\n"
              L"SelectNode(BSTR Key)\n");
}

TEST(TypeLibrary, AListHasTheSixOperationsInOrderAndMove) {
    EXPECT_EQ(Picture(__uuidof(::ParmList)),
              L"Add(Object Item, Variant Key?, Variant Before?, Variant After?)\n"
              L"Remove(long Index)\n"
              L"get Count(): long\n"
              L"get Item(long Index): Object\n"
              L"Exists(BSTR Key): Boolean\n"
              L"Clear()\n"
              L"Move(long From, long To)\n");
    EXPECT_EQ(Picture(__uuidof(::ListElement)), L"get Place(): long\n");
}

TEST(TypeLibrary, TheTreeControlHasNodesByKey) {
    EXPECT_EQ(Picture(__uuidof(::TreeControl)), L"get Nodes(): Object\n");
    EXPECT_EQ(Picture(__uuidof(::TreeNodes)), L"get Item(BSTR Key): Object\nClear()\n");
    EXPECT_EQ(Picture(__uuidof(::TreeNode)), L"get Text(): BSTR\nput Text(BSTR Caption)\nget Key(): BSTR\n");
}

TEST(TypeLibrary, TheObjectsOfAHost) {
    EXPECT_EQ(Picture(__uuidof(::RegData)),
              L"get Name(): BSTR\nget Clsid(): BSTR\nget UserList(): BSTR\nput Saving(Boolean)\n"
              L"get Content(): Object\nReplace(Object Node)\n");
    EXPECT_EQ(Picture(__uuidof(::ClipItem)),
              L"get DataObj(): Object\nset DataObj(Object RegData)\nget ClassWord(): BSTR\nput "
              L"ClassWord(BSTR Text)\n");
    EXPECT_EQ(Picture(__uuidof(::CallBack)),
              L"ShowError(long Number, BSTR Source, BSTR Description)\n"
              L"MsgBox(BSTR Text, long Style): long\n"
              L"SaveFile(BSTR Title, BSTR Filter, long FilterIndex, long Flags): BSTR\n"
              L"ShowList(BSTR Caption, Variant Items)\n"
              L"Beep()\n"
              L"SetPointer(long Pointer)\n");
    EXPECT_EQ(Picture(__uuidof(::KvRegSvr)), L"Find(BSTR Clsid, BSTR Name): Object\n");
    std::wstring Node;
    for (const auto& [Type, Names] : {std::pair(L"BSTR", std::vector{L"Name", L"Text"}),
                                      std::pair(L"long", std::vector{L"Id", L"Version"}),
                                      std::pair(L"BSTR", std::vector{L"Desc", L"UserList"}),
                                      std::pair(L"long", std::vector{L"Number2", L"Number3"}),
                                      std::pair(L"BSTR", std::vector{L"String3", L"String4", L"String5"})})
        for (const std::wstring Name : Names)
            Node += L"get " + Name + L"(): " + Type + L"\nput " + Name + L"(" + Type + L" " +
                    (std::wstring_view(Type) == L"BSTR" ? L"Text" : L"Number") + L")\n";
    EXPECT_EQ(Picture(__uuidof(::RegNode)), Node +
                                                L"get Value(BSTR ValueName): Variant\n"
                                                L"put Value(BSTR ValueName, Variant Content)\n"
                                                L"get ValueCount(): long\n"
                                                L"get ValueName(long Place): BSTR\n"
                                                L"get ChildCount(): long\n"
                                                L"get Child(long Place): Object\n"
                                                L"AddChild(BSTR ChildName): Object\n"
                                                L"RemoveChild(long Place)\n"
                                                L"Clear()\n");
}

TEST(TypeLibrary, OneClassCanBeCreated) {
    Bstr Name;
    ASSERT_EQ(Library()->GetDocumentation(-1, Name.Out(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(Name.Text(), L"KvDesSvr");
    int Classes = 0;
    for (UINT I = 0; I < Library()->GetTypeInfoCount(); ++I) {
        TYPEKIND Kind = TKIND_MAX;
        ASSERT_EQ(Library()->GetTypeInfoType(I, &Kind), S_OK);
        if (Kind != TKIND_COCLASS) continue;
        ++Classes;
        Ref<ITypeInfo> Class;
        Bstr Named;
        ASSERT_EQ(Library()->GetTypeInfo(I, Class.Out()), S_OK);
        Class->GetDocumentation(MEMBERID_NIL, Named.Out(), nullptr, nullptr, nullptr);
        EXPECT_EQ(Named.Text(), L"vdSvr");
        std::wstring Interfaces;
        for (UINT N = 0; N < 3; ++N) {
            HREFTYPE Reference = 0;
            INT Flags = 0;
            Ref<ITypeInfo> Implemented;
            Bstr Interface;
            ASSERT_EQ(Class->GetRefTypeOfImplType(N, &Reference), S_OK);
            ASSERT_EQ(Class->GetImplTypeFlags(N, &Flags), S_OK);
            ASSERT_EQ(Class->GetRefTypeInfo(Reference, Implemented.Out()), S_OK);
            Implemented->GetDocumentation(MEMBERID_NIL, Interface.Out(), nullptr, nullptr, nullptr);
            Interfaces.append(Interface.Text()).append(Flags & IMPLTYPEFLAG_FDEFAULT ? L"* " : L" ");
        }
        EXPECT_EQ(Interfaces, L"_vdSvr* iKvEditor TreeDll ");
    }
    EXPECT_EQ(Classes, 1);
}

}  // namespace
}  // namespace kv::com::host
