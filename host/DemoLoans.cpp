#include <array>
#include <string_view>
#include <vector>

#include "host/DemoParts.h"

namespace kv::host {
namespace {

using Spoken = std::array<std::wstring_view, kDemoLanguages.size()>;  // as in kDemoLanguages

struct CommandRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Parms;
    Spoken Title;
    Spoken Message;
    std::vector<DemoFont> Fonts;
};

std::vector<CommandRow> Commands() {
    return {
        {L"CERCA",
         L"Apre la ricerca, anche da tastiera",
         LR"(CODE= "CERCA"
COMMAND= QUERY
ENABLED= TRUE
KBENABLED= TRUE
VISIBLE= TRUE
KBCODE= {F3}
KBSHIFT= CTRL
STYLE= DEFAULT
HELP= "AIUTO"
)",
         {L"Cerca", L"Search", L"Chercher", L"Suchen", L"Buscar"},
         {L"Apre la pagina di ricerca", L"Opens the search page", L"Ouvre la page de recherche",
          L"Öffnet die Suchseite", L"Abre la página de búsqueda"},
         {{L"Sans", 10, true}, {L"Sans", 14, true}}},
        {L"PRESTITO",
         L"Manda al banco la richiesta di prestito",
         LR"(CODE= "PRESTITO"
COMMAND= LOANACTION
ENABLED= TRUE
KBENABLED= TRUE
VISIBLE= TRUE
KBCODE= {INS}
KBSHIFT= ALT+SHIFT
STYLE= DEFAULT
HELP= "AIUTOPRESTITO"
)",
         {L"Prestito", L"Borrow", L"Emprunter", L"Ausleihen", L"Préstamo"},
         {L"La richiesta passa al banco dei prestiti", L"The request goes to the loan desk",
          L"La demande est transmise au bureau du prêt", L"Die Bestellung geht an die Ausleihe",
          L"La petición pasa al mostrador de préstamo"},
         {{L"Sans", 10, true}}},
        {L"PRESTITOSALA",
         L"Lo stesso nelle postazioni in sala, che non hanno tastiera",
         LR"(CODE= "PRESTITO"
COMMAND= LOANACTION
ENABLED= TRUE
KBENABLED= FALSE
VISIBLE= TRUE
KBCODE=
KBSHIFT=
STYLE= CHECK
HELP= "AIUTOPRESTITO"
MIRROROF= "PRESTITO"
)",
         {L"Chiedi in prestito", L"Ask for it", L"Demander en prêt", L"Zur Ausleihe bestellen",
          L"Pedir en préstamo"},
         {L"Il libro sarà pronto al banco", L"The book will be ready at the desk",
          L"Le livre sera prêt au bureau", L"Das Buch liegt am Schalter bereit",
          L"El libro estará listo en el mostrador"},
         {{L"Sans", 16, true}}},
    };
}

DemoTexts InEveryLanguage(const Spoken& Of) {
    DemoTexts All;
    for (std::size_t I = 0; I < Of.size(); ++I) All.emplace_back(kDemoLanguages[I], Of[I]);
    return All;
}

DemoObject Command(const CommandRow& Of) {
    DemoDraft Made(L"COMMAND", Of.Name, Of.Desc);
    Made.Section(L"PARMS", {1}, Of.Parms);
    Made.Captions(L"TITLES", {}, InEveryLanguage(Of.Title));
    Made.Captions(L"MESSAGE", {}, InEveryLanguage(Of.Message));
    Made.Fonts(L"TITLEFONTS", Of.Fonts);
    return Made.Take();
}

DemoObject Plain(std::wstring_view Clsid, std::wstring_view Name, std::wstring_view Desc,
                 std::wstring_view Parms) {
    DemoDraft Made(Clsid, Name, Desc);
    Made.Section(L"PARMS", {1}, Parms);
    return Made.Take();
}

}  // namespace

std::vector<DemoObject> DemoLoans() {
    std::vector<DemoObject> All;
    for (const CommandRow& Each : Commands()) All.push_back(Command(Each));
    All.push_back(Plain(L"LOAN", L"PRESTITI", L"Prestiti della biblioteca",
                        LR"(RETRIEVAL= "BIBLIO"
PATH= "archivi/prestiti"
LOGFILE= "registri/prestiti.log"
ASKUSER= TRUE
HELP= "AIUTOPRESTITO"
)"));
    All.push_back(Plain(L"LOAN", L"PRESTITIPROVA", L"Prestiti finti, su cui si fa pratica",
                        LR"(RETRIEVAL= "PROVE"
PATH= "prove/prestiti"
ASKUSER= FALSE
HELP= "AIUTOPRESTITO"
MIRROROF= "PRESTITI"
)"));
    All.push_back(Plain(L"LOANCLIENT", L"LETTORI", L"Richieste dei lettori, dalla sala e da casa",
                        LR"(LOAN= "PRESTITI"
MENU= "LETTORI"
REQUESTOPTIONS= LOAN|RESERVATION
DELIVERLIB= DEFAULT
WEBDELIVERLIB= ALL
PWDOPTIONS= ALPHA|LENGTH|DIGIT
PWDLENGTH= 8
HELP= "AIUTOPRESTITO"
)"));
    All.push_back(Plain(L"LOANCLIENT", L"BANCO", L"Banco dei prestiti",
                        LR"(LOAN= "PRESTITI"
MENU= "BANCO"
REQUESTOPTIONS= LOAN|REFERENCE|RESERVATION
DELIVERLIB= ALL
WEBDELIVERLIB= ALL
PWDOPTIONS= NONE
HELP= "AIUTOPRESTITO"
MIRROROF= "LETTORI"
)"));
    All.push_back(Plain(L"LOANMENU", L"BANCO", L"Tutto ciò che si fa al banco",
                        LR"(USERNEW= TRUE
USERMOD= TRUE
USERDEL= FALSE
USERPRN= TRUE
LOANLOAN= TRUE
LOANDEP= TRUE
LOANPREN= TRUE
LOANSOLLE= TRUE
STATACTIVE= TRUE
PARMACTIVE= FALSE
SERVACTIVE= FALSE
USERACTIVE= TRUE
LOANACTIVE= TRUE
CHANGEBIB= FALSE
BUTTLETT= TRUE
BUTTPREST= TRUE
BUTTRESO= TRUE
BUTTRINNO= TRUE
BUTTPRENO= TRUE
BUTTCONSE= TRUE
BUTTCANCE= TRUE
BUTTDEPOS= TRUE
BUTTENDDE= TRUE
BUTTCOMPRA= TRUE
)"));
    All.push_back(Plain(L"LOANMENU", L"LETTORI", L"Ciò che un lettore fa da solo",
                        LR"(LOANPREN= TRUE
LOANACTIVE= TRUE
BUTTRINNO= TRUE
BUTTPRENO= TRUE
BUTTCANCE= TRUE
MIRROROF= "BANCO"
)"));
    return All;
}

}  // namespace kv::host
