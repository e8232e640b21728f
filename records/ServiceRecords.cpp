// The operations of Stored for the records of catalogues, imports, loans, mail and of what stands by itself.
#include "records/AliasRecord.h"
#include "records/CatProcRecord.h"
#include "records/CatalogueRecord.h"
#include "records/ImportRecord.h"
#include "records/LoanClientRecord.h"
#include "records/LoanMenuRecord.h"
#include "records/LoanRecord.h"
#include "records/MailGroupRecord.h"
#include "records/MailRecord.h"
#include "records/RepositoryRecord.h"
#include "records/StoredBody.h"

namespace kv {

template struct Stored<AliasRecord>;
template struct Stored<CatProcRecord>;
template struct Stored<CatalogueRecord>;
template struct Stored<ImportRecord>;
template struct Stored<LoanClientRecord>;
template struct Stored<LoanMenuRecord>;
template struct Stored<LoanRecord>;
template struct Stored<MailGroupParmsRecord>;
template struct Stored<MailGroupMailRecord>;
template struct Stored<MailGroupExportRecord>;
template struct Stored<MailGroupNoteBookRecord>;
template struct Stored<MailGroupKeepRecord>;
template struct Stored<MailBackupRecord>;
template struct Stored<MailGroupRecord>;
template struct Stored<MailRecord>;
template struct Stored<RepositoryRecord>;

}  // namespace kv
