#include "host/DemoParts.h"

namespace kv::host {
namespace {

constexpr DemoMessage kMessages[] = {
    {L"Prestito scaduto",
     {L"Il prestito è scaduto: si prega di restituire il documento",
      L"The loan has expired: please return the item", L"Le prêt a expiré : veuillez rendre le document",
      L"Die Leihfrist ist abgelaufen: bitte geben Sie das Dokument zurück",
      L"El préstamo ha vencido: devuelva el documento"}},
    {L"Prenotazione pronta",
     {L"Il documento prenotato è pronto al banco", L"The reserved item is ready at the desk",
      L"Le document réservé vous attend au comptoir", L"Das vorgemerkte Dokument liegt bereit",
      L"El documento reservado está listo en el mostrador"}},
    {L"Tessera in scadenza",
     {L"La tessera scade fra trenta giorni", L"Your card expires in thirty days",
      L"Votre carte expire dans trente jours", L"Ihr Ausweis läuft in dreißig Tagen ab",
      L"Su carné caduca dentro de treinta días"}},
    {L"Nuovi acquisti",
     {L"Sono arrivati i nuovi acquisti", L"The new acquisitions have arrived",
      L"Les nouvelles acquisitions sont arrivées", L"Die Neuerwerbungen sind eingetroffen",
      L"Han llegado las nuevas adquisiciones"}},
    {L"Chiusura straordinaria",
     {L"Domani la biblioteca resta chiusa", L"The library is closed tomorrow",
      L"La bibliothèque sera fermée demain", L"Morgen bleibt die Bibliothek geschlossen",
      L"Mañana la biblioteca permanecerá cerrada"}},
    {L"Casella piena",
     {L"La casella è piena: cancellare i messaggi letti", L"The mailbox is full: delete what you have read",
      L"La boîte est pleine : supprimez les messages lus",
      L"Das Postfach ist voll: bitte gelesene Nachrichten löschen",
      L"El buzón está lleno: borre los mensajes leídos"}},
};

DemoObject Centre() {
    DemoDraft Made(L"MAIL", L"CENTRALE", L"Centrale postale della biblioteca, con avvisi in cinque lingue");
    Made.Section(L"PARMS", {1}, [](LineWriter& Out) { Out.Quoted(L"PATH=", L"posta/centrale"); });
    Made.Messages(kMessages, Born::WithText);
    return Made.Take();
}

struct Backup {
    std::wstring_view Caption;
    std::wstring_view Path;
};

void AddBackups(DemoDraft& Made, const std::vector<Backup>& All) {
    std::int32_t At = 0;
    for (const Backup& Each : All) {
        Made.Element(L"PATHS");
        Made.Section(L"PATHS", {++At}, [&](LineWriter& Out) {
            Out.Quoted(L"CAPTION=", Each.Caption);
            Out.Quoted(L"PATH=", Each.Path);
        });
    }
}

DemoObject Staff() {
    DemoDraft Made(L"MAILGROUP", L"PERSONALE", L"Il personale scrive a tutti e conserva a lungo");
    Made.Section(L"PARMS", {1}, L"SIZE= 51200\n");
    Made.Section(L"MAIL", {1},
                 LR"(RCVENABLED= TRUE
SNDENABLED= TRUE
RCVBROAD= TRUE
SNDBROAD= TRUE
EXPDAYS= 365
MAXFILES= 500
MAXSIZE= 20480
ATTACH= TRUE
EDITOR= "scrittura.exe"
USERS= "BANCO;CATALOGAZIONE;DIREZIONE"
PRINTALLOW= TRUE
PRIORITY= 1
)");
    Made.Section(L"EXPORT", {1},
                 LR"(ENABLED= TRUE
EXPDAYS= 90
MAXFILES= 100
MAXSIZE= 20480
EDITOR= "scrittura.exe"
MAXITEMS= 5000
MAXRECS= 5000
PRINTALLOW= TRUE
)");
    Made.Section(L"SETOPS", {1}, L"ENABLED= TRUE\nEXPDAYS= 90\nMAXFILES= 100\n");
    Made.Section(L"NOTEBOOK", {1},
                 LR"(ENABLED= TRUE
EXPDAYS= 365
EDITOR= "appunti.exe"
MAXFILES= 200
MAXSIZE= 2048
PRINTALLOW= TRUE
)");
    Made.Section(L"QUERY", {1}, L"ENABLED= TRUE\nEXPDAYS= 180\nMAXFILES= 100\n");
    AddBackups(Made, {{L"Ogni notte", L"copie/notte"},
                      {L"Ogni settimana", L"copie/settimana"},
                      {L"Sede di Valdoro", L"copie/valdoro"}});
    return Made.Take();
}

DemoObject Public() {
    DemoDraft Made(L"MAILGROUP", L"PUBBLICO", L"I lettori ricevono avvisi e conservano poco");
    Made.Section(L"PARMS", {1}, L"SIZE= 1024\n");
    Made.Section(L"MAIL", {1},
                 LR"(RCVENABLED= TRUE
SNDENABLED= FALSE
RCVBROAD= TRUE
SNDBROAD= FALSE
EXPDAYS= 30
MAXFILES= 20
MAXSIZE= 256
ATTACH= FALSE
USERS= "BANCO"
PRINTALLOW= TRUE
PRIORITY= 5
)");
    Made.Section(L"EXPORT", {1},
                 LR"(ENABLED= TRUE
EXPDAYS= 1
MAXFILES= 5
MAXSIZE= 512
MAXITEMS= 100
MAXRECS= 50
PRINTALLOW= FALSE
)");
    Made.Section(L"SETOPS", {1}, L"ENABLED= FALSE\n");
    Made.Section(L"NOTEBOOK", {1},
                 L"ENABLED= TRUE\nEXPDAYS= 7\nMAXFILES= 10\nMAXSIZE= 64\nPRINTALLOW= FALSE\n");
    Made.Section(L"QUERY", {1}, L"ENABLED= TRUE\nEXPDAYS= 7\nMAXFILES= 10\n");
    AddBackups(Made, {{L"Ogni domenica", L"copie/pubblico"}});
    return Made.Take();
}

}  // namespace

std::vector<DemoObject> DemoMail() { return {Centre(), Staff(), Public()}; }

}  // namespace kv::host
