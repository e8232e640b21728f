#include "host/desktop/ClassNames.h"

#include <QCoreApplication>

namespace kv::desktop {
namespace {

struct NameRow {
    std::wstring_view Word;
    const char* Name;
};

// clang-format off
constexpr NameRow kNames[] = {
    {L"ALIAS", QT_TRANSLATE_NOOP("ClassNames", "Alias")},
    {L"BROWSE", QT_TRANSLATE_NOOP("ClassNames", "Scorrimento di indici")},
    {L"CATALOGUE", QT_TRANSLATE_NOOP("ClassNames", "Catalogo")},
    {L"CATPROC", QT_TRANSLATE_NOOP("ClassNames", "Procedura di catalogo")},
    {L"COMMAND", QT_TRANSLATE_NOOP("ClassNames", "Comando")},
    {L"FILTER", QT_TRANSLATE_NOOP("ClassNames", "Filtro")},
    {L"HELP", QT_TRANSLATE_NOOP("ClassNames", "Aiuto")},
    {L"IMPORT", QT_TRANSLATE_NOOP("ClassNames", "Importazione")},
    {L"IMPORTPROC", QT_TRANSLATE_NOOP("ClassNames", "Procedura di importazione")},
    {L"LOAN", QT_TRANSLATE_NOOP("ClassNames", "Prestito")},
    {L"LOANCLIENT", QT_TRANSLATE_NOOP("ClassNames", "Client del prestito")},
    {L"LOANMENU", QT_TRANSLATE_NOOP("ClassNames", "Menu del prestito")},
    {L"MAIL", QT_TRANSLATE_NOOP("ClassNames", "Posta")},
    {L"MAILGROUP", QT_TRANSLATE_NOOP("ClassNames", "Gruppo di posta")},
    {L"MATER", QT_TRANSLATE_NOOP("ClassNames", "Pagine principali")},
    {L"MEMBER", QT_TRANSLATE_NOOP("ClassNames", "Membro")},
    {L"MENU", QT_TRANSLATE_NOOP("ClassNames", "Menu")},
    {L"PROFILE", QT_TRANSLATE_NOOP("ClassNames", "Profilo di visualizzazione")},
    {L"QUERY", QT_TRANSLATE_NOOP("ClassNames", "Ricerca")},
    {L"REPOSITORY", QT_TRANSLATE_NOOP("ClassNames", "Archivio di documenti")},
    {L"RETRIEVAL", QT_TRANSLATE_NOOP("ClassNames", "Base di retrieval")},
    {L"SETOPS", QT_TRANSLATE_NOOP("ClassNames", "Operazioni tra insiemi")},
    {L"SORT", QT_TRANSLATE_NOOP("ClassNames", "Ordinamento")},
    {L"STEM", QT_TRANSLATE_NOOP("ClassNames", "Modulo di immissione")},
    {L"STOPWORD", QT_TRANSLATE_NOOP("ClassNames", "Parole vuote")},
    {L"STRINGTABLE", QT_TRANSLATE_NOOP("ClassNames", "Tabella di messaggi")},
    {L"TABLE", QT_TRANSLATE_NOOP("ClassNames", "Tabella")},
    {L"VCLIENT", QT_TRANSLATE_NOOP("ClassNames", "Applicazione client")},
    {L"WEBCLIENT", QT_TRANSLATE_NOOP("ClassNames", "Client web")},
    {L"WEBSERVER", QT_TRANSLATE_NOOP("ClassNames", "Server web")},
};
// clang-format on

}  // namespace

QString ClassName(std::wstring_view Word) {
    for (const NameRow& Row : kNames)
        if (Row.Word == Word) return QCoreApplication::translate("ClassNames", Row.Name);
    return {};
}

}  // namespace kv::desktop
