#include <cstdint>

#include "host/DemoParts.h"

namespace kv::host {
namespace {

struct Input {
    std::wstring_view DataType;
    std::int32_t Size;
    std::wstring_view Default;
    std::wstring_view StopWord;
    std::wstring_view Prefix;
    std::wstring_view Postfix;
    std::wstring_view PadMask;
    std::wstring_view Flags;
    DemoTexts Labels;
};

struct Form {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Style;
    std::int32_t Timeout;
    DemoTexts Titles;
    DemoTexts Messages;
    std::vector<DemoButton> Buttons;
    std::vector<Input> Inputs;
};

std::vector<Form> Forms() {
    const DemoTexts Search = {{L"ITA", L"Cerca"}, {L"ENG", L"Search"}};
    const DemoTexts Leave = {{L"ITA", L"Torna al menu"}, {L"ENG", L"Back to the menu"}};
    return {
        {L"COLLOCAZIONE",
         L"Trova una copia per sezione, numero e formato",
         L"RESULTSELECT",
         30,
         {{L"ITA", L"Ricerca per collocazione"}, {L"ENG", L"Search by shelf mark"}},
         {{L"ITA", L"Scrivere almeno la sezione"}, {L"ENG", L"Give the section at least"}},
         {{L"CERCA", L"QUERY", Search}, {L"ESCI", L"QUIT", Leave}},
         {{L"ALFA",
           6,
           L"",
           L"",
           L"",
           L".",
           L"",
           L"REMOVEBLANKS|HASFOCUS",
           {{L"ITA", L"Sezione"}, {L"ENG", L"Section"}}},
          {L"NUMERIC",
           5,
           L"1",
           L"",
           L"",
           L"",
           L"00000",
           L"PADLEFT",
           {{L"ITA", L"Numero"}, {L"ENG", L"Number"}}},
          {L"ALFA",
           4,
           L"",
           L"",
           L"/",
           L"",
           L"",
           L"REMOVEFIRSTBLANK",
           {{L"ITA", L"Formato"}, {L"ENG", L"Size"}}}}},
        {L"TITOLO",
         L"Parole del titolo, senza gli articoli e con le grafie di oggi",
         L"RESULTAND",
         60,
         {{L"ITA", L"Ricerca per titolo"}, {L"ENG", L"Search by title"}},
         {{L"ITA", L"L'articolo iniziale non conta"}, {L"ENG", L"The first article does not count"}},
         {{L"CERCA", L"QUERY", Search},
          {L"AIUTO", L"HELP", {{L"ITA", L"Come si cerca"}, {L"ENG", L"How to search"}}},
          {L"ESCI", L"QUIT", Leave}},
         {{L"ALFA",
           80,
           L"",
           L"ARTICOLI",
           L"",
           L"*",
           L"",
           L"REMOVEFIRSTBLANK|HASFOCUS",
           {{L"ITA", L"Inizio del titolo"}, {L"ENG", L"Beginning of the title"}}},
          {L"ALFA",
           80,
           L"",
           L"GRAFIE",
           L"",
           L"",
           L"",
           L"TRANSLUNDERSCORE",
           {{L"ITA", L"Altre parole"}, {L"ENG", L"Other words"}}},
          {L"ALFA",
           40,
           L"",
           L"SIGLE",
           L"",
           L"",
           L"",
           L"NONE",
           {{L"ITA", L"Editore o ente"}, {L"ENG", L"Publisher or body"}}}}},
    };
}

std::vector<DemoPage> Pages() {
    return {
        {L"pagine/menu.htm", L"ITA", L"MENU"},     {L"pagine/menu_en.htm", L"ENG", L"MENU"},
        {L"pagine/ricerca.htm", L"ITA", L"QUERY"}, {L"pagine/ricerca_en.htm", L"ENG", L"QUERY"},
        {L"pagine/scheda.htm", L"ITA", L"RECORD"}, {L"pagine/scheda_en.htm", L"ENG", L"RECORD"},
    };
}

std::vector<DemoPage> DeskPages() {
    return {
        {L"banco/prestito.htm", L"ITA", L"LOANSTART"},
        {L"banco/rientro.htm", L"ITA", L"LOANQUIT"},
    };
}

DemoObject Mater(std::wstring_view Name, std::wstring_view Desc, const std::vector<DemoPage>& Templates) {
    DemoDraft Made(L"MATER", Name, Desc);
    Made.Section(L"PARMS", {1}, [](LineWriter& Out) { Out.Plain(L"FLAGS=", L"NONE"); });
    Made.Pages(L"HTML", Templates);
    return Made.Take();
}

void AddInput(DemoDraft& To, std::int32_t At, const Input& Of) {
    To.Element(L"FIELDS");
    To.Section(L"FIELDPARMS", {At}, [&](LineWriter& Out) {
        Out.Plain(L"DATATYPE=", Of.DataType);
        Out.Quoted(L"DEFAULT=", Of.Default);
        Out.Quoted(L"STOPWORD=", Of.StopWord);
        Out.Number(L"SIZE=", Of.Size);
        Out.Bool(L"HIDDEN=", false);
        Out.Quoted(L"PADMASK=", Of.PadMask);
        Out.Quoted(L"POSTFIX=", Of.Postfix);
        Out.Quoted(L"PREFIX=", Of.Prefix);
        Out.Plain(L"FLAGS=", Of.Flags);
    });
    To.Captions(L"FIELDCAPTION", {At}, Of.Labels);
}

DemoObject Stem(const Form& Of) {
    DemoDraft Made(L"STEM", Of.Name, Of.Desc);
    Made.Section(L"PARMS", {1}, [&](LineWriter& Out) {
        Out.Plain(L"STYLE=", Of.Style);
        Out.Plain(L"FLAGS=", L"NONE");
        Out.Quoted(L"HELP=", L"AIUTO");
        Out.Quoted(L"HELPWWW=", L"AIUTOWEB");
        Out.Number(L"TIMEOUT=", Of.Timeout);
    });
    Made.Captions(L"TITLES", {}, Of.Titles);
    Made.Captions(L"MESSAGE", {}, Of.Messages);
    Made.Fonts(L"FONTS", {{L"Serif", 11, true}});
    Made.Buttons(Of.Buttons);
    std::int32_t At = 0;
    for (const Input& Each : Of.Inputs) AddInput(Made, ++At, Each);
    return Made.Take();
}

}  // namespace

std::vector<DemoObject> DemoForms() {
    std::vector<DemoObject> All{
        Mater(L"PAGINE", L"Pagine del catalogo in linea, in due lingue", Pages()),
        Mater(L"SPORTELLO", L"Pagine del banco dei prestiti", DeskPages()),
    };
    for (const Form& Each : Forms()) All.push_back(Stem(Each));
    return All;
}

}  // namespace kv::host
