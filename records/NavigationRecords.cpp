// The operations of Stored for the records of browses, help, menus, queries, set operations and web servers.
#include "records/BrowseRecord.h"
#include "records/HelpRecord.h"
#include "records/MenuRecord.h"
#include "records/QueryRecord.h"
#include "records/SetOpRecord.h"
#include "records/StoredBody.h"
#include "records/WebServerRecord.h"

namespace kv {

template struct Stored<BrowseRecord>;
template struct Stored<HelpRecord>;
template struct Stored<MenuRecord>;
template struct Stored<QueryFieldRecord>;
template struct Stored<QueryRecord>;
template struct Stored<SetOpRecord>;
template struct Stored<WebServerRecord>;

}  // namespace kv
