// The operations of Stored for the elements that the lists of several records hold.
#include "records/CommandRecord.h"
#include "records/FilterRecord.h"
#include "records/FontRecord.h"
#include "records/HtmlRecord.h"
#include "records/MessageRecord.h"
#include "records/ParmItem.h"
#include "records/PopupRecord.h"
#include "records/StoredBody.h"

namespace kv {

template struct Stored<CommandRecord>;
template struct Stored<FilterRecord>;
template struct Stored<FontRecord>;
template struct Stored<HtmlRecord>;
template struct Stored<MessageRecord>;
template struct Stored<MessageListRecord>;
template struct Stored<ParmItem>;
template struct Stored<PopupRecord>;

}  // namespace kv
