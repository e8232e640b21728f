// What is done with a stored object as a whole: exported text and back, a copy.
#pragma once

#include <memory>
#include <string>

#include "host/KvRegSvr.h"

namespace kv::host {

/// Appends the object to `Buffer` as exported text. True on failure, which the server has shown.
[[nodiscard]] bool ExportText(KvRegSvr& Registry, const std::shared_ptr<RegistryObject>& Object,
                              bool SyntaxOn, std::wstring& Buffer);

/// Reads exported text into the object and saves it. True on failure, which the server has shown. `Taken`
/// tells whether anything was saved: most classes take no exported text, and succeed all the same.
[[nodiscard]] bool ImportText(KvRegSvr& Registry, const std::shared_ptr<RegistryObject>& Object,
                              bool SyntaxOn, std::wstring Buffer, bool& Taken);

/// Makes an object of the same class with the content, version and users of a stored one. Nothing is left
/// when it fails: raises and throws as KvRegSvr::ReadStored and Create, and as RegistryObject::Write.
void CopyObject(KvRegSvr& Registry, const std::wstring& Clsid, const std::wstring& Name,
                const std::wstring& NewName, const std::wstring& NewDesc);

}  // namespace kv::host
