#include <cstdint>

#include "host/DemoParts.h"

namespace kv::host {
namespace {

/// A field of the source; the tag and the name are those of the table that is fed.
struct SourceField {
    std::int32_t Tag;
    std::wstring_view Name;
    std::wstring_view Flags = L"NONE";
    std::wstring_view Action = L"NONE";
    std::wstring_view Script{};
};

struct FedIndex {
    std::wstring_view Table;
    std::wstring_view Key;
    std::wstring_view Flags = L"NONE";
};

struct Script {
    std::wstring_view Name;
    std::wstring_view Language;
    std::wstring_view FileName;
};

struct Procedure {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Parms;
    std::vector<SourceField> Fields;
    std::vector<FedIndex> Indexes;
    std::vector<Script> Scripts;
};

std::vector<Procedure> Procedures() {
    return {
        {L"NOTIZIE",
         L"Carica le notizie nel formato di scambio e ne fa gli indici",
         LR"(TABLE= "NOTIZIE"
SOURCEPATH= "scambio/notizie"
TARGETPATH= "archivi/biblio"
LOGFILE= "registri/notizie.log"
FLAGS= MOVESOURCES|SORTBYDATE|EXTSORT
SELECTED= TRUE
LOCKED= FALSE
INCLUDEDLIB= "BV01,BV02,BV03"
EXCLUDEDLIB= ""
INCLUDEDLIBISBD= "BV01"
EXCLUDEDLIBISBD= ""
LIBRARYORDER= "@ordine.txt"
PROCTYPE= UNKNOWTAGWARN|INCREMENTAL|NONULLMAINKEY|FLUSH
ACTION= EARLYSCRIPT|LATEPURGE
)",
         {{1, L"NUMERO", L"RECID|MISSINGFIELDERR"},
          {5, L"MODIFICA", L"RECSTATUS|NOINDEX"},
          {10101, L"NUMERO ISBN", L"NONE", L"SCRIPT", L"ISBN"},
          {10102, L"QUALIFICAZIONE ISBN", L"NOINDEX"},
          {11, L"ISSN", L"NONE", L"SCRIPT", L"ISBN"},
          {11003, L"ANNO", L"MISSINGFIELDWARN"},
          {11011, L"LINGUA TESTO", L"MISSINGFIELDWARN"},
          {102, L"PAESE"},
          {12001, L"TITOLO PROPRIO", L"MISSINGFIELDERR", L"SKIPREC"},
          {12003, L"TITOLO PARALLELO"},
          {12004, L"COMPLEMENTO"},
          {12005, L"RESPONSABILITÀ"},
          {205, L"EDIZIONE", L"NOINDEX"},
          {12101, L"LUOGO"},
          {12102, L"EDITORE"},
          {12103, L"DATA PUBBLICAZIONE", L"NOINDEX"},
          {12151, L"ESTENSIONE", L"NOINDEX"},
          {12251, L"TITOLO COLLEZIONE"},
          {12252, L"NUMERO COLLEZIONE"},
          {300, L"NOTA", L"NOINDEX"},
          {461, L"OPERA", L"NONE", L"KEEPREC"},
          {500, L"TITOLO UNIFORME"},
          {606, L"SOGGETTO"},
          {676, L"CLASSE"},
          {17001, L"NOME AUTORE"},
          {17002, L"FUNZIONE AUTORE", L"NOINDEX"},
          {17021, L"NOME ALTRO AUTORE"},
          {801, L"FONTE", L"READONLY|NOINDEX"},
          {19501, L"BIBLIOTECA", L"MISSINGFIELDERR", L"SKIPREC"},
          {19502, L"COLLOCAZIONE"},
          {19503, L"INVENTARIO", L"MISSINGFIELDWARN"},
          {990, L"ISBD", L"NOINDEX", L"DELETE"}},
         {{L"NUM", L"FIELDS(1)", L"PRIMARY|UNIQUE"},
          {L"TIT", L"FIELDS(12001,11003)", L"COMPACT"},
          {L"AUT", L"FIELDS(17001,12001)", L"INDIRECT"},
          {L"SOG", L"DELIMITED(606,' - ')", L"INDIRECT|TIDLIST"},
          {L"CLA", L"FIELDS(676)", L"COMPACT"},
          {L"EDI", L"FIELDS(12102,12101)"},
          {L"ISB", L"FIELDS(10101,11)", L"SMALLFIELD"},
          {L"DAT", L"RANGE(11003,12001)", L"COMPACT"},
          {L"COL", L"FIELDS(12251,12252)"},
          {L"SEG", L"FIELDS(19502)"},
          {L"INV", L"FIELDS(19501,19503)", L"UNIQUE"}},
         {{L"APERTURA", L"VBSCRIPT", L"scripts/apertura.vbs"}, {L"ISBN", L"JSCRIPT", L"scripts/isbn.js"}}},

        {L"SPOGLI",
         L"Carica gli spogli dei periodici come notizie di contributi",
         LR"(TABLE= "NOTIZIE"
SOURCEPATH= "scambio/spogli"
TARGETPATH= "archivi/biblio"
LOGFILE= "registri/spogli.log"
FLAGS= OEMSOURCE|DELETESOURCES
SELECTED= TRUE
PROCTYPE= UNKNOWTAGSTOP|BATCH
ACTION= NONE
)",
         {{1, L"NUMERO", L"RECID|MISSINGFIELDERR"},
          {12001, L"TITOLO PROPRIO", L"MISSINGFIELDERR", L"SKIPREC"},
          {463, L"SPOGLIO", L"MISSINGFIELDWARN"},
          {17001, L"NOME AUTORE"}},
         {{L"NUM", L"FIELDS(1)", L"PRIMARY|UNIQUE"}, {L"TIT", L"WORDS(12001)", L"INDIRECT"}},
         {}},

        {L"SCHEDE",
         L"Recupero delle schede di cartoncino, una sola volta",
         LR"(TABLE= "NOTIZIE"
SOURCEPATH= "recupero/schede"
TARGETPATH= "archivi/biblio"
LOGFILE= "registri/schede.log"
FLAGS= READONLY|SORTBYNAME
LOCKED= TRUE
PROCTYPE= NODBR|COMPACTDB
MIRROROF= "NOTIZIE"
)",
         {{1, L"NUMERO", L"RECID"}, {12001, L"TITOLO PROPRIO"}, {19502, L"COLLOCAZIONE"}},
         {{L"NUM", L"FIELDS(1)", L"PRIMARY|UNIQUE"}},
         {}},
    };
}

/// Elements that the import takes from a table, as opposed to those of the source alone.
constexpr std::int32_t kFromTable = 32;

}  // namespace

std::vector<DemoObject> DemoImports() {
    std::vector<DemoObject> All;
    for (const Procedure& Row : Procedures()) {
        DemoDraft Import(L"IMPORTPROC", Row.Name, Row.Desc);
        Import.Section(L"PARMS", {1}, [&](LineWriter& Out) { Out.Buffer = Row.Parms; });
        std::int32_t At = 0;
        for (const SourceField& Each : Row.Fields) {
            Import.Element(L"FIELDS");
            Import.Section(L"FIELDPARMS", {++At}, [&](LineWriter& Out) {
                Out.Quoted(L"NAME=", Each.Name);
                Out.Number(L"TAG=", Each.Tag);
                Out.Number(L"POSITION=", At);
                Out.Number(L"KIND=", kFromTable);
                Out.Plain(L"FLAGS=", Each.Flags);
                Out.Plain(L"ACTION=", Each.Action);
                Out.Quoted(L"SCRIPT=", Each.Script);
            });
        }
        At = 0;
        for (const FedIndex& Each : Row.Indexes) {
            Import.Element(L"INDEXES");
            Import.Section(L"INDEXPARMS", {++At}, [&](LineWriter& Out) {
                Out.Quoted(L"TABLE=", Each.Table);
                Out.Quoted(L"KEY=", Each.Key);
                Out.Plain(L"FLAGS=", Each.Flags);
            });
        }
        At = 0;
        for (const Script& Each : Row.Scripts) {
            Import.Element(L"SCRIPTS");
            Import.Section(L"SCRIPTPARMS", {++At}, [&](LineWriter& Out) {
                Out.Quoted(L"NAME=", Each.Name);
                Out.Plain(L"LANG=", Each.Language);
                Out.Quoted(L"FILENAME=", Each.FileName);
            });
        }
        All.push_back(Import.Take());
    }
    return All;
}

}  // namespace kv::host
