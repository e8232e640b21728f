#include "host/DemoParts.h"

namespace kv::host {
namespace {

// The components are the imports that are run, in their order.
DemoObject Procedure(std::wstring_view Name, std::wstring_view Desc,
                     const std::vector<std::wstring_view>& Components, std::wstring_view Parms) {
    DemoDraft Made(L"CATPROC", Name, Desc);
    Made.Section(L"PARMS", {1}, Parms);
    std::int32_t At = 0;
    for (const std::wstring_view Each : Components) {
        Made.Element(L"FIELDS");
        Made.Section(L"FIELDS", {++At}, [&](LineWriter& Out) { Out.Quoted(L"NAME=", Each); });
    }
    return Made.Take();
}

// In the order of the names, each before the name of a new alias, so that the one to be named is the last.
DemoObject Aliases(std::wstring_view Name, std::wstring_view Desc, const DemoTexts& All) {
    DemoDraft Made(L"ALIAS", Name, Desc);
    std::int32_t At = 0;
    for (const auto& [Alias, Object] : All) {
        Made.Element(L"FIELDS");
        Made.Section(L"FIELDS", {++At}, [&, &Called = Alias, &StandsFor = Object](LineWriter& Out) {
            Out.Quoted(L"NAME=", Called);
            Out.Quoted(L"TEXT=", StandsFor);
        });
    }
    return Made.Take();
}

}  // namespace

std::vector<DemoObject> DemoServices() {
    const auto Parms = [](std::wstring_view Text) {
        return std::vector<DemoSection>{{L"PARMS", {1}, std::wstring(Text)}};
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

        Procedure(L"NOTTURNA", L"Aggiorna ogni notte il catalogo generale", {L"ACQUISTI", L"SPOGLI"},
                  LR"(CATALOGUE= "GENERALE"
RETRIEVAL= "BIBLIO"
SOURCEPATH= "scambio"
TARGETPATH= "archivi/biblio"
LOGFILE= "registri/notturna.log"
)"),
        Procedure(L"RECUPERO", L"Ricostruisce il catalogo dallo schedario cartaceo",
                  {L"SCHEDARIO", L"ACQUISTI", L"SPOGLI"},
                  LR"(CATALOGUE= "GENERALE"
RETRIEVAL= "BIBLIO"
SOURCEPATH= "recupero"
TARGETPATH= "archivi/biblio"
LOGFILE= "registri/recupero.log"
)"),
        Procedure(L"RAGAZZI", L"La procedura notturna per la sezione ragazzi", {L"ACQUISTI"},
                  LR"(CATALOGUE= "RAGAZZI"
RETRIEVAL= "BIBLIO"
LOGFILE= "registri/ragazzi.log"
MIRROROF= "NOTTURNA"
)"),

        Aliases(L"CATALOGHI", L"I cataloghi come li chiamano i lettori",
                {{L"Catalogo", L"GENERALE"},
                 {L"Giornali", L"EMEROTECA"},
                 {L"Libri per ragazzi", L"RAGAZZI"},
                 {L"Riviste", L"EMEROTECA"}}),
        Aliases(L"SPORTELLI", L"Gli uffici come li chiamano gli utenti",
                {{L"Banco", L"BANCO"}, {L"Prestiti", L"BANCO"}, {L"Schede", L"CATALOGAZIONE"}}),

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
    };
}

}  // namespace kv::host
