// The operations of Stored for the records of import procedures, material, sorts, stems, stop words, string
// tables and tables.
#include "records/FieldRecord.h"
#include "records/ImportProcRecord.h"
#include "records/MaterRecord.h"
#include "records/SortRecord.h"
#include "records/StemRecord.h"
#include "records/StopWordRecord.h"
#include "records/StoredBody.h"
#include "records/StringTableRecord.h"
#include "records/TableRecord.h"

namespace kv {

template struct Stored<ImportFieldRecord>;
template struct Stored<ImportIndexRecord>;
template struct Stored<ImportProcRecord>;
template struct Stored<MaterRecord>;
template struct Stored<SortRecord>;
template struct Stored<StemFieldRecord>;
template struct Stored<StemRecord>;
template struct Stored<StopWordRecord>;
template struct Stored<StringItemRecord>;
template struct Stored<StringTableRecord>;
template struct Stored<TableRecord>;
template struct Stored<FieldRecord>;

}  // namespace kv
