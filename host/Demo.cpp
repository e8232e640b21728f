#include "host/Demo.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>

#include "frame/vdbInclude.h"
#include "host/CommandsSession.h"
#include "host/DemoParts.h"

namespace kv::host {
namespace {

namespace fs = std::filesystem;

/// Takes a folder away again unless it is kept.
class Unfinished {
  public:
    explicit Unfinished(fs::path Folder) : Folder_(std::move(Folder)) {}
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    ~Unfinished() {
        std::error_code Ignored;
        for (const fs::path& File : Files_) fs::remove(File, Ignored);
        if (!Folder_.empty()) fs::remove_all(Folder_, Ignored);
    }
    void AddFile(fs::path File) { Files_.push_back(std::move(File)); }
    void Keep() noexcept {
        Files_.clear();
        Folder_.clear();
    }

  private:
    fs::path Folder_;
    std::vector<fs::path> Files_;
};

constexpr std::string_view kIniText =
    "; Installazione dimostrativa: una piccola biblioteca civica.\r\n"
    "[INSTALLAZIONE]\r\n"
    "NOME=Biblioteca civica di Borgoverde\r\n"
    "LINGUA=ITA\r\n";

void WriteIni(const fs::path& File) {
    std::ofstream Out(File, std::ios::binary);
    Out << kIniText;
    Out.close();
    if (!Out) throw FileTrouble("the file " + PathText(File) + " could not be written");
}

void MakeObjects(Session& Work) {
    for (const DemoObject& Object : DemoObjects()) {
        const std::wstring Clsid(Object.Clsid);
        const std::wstring Name(Object.Name);
        Work.Registry().Create(Clsid, Name, std::wstring(Object.Desc));
        Work.InWindow(Clsid, Name, [&](window::WindowCore& Core) {
            for (const DemoSection& Each : Object.Sections) {
                const Address Node = Addressed(Core.Tree(), std::wstring(Each.Section), Each.At,
                                               Each.Text ? Want::Text : Want::Folder);
                std::wstring NewItemKey;
                if (!Each.Text) {
                    Work.Must(Core.EditData({.CurrItem = Node.Node->Key}, NewItemKey));
                    continue;
                }
                std::wstring Buffer;
                Work.Must(Core.DispData({.CurrItem = Node.Node->Key}, Buffer));  // as an operator sees it
                Buffer = WithLineEnds(*Each.Text);
                Work.Must(Core.SaveData({.CurrItem = Node.Node->Key}, Buffer, NewItemKey));
            }
            Work.MustSave(Core.Save());
        });
    }
}

fs::path MakeStage(const fs::path& Beside) {
    std::string Pattern = (Beside / ".kvdesign-demo-XXXXXX").string();
    if (!::mkdtemp(Pattern.data()))
        throw fs::filesystem_error("the demonstration can't be made here", Beside,
                                   std::error_code(errno, std::generic_category()));
    return Pattern;
}

// The temporary folder was the user's alone; the installation is as open as any folder the user makes.
void OpenUp(const fs::path& Stage) {
    const ::mode_t Mask = ::umask(0);
    ::umask(Mask);
    fs::permissions(Stage, static_cast<fs::perms>(0777U & ~Mask));
}

// The folders of `Folder` that are not there yet, outermost; empty when it is.
fs::path FirstMissing(const fs::path& Folder) {
    fs::path Missing;
    for (fs::path F = Folder; !F.empty() && !fs::exists(F); F = F.parent_path()) Missing = F;
    return Missing;
}

}  // namespace

std::vector<DemoObject> DemoObjects() {
    std::vector<DemoObject> All;
    for (const auto Make : {DemoServices, DemoTables, DemoSorts, DemoStopWords, DemoImports, DemoForms,
                            DemoMessages, DemoClients, DemoNavigation, DemoLoans, DemoMail})
        for (DemoObject& Object : Make()) All.push_back(std::move(Object));
    return All;
}

void MakeDemo(const fs::path& Asked) {
    fs::path Folder = fs::absolute(Asked).lexically_normal();
    if (!Folder.has_filename()) Folder = Folder.parent_path();  // a separator at the end
    const bool There = fs::exists(Folder);
    if (There && !fs::is_directory(Folder))
        throw fs::filesystem_error("the demonstration needs a folder", Folder,
                                   std::make_error_code(std::errc::not_a_directory));
    const std::string SortTable = PlainText(kSortTableFile);
    for (const std::string_view Name : {kDemoStore, kIniFileName, std::string_view(SortTable)})
        if (There && fs::exists(Folder / Name))
            throw DemoRefused(PathText(Folder) + " holds an installation already (" + std::string(Name) +
                              ")");

    const fs::path Above = There ? Folder : Folder.parent_path();
    Unfinished Parents(FirstMissing(Above));
    fs::create_directories(Above);
    const fs::path Stage = MakeStage(Above);
    Unfinished Staged(Stage);
    WriteIni(Stage / kIniFileName);
    {
        Session Work({.Store = Stage / kDemoStore, .ProgramDir = Stage, .Temp = Stage},
                     {.In = std::cin, .Out = std::cout, .Err = std::cerr});
        Work.Must(DefaultSortCreate());
        MakeObjects(Work);
    }
    if (!There) {
        OpenUp(Stage);
        fs::rename(Stage, Folder);
        Staged.Keep();
    } else {
        // Into a folder that is there already: the store comes last.
        std::vector<fs::path> Names;
        for (const fs::directory_entry& File : fs::directory_iterator(Stage))
            Names.push_back(File.path().filename());
        std::sort(Names.begin(), Names.end(), [](const fs::path& A, const fs::path& B) {
            return std::pair(A == kDemoStore, A) < std::pair(B == kDemoStore, B);
        });
        Unfinished Moved{fs::path()};
        for (const fs::path& Name : Names) {
            fs::rename(Stage / Name, Folder / Name);
            Moved.AddFile(Folder / Name);
        }
        Moved.Keep();
    }
    Parents.Keep();
}

}  // namespace kv::host
