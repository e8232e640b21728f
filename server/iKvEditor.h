// The interface through which a host starts work on one stored object.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "frame/DesignTree.h"
#include "frame/RegData.h"

namespace kv {

/// In slot order. The Booleans answer True on failure.
class iKvEditor {
  public:
    virtual ~iKvEditor() = default;

    /// Appends the whole object as text to `Buffer`; needs no window. A failure is shown to the operator.
    [[nodiscard]] virtual bool Export(std::shared_ptr<kv::RegData> RegData, const std::wstring& Clsid,
                                      std::wstring& Buffer) = 0;
    /// The six values of the last error reported.
    virtual void LastError(std::int32_t& Number, std::wstring& Source, std::wstring& Description,
                           std::wstring& HelpFile, std::wstring& HelpContext, std::int32_t& LastDLLError) = 0;
    /// Reads the object from exported text. A failure is shown to the operator.
    [[nodiscard]] virtual bool Import(std::shared_ptr<kv::RegData> RegData, const std::wstring& Clsid,
                                      std::wstring& Buffer) = 0;
    /// Opens the tree window on the object and comes back when it is closed. `Target` comes back with what
    /// the window made of it. An unknown class word fails with 20000 "Metodo sconosciuto [<word>]", which the
    /// host reads through LastError.
    [[nodiscard]] virtual bool ShowData(HostObject* CallBack, std::shared_ptr<kv::RegData> RegData,
                                        const std::wstring& Clsid, kv::RegData*& Target, bool Flag) = 0;
    /// 256.
    virtual std::int32_t CurrVersion() const noexcept = 0;
    /// Drops the design item and the object, ends the tree window. The server object is of no use afterwards.
    virtual void ShutDown() noexcept = 0;
};

}  // namespace kv
