#include <cstdint>

#include "host/DemoParts.h"

namespace kv::host {
namespace {

/// How the records of a field's table are tied to those of another.
struct Link {
    std::wstring_view Table{};
    std::wstring_view Mode = L"LINKNONE";
    std::int32_t Type = 0;
    std::int32_t Reciprocal = 0;
};

/// A field, and the members of the group that it heads. Where a field stands tells its LEVEL= and GROUPTAG=.
struct Field {
    std::int32_t Tag;
    std::wstring_view Name;
    std::wstring_view Caption;
    std::wstring_view Type = L"TEXT";
    std::int32_t Size = 0;
    std::wstring_view Flags = L"NONE";
    std::wstring_view Semantic = L"NONE";
    Link To{};
    std::wstring_view Allowed{};  // the table of the values that are allowed
    std::vector<std::wstring_view> Defaults{};
    std::vector<Field> Members{};
};

// What a link says of the record that it leads to.
namespace as {
constexpr std::int32_t kWhole = 1;
constexpr std::int32_t kPiece = 2;
constexpr std::int32_t kSeries = 3;
constexpr std::int32_t kPublisher = 10;
constexpr std::int32_t kUniformTitle = 11;
constexpr std::int32_t kSubject = 12;
constexpr std::int32_t kPlace = 13;
constexpr std::int32_t kClass = 14;
constexpr std::int32_t kAuthor = 15;
constexpr std::int32_t kOtherAuthor = 16;
constexpr std::int32_t kBody = 17;
}  // namespace as

Link Authority(std::wstring_view Table, std::int32_t Type) { return {Table, L"LINKOWNER", Type, 0}; }
// Between notices: up to the whole, down to its pieces, both ways to a series.
Link Upwards() { return {L"NOTIZIE", L"LINKRECIPROCAL", as::kWhole, as::kPiece}; }
Link Downwards() { return {L"NOTIZIE", L"OWNERRECIPROCAL", as::kPiece, as::kWhole}; }
Link Sideways() { return {L"NOTIZIE", L"LINKRECIPROCAL", as::kSeries, as::kSeries}; }

// A bibliographic notice. The fields bear the tags of the exchange format; the members of a group stand at
// 10000 and ten times the tag, those of a group in a group at 20000.
std::vector<Field> Notices() {
    return {
        {1, L"NUMERO", L"Numero della notizia", L"LONG", 0, L"READONLY|AUTONUM|MANDATORY"},
        {5, L"MODIFICA", L"Ultima modifica", L"DATE", 0, L"READONLY|AUTODATE"},
        {.Tag = 10,
         .Name = L"ISBN",
         .Caption = L"Numero standard del libro",
         .Flags = L"REPEATABLE",
         .Members = {{10101, L"NUMERO ISBN", L"ISBN", L"TEXT", 17, L"VALIDATEONQUIT"},
                     {10102, L"QUALIFICAZIONE ISBN", L"Qualificazione (brossura, rilegato)", L"TEXT", 40},
                     {10103, L"PREZZO", L"Prezzo di copertina", L"CURRENCY"}}},
        {11, L"ISSN", L"Numero standard del periodico", L"TEXT", 9, L"FIXEDSIZE|REPEATABLE"},
        {20, L"NUMERO BIBLIOGRAFIA", L"Numero nella bibliografia nazionale", L"TEXT", 20, L"REPEATABLE"},
        {.Tag = 100,
         .Name = L"DATI GENERALI",
         .Caption = L"Dati generali di elaborazione",
         .Members = {{11001, L"DATA INGRESSO", L"Data di ingresso nel catalogo", L"DATE", 0,
                      L"READONLY|AUTODATE|IFEMPTY"},
                     {.Tag = 11002,
                      .Name = L"TIPO DATA",
                      .Caption = L"Tipo della data di pubblicazione",
                      .Size = 1,
                      .Flags = L"FIXEDSIZE|COMBOBOX",
                      .Semantic = L"GSTPUBTYPE",
                      .Defaults = {L"d", L"e", L"f"}},
                     {11003, L"ANNO", L"Anno di pubblicazione", L"LONG", 0, L"NONE", L"ITEMDATE"},
                     {11004, L"ANNO FINALE", L"Anno finale, per ciò che è uscito in più anni", L"LONG"},
                     {11005, L"DESTINATARI", L"Destinatari", L"TEXT", 3}}},
        {.Tag = 101,
         .Name = L"LINGUA",
         .Caption = L"Lingua",
         .Flags = L"REPEATABLE",
         .Members = {{.Tag = 11011,
                      .Name = L"LINGUA TESTO",
                      .Caption = L"Lingua del testo",
                      .Size = 3,
                      .Flags = L"FIXEDSIZE|COMBOBOX|MANDATORY|VALIDATEONQUIT",
                      .Allowed = L"LINGUE",
                      .Defaults = {L"ita"}},
                     {.Tag = 11012,
                      .Name = L"LINGUA ORIGINALE",
                      .Caption = L"Lingua dell'opera originale",
                      .Size = 3,
                      .Flags = L"FIXEDSIZE|COMBOBOX|VALIDATEONQUIT",
                      .Allowed = L"LINGUE"}}},
        {.Tag = 102,
         .Name = L"PAESE",
         .Caption = L"Paese di pubblicazione",
         .Size = 2,
         .Flags = L"FIXEDSIZE|COMBOBOX|VALIDATEONQUIT",
         .Allowed = L"PAESI",
         .Defaults = {L"IT"}},
        {105, L"DATI MONOGRAFIA", L"Dati codificati: monografie", L"TEXT", 13},
        {110, L"DATI PERIODICO", L"Dati codificati: periodici", L"TEXT", 11},
        {.Tag = 200,
         .Name = L"TITOLO",
         .Caption = L"Titolo e responsabilità",
         .Flags = L"MANDATORY",
         .Members = {{12001, L"TITOLO PROPRIO", L"Titolo proprio", L"TEXT", 0, L"TEXTBOX|MANDATORY|CAPTURE",
                      L"ITEMTITLE"},
                     {12002, L"DESIGNAZIONE", L"Designazione generica del materiale", L"TEXT", 30},
                     {12003, L"TITOLO PARALLELO", L"Titolo parallelo", L"TEXT", 0, L"REPEATABLE"},
                     {12004, L"COMPLEMENTO", L"Complemento del titolo", L"TEXT", 0, L"REPEATABLE"},
                     {12005, L"RESPONSABILITÀ", L"Prima formulazione di responsabilità", L"TEXT", 0,
                      L"CAPTURE", L"MAINRESP"},
                     {12006, L"ALTRE RESPONSABILITÀ", L"Altre formulazioni di responsabilità", L"TEXT", 0,
                      L"REPEATABLE"},
                     {12007, L"NUMERO PARTE", L"Numero della parte", L"TEXT", 20, L"NONE", L"SETNUM"}}},
        {205, L"EDIZIONE", L"Indicazione di edizione", L"TEXT", 80},
        {.Tag = 210,
         .Name = L"PUBBLICAZIONE",
         .Caption = L"Pubblicazione e distribuzione",
         .Flags = L"REPEATABLE",
         .Members = {{12101, L"LUOGO", L"Luogo di pubblicazione", L"TEXT", 60, L"REPEATABLE"},
                     {.Tag = 12102,
                      .Name = L"EDITORE",
                      .Caption = L"Editore",
                      .Size = 80,
                      .Flags = L"REPEATABLE|CAPTURE",
                      .Semantic = L"PUBLISHER",
                      .To = Authority(L"EDITORI", as::kPublisher)},
                     {12103, L"DATA PUBBLICAZIONE", L"Data come si legge sul documento", L"TEXT", 30},
                     {12104, L"STAMPATORE", L"Luogo di stampa e stampatore", L"TEXT", 80}}},
        {.Tag = 215,
         .Name = L"DESCRIZIONE FISICA",
         .Caption = L"Descrizione fisica",
         .Members = {{12151, L"ESTENSIONE", L"Pagine, volumi, durata", L"TEXT", 60},
                     {12152, L"ILLUSTRAZIONI", L"Illustrazioni e altri particolari", L"TEXT", 40},
                     {12153, L"DIMENSIONI", L"Dimensioni", L"TEXT", 20},
                     {12154, L"ALLEGATI", L"Materiale allegato", L"TEXT", 60, L"REPEATABLE"}}},
        {.Tag = 225,
         .Name = L"COLLEZIONE",
         .Caption = L"Collezione, come si legge sul documento",
         .Flags = L"REPEATABLE",
         .Members = {{12251, L"TITOLO COLLEZIONE", L"Titolo della collezione", L"TEXT", 120},
                     {12252, L"NUMERO COLLEZIONE", L"Numero nella collezione", L"TEXT", 20},
                     {12253, L"ISSN COLLEZIONE", L"ISSN della collezione", L"TEXT", 9, L"FIXEDSIZE"}}},
        {300, L"NOTA", L"Nota generale", L"TEXT", 0, L"TEXTBOX|REPEATABLE"},
        {327, L"NOTA CONTENUTO", L"Nota di contenuto", L"TEXT", 0, L"TEXTBOX|REPEATABLE"},
        {330, L"SOMMARIO", L"Sommario o abstract", L"TEXT", 0, L"TEXTBOX"},
        {.Tag = 410,
         .Name = L"FA PARTE DI",
         .Caption = L"Collezione di cui fa parte",
         .Flags = L"REPEATABLE",
         .To = Sideways()},
        {.Tag = 461,
         .Name = L"OPERA",
         .Caption = L"Opera di cui è un volume",
         .Semantic = L"SETLINK",
         .To = Upwards()},
        {.Tag = 463,
         .Name = L"SPOGLIO",
         .Caption = L"Contributi che contiene",
         .Flags = L"REPEATABLE",
         .Semantic = L"ITEMLINK",
         .To = Downwards()},
        {.Tag = 500,
         .Name = L"TITOLO UNIFORME",
         .Caption = L"Titolo uniforme",
         .Semantic = L"TITLELINK",
         .To = Authority(L"TITOLI", as::kUniformTitle)},
        {517, L"ALTRO TITOLO", L"Altre varianti del titolo", L"TEXT", 0, L"REPEATABLE"},
        {.Tag = 600,
         .Name = L"SOGGETTO PERSONA",
         .Caption = L"Persona come soggetto",
         .Flags = L"REPEATABLE",
         .To = Authority(L"AUTORI", as::kSubject)},
        {.Tag = 606,
         .Name = L"SOGGETTO",
         .Caption = L"Soggetto",
         .Flags = L"REPEATABLE|CAPTURE",
         .Semantic = L"SUBJECTLINK",
         .To = Authority(L"SOGGETTI", as::kSubject)},
        {.Tag = 607,
         .Name = L"SOGGETTO LUOGO",
         .Caption = L"Luogo come soggetto",
         .Flags = L"REPEATABLE",
         .To = Authority(L"SOGGETTI", as::kPlace)},
        {610, L"PAROLE CHIAVE", L"Termini non controllati", L"TEXT", 0, L"REPEATABLE"},
        {.Tag = 676,
         .Name = L"CLASSE",
         .Caption = L"Classificazione decimale",
         .Size = 30,
         .Flags = L"REPEATABLE",
         .Semantic = L"CLASSLINK",
         .To = Authority(L"CLASSI", as::kClass)},
        {.Tag = 700,
         .Name = L"AUTORE",
         .Caption = L"Persona: responsabilità principale",
         .Members = {{.Tag = 17001,
                      .Name = L"NOME AUTORE",
                      .Caption = L"Nome",
                      .Flags = L"CAPTURE",
                      .Semantic = L"RESPLINK",
                      .To = Authority(L"AUTORI", as::kAuthor)},
                     {17002, L"FUNZIONE AUTORE", L"Funzione", L"TEXT", 3, L"FIXEDSIZE", L"RESPFLAGS"}}},
        {.Tag = 702,
         .Name = L"ALTRO AUTORE",
         .Caption = L"Persona: responsabilità secondaria",
         .Flags = L"REPEATABLE",
         .Members = {{.Tag = 17021,
                      .Name = L"NOME ALTRO AUTORE",
                      .Caption = L"Nome",
                      .Semantic = L"RESPLINK",
                      .To = Authority(L"AUTORI", as::kOtherAuthor)},
                     {17022, L"FUNZIONE ALTRO AUTORE", L"Funzione", L"TEXT", 3, L"FIXEDSIZE", L"RESPFLAGS"}}},
        {.Tag = 710,
         .Name = L"ENTE",
         .Caption = L"Ente: responsabilità principale",
         .Flags = L"REPEATABLE",
         .Semantic = L"RESPLINK",
         .To = Authority(L"AUTORI", as::kBody)},
        {801, L"FONTE", L"Agenzia che ha redatto la notizia", L"TEXT", 40, L"READONLY|REPEATABLE"},
        {856, L"RISORSA IN LINEA", L"Indirizzo della risorsa", L"TEXT", 0, L"REPEATABLE"},
        {.Tag = 950,
         .Name = L"COPIA",
         .Caption = L"Copia posseduta",
         .Flags = L"REPEATABLE",
         .Members = {{.Tag = 19501,
                      .Name = L"BIBLIOTECA",
                      .Caption = L"Biblioteca",
                      .Size = 4,
                      .Flags = L"COMBOBOX|MANDATORY",
                      .Semantic = L"GSTBIBLNK",
                      .Allowed = L"BIBLIOTECHE",
                      .Defaults = {L"BV01"}},
                     {19502, L"COLLOCAZIONE", L"Collocazione", L"TEXT", 40, L"MANDATORY", L"GSTSIGLNK"},
                     {19503, L"INVENTARIO", L"Numero di inventario", L"LONG", 0, L"MANDATORY", L"GSTACCLNK"},
                     {19504, L"CODICE A BARRE", L"Codice a barre", L"TEXT", 13, L"FIXEDSIZE", L"GSTBARLNK"},
                     {.Tag = 19505,
                      .Name = L"STATO COPIA",
                      .Caption = L"Disponibilità",
                      .Size = 12,
                      .Flags = L"LISTBOX",
                      .Semantic = L"LOANCHECK",
                      .Allowed = L"STATO",
                      .Defaults = {L"DISPONIBILE"}},
                     {.Tag = 19506,
                      .Name = L"VISIBILITÀ COPIA",
                      .Caption = L"Chi la vede",
                      .Size = 12,
                      .Flags = L"LISTBOX",
                      .Allowed = L"VISIBILITA",
                      .Defaults = {L"PUBBLICA"}},
                     {.Tag = 19507,
                      .Name = L"PRESTITO",
                      .Caption = L"Prestito in corso",
                      .Flags = L"READONLY",
                      .Members = {{29501, L"INIZIO PRESTITO", L"Dal", L"DATE", 0, L"READONLY", L"LOANSTART"},
                                  {29502, L"FINE PRESTITO", L"Al", L"DATE", 0, L"READONLY", L"LOANEND"},
                                  {29503, L"STATO PRESTITO", L"Stato", L"BYTE", 0, L"READONLY",
                                   L"LOANSTATUS"},
                                  {29504, L"NOTA PRESTITO", L"Nota del banco", L"TEXT", 80, L"NONE",
                                   L"LOANNOTE"}}}}},
        {990, L"ISBD", L"Descrizione già composta", L"TEXT", 0, L"READONLY|HIDDEN", L"ISBDCOOK"},
        {991, L"REGOLA ISBD", L"Regola con cui è composta", L"TEXT", 12, L"READONLY|HIDDEN", L"ISBDRULE"},
        {998, L"LIVELLO", L"Livello gerarchico", L"BYTE", 0, L"HIDDEN", L"HIERLEVEL"},
    };
}

std::vector<Field> Periodicals() {
    return {
        {1, L"NUMERO", L"Numero della testata", L"LONG", 0, L"READONLY|AUTONUM|MANDATORY"},
        {11, L"ISSN", L"ISSN", L"TEXT", 9, L"FIXEDSIZE"},
        {200, L"TESTATA", L"Titolo della testata", L"TEXT", 0, L"MANDATORY", L"ITEMTITLE"},
        {326, L"FREQUENZA", L"Frequenza di uscita", L"TEXT", 30},
        {.Tag = 950,
         .Name = L"FASCICOLO",
         .Caption = L"Fascicolo ricevuto",
         .Flags = L"REPEATABLE",
         .Members = {{19501, L"ANNATA", L"Annata", L"LONG"},
                     {19502, L"NUMERO FASCICOLO", L"Numero", L"TEXT", 12, L"NONE", L"ITEMNUM"},
                     {19503, L"DATA FASCICOLO", L"Data", L"DATE", 0, L"NONE", L"ITEMDATE"}}},
    };
}

// The headings of an authority table, each with the forms that lead to it.
std::vector<Field> Headings(std::wstring_view Caption) {
    return {
        {1, L"NUMERO", L"Numero della voce", L"LONG", 0, L"READONLY|AUTONUM|MANDATORY"},
        {200, L"VOCE", Caption, L"TEXT", 120, L"MANDATORY"},
        {300, L"NOTA", L"Nota d'uso", L"TEXT", 0, L"TEXTBOX"},
        {400, L"RINVIO", L"Forma rinviata", L"TEXT", 120, L"REPEATABLE"},
    };
}

// The values that a field of another table may hold.
std::vector<Field> Codes(std::int32_t Size) {
    return {
        {1, L"CODICE", L"Codice", L"TEXT", Size, L"MANDATORY"},
        {2, L"SIGNIFICATO", L"Significato", L"TEXT", 60},
    };
}

std::vector<Field> Pictures(std::wstring_view Key, std::wstring_view Caption) {
    return {
        {1, Key, Caption, L"TEXT", 40, L"MANDATORY"},
        {200, L"TITOLO", L"Titolo o descrizione", L"TEXT", 0, L"NONE", L"ITEMTITLE"},
        {210, L"DATA", L"Data o secolo", L"TEXT", 30},
        {300, L"NOTA", L"Nota", L"TEXT", 0, L"TEXTBOX"},
        {856, L"IMMAGINE", L"File dell'immagine", L"TEXT", 0, L"REPEATABLE"},
    };
}

struct RecordRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::wstring_view Index;  // the primary one
    std::wstring_view Flags;
    std::vector<Field> Fields;
};

std::vector<RecordRow> Records() {
    return {
        {L"NOTIZIE", L"Notizie bibliografiche, secondo il formato di scambio", L"NUM", L"CATALOGUE",
         Notices()},
        {L"PERIODICI", L"Testate e fascicoli dell'emeroteca", L"PER", L"CATALOGUE", Periodicals()},
        {L"AUTORI", L"Voci di autorità: persone ed enti", L"AUT", L"AUTHORITY", Headings(L"Nome")},
        {L"SOGGETTI", L"Voci di autorità: soggetti e luoghi", L"SOG", L"AUTHORITY", Headings(L"Soggetto")},
        {L"CLASSI", L"Voci di autorità: classi decimali", L"CLA", L"AUTHORITY", Headings(L"Classe")},
        {L"EDITORI", L"Voci di autorità: editori", L"EDI", L"AUTHORITY", Headings(L"Editore")},
        {L"TITOLI", L"Voci di autorità: titoli uniformi", L"TUN", L"AUTHORITY", Headings(L"Titolo uniforme")},
        {L"LINGUE", L"Lingue ammesse", L"LIN", L"NONE", Codes(3)},
        {L"PAESI", L"Paesi ammessi", L"PAE", L"NONE", Codes(2)},
        {L"BIBLIOTECHE", L"Biblioteche del sistema", L"BIB", L"NONE", Codes(4)},
        {L"STATO", L"Disponibilità delle copie", L"STA", L"NONE", Codes(12)},
        {L"VISIBILITA", L"Chi vede una notizia o una copia", L"VIS", L"NONE", Codes(12)},
        {L"FOTOGRAFIE", L"Fondo fotografico", L"INV", L"OEMCHARSET",
         Pictures(L"INVENTARIO", L"Numero di inventario")},
        {L"MANOSCRITTI", L"Manoscritti digitalizzati", L"SEG", L"OEMCHARSET",
         Pictures(L"SEGNATURA", L"Segnatura")},
    };
}

struct IndexRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    std::int32_t Columns;
    std::wstring_view Sort;
};

constexpr IndexRow kIndexes[] = {
    {L"NUM", L"Indice: numero della notizia", 1, L"\"CIFRE\""},
    {L"TIT", L"Indice: titolo, poi anno", 2, L"\"ITALIANO\",\"CIFRE\""},
    {L"AUT", L"Indice: autori, poi titolo", 2, L"\"ITALIANO\",\"ITALIANO\""},
    {L"SOG", L"Indice: soggetti", 1, L"\"ITALIANO\""},
    {L"CLA", L"Indice: classi", 1, L"\"SEGNATURE\""},
    {L"EDI", L"Indice: editori, poi luogo", 2, L"\"ITALIANO\",\"ITALIANO\""},
    {L"ISB", L"Indice: ISBN e altri numeri standard", 1, L"\"CODICI\""},
    {L"DAT", L"Indice: anno, dal più recente, poi titolo", 2, L"\"RECENTI\",\"ITALIANO\""},
    {L"COL", L"Indice: collezione e numero", 2, L"\"ITALIANO\",\"CIFRE\""},
    {L"TUN", L"Indice: titoli uniformi", 1, L"\"ITALIANO\""},
    {L"SEG", L"Indice: collocazioni e segnature", 1, L"\"SEGNATURE\""},
    {L"INV", L"Indice: biblioteca e inventario", 2, L"\"CODICI\",\"CIFRE\""},
    {L"PER", L"Indice: testate dei periodici", 1, L"\"ITALIANO\""},
    {L"LIN", L"Indice: lingue", 1, L"\"CODICI\""},
    {L"PAE", L"Indice: paesi", 1, L"\"CODICI\""},
    {L"BIB", L"Indice: biblioteche", 1, L"\"CODICI\""},
    {L"STA", L"Indice: disponibilità", 1, L"\"CODICI\""},
    {L"VIS", L"Indice: visibilità", 1, L"\"CODICI\""},
};

class FieldWriter {
  public:
    explicit FieldWriter(DemoDraft& Into) : Into_(Into) {}

    void Add(const std::vector<Field>& Fields, std::int32_t Level = 1, std::int32_t Group = 0) {
        for (const Field& Each : Fields) {
            const bool Heads = !Each.Members.empty();
            Write(Each, Level, Level == 1 && Heads ? Each.Tag : Group);
            Add(Each.Members, Level + 1, Each.Tag);
        }
    }

  private:
    void Write(const Field& Of, std::int32_t Level, std::int32_t Group) {
        Into_.Element(L"FIELDS");
        Into_.Section(L"FIELDPARMS", {++Count_}, [&](LineWriter& Out) {
            Out.Number(L"TAG=", Of.Tag);
            Out.Quoted(L"NAME=", Of.Name);
            Out.Plain(L"DATATYPE=", Of.Type);
            Out.Number(L"LEVEL=", Level);
            Out.Number(L"GROUPTAG=", Group);
            Out.Plain(L"SEMANTIC=", Of.Semantic);
            Out.Bool(L"VISIBLE=", Of.Flags.find(L"HIDDEN") == Of.Flags.npos);
            Out.Quoted(L"LINKTABLE=", Of.To.Table);
            Out.Plain(L"LINKMODE=", Of.To.Mode);
            Out.Number(L"LINKTYPE=", Of.To.Type);
            Out.Number(L"LINKTYPERECPR=", Of.To.Reciprocal);
            Out.Quoted(L"VALIDATIONTABLE=", Of.Allowed);
            Out.Quoted(L"CAPTION=", Of.Caption);
            Out.Plain(L"FLAGS=", Of.Flags);
            for (const std::wstring_view Value : Of.Defaults) Out.Quoted(L"DEFAULT=", Value);
            Out.Number(L"SIZE=", Of.Size);
        });
    }

    DemoDraft& Into_;
    std::int32_t Count_ = 0;
};

void Flatten(const std::vector<Field>& Fields, std::vector<DemoField>& Into) {
    for (const Field& Each : Fields) {
        Into.push_back({Each.Tag, Each.Name});
        Flatten(Each.Members, Into);
    }
}

}  // namespace

std::vector<DemoField> DemoFieldsOf(std::wstring_view Table) {
    std::vector<DemoField> All;
    for (const RecordRow& Row : Records())
        if (Row.Name == Table) Flatten(Row.Fields, All);
    return All;
}

std::vector<DemoObject> DemoTables() {
    std::vector<DemoObject> All;
    std::int32_t TableId = 0;
    for (const RecordRow& Row : Records()) {
        DemoDraft Table(L"TABLE", Row.Name, Row.Desc);
        Table.Section(L"PARMS", {1}, [&](LineWriter& Out) {
            Out.Quoted(L"NAME=", Row.Name);
            Out.Plain(L"STYLE=", L"RECORD");
            Out.Quoted(L"INDEX=", Row.Index);
            Out.Plain(L"FLAGS=", Row.Flags);
            Out.Number(L"TABLEID=", ++TableId);
        });
        FieldWriter(Table).Add(Row.Fields);
        All.push_back(Table.Take());
    }
    TableId = 100;
    for (const IndexRow& Row : kIndexes) {
        DemoDraft Table(L"TABLE", Row.Name, Row.Desc);
        Table.Section(L"PARMS", {1}, [&](LineWriter& Out) {
            Out.Quoted(L"NAME=", Row.Name);
            Out.Plain(L"STYLE=", L"INDEX");
            Out.Number(L"COLUMNS=", Row.Columns);
            Out.Plain(L"SORT=", Row.Sort);
            Out.Plain(L"FLAGS=", L"NONE");
            Out.Number(L"TABLEID=", ++TableId);
        });
        All.push_back(Table.Take());
    }
    return All;
}

}  // namespace kv::host
