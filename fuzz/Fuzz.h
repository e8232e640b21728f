// What the fuzz targets share: choices out of an input's first bytes, an operator who writes down what he is
// shown, objects open in a window without a screen, and what must hold for them whatever the input is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/CoreUtil.h"
#include "frame/Platform.h"
#include "server/vdSvr.h"
#include "window/TreeModel.h"
#include "window/WindowCore.h"

namespace kv::fuzz {

/// What must hold whatever the input: where it does not, the program ends and the fuzzer keeps the input.
void Must(bool Holds, std::string_view What, std::wstring_view More = {});
/// The same, told with two texts that should be equal.
void MustEqual(const std::wstring& Got, const std::wstring& Wanted, std::string_view What);

/// An input: bytes that choose, and behind them a text.
class Input {
  public:
    Input(const std::uint8_t* Data, std::size_t Size) : Rest_(reinterpret_cast<const char*>(Data), Size) {}
    explicit Input(std::string_view Bytes) : Rest_(Bytes) {}

    /// The next byte as a number below `Bound`: "A" is 0, "B" is 1. 0 when nothing is left.
    std::size_t Choose(std::size_t Bound);
    /// What lies before the mark, which goes too; all when there is none.
    std::string_view Until(char Mark);
    std::string_view Rest() const noexcept { return Rest_; }

  private:
    std::string_view Rest_;
};

/// The byte that Input::Choose reads as `Choice`.
char ChoiceByte(std::size_t Choice);

/// A folder of this process for the files that a target writes, gone with it.
const std::filesystem::path& Folder();
void WriteFile(const std::filesystem::path& File, std::string_view Bytes);
std::string ReadFile(const std::filesystem::path& File);

/// The door to the operator for as long as the process lives.
class Operator final : public SilentPlatform {
  public:
    static Operator& Instance();

    void ShowError(const KvError& Error) override { Shown.push_back(Error); }
    Answer MessageBox(std::wstring_view, std::int32_t Style) override;
    std::optional<std::wstring> SaveFile(std::wstring_view, std::wstring_view, std::int32_t,
                                         std::int32_t) override;
    std::wstring ProgramFolder() override { return Folder().wstring(); }
    std::wstring TempFolder() override { return Folder().wstring(); }

    /// Runs an operation: a failure has shown at most one error, a whole one; a success none, and nothing
    /// waits to be shown later.
    template <class Call>
    bool Try(Call&& Operation) {
        Shown.clear();
        const bool Failed = Operation();
        Settle(Failed);
        return Failed;
    }
    void Settle(bool Failed);

    std::vector<KvError> Shown;
    bool Agrees = false;  // answers Yes; else the default button

  private:
    Operator();
};

/// One object of a class, open.
class Desk final : private window::TreeFace {
  public:
    Desk(std::wstring_view ClassWord, RegObject Content);
    ~Desk() override;

    /// Builds the tree from the stored object. True when the object can't be loaded.
    bool Load();
    bool Opened() const noexcept { return Opened_; }

    std::vector<std::wstring> Keys(bool Leaves) const;
    bool Disp(const std::wstring& Key, std::wstring& Text);
    /// The texts of all leaves, empty for one that can't be rendered.
    std::vector<std::wstring> Texts();
    /// Saves a text. `Key` becomes that of the leaf that shows it now.
    bool Put(std::wstring& Key, std::wstring Text, bool Strict);
    /// Saves a text and checks what came of it: refused, nothing has changed; accepted, the section renders
    /// to a text that is accepted in its turn and comes back unchanged. True when it was refused.
    bool PutChecked(std::wstring Key, const std::wstring& Text, bool Strict);
    /// Saves the object and opens it again: it shows the same texts, and its stored form comes back from the
    /// registry's JSON. A refused save leaves the stored object alone.
    void SaveChecked();
    /// The object as exported text; nothing when the export has failed.
    std::optional<std::wstring> Exported(bool Strict);

    /// What may be seen of the record under edit.
    struct Sight {
        std::wstring Tree;
        std::optional<RegObject> Copy;    // as the clipboard gets it
        std::vector<std::wstring> Texts;  // where the class copies nothing
        bool operator==(const Sight&) const = default;
    };
    Sight See();

    std::shared_ptr<MemoryRegData> Object;

  private:
    [[nodiscard]] bool Run(TreeCall&) override { return false; }

    ClipItem Clipboard_;
    std::shared_ptr<window::TreeModel> Tree_ = std::make_shared<window::TreeModel>();

  public:
    window::TreeModel& Tree() { return *Tree_; }
    vdSvr Server;
    window::WindowCore Core;

  private:
    std::optional<Sight> Seen_;  // of the record as it is
    bool Separated_ = false;     // such a text was saved since the object was loaded
    bool Opened_ = false;
};

/// An object of the class with a few elements in each of its lists, made once.
const RegObject& Grown(std::size_t Class);
/// The section words of an open object's leaves, each once, in display order.
std::vector<std::wstring> Sections(const Desk& Of);
/// The leaves of one section.
std::vector<std::wstring> LeavesOf(const Desk& Of, std::wstring_view Section);

/// Opens a stored object of unknown origin, renders, saves back, edits, exports: nothing escapes, and what
/// must hold for every object holds for it.
void Exercise(std::wstring_view ClassWord, const RegObject& Content, bool Strict);

}  // namespace kv::fuzz
