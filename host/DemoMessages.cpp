#include <cstdint>
#include <span>

#include "host/DemoParts.h"

namespace kv::host {
namespace {

constexpr DemoMessage kCatalogue[] = {
    {L"BENVENUTO",
     {L"Benvenuti nel catalogo della biblioteca", L"Welcome to the library catalogue",
      L"Bienvenue dans le catalogue de la bibliothèque", L"Willkommen im Katalog der Bibliothek",
      L"Bienvenidos al catálogo de la biblioteca"}},
    {L"CERCA", {L"Cerca", L"Search", L"Chercher", L"Suchen", L"Buscar"}},
    {L"NUOVA RICERCA",
     {L"Nuova ricerca", L"New search", L"Nouvelle recherche", L"Neue Suche", L"Nueva búsqueda"}},
    {L"NESSUN RISULTATO",
     {L"Nessun documento risponde alla ricerca", L"No item answers the search",
      L"Aucun document ne répond à la recherche", L"Kein Dokument entspricht der Suche",
      L"Ningún documento responde a la búsqueda"}},
    {L"TROPPI RISULTATI",
     {L"Troppi documenti: aggiungere una parola", L"Too many items: add a word",
      L"Trop de documents : ajoutez un mot", L"Zu viele Dokumente: ein Wort hinzufügen",
      L"Demasiados documentos: añada una palabra"}},
    {L"RISULTATI",
     {L"Documenti trovati", L"Items found", L"Documents trouvés", L"Gefundene Dokumente",
      L"Documentos encontrados"}},
    {L"AUTORE", {L"Autore", L"Author", L"Auteur", L"Verfasser", L"Autor"}},
    {L"TITOLO", {L"Titolo", L"Title", L"Titre", L"Titel", L"Título"}},
    {L"SOGGETTO", {L"Soggetto", L"Subject", L"Sujet", L"Schlagwort", L"Materia"}},
    {L"EDITORE", {L"Editore", L"Publisher", L"Éditeur", L"Verlag", L"Editorial"}},
    {L"ANNO", {L"Anno", L"Year", L"Année", L"Jahr", L"Año"}},
    {L"LINGUA", {L"Lingua", L"Language", L"Langue", L"Sprache", L"Idioma"}},
    {L"COLLOCAZIONE", {L"Collocazione", L"Shelf mark", L"Cote", L"Signatur", L"Signatura"}},
    {L"DISPONIBILE", {L"Disponibile", L"Available", L"Disponible", L"Verfügbar", L"Disponible"}},
    {L"IN PRESTITO", {L"In prestito", L"On loan", L"En prêt", L"Ausgeliehen", L"En préstamo"}},
    {L"SOLO CONSULTAZIONE",
     {L"Solo consultazione in sede", L"For use in the library only", L"À consulter sur place",
      L"Nur zur Benutzung im Haus", L"Sólo consulta en sala"}},
    {L"AVANTI", {L"Avanti", L"Next", L"Suivant", L"Weiter", L"Siguiente"}},
    {L"INDIETRO", {L"Indietro", L"Back", L"Retour", L"Zurück", L"Atrás"}},
    {L"STAMPA", {L"Stampa", L"Print", L"Imprimer", L"Drucken", L"Imprimir"}},
    {L"AIUTO", {L"Aiuto", L"Help", L"Aide", L"Hilfe", L"Ayuda"}},
    {L"MENU", {L"Menu", L"Menu", L"Menu", L"Menü", L"Menú"}},
    {L"USCITA", {L"Esci", L"Leave", L"Quitter", L"Beenden", L"Salir"}},
    {L"SCEGLI BIBLIOTECA",
     {L"Scegliere una biblioteca", L"Choose a library", L"Choisissez une bibliothèque",
      L"Eine Bibliothek auswählen", L"Elija una biblioteca"}},
    {L"PRENOTA", {L"Prenota", L"Reserve", L"Réserver", L"Vormerken", L"Reservar"}},
    {L"SESSIONE SCADUTA",
     {L"La sessione è scaduta: ricominciare", L"The session has expired: start again",
      L"La session a expiré : recommencez", L"Die Sitzung ist abgelaufen: bitte neu beginnen",
      L"La sesión ha caducado: vuelva a empezar"}},
};

constexpr DemoMessage kDesk[] = {
    {L"TESSERA",
     {L"Numero della tessera", L"Card number", L"Numéro de carte", L"Ausweisnummer", L"Número de carné"}},
    {L"TESSERA SCADUTA",
     {L"La tessera è scaduta", L"The card has expired", L"La carte a expiré", L"Der Ausweis ist abgelaufen",
      L"El carné ha caducado"}},
    {L"PRESTITO REGISTRATO",
     {L"Prestito registrato", L"Loan recorded", L"Prêt enregistré", L"Ausleihe verbucht",
      L"Préstamo registrado"}},
    {L"RESTITUIRE ENTRO",
     {L"Da restituire entro il", L"To be returned by", L"À rendre avant le", L"Rückgabe bis zum",
      L"Devolver antes del"}},
    {L"PROROGA",
     {L"Proroga concessa", L"Renewal granted", L"Prolongation accordée", L"Verlängerung bewilligt",
      L"Prórroga concedida"}},
    {L"RITARDO",
     {L"Il documento è in ritardo", L"The item is overdue", L"Le document est en retard",
      L"Das Dokument ist überfällig", L"El documento está retrasado"}},
    {L"PRENOTATO",
     {L"Prenotato da un altro lettore", L"Reserved by another reader", L"Réservé par un autre lecteur",
      L"Von einem anderen Leser vorgemerkt", L"Reservado por otro lector"}},
};

DemoObject StringTable(std::wstring_view Name, std::wstring_view Desc,
                       std::span<const DemoMessage> Messages) {
    DemoDraft Made(L"STRINGTABLE", Name, Desc);
    Made.Messages(Messages, Born::WithText);
    return Made.Take();
}

}  // namespace

std::vector<DemoObject> DemoMessages() {
    return {
        StringTable(L"CATALOGO", L"Scritte e messaggi del catalogo, in cinque lingue", kCatalogue),
        StringTable(L"PRESTITI", L"Messaggi del banco dei prestiti, in cinque lingue", kDesk),
    };
}

}  // namespace kv::host
