// The system's headers, the same for every file of the window. Only the wide operations are called.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef STRICT
#define STRICT
#endif
#include <windows.h>
// behind windows.h
#include <commctrl.h>

// An operation of kv::Platform bears the name of this macro.
#undef MessageBox
