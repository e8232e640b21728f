// The operator's own editor.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kv::host {

/// A text while it is being edited: a file in a folder of its own, which only the user can enter and which
/// takes in what the editor leaves beside the file. The folder goes when this does, unless the text is kept.
/// Everything throws FileTrouble when a file or the editor fails.
class EditedText {
  public:
    /// The folder is made in `Temp`, the file is `<Title>.txt`.
    EditedText(const std::filesystem::path& Temp, const std::string& Title);
    EditedText(const EditedText&) = delete;
    EditedText& operator=(const EditedText&) = delete;
    ~EditedText();

    /// Runs the editor on `Text` and answers what it has made of it.
    std::string Edit(std::string_view Text);
    /// Leaves the file, with the text that was edited last.
    const std::filesystem::path& Keep() noexcept;

  private:
    std::filesystem::path Folder_;
    std::filesystem::path File_;
    bool Kept_ = false;
};

}  // namespace kv::host
