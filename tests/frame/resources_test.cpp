// The numbered messages and the command words, held against lists of their own.
#include <gtest/gtest.h>

#include <string_view>

#include "frame/MsgUtil.h"
#include "resources/CommandWords.h"
#include "resources/Messages.h"
#include "tests/frame/Told.h"

namespace kv::test {
namespace {

struct Numbered {
    std::int32_t Id;
    std::wstring_view Text;
};

constexpr Numbered kMessages[] = {
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
};

constexpr Numbered kWords[] = {
    {10000, L"AND"},        {10001, L"CAPTURE"},  {10002, L"CHILDREN"}, {10003, L"CLIPBOARD"},
    {10004, L"CLOSE"},      {10005, L"CLOSEALL"}, {10006, L"EXTRACT"},  {10007, L"FILTER"},
    {10008, L"FIND"},       {10009, L"FORMAT"},   {10010, L"HELP"},     {10011, L"HIERARCHY"},
    {10012, L"HISTORY"},    {10013, L"MAIL"},     {10014, L"MEMORY"},   {10015, L"MEMORYFOLDER"},
    {10016, L"LABRYS"},     {10017, L"NEXTREC"},  {10018, L"OTHER"},    {10019, L"OPEN"},
    {10020, L"OPTIONS"},    {10021, L"OR"},       {10022, L"OWNED"},    {10023, L"PGDOWN"},
    {10024, L"PGUP"},       {10025, L"PARENT"},   {10026, L"PASSWORD"}, {10027, L"PREVREC"},
    {10028, L"EXPORT"},     {10029, L"ROWDOWN"},  {10030, L"ROWUP"},    {10031, L"SELECT"},
    {10032, L"SELECTMODE"}, {10033, L"SETOPS"},   {10034, L"UNSELECT"}, {10035, L"UNSELECTALL"},
    {10036, L"FONT"},       {10037, L"TOP"},      {10038, L"BOTTOM"},   {10039, L"COPY"},
    {10040, L"CUT"},        {10041, L"PASTE"},    {10042, L"QUERY"},    {10043, L"BACK"},
    {10044, L"QUIT"},       {10045, L"UNDO"},     {10046, L"ADMIN"},    {10047, L"SELECTALL"},
    {10048, L"CLOSEWIN"},   {10049, L"FORWARD"},  {10050, L"STOP"},     {10051, L"REFRESH"},
    {10052, L"SAVE"},       {10053, L"XOR"},      {10054, L"EXCL"},     {10055, L"LOAD"},
};

TEST(Messages, AllThirtyOneAreThereWordForWord) {
    ASSERT_EQ(std::size(kMessages), 31U);
    ASSERT_EQ(resources::kMessages.size(), 31U);
    EXPECT_EQ(resources::kFirstMessage, 20000);
    for (std::size_t I = 0; I < std::size(kMessages); ++I) {
        EXPECT_EQ(kMessages[I].Id, 20000 + static_cast<std::int32_t>(I));
        EXPECT_EQ(resources::kMessages[I].Id, kMessages[I].Id);
        EXPECT_EQ(Narrow(resources::kMessages[I].Text), Narrow(kMessages[I].Text));
    }
}

TEST(Messages, TheArgumentStandsInPlaceOfTheMark) {
    for (const std::wstring_view Argument : {L"", L"X", L"due parole", L"%%", L"%", L"è"}) {
        for (const Numbered& Row : kMessages) {
            std::wstring Expected(Row.Text);
            if (const std::size_t At = Expected.find(L"%%"); At != std::wstring::npos)
                Expected.replace(At, 2, Argument);
            std::wstring Text = L"before";
            MsgUtil::MessageText(Row.Id, Argument, Text);
            EXPECT_EQ(Narrow(Text), Narrow(Expected));
        }
    }
    std::wstring Text;
    MsgUtil::MessageText(20018, L"PIPPO", Text);
    EXPECT_EQ(Text, L"Errore di sintassi: PIPPO.");
}

TEST(Messages, ANumberThatIsNoneGivesTheEmptyText) {
    for (const std::int32_t Code : {0, 1, -1, 10000, 19999, 20031, 65535, 2147483647, -2147483647 - 1}) {
        std::wstring Text = L"before";
        MsgUtil::MessageText(Code, L"X", Text);
        EXPECT_EQ(Text, L"") << Code;
    }
}

TEST(CommandWords, AllFiftySixAreThereInTheirOrder) {
    ASSERT_EQ(std::size(kWords), 56U);
    ASSERT_EQ(resources::kCommandWords.size(), 56U);
    EXPECT_EQ(resources::kFirstCommandWord, 10000);
    for (std::size_t I = 0; I < std::size(kWords); ++I) {
        EXPECT_EQ(kWords[I].Id, 10000 + static_cast<std::int32_t>(I));
        EXPECT_EQ(Narrow(resources::kCommandWords[I]), Narrow(kWords[I].Text));
    }
}

}  // namespace
}  // namespace kv::test
