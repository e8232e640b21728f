#include <array>
#include <cstdint>
#include <span>

#include "frame/StrUtil.h"
#include "frame/vdbInclude.h"
#include "host/DemoParts.h"

namespace kv::host {
namespace {

std::wstring WeightLine(int Code, int Weight) {
    return StrUtil::Hex2(static_cast<std::uint8_t>(Code)) + L" = " +
           StrUtil::Hex2(static_cast<std::uint8_t>(Weight)) + L"\n";
}

// Every character weighs what it weighs by default, but for those that `Weigh` gives another weight.
template <class Rule>
std::wstring WeightTable(Rule&& Weigh) {
    std::wstring Text;
    for (int Code = 0; Code < 256; ++Code)
        Text += WeightLine(Code,
                           Weigh(Code, static_cast<int>(DefaultSortWeight(static_cast<std::uint8_t>(Code)))));
    return Text;
}

std::wstring PlainWeights() {
    return WeightTable([](int, int Weight) { return Weight; });
}

// Shelf marks: what parts their members counts as a blank.
std::wstring ShelfMarkWeights() {
    return WeightTable([](int Code, int Weight) {
        return Code == '.' || Code == '/' || Code == '-' || Code == ':' ? 0x20 : Weight;
    });
}

std::wstring DigitWeights() {
    return WeightTable([](int Code, int) { return Code >= '0' && Code <= '9' ? Code : 0; });
}

// The digits the other way round: the latest year stands first.
std::wstring BackwardWeights() {
    return WeightTable([](int Code, int) { return Code >= '0' && Code <= '9' ? '0' + '9' - Code : 0; });
}

struct SortRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    bool NoMask;
    bool NoSpaces;
    std::wstring (*Weights)();
};

constexpr SortRow kSorts[] = {
    {L"ITALIANO", L"Ordinamento alfabetico: accenti e maiuscole non contano", false, false, PlainWeights},
    {L"SEGNATURE", L"Collocazioni: punto, barra e trattino contano come spazio", true, false,
     ShelfMarkWeights},
    {L"CIFRE", L"Numeri di inventario: contano solo le cifre", false, true, DigitWeights},
    {L"CODICI", L"Codici e numeri standard: né spazi né interpunzione", false, true, PlainWeights},
    {L"RECENTI", L"Anni: il più recente viene per primo", false, true, BackwardWeights},
};

struct Pair {
    std::wstring_view Sought;
    std::wstring_view Instead;
};

// Articles at the head of a title are passed over, unless the title is nothing else.
constexpr Pair kArticles[] = {
    {L"il", L""},  {L"lo", L""},  {L"la", L""},   {L"i", L""},   {L"gli", L""}, {L"le", L""},
    {L"un", L""},  {L"uno", L""}, {L"una", L""},  {L"l'", L""},  {L"un'", L""}, {L"the", L""},
    {L"a", L""},   {L"an", L""},  {L"les", L""},  {L"une", L""}, {L"der", L""}, {L"die", L""},
    {L"das", L""}, {L"ein", L""}, {L"eine", L""}, {L"el", L""},  {L"los", L""}, {L"las", L""},
};

// Spellings of old books, found under the one of today.
constexpr Pair kSpellings[] = {
    {L"giuoco", L"gioco"},       {L"giuochi", L"giochi"},        {L"figliuolo", L"figliolo"},
    {L"spagnuolo", L"spagnolo"}, {L"maraviglia", L"meraviglia"}, {L"istoria", L"storia"},
    {L"istorico", L"storico"},   {L"ispirito", L"spirito"},      {L"imagine", L"immagine"},
    {L"varii", L"vari"},         {L"studii", L"studi"},          {L"principii", L"princìpi"},
    {L"libraria", L"libreria"},  {L"officii", L"uffici"},        {L"publico", L"pubblico"},
};

constexpr Pair kAbbreviations[] = {
    {L"s.", L"san"},      {L"ss.", L"santi"},       {L"c.so", L"corso"},       {L"p.za", L"piazza"},
    {L"v.le", L"viale"},  {L"dott.", L"dottore"},   {L"prof.", L"professore"}, {L"ed.", L"edizione"},
    {L"vol.", L"volume"}, {L"fasc.", L"fascicolo"}, {L"n.s.", L"nuova serie"}, {L"suppl.", L"supplemento"},
    {L"&", L"e"},         {L"soc.", L"società"},    {L"univ.", L"università"}, {L"bibl.", L"biblioteca"},
};

struct StopWordRow {
    std::wstring_view Name;
    std::wstring_view Desc;
    bool Anywhere;
    bool IfFirst;
    bool IfNotOnly;
    std::wstring_view Separator;
    std::wstring_view Flags;
    std::span<const Pair> Words;
};

constexpr StopWordRow kStopWords[] = {
    {L"ARTICOLI", L"Articoli che non contano in testa al titolo", false, true, true, L"=",
     L"TERMSPACE|TERMPUNCT", kArticles},
    {L"GRAFIE", L"Grafie antiche ricondotte a quelle d'oggi", true, false, false, L"->",
     L"KEEPTERM|TERMSPACE", kSpellings},
    {L"SIGLE", L"Abbreviazioni sciolte prima della ricerca", true, false, false, L":",
     L"TERMSPACE|TERMIMPLICIT", kAbbreviations},
};

}  // namespace

std::vector<DemoObject> DemoSorts() {
    std::vector<DemoObject> All;
    for (const SortRow& Row : kSorts) {
        DemoDraft Sort(L"SORT", Row.Name, Row.Desc);
        Sort.Section(L"PARMS", {1}, [&](LineWriter& Out) {
            Out.Bool(L"NONUMERIC=", false);
            Out.Bool(L"NOTABLE=", false);
            Out.Bool(L"NOMASK=", Row.NoMask);
            Out.Bool(L"NOSPACES=", Row.NoSpaces);
        });
        Sort.Section(L"PARMS", {2}, [&](LineWriter& Out) { Out.Buffer = Row.Weights(); });
        All.push_back(Sort.Take());
    }
    return All;
}

std::vector<DemoObject> DemoStopWords() {
    std::vector<DemoObject> All;
    for (const StopWordRow& Row : kStopWords) {
        DemoDraft Table(L"STOPWORD", Row.Name, Row.Desc);
        Table.Section(L"PARMS", {1}, [&](LineWriter& Out) {
            Out.Bool(L"ANYWHERE=", Row.Anywhere);
            Out.Bool(L"IFFIRST=", Row.IfFirst);
            Out.Bool(L"IFNOTONLY=", Row.IfNotOnly);
            Out.Bool(L"IGNORECASE=", true);
            Out.Quoted(L"SEPARATOR=", Row.Separator);
            Out.Plain(L"FLAGS=", Row.Flags);
        });
        Table.Section(L"MESSAGE", {1}, [&](LineWriter& Out) {
            const auto Quoted = [](std::wstring_view Word) { return L"\"" + std::wstring(Word) + L"\""; };
            for (const Pair& Each : Row.Words)
                Out.Line(Quoted(Each.Sought) + std::wstring(Row.Separator) + Quoted(Each.Instead));
        });
        All.push_back(Table.Take());
    }
    return All;
}

}  // namespace kv::host
