// The numbered messages of the system. One table for every platform: the string tables of the Windows
// component are generated from it, MsgUtil answers from it elsewhere. "%%" stands for the argument.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace kv::resources {

struct Message {
    std::int32_t Id;
    std::wstring_view Text;
};

inline constexpr std::int32_t kFirstMessage = 20000;

/// Messages 20000 to 20030, in the order of their ids, without a gap.
inline constexpr std::array<Message, 31> kMessages{{
    {20000, L"Errore critico. Il programma non può essere avviato."},
    {20001, L"Si è verificato un errore critico. L'applicazione dev'essere terminata."},
    {20002, L"La classe %% esiste già."},
    {20003, L"Utente non autorizzato per l'operazione richiesta."},
    {20004, L"Classe sconosciuta: %%."},
    {20005, L"Non sono soddisfatti i requisiti della classe %%."},
    {20006, L"Errore nei dati della classe %%."},
    {20007, L"Impossibile assegnare l'ID alla tabella."},
    {20008, L"Record non trovato."},
    {20009, L"Il campo selezionato non supporta questo tipo di operazione: errore nella configurazione."},
    {20010, L"Utente sconosciuto."},
    {20011, L"Account scaduto."},
    {20012, L"L'account ha raggiunto il numero massimo di accessi."},
    {20013, L"L'account è sospeso."},
    {20014, L"L'account non è abilitato per questo orario. Prossimo orario utile: %%"},
    {20015, L"L'istanza esiste già."},
    {20016, L"Istanza sconosciuta: %%."},
    {20017, L"Parametri errati."},
    {20018, L"Errore di sintassi: %%."},
    {20019, L"Questa classe ammette un unico elemento."},
    {20020, L"Esiste già un elemento con il nome %%."},
    {20021, L"Argomento sconosciuto o errato nella linea di comando: %%"},
    {20022, L"Violazione dell'integrità di spazio nel file di registro."},
    {20023, L"Password errata."},
    {20024, L"Errore nella configurazione."},
    {20025, L"Errore di PMVLOGIC."},
    {20026, L"Errore nei dati."},
    {20027, L"Procedura interrotta dall'utente."},
    {20028, L"Errore durante la modifica di SYSTEM.INI"},
    {20029,
     L"E' stata modificata la shell di Windows. Per rendere attiva la modifica si dovrà chiudere "
     L"l'applicazione e riavviare il sistema."},
    {20030, L"Per accedere alle funzioni di amministrazione, introdurre la password di chiusura:"},
}};

}  // namespace kv::resources
