// A tree that has no room for some nodes: those whose keys begin with a word.
#pragma once

#include <string>
#include <string_view>

#include "window/TreeModel.h"

namespace kv::test {

class RefusingTree final : public window::TreeModel {
  public:
    std::wstring Refused;  // none while it is empty

    void AddNode(const NewNode& Node) override {
        Check(Node);
        TreeModel::AddNode(Node);
    }
    void AddIconNode(const NewNode& Node) override {
        Check(Node);
        TreeModel::AddIconNode(Node);
    }

    /// How many nodes stand right below a folder.
    std::int32_t CountBelow(std::wstring_view Folder) const {
        std::int32_t Count = 0;
        ForEach([&](const window::TreeNode& Node) { Count += Node.Parent && Node.Parent->Key == Folder; });
        return Count;
    }

  private:
    void Check(const NewNode& Node) const {
        if (!Refused.empty() && Node.Key.starts_with(Refused)) RaiseFault(fault::kSubscript);
    }
};

}  // namespace kv::test
