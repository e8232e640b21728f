#include "host/Demo.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>

#include "frame/StrUtil.h"
#include "frame/vdbInclude.h"
#include "host/CommandsSession.h"

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

std::wstring WeightLine(int Code, int Weight) {
    return StrUtil::Hex2(static_cast<std::uint8_t>(Code)) + L" = " +
           StrUtil::Hex2(static_cast<std::uint8_t>(Weight)) + L"\n";
}

// Every character weighs what it weighs by default, but for those that `Weigh` gives another weight.
template <class Rule>
std::wstring WeightTable(Rule&& Weigh) {
    std::wstring Text;
    for (int Code = 0; Code < 256; ++Code)
        Text += WeightLine(Code,
                           Weigh(Code, static_cast<int>(DefaultSortWeight(static_cast<std::uint8_t>(Code)))));
    return Text;
}

std::wstring PlainWeights() {
    return WeightTable([](int, int Weight) { return Weight; });
}

// Shelf marks: what parts their members counts as a blank.
std::wstring ShelfMarkWeights() {
    return WeightTable([](int Code, int Weight) {
        return Code == '.' || Code == '/' || Code == '-' || Code == ':' ? 0x20 : Weight;
    });
}

std::wstring DigitWeights() {
    return WeightTable([](int Code, int) { return Code >= '0' && Code <= '9' ? Code : 0; });
}

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
                const Address Node = Addressed(Core.Tree(), std::wstring(Each.Section), Each.At, Want::Text);
                std::wstring Buffer = WithLineEnds(Each.Text);
                std::wstring NewItemKey;
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
    const auto Parms = [](std::wstring_view Text) {
        return std::vector<DemoSection>{{L"PARMS", {1}, std::wstring(Text)}};
    };
    const auto Sort = [](std::wstring_view Text, std::wstring Table) {
        return std::vector<DemoSection>{{L"PARMS", {1}, std::wstring(Text)},
                                        {L"PARMS", {2}, std::move(Table)}};
    };
    return {
        {L"CATALOGUE", L"GENERALE", L"Catalogo generale della biblioteca", Parms(LR"(RETRIEVAL= "BIBLIO"
TABLE= "NOTIZIE"
PROFILE= "SCHEDA"
QUERY= "RICERCA"
BROWSE= "ELENCO"
PATH= "cataloghi/generale"
HELP= "AIUTO"
HELPWWW= "AIUTOWEB"
FLAGS= NONE
)")},
        {L"CATALOGUE", L"EMEROTECA", L"Giornali e periodici correnti", Parms(LR"(RETRIEVAL= "BIBLIO"
TABLE= "PERIODICI"
PROFILE= "TESTATA"
QUERY= "RICPERIODICI"
BROWSE= "ELENCO"
PATH= "cataloghi/emeroteca"
HELP= "AIUTO"
)")},
        {L"CATALOGUE", L"RAGAZZI", L"Sezione ragazzi, dagli stessi dati del catalogo generale",
         Parms(LR"(RETRIEVAL= "BIBLIO"
TABLE= "NOTIZIE"
PROFILE= "SCHEDARAGAZZI"
QUERY= "RICRAGAZZI"
BROWSE= "COPERTINE"
PATH= "cataloghi/ragazzi"
HELP= "AIUTORAGAZZI"
MIRROROF= "GENERALE"
)")},

        {L"FILTER", L"DISPONIBILI", L"Solo i documenti che sono a scaffale", Parms(LR"(TABLE= "STATO"
EXPRESSION= "DISPONIBILE"
AUTOMATIC= FALSE
MERGEWITH= AND
HELP= "AIUTOFILTRI"
)")},
        {L"FILTER", L"PUBBLICI", L"Nasconde le notizie riservate agli operatori",
         Parms(LR"(TABLE= "VISIBILITA"
EXPRESSION= "PUBBLICA"
AUTOMATIC= TRUE
MERGEWITH= AND
)")},
        {L"FILTER", L"CITTÀ", L"Aggiunge ciò che riguarda la città", Parms(LR"(TABLE= "SOGGETTI"
EXPRESSION= "BORGOVERDE OR VALDORO"
AUTOMATIC= FALSE
MERGEWITH= OR
HELP= "AIUTOFILTRI"
)")},

        {L"IMPORT", L"ACQUISTI", L"Notizie dei nuovi acquisti, ogni notte", Parms(LR"(PROCEDURE= "NOTIZIE"
RETRIEVAL= "BIBLIO"
SOURCEPATH= "scambio/acquisti"
TARGETPATH= "FILE:archivi/biblio;lavoro/zip"
LOGFILE= "registri/acquisti.log"
PROCTYPE= UNKNOWTAGWARN|INCREMENTAL|NONULLMAINKEY
FLAGS= ZIPFILES
LOCKED= FALSE
)")},
        {L"IMPORT", L"SPOGLI", L"Spogli dei periodici dal polo provinciale", Parms(LR"(PROCEDURE= "SPOGLI"
RETRIEVAL= "BIBLIO"
SOURCEPATH= "scambio/spogli"
TARGETPATH= "FTP:borgoverde,cambiami@scambio.polo.example/spogli"
LOGFILE= "registri/spogli.log"
PROCTYPE= UNKNOWTAGSTOP
FLAGS= ZIPFILES|CABFILES
LOCKED= FALSE
)")},
        {L"IMPORT", L"SCHEDARIO", L"Recupero dello schedario cartaceo, concluso",
         Parms(LR"(PROCEDURE= "SCHEDE"
RETRIEVAL= "BIBLIO"
SOURCEPATH= "recupero/schede"
TARGETPATH= "FILE:archivi/biblio"
LOGFILE= "registri/schedario.log"
PROCTYPE= NODBR|COMPACTDB
LOCKED= TRUE
)")},

        {L"MEMBER", L"BANCO", L"Banco dei prestiti", Parms(L"PASSWORD= \"accoglienza\"\n")},
        {L"MEMBER", L"CATALOGAZIONE", L"Ufficio catalogazione", Parms(L"PASSWORD= \"schede\"\n")},
        {L"MEMBER", L"DIREZIONE", L"Direzione della biblioteca", Parms(L"PASSWORD= \"cambiami\"\n")},

        {L"REPOSITORY", L"FOTOGRAFIE", L"Fondo fotografico della città", Parms(LR"(PATH= "depositi/fotografie"
URL= "https://biblioteca.example/fotografie"
TABLE= "FOTOGRAFIE"
KEYFIELD= "INVENTARIO"
TEMPPATH= "lavoro/fotografie"
READONLY= FALSE
)")},
        {L"REPOSITORY", L"MANOSCRITTI", L"Manoscritti digitalizzati, in sola lettura",
         Parms(LR"(PATH= "depositi/manoscritti"
URL= "https://biblioteca.example/manoscritti"
TABLE= "MANOSCRITTI"
KEYFIELD= "SEGNATURA"
TEMPPATH= "lavoro/manoscritti"
READONLY= TRUE
)")},

        {L"SORT", L"ITALIANO", L"Ordinamento alfabetico: accenti e maiuscole non contano",
         Sort(LR"(NONUMERIC= FALSE
NOTABLE= FALSE
NOMASK= FALSE
NOSPACES= FALSE
FLAGS= NONE
)",
              PlainWeights())},
        {L"SORT", L"SEGNATURE", L"Collocazioni: punto, barra e trattino contano come spazio",
         Sort(LR"(NONUMERIC= FALSE
NOTABLE= FALSE
NOMASK= TRUE
NOSPACES= FALSE
FLAGS= NONE
)",
              ShelfMarkWeights())},
        {L"SORT", L"CIFRE", L"Numeri di inventario: contano solo le cifre",
         Sort(LR"(NONUMERIC= FALSE
NOTABLE= FALSE
NOMASK= FALSE
NOSPACES= TRUE
FLAGS= NONE
)",
              DigitWeights())},
    };
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
