#include "host/CommandsEditor.h"

#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>

#include "host/CommandsSession.h"

namespace kv::host {
namespace {

std::string Cause() { return std::generic_category().message(errno); }

std::string EditorCommand() {
    for (const char* const Name : {"VISUAL", "EDITOR"})
        if (const char* const Value = std::getenv(Name); Value && *Value) return Value;
    return "vi";
}

/// The interrupt key belongs to the editor while it runs.
class Uninterrupted {
  public:
    Uninterrupted() {
        struct sigaction Ignore {};
        Ignore.sa_handler = SIG_IGN;
        ::sigaction(SIGINT, &Ignore, &Interrupt_);
        ::sigaction(SIGQUIT, &Ignore, &Quit_);
    }
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;
    ~Uninterrupted() { Restore(); }
    void Restore() const {
        ::sigaction(SIGINT, &Interrupt_, nullptr);
        ::sigaction(SIGQUIT, &Quit_, nullptr);
    }

  private:
    struct sigaction Interrupt_ {};
    struct sigaction Quit_ {};
};

// The editor is a command line of the shell, as everywhere: it may hold options.
void RunEditor(const std::string& File) {
    const std::string Command = EditorCommand();
    const std::string Line = Command + " \"$1\"";
    const Uninterrupted While;
    const ::pid_t Child = ::fork();
    if (Child < 0) throw FileTrouble("the editor could not be started: " + Cause());
    if (Child == 0) {
        While.Restore();
        ::execl("/bin/sh", "sh", "-c", Line.c_str(), "kvdesign", File.c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    int Status = 0;
    while (::waitpid(Child, &Status, 0) < 0)
        if (errno != EINTR) throw FileTrouble("the editor was lost: " + Cause());
    if (WIFEXITED(Status) && WEXITSTATUS(Status) == 0) return;
    const std::string How = WIFEXITED(Status) ? "exit code " + std::to_string(WEXITSTATUS(Status))
                                              : "signal " + std::to_string(WTERMSIG(Status));
    throw FileTrouble("the editor `" + Command + "` failed (" + How +
                      "), nothing was saved; VISUAL or EDITOR names the editor to use");
}

}  // namespace

EditedText::EditedText(const std::filesystem::path& Temp, const std::string& Title) {
    std::string Pattern = (Temp / "kvdesign-XXXXXX").string();
    if (!::mkdtemp(Pattern.data()))
        throw FileTrouble("no folder could be made in " + PathText(Temp) + ": " + Cause());
    Folder_ = Pattern;
    File_ = Folder_ / (Title + ".txt");
}

EditedText::~EditedText() {
    std::error_code Ignored;
    if (!Kept_) std::filesystem::remove_all(Folder_, Ignored);
}

std::string EditedText::Edit(std::string_view Text) {
    {
        std::ofstream Out(File_, std::ios::binary | std::ios::trunc);
        Out << Text;
        Out.close();
        if (!Out) throw FileTrouble("the file " + PathText(File_) + " could not be written");
    }
    RunEditor(File_.string());
    std::ifstream In(File_, std::ios::binary);
    std::string Edited{std::istreambuf_iterator<char>(In), std::istreambuf_iterator<char>()};
    if (!In) throw FileTrouble("the file " + PathText(File_) + " could not be read");
    return Edited;
}

const std::filesystem::path& EditedText::Keep() noexcept {
    Kept_ = true;
    return File_;
}

}  // namespace kv::host
