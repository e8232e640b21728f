// The stored record of a catalogue.
#pragma once

#include "records/Stored.h"

namespace kv {

/// What the parameter section of a catalogue needs. The import record answers to it too, since a catalogue is
/// exported through one.
struct CatalogueParms {
    std::wstring Retrieval;  // retrieval base that the catalogue belongs to
    std::wstring Table;      // record table
    std::wstring Profile;    // profile that shows a record
    std::wstring Query;      // query form
    std::wstring Browse;     // result list
    std::wstring Path;       // folder of its files
    std::wstring Help;
    std::wstring HelpWww;
    std::int32_t Flags = 0;  // no flag word exists
    std::wstring MirrorOf;   // the catalogue that this one mirrors

    /// The statement of these properties for a record `R` that has them.
    template <class R>
    static constexpr auto CatalogueProperties(auto With) {
        return With(Parameter(L"Retrieval", &R::Retrieval), Parameter(L"Table", &R::Table),
                    Parameter(L"Profile", &R::Profile), Parameter(L"Query", &R::Query),
                    Parameter(L"Browse", &R::Browse), Parameter(L"Path", &R::Path),
                    Parameter(L"Help", &R::Help), Parameter(L"HelpWww", &R::HelpWww),
                    Parameter(L"Flags", &R::Flags), Parameter(L"MirrorOf", &R::MirrorOf));
    }
};

struct CatalogueRecord final : Stored<CatalogueRecord>, CatalogueParms {
    static constexpr std::wstring_view kClass = L"CatalogueRecord";
    static constexpr auto Properties(auto With) { return CatalogueProperties<CatalogueRecord>(With); }
};

}  // namespace kv
