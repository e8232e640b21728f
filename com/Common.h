// The system's headers and what widl makes of KvDesSvr.idl. The interfaces of the library stand in the global
// namespace: in kv::com `::RegData` is the host's, `kv::RegData` the core's.
#pragma once

#include <KvDesSvr_h.h>

// The core has an operation of that name.
#undef MessageBox
