// What a host hands in, as the core takes it: each object by its interface where it has it, else by name. A
// call that the object fails raises, with the object's own words.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "com/ByName.h"
#include "com/Ref.h"
#include "frame/ClipItem.h"
#include "frame/CoreUtil.h"
#include "frame/DesignTree.h"
#include "frame/RegData.h"
#include "window/TreeModel.h"

namespace kv::com {

class HostRegData final : public kv::RegData {
  public:
    /// Not null.
    explicit HostRegData(IDispatch* Object);

    IDispatch* Object() const noexcept { return Late_.Object(); }

    std::wstring Name() const override;
    std::wstring Clsid() const override;
    std::wstring UserList() const override;
    /// The host is told True alone: what is written with False, as by a paste, stays here until then, and is
    /// what Read answers.
    void SetSaving(bool Saving) override;
    const RegObject& Read() override;
    void Write(RegObject Content) override;

  private:
    Ref<::RegData> Early_;
    ByName Late_;
    RegObject Content_;
    bool Stores_ = true;
    std::optional<RegObject> Unsaved_;
};

/// An object that travels through unread.
class HostCallBack final : public kv::HostObject {
  public:
    explicit HostCallBack(IDispatch* Object) noexcept : Object_(Object) {}
    IDispatch* Object() const noexcept { return Object_.Get(); }

  private:
    Ref<IDispatch> Object_;
};

class HostRegistry final : public kv::RegistryServer {
  public:
    Ref<IDispatch> Object;
};

/// By name a tree may have the members told of a tree window alone, TreeControl among them: its nodes are
/// then followed here, and reached through the control.
class HostDesignTree final : public kv::DesignTree {
  public:
    /// Not null.
    explicit HostDesignTree(IDispatch* Object);

    IDispatch* Object() const noexcept { return Late_.Object(); }

    void MarkModified(bool Modified) override;
    void AddNode(const NewNode& Node) override;
    void AddIconNode(const NewNode& Node) override;
    void ClearNodes() override;
    void RemoveNode(std::wstring_view Key) override;
    void RemoveChildren(std::wstring_view Key) override;
    bool HasNode(std::wstring_view Key) const override;
    std::wstring NodeText(std::wstring_view Key) const override;
    void SetNodeText(std::wstring_view Key, std::wstring_view Text) override;
    std::wstring NodeParent(std::wstring_view Key) const override;
    std::int32_t NodeId(std::wstring_view Key) const override;
    std::wstring NodeAt(std::wstring_view Folder, std::int32_t Place) const override;
    void SelectNode(std::wstring_view Key) override;
    [[nodiscard]] bool MoveListItem(ParmListBase& List, std::int32_t Direction, std::wstring& RelativeKey,
                                    std::int32_t& NewIndex) override;
    [[nodiscard]] bool AddDefault(std::wstring_view Section, std::wstring_view Keyword,
                                  std::wstring_view Word) override;
    void AddToolButton(const ToolButtonInfo& Button) override;
    [[nodiscard]] bool SetTools(std::span<const std::wstring_view> Words) override;
    bool SyntaxOn() const override;
    /// `Call.Target` and `Call.CallBack` are objects of a host. A target that the window puts there lives
    /// until the next ShowTree.
    [[nodiscard]] bool ShowTree(TreeCall& Call) override;
    void Dispose() override;

  private:
    using AddMember = HRESULT (STDMETHODCALLTYPE ::DesignTree::*)(VARIANT, VARIANT, VARIANT, VARIANT, VARIANT,
                                                                  VARIANT, BSTR*, IDispatch**);
    void Add(AddMember Member, const wchar_t* Name, const NewNode& Node);

    ByName Nodes() const;
    ByName NodeOf(std::wstring_view Key) const;
    /// Raises where the nodes are not followed, since the tree has the members that tell of them but not
    /// this.
    window::TreeModel& Followed(const wchar_t* Lacks) const;

    Ref<::DesignTree> Early_;
    ByName Late_;
    std::unique_ptr<window::TreeModel> Followed_;
    std::unique_ptr<HostRegData> Returned_;
};

/// What a clipboard holder holds, which is not null.
kv::ClipItem ReadClipItem(IDispatch* Holder);

}  // namespace kv::com
