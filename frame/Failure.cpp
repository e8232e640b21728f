#include "frame/Failure.h"

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>

#include "frame/CoreUtil.h"
#include "frame/vDesignPar.h"

namespace kv {
namespace {

struct FaultText {
    std::int32_t Number;
    std::wstring_view Text;
};

constexpr std::array<FaultText, 10> kFaults{{
    {fault::kInvalidCall, L"Chiamata o argomento non valido"},
    {fault::kOverflow, L"Overflow"},
    {fault::kOutOfMemory, L"Memoria esaurita"},
    {fault::kSubscript, L"Indice non compreso nell'intervallo"},
    {fault::kFileNotFound, L"File non trovato"},
    {fault::kFileAccess, L"Errore di accesso al file"},
    {fault::kFileExists, L"Il file esiste già"},
    {fault::kReadPastEnd, L"Lettura oltre la fine del file"},
    {fault::kNoObject, L"Oggetto non impostato"},
    {fault::kKeyTaken, L"La chiave è già associata a un elemento dell'insieme"},
}};

}  // namespace

std::wstring_view detail::TextOfFault(std::int32_t Number) noexcept {
    const auto At = std::find_if(kFaults.begin(), kFaults.end(),
                                 [&](const FaultText& Fault) { return Fault.Number == Number; });
    return At == kFaults.end() ? std::wstring_view{} : At->Text;
}

namespace {

using detail::TextOfFault;

void SetPending(std::int32_t Number, std::wstring_view Description) {
    KvError& Pending = CoreUtil::Instance().Pending();
    Pending.Number = Number;
    Pending.Description.assign(Description);
    Pending.Source.clear();
    Pending.HelpFile.clear();
    Pending.HelpContext.clear();
    Pending.LastDLLError = 0;
    Pending.Line = 0;
}

// The exception in flight becomes the pending error.
void TakeCaught() {
    try {
        throw;
    } catch (const Failure& Raised) {
        CoreUtil::Instance().Pending() = Raised.Error();
    } catch (const std::bad_alloc&) {
        SetPending(fault::kOutOfMemory, TextOfFault(fault::kOutOfMemory));
    } catch (const std::out_of_range&) {
        SetPending(fault::kSubscript, TextOfFault(fault::kSubscript));
    } catch (const std::overflow_error&) {
        SetPending(fault::kOverflow, TextOfFault(fault::kOverflow));
    } catch (...) {
        SetPending(fault::kInvalidCall, TextOfFault(fault::kInvalidCall));
    }
}

}  // namespace

void Raise(std::wstring_view Text) { Raise(kDesignFault, Text); }

void Raise(std::int32_t Number, std::wstring_view Text, std::wstring_view HelpFile) {
    KvError Error;
    Error.Number = Number;
    Error.Description = Text;
    Error.HelpFile = HelpFile;
    throw Failure(std::move(Error));
}

void RaiseFault(std::int32_t Number) { Raise(Number, TextOfFault(Number)); }

bool ReportError(const ErrorArguments& Arguments, std::int32_t& Flags) {
    CoreUtil& Core = CoreUtil::Instance();
    KvError Error;
    const bool AsGiven = (Flags & report::kPassThrough) != 0 || (Flags & report::kPassThroughToo) != 0;
    if (!AsGiven) {
        Error = Core.Pending();
        if (Error.Number == 65535) Error.Number = 0;
        SetPending(0, {});
    }
    if (Arguments.Number) Error.Number = *Arguments.Number;
    if (Arguments.Description) Error.Description = *Arguments.Description;
    if (Arguments.HelpContext) Error.HelpContext = *Arguments.HelpContext;
    if (Arguments.HelpFile) Error.HelpFile = *Arguments.HelpFile;
    if (Arguments.LastDLLError) Error.LastDLLError = *Arguments.LastDLLError;
    if (Arguments.Source) Error.Source = *Arguments.Source;
    if (!AsGiven && (Flags & report::kAppendSystemText) != 0) {
        Error.Description.append(StrUtil::kLineEnd);
        Error.Description.append(Core.SystemText(Error.LastDLLError));
    }
    return Core.ReportError(Error, Flags);
}

bool detail::ReportCaught(std::wstring_view Source, const SectionText* Text) noexcept {
    CoreUtil& Core = CoreUtil::Instance();
    try {
        TakeCaught();
        if (Text && Core.Pending().Line == 0) Core.Pending().Line = Text->Line();
        std::int32_t Flags = 0;
        ErrorArguments Arguments;
        Arguments.Source = Source;
        ReportError(Arguments, Flags);
    } catch (...) {
        // Only memory can have run out here.
        Core.KeepOutOfMemory(Source);
    }
    return true;
}

}  // namespace kv
