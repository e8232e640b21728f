#include "host/Commands.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "host/CommandsCheck.h"
#include "host/CommandsSections.h"
#include "host/CommandsSession.h"
#include "host/CommandsStore.h"
#include "host/CommandsTools.h"
#include "host/Demo.h"
#include "host/DesktopStart.h"
#include "host/Places.h"
#include "host/RpcHost.h"

namespace kv::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kOverview =
    R"(kvdesign designs the configuration objects of a library installation: tables and their indexes,
display profiles, client applications, imports, catalogues, filters and more. Where there is a
display and the desktop window is installed, kvdesign alone opens it; all can be done by commands.

To look around, make the demonstration installation and list what it holds:

    kvdesign demo try
    kvdesign --store try/kvdesign.db list
    kvdesign --store try/kvdesign.db tree SORT ITALIANO
    kvdesign --store try/kvdesign.db show CATALOGUE GENERALE PARMS

kvdesign --help names all commands, kvdesign COMMAND --help tells one with an example.
)";

constexpr const char* kAbout =
    "Designs the configuration objects of a library installation.\n"
    "\n"
    "An object has a CLASS and a NAME. It is a tree of sections; the text of a section is what you\n"
    "show, edit and set, one KEYWORD= value a line. See the tree for the sections of an object.";

constexpr const char* kFooter =
    R"(SECTION is the word that a key in the tree begins with. POS says which one of several, counted
from 1 as they stand in the tree, not by the number in the key:
  PARMS            the first section PARMS
  PARMS 2          the second leaf below the folder PARMS
  FIELDCAPTION 3 2 the second caption of the third field
A list that the tree does not show, such as the text fonts of a profile, can't be named.

The store is --store, else $KVDESIGN_STORE, else $XDG_DATA_HOME/kvdesign/kvdesign.db. It is made
when it does not exist.

Exit codes: 0 done; 1 refused, the message is on stderr; 2 wrong usage; 3 the store or a file failed.

Examples:
  kvdesign demo try
  export KVDESIGN_STORE=try/kvdesign.db
  kvdesign list SORT
  kvdesign show SORT ITALIANO PARMS 2
  kvdesign show FILTER DISPONIBILI PARMS | sed 's/AUTOMATIC= FALSE/AUTOMATIC= TRUE/' |
      kvdesign set FILTER DISPONIBILI PARMS
  kvdesign check)";

/// The values of the command line. A command reads those that it has named.
struct Line : Places {
    bool Lax = false;
    bool Json = false;

    std::string Clsid;
    std::string Name;
    std::string Section;
    std::vector<std::int32_t> At;
    std::string Desc;
    bool Up = false;
    bool Down = false;
    bool All = false;
    bool Force = false;
    std::string File;
    std::int32_t Index = 1;
    std::string Folder;
    std::string Output;
};

Options ChosenOptions(const Line& Given) {
    Options Chosen;
    Chosen.Store = Given.Store.empty() ? DefaultStore() : fs::path(Given.Store);
    Chosen.ProgramDir = Given.ProgramDir.empty() ? ProgramFolderOf(Chosen.Store) : fs::path(Given.ProgramDir);
    Chosen.Temp = Given.Temp.empty() ? TemporaryFolder() : fs::path(Given.Temp);
    Chosen.SyntaxOn = !Given.Lax;
    Chosen.Json = Given.Json;
    return Chosen;
}

std::optional<std::wstring> Optional(const std::string& Argument) {
    if (Argument.empty()) return std::nullopt;
    return WideArgument(Argument);
}

Target Named(const Line& Given) {
    return {WideArgument(Given.Clsid), WideArgument(Given.Name), WideArgument(Given.Section), Given.At};
}

/// Help as the library writes it, with a blank line before the usage.
class HelpText final : public CLI::Formatter {
  public:
    std::string make_usage(const CLI::App* App, std::string Name) const override {
        return "\n" + CLI::Formatter::make_usage(App, std::move(Name));
    }
};

/// The commands: how each is written, and what it runs.
class CommandLine {
  public:
    explicit CommandLine(const Streams& Standard);

    int Run(int Count, const char* const* Arguments);

  private:
    int WithoutCommand(bool Bare);
    int Wrong(std::string_view Sentence);

    using Body = std::function<int(Session&)>;

    /// How a command is written down.
    struct Page {
        const char* Name;
        const char* About;    // one line
        const char* More;     // what else there is to know; may be empty
        const char* Example;  // without the prompt
    };
    CLI::App* Command(const char* Group, const Page& Words);
    void Runs(CLI::App* Made, Body Run);
    void AddClass(CLI::App* To, bool Needed = true);
    void AddName(CLI::App* To, bool Needed = true);
    void AddSection(CLI::App* To, bool SectionNeeded = true, bool PosNeeded = false);
    void AddWholeObjects();
    void AddSections();
    void AddTools();
    void AddOthers();

    Streams Standard_;
    Line Given_;
    CLI::App App_;
    std::function<int()> Chosen_;
};

constexpr const char* kObjects = "Objects";
constexpr const char* kSections = "Sections of an object";
constexpr const char* kTools = "Tags of an object";
constexpr const char* kOthers = "Others";

CommandLine::CommandLine(const Streams& Standard) : Standard_(Standard), App_(kAbout, "kvdesign") {
    App_.require_subcommand(0, 1);
    App_.fallthrough();
    App_.footer(kFooter);
    const auto Help = std::make_shared<HelpText>();
    Help->column_width(22);
    App_.formatter(Help);
    App_.set_help_flag("-h,--help", "Print this help and exit");
    App_.set_version_flag("--version", "kvdesign " KVDESIGN_VERSION, "Print the version and exit");
    AddPlaces(App_, Given_);
    App_.add_flag("--lax", Given_.Lax, "Check section texts laxly: unknown value words are ignored");
    App_.add_flag("--json", Given_.Json, "Print JSON (list, uses, tree, show, tags, check, clipboard)");
    AddWholeObjects();
    AddSections();
    AddTools();
    AddOthers();
}

CLI::App* CommandLine::Command(const char* Group, const Page& Words) {
    CLI::App* const Made = App_.add_subcommand(Words.Name, Words.About);
    Made->group(Group);
    std::string Footer;
    if (*Words.More) Footer = std::string(Words.More) + "\n\n";
    Made->footer(Footer + "Example:\n  " + Words.Example +
                 "\n\nkvdesign --help tells the options of all commands.");
    return Made;
}

void CommandLine::Runs(CLI::App* Made, Body Run) {
    Made->final_callback([this, Run = std::move(Run)] {
        Chosen_ = [this, &Run] {
            Session Work(ChosenOptions(Given_), Standard_);
            return Run(Work);
        };
    });
}

void CommandLine::AddClass(CLI::App* To, bool Needed) {
    To->add_option("CLASS", Given_.Clsid, "Class word, such as SORT")->required(Needed)->type_name("");
}

void CommandLine::AddName(CLI::App* To, bool Needed) {
    To->add_option("NAME", Given_.Name, "Name of the object")->required(Needed)->type_name("");
}

void CommandLine::AddSection(CLI::App* To, bool SectionNeeded, bool PosNeeded) {
    AddClass(To);
    AddName(To);
    To->add_option("SECTION", Given_.Section, "Section word, such as PARMS")
        ->required(SectionNeeded)
        ->type_name("");
    // A validator without a name, which would stand in the help.
    const CLI::Validator Counts(
        [](std::string& Text) {
            return CLI::PositiveNumber(Text).empty() ? std::string() : "counts from 1, not " + Text;
        },
        "");
    To->add_option("POS", Given_.At, "Which one of several, from 1; one number a level")
        ->required(PosNeeded)
        ->check(Counts)
        ->type_name("");
}

void CommandLine::AddWholeObjects() {
    CLI::App* const List = Command(
        kObjects,
        {"list", "List the objects of a class, or all: class, name, description", "", "kvdesign list SORT"});
    AddClass(List, false);
    Runs(List, [this](Session& Work) { return ListObjects(Work, Optional(Given_.Clsid)); });

    CLI::App* const New = Command(
        kObjects, {"new", "Make an empty object", "", "kvdesign new SORT NOMI --desc \"Nomi di persona\""});
    AddClass(New);
    AddName(New);
    New->add_option("--desc", Given_.Desc, "Description of the object")->type_name("TEXT");
    Runs(New, [this](Session& Work) {
        return NewObject(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name),
                         WideArgument(Given_.Desc));
    });

    CLI::App* const Delete =
        Command(kObjects, {"delete", "Delete an object",
                           "An object that others name is refused, and they are told; --force deletes "
                           "it all the same.",
                           "kvdesign delete SORT NOMI"});
    AddClass(Delete);
    AddName(Delete);
    Delete->add_flag("--force", Given_.Force, "Also an object that others name");
    Runs(Delete, [this](Session& Work) {
        return DeleteObject(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name), Given_.Force);
    });

    CLI::App* const Uses =
        Command(kObjects, {"uses", "List who names an object: where, and by which keyword",
                           "A line is CLASS/NAME SECTION[POS]: KEYWORD= name. Nothing is printed when nobody "
                           "names it.",
                           "kvdesign uses TABLE NOTIZIE"});
    AddClass(Uses);
    AddName(Uses);
    Runs(Uses, [this](Session& Work) {
        return ShowUses(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name));
    });

    CLI::App* const Export = Command(
        kObjects, {"export", "Write an object to the output as exported text",
                   "The lines end with CR LF, as the server writes them. Not every class exports all of "
                   "its\nsections: a sort definition leaves its table out.",
                   "kvdesign export CATALOGUE GENERALE > generale.txt"});
    AddClass(Export);
    AddName(Export);
    Runs(Export, [this](Session& Work) {
        return ExportObject(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name));
    });

    CLI::App* const Import = Command(
        kObjects, {"import", "Read exported text from the input into an object",
                   "The object must exist. A class that takes no exported text leaves the object as it is.",
                   "kvdesign import CATALOGUE GENERALE < generale.txt"});
    AddClass(Import);
    AddName(Import);
    Runs(Import, [this](Session& Work) {
        return ImportObject(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name));
    });

    CLI::App* const Check = Command(
        kObjects, {"check", "Check objects, and print one line a fault",
                   "Every section is read back in strict mode, on a copy: nothing is saved. The objects that "
                   "it\nnames must be there, each of its class. A fault is a line\nCLASS/NAME SECTION[POS]: "
                   "message, and makes the exit code 1.",
                   "kvdesign check SORT"});
    AddClass(Check, false);
    AddName(Check, false);
    Runs(Check,
         [this](Session& Work) { return CheckObjects(Work, Optional(Given_.Clsid), Optional(Given_.Name)); });
}

void CommandLine::AddSections() {
    CLI::App* const Tree = Command(kSections, {"tree", "Show the tree: captions, and the key of each node",
                                               "The section word of a node is what its key begins with.",
                                               "kvdesign tree SORT ITALIANO"});
    AddClass(Tree);
    AddName(Tree);
    Runs(Tree, [this](Session& Work) {
        return ShowTree(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name));
    });

    CLI::App* const Show = Command(kSections, {"show", "Show the text of a section, or of all",
                                               "Without SECTION every section stands below a heading.",
                                               "kvdesign show SORT ITALIANO PARMS 2"});
    AddSection(Show, false);
    Runs(Show, [this](Session& Work) {
        if (!Given_.Section.empty()) return ShowSection(Work, Named(Given_));
        return ShowSections(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name));
    });

    CLI::App* const Set = Command(
        kSections, {"set", "Read the text of a section from the input and save it",
                    "Lines end with LF or CR LF. A keyword that the text leaves out returns to its default. "
                    "A\ntext with any fault changes nothing.",
                    "kvdesign set MEMBER BANCO PARMS < banco.txt"});
    AddSection(Set);
    Runs(Set, [this](Session& Work) { return SetSection(Work, Named(Given_)); });

    CLI::App* const Edit = Command(
        kSections, {"edit", "Edit the text of a section with $VISUAL or $EDITOR",
                    "A text that is refused comes back with the message as a comment on top, until it is "
                    "accepted\nor left as it is. A text that was not changed is not saved.",
                    "EDITOR=nano kvdesign edit FILTER PUBBLICI PARMS"});
    AddSection(Edit);
    Runs(Edit, [this](Session& Work) { return EditSection(Work, Named(Given_)); });

    CLI::App* const Add = Command(kSections, {"add", "Add an element to a list section, and print its key",
                                              "POS is that of the list: none for a list below the root.",
                                              "kvdesign add TABLE NOTIZIE FIELDS"});
    AddSection(Add);
    Runs(Add, [this](Session& Work) { return AddElement(Work, Named(Given_)); });

    CLI::App* const Move = Command(kSections, {"move", "Move an element one place, and print its new key", "",
                                               "kvdesign move TABLE NOTIZIE FIELDS 3 --up"});
    AddSection(Move, true, true);
    Move->add_flag("--up", Given_.Up, "Towards the front");
    Move->add_flag("--down", Given_.Down, "Towards the end");
    Runs(Move, [this](Session& Work) {
        if (Given_.Up == Given_.Down) throw WrongUsage("one of --up and --down is required");
        return MoveElement(Work, Named(Given_), Given_.Up);
    });

    CLI::App* const Remove =
        Command(kSections, {"remove", "Remove an element of a list section, or all",
                            "With --all POS is that of the list: none for a list below the root.",
                            "kvdesign remove TABLE NOTIZIE FIELDS 3"});
    AddSection(Remove);
    Remove->add_flag("--all", Given_.All, "All elements of the list");
    Runs(Remove, [this](Session& Work) {
        if (!Given_.All && Given_.At.empty()) throw WrongUsage("POS is required, or --all");
        return RemoveElement(Work, Named(Given_), Given_.All);
    });
}

void CommandLine::AddTools() {
    CLI::App* const Tags = Command(
        kTools, {"tags", "List the tags that no field of an object bears",
                 "A line is one free tag or a run of them, up to 32767, the greatest tag. A class without "
                 "tags is\nrefused.",
                 "kvdesign tags TABLE NOTIZIE"});
    AddClass(Tags);
    AddName(Tags);
    Runs(Tags, [this](Session& Work) {
        return ShowFreeTags(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name));
    });

    CLI::App* const Constants = Command(
        kTools,
        {"constants", "Write the tags of an object to a source module, as constants",
         "One line a field, Public Const FTG_<name>=<tag>, in Windows-1252; lines end with CR LF. Of an\n"
         "application, VCLIENT, it is the system messages: texts, names and numbers. A file that is there "
         "is\nreplaced. A class without the tool is refused, and so is a file that can't be made.",
         "kvdesign constants TABLE NOTIZIE --output notizie.bas"});
    AddClass(Constants);
    AddName(Constants);
    Constants->add_option("--output", Given_.Output, "The file to write")->required()->type_name("FILE");
    Runs(Constants, [this](Session& Work) {
        return ExportConstants(Work, WideArgument(Given_.Clsid), WideArgument(Given_.Name), Given_.Output);
    });
}

void CommandLine::AddOthers() {
    CLI::App* const Clipboard =
        Command(kOthers, {"clipboard", "Show an object of a clipboard file",
                          "An entry beyond the last is refused; entry 0 shows nothing.",
                          "kvdesign clipboard --index 2"});
    Clipboard->add_option("--file", Given_.File, "The file (default: KVDSCLP.TMP in the temporary folder)")
        ->type_name("FILE");
    const CLI::Validator Entry(
        [](std::string& Text) {
            return CLI::NonNegativeNumber(Text).empty() ? std::string() : "counts from 1, not " + Text;
        },
        "");
    Clipboard->add_option("--index", Given_.Index, "Which entry (default: 1)")->check(Entry)->type_name("N");
    Runs(Clipboard, [this](Session& Work) {
        const std::optional<fs::path> File =
            Given_.File.empty() ? std::nullopt : std::optional<fs::path>(Given_.File);
        return ShowClipboard(Work, File, Given_.Index);
    });

    CLI::App* const Demo = Command(
        kOthers, {"demo", "Make a small library installation, to try things on",
                  "DIR gets the store kvdesign.db, VELMIRA.INI and KVDSRT.TAB. A folder that holds an "
                  "installation\nis refused.",
                  "kvdesign demo try"});
    Demo->add_option("DIR", Given_.Folder, "The folder, made if need be")->required()->type_name("");
    Demo->final_callback([this] {
        Chosen_ = [this] {
            try {
                MakeDemo(Given_.Folder);
            } catch (const DemoRefused& No) {
                TellTrouble(No.what(), Standard_.Err);
                return exit_code::kRefused;
            }
            return exit_code::kDone;
        };
    });

    CLI::App* const Rpc = Command(
        kOthers, {"rpc", "Serve JSON-RPC 2.0 on standard input and output",
                  "One JSON text a line, until the input ends.",
                  "echo '{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"registry/list\"}' | kvdesign rpc"});
    Rpc->final_callback([this] {
        Chosen_ = [this] {
            const Options Chosen = ChosenOptions(Given_);
            return RunRpc({.Store = Chosen.Store, .ProgramDir = Chosen.ProgramDir, .Temp = Chosen.Temp},
                          Standard_.In, Standard_.Out, Standard_.Err);
        };
    });
}

int CommandLine::Run(int Count, const char* const* Arguments) {
    try {
        App_.parse(Count, Arguments);
    } catch (const CLI::ParseError& Stop) {
        // Help and version are stops too; they end well.
        if (Stop.get_exit_code() == 0) return App_.exit(Stop, Standard_.Out, Standard_.Err);
        const std::vector<std::string> Rest = App_.remaining();
        return Wrong(App_.get_subcommands().empty() && !Rest.empty() ? "there is no command " + Rest.front()
                                                                     : Stop.what());
    }
    if (!Chosen_) return WithoutCommand(Count == 1);
    return Guarded(Standard_.Err, Chosen_);
}

// The desktop window, or what tells of the commands.
int CommandLine::WithoutCommand(bool Bare) {
    if (const std::optional<fs::path> Desktop = DesktopProgram()) {
        std::vector<std::string> Arguments;
        const auto Hand = [&](const char* Option, const std::string& Value) {
            if (!Value.empty()) Arguments.insert(Arguments.end(), {Option, Value});
        };
        Hand("--store", Given_.Store);
        Hand("--program-dir", Given_.ProgramDir);
        Hand("--temp", Given_.Temp);
        TellTrouble(BecomeProgram(*Desktop, Arguments), Standard_.Err);
        return exit_code::kFailed;
    }
    if (!Bare) return Wrong("there is no command, and no desktop window to open");
    Standard_.Err << kOverview;
    return exit_code::kUsage;
}

int CommandLine::Wrong(std::string_view Sentence) {
    TellTrouble(Sentence, Standard_.Err);
    Standard_.Err << "kvdesign --help tells the commands\n";
    return exit_code::kUsage;
}

}  // namespace

int RunProgram(int Count, const char* const* Arguments, std::istream& In, std::ostream& Out,
               std::ostream& Err) {
    const int Result = CommandLine({In, Out, Err}).Run(Count, Arguments);
    Out.flush();
    if (Out) return Result;
    TellTrouble("the output could not be written", Err);
    return exit_code::kFailed;
}

}  // namespace kv::host
