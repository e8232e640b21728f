// What the commands share: the options, the store, the one modal window of a command, and how a command ends.
#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "frame/ClipItem.h"
#include "frame/Failure.h"
#include "host/Addressing.h"
#include "host/ConsolePlatform.h"
#include "host/KvRegSvr.h"
#include "window/WindowCore.h"

namespace kv::host {

/// How the program ends.
namespace exit_code {
inline constexpr int kDone = 0;
inline constexpr int kRefused = 1;  // by the server, or something that it was asked for is not there
inline constexpr int kUsage = 2;    // the command line
inline constexpr int kFailed = 3;   // the store or a file
}  // namespace exit_code

/// The options of all commands.
struct Options {
    std::filesystem::path Store;
    std::filesystem::path ProgramDir;
    std::filesystem::path Temp;
    bool SyntaxOn = true;
    bool Json = false;
};

/// The streams of a command.
struct Streams {
    std::istream& In;
    std::ostream& Out;
    std::ostream& Err;
};

/// Ends a command: the server has refused. The errors are those that it showed; there may be none.
class Refused final : public std::exception {
  public:
    explicit Refused(std::vector<KvError> Errors) : Errors_(std::move(Errors)) {}
    const std::vector<KvError>& Errors() const noexcept { return Errors_; }
    const char* what() const noexcept override { return "kv::host::Refused"; }

  private:
    std::vector<KvError> Errors_;
};

/// Ends a command: a file has failed. The text is a sentence in UTF-8.
class FileTrouble final : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Ends a command: the command line asks for something that no command line can.
class WrongUsage final : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// One run of the program on one store. While it lives its platform is the door of the core.
class Session {
  public:
    Session(const Options& Chosen, const Streams& Standard);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    const Options& Chosen() const noexcept { return Chosen_; }
    std::istream& In() const noexcept { return Standard_.In; }
    std::ostream& Out() const noexcept { return Standard_.Out; }
    std::ostream& Err() const noexcept { return Standard_.Err; }
    ConsolePlatform& Platform() noexcept { return Platform_; }

    /// The store, opened (and made) at the first call.
    KvRegSvr& Registry();
    /// Asks the store for an object of a class. Where there is none and the class is unknown too, it is the
    /// class that is refused.
    void FromRegistry(const std::wstring& Clsid, const std::function<void(KvRegSvr&)>& Request);
    /// The stored object.
    std::shared_ptr<RegistryObject> Open(const std::wstring& Clsid, const std::wstring& Name);

    /// Opens the tree window on the object and runs `While` in it. Throws Refused when it can't be opened,
    /// and what While throws.
    void InWindow(const std::shared_ptr<RegData>& Object,
                  const std::function<void(window::WindowCore&)>& While);
    /// The same on a stored object.
    void InWindow(const std::wstring& Clsid, const std::wstring& Name,
                  const std::function<void(window::WindowCore&)>& While);

    /// Throws Refused with what has been shown when an operation answers True.
    void Must(bool Failed);
    /// The same for an operation that writes to the store: throws StoreError when it is the store that
    /// failed.
    void MustSave(bool Failed);
    /// The whole input as section text. Throws FileTrouble.
    std::wstring ReadSection();

  private:
    Options Chosen_;
    Streams Standard_;
    ConsolePlatform Platform_;
    kv::Platform* Before_;
    ClipItem Clipboard_;
    std::optional<KvRegSvr> Registry_;
};

/// Refuses with a numbered message of the system.
[[noreturn]] void RefuseWith(std::int32_t Message, std::wstring_view Argument);
/// Refuses a class word that the server does not know.
void MustBeClass(const std::wstring& Clsid);
/// The node that the command line names. Refuses with the words of the message 20021.
Address Addressed(const window::TreeModel& Tree, const std::wstring& Section, const Place& At, Want Wanted);

/// "riga N: message", without the line where none is known; a message of several lines stays so.
std::wstring ErrorText(const KvError& Error);
/// Tells how a command ended, and gives the exit code for it: what was refused in the words of the server,
/// all else as one sentence behind the name of the program.
int TellRefused(const std::vector<KvError>& Errors, std::ostream& Err);
void TellTrouble(std::string_view Sentence, std::ostream& Err);
/// Runs a command and turns what it throws into what is told and the exit code.
int Guarded(std::ostream& Err, const std::function<int()>& Command);

// The edge between section text, whose lines end with CR LF, and the text of this machine.

/// Section text for the terminal or an editor: UTF-8, lines end with LF.
std::string PlainText(std::wstring_view Section);
/// The other way: LF and CR LF become CR LF.
std::wstring WithLineEnds(std::wstring_view Plain);
/// The same from bytes, a byte order mark at the front taken off. Nothing for what is no UTF-8.
std::optional<std::wstring> SectionFrom(std::string_view Plain);
/// On one line: what would break it is a blank.
std::wstring OneLine(std::wstring_view Text);
/// An argument or a path as wide text. Throws WrongUsage for what is no UTF-8.
std::wstring WideArgument(std::string_view Argument);
/// A path as people write it.
std::string PathText(const std::filesystem::path& Path);

}  // namespace kv::host
