#include "host/DemoParts.h"

namespace kv::host {

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
