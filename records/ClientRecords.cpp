// The operations of Stored for the records of applications, retrieval bases, profiles and web clients.
#include "records/ApplicationRecord.h"
#include "records/ProfileRecord.h"
#include "records/RetrievalRecord.h"
#include "records/StoredBody.h"
#include "records/WebClientRecord.h"

namespace kv {

template struct Stored<ApplicationRecord>;
template struct Stored<RetrievalRecord>;
template struct Stored<WebClientRecord>;
template struct Stored<ProfileFieldRecord>;
template struct Stored<CookieItem>;
template struct Stored<FormatRecord>;
template struct Stored<LoanTableRecord>;
template struct Stored<ProfileRecord>;

}  // namespace kv
