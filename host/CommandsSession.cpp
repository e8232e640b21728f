#include "host/CommandsSession.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <new>
#include <ostream>
#include <utility>

#include "frame/CoreUtil.h"
#include "frame/MsgUtil.h"
#include "frame/StrUtil.h"
#include "host/ObjectWindow.h"
#include "host/Text.h"
#include "server/vdSvr.h"

namespace kv::host {
namespace {

constexpr std::int32_t kUnknownClass = 20004;
constexpr std::int32_t kUnknownInstance = 20016;
constexpr std::int32_t kUnknownArgument = 20021;

bool IsClass(std::wstring_view Clsid) {
    const auto Known = ClassWords();
    return std::find(Known.begin(), Known.end(), Clsid) != Known.end();
}

// A fault of the machine's and not a refusal: a file that is missing, can't be opened, ends too early.
bool IsFileFault(const KvError& Error) {
    switch (Error.Number) {
        case fault::kFileNotFound:
        case fault::kFileAccess:
        case fault::kFileExists:
        case fault::kReadPastEnd:
        case fault::kOutOfMemory:
            return true;
        default:
            return false;
    }
}

}  // namespace

Session::Session(const Options& Chosen, const Streams& Standard)
    : Chosen_(Chosen),
      Standard_(Standard),
      Platform_(Chosen.ProgramDir, Chosen.Temp, Standard.Err),
      Before_(CoreUtil::Instance().SetPlatform(&Platform_)) {}

Session::~Session() { CoreUtil::Instance().SetPlatform(Before_); }

KvRegSvr& Session::Registry() {
    if (!Registry_) Registry_.emplace(Chosen_.Store);
    return *Registry_;
}

void Session::FromRegistry(const std::wstring& Clsid, const std::function<void(KvRegSvr&)>& Request) {
    try {
        Request(Registry());
    } catch (const Failure& Raised) {
        if (Raised.Error().Number == kUnknownInstance) MustBeClass(Clsid);
        throw;
    }
}

std::shared_ptr<RegistryObject> Session::Open(const std::wstring& Clsid, const std::wstring& Name) {
    std::shared_ptr<RegistryObject> Found;
    FromRegistry(Clsid, [&](KvRegSvr& Registry) { Found = Registry.Open(Clsid, Name); });
    return Found;
}

void Session::InWindow(const std::shared_ptr<RegData>& Object,
                       const std::function<void(window::WindowCore&)>& While) {
    ObjectWindow Window(&Registry(), Object, Clipboard_);
    Must(Window.Show(Chosen_.SyntaxOn, While));
}

void Session::InWindow(const std::wstring& Clsid, const std::wstring& Name,
                       const std::function<void(window::WindowCore&)>& While) {
    InWindow(Open(Clsid, Name), While);
}

void Session::Must(bool Failed) {
    CoreUtil::Instance().ShowLastError();  // what nobody has shown yet
    std::vector<KvError> Shown = Platform_.TakeShown();
    if (Failed || !Shown.empty()) throw Refused(std::move(Shown));
}

// Below the server trouble with the store is a failure like others. Its sentence, and no other that a save
// comes back with, names the file.
void Session::MustSave(bool Failed) {
    const std::wstring Store = FromUtf8Lossy(PathText(std::filesystem::absolute(Chosen_.Store)));
    try {
        Must(Failed);
    } catch (const Refused& No) {
        for (const KvError& Error : No.Errors())
            if (Error.Number == kDesignFault && Error.Description.find(Store) != std::wstring::npos)
                throw StoreError(Error.Description);
        throw;
    }
}

std::wstring Session::ReadSection() {
    if (&In() == &std::cin && ::isatty(STDIN_FILENO) == 1)
        TellTrouble("reading the text from the terminal; Ctrl-D on a line of its own ends it", Err());
    const std::string Bytes{std::istreambuf_iterator<char>(In()), std::istreambuf_iterator<char>()};
    if (In().bad()) throw FileTrouble("the input could not be read");
    std::optional<std::wstring> Section = SectionFrom(Bytes);
    if (!Section) throw FileTrouble("the input is not UTF-8 text");
    return *std::move(Section);
}

void RefuseWith(std::int32_t Message, std::wstring_view Argument) {
    KvError Error;
    Error.Number = Message;
    MsgUtil::MessageText(Message, Argument, Error.Description);
    throw Refused({std::move(Error)});
}

void MustBeClass(const std::wstring& Clsid) {
    if (!IsClass(Clsid)) RefuseWith(kUnknownClass, Clsid);
}

Address Addressed(const window::TreeModel& Tree, const std::wstring& Section, const Place& At, Want Wanted) {
    std::optional<Address> Found = Resolve(Tree, Section, At, Wanted);
    if (!Found) RefuseWith(kUnknownArgument, At.empty() ? Section : Section + L" " + PlaceText(At));
    return *std::move(Found);
}

std::wstring ErrorText(const KvError& Error) {
    std::wstring Text;
    if (Error.Line > 0) Text.append(L"riga ").append(std::to_wstring(Error.Line)).append(L": ");
    return Text.append(Error.Description);
}

int TellRefused(const std::vector<KvError>& Errors, std::ostream& Err) {
    bool Told = false;
    bool FileFault = false;
    for (const KvError& Error : Errors) {
        FileFault = FileFault || IsFileFault(Error);
        if (Error.Description.empty()) continue;
        Err << PlainText(ErrorText(Error)) << '\n';
        Told = true;
    }
    if (!Told) TellTrouble("the server has refused, without a message", Err);
    return FileFault ? exit_code::kFailed : exit_code::kRefused;
}

void TellTrouble(std::string_view Sentence, std::ostream& Err) { Err << "kvdesign: " << Sentence << '\n'; }

int Guarded(std::ostream& Err, const std::function<int()>& Command) {
    try {
        return Command();
    } catch (const Refused& No) {
        return TellRefused(No.Errors(), Err);
    } catch (const Failure& No) {
        return TellRefused({No.Error()}, Err);
    } catch (const WrongUsage& Wrong) {
        TellTrouble(Wrong.what(), Err);
        return exit_code::kUsage;
    } catch (const std::filesystem::filesystem_error& Trouble) {
        const std::string Where = PathText(Trouble.path1());
        TellTrouble((Where.empty() ? "" : Where + ": ") + Trouble.code().message(), Err);
    } catch (const std::bad_alloc&) {
        TellTrouble("out of memory", Err);
    } catch (const std::exception& Trouble) {
        TellTrouble(Trouble.what(), Err);
    }
    return exit_code::kFailed;
}

std::string PlainText(std::wstring_view Section) {
    std::wstring Plain;
    Plain.reserve(Section.size());
    for (std::size_t I = 0; I < Section.size(); ++I)
        if (Section[I] != L'\r' || I + 1 == Section.size() || Section[I + 1] != L'\n')
            Plain.push_back(Section[I]);
    return ToUtf8Lossy(Plain);
}

std::wstring WithLineEnds(std::wstring_view Plain) {
    std::wstring Section;
    Section.reserve(Plain.size() + Plain.size() / 16);
    for (const wchar_t C : Plain) {
        if (C == L'\n' && (Section.empty() || Section.back() != L'\r')) Section.push_back(L'\r');
        Section.push_back(C);
    }
    return Section;
}

std::optional<std::wstring> SectionFrom(std::string_view Plain) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (Plain.starts_with(kByteOrderMark)) Plain.remove_prefix(kByteOrderMark.size());
    const std::optional<std::wstring> Wide = FromUtf8(Plain);
    if (!Wide) return std::nullopt;
    return WithLineEnds(*Wide);
}

std::wstring OneLine(std::wstring_view Text) {
    std::wstring Line;
    Line.reserve(Text.size());
    for (const wchar_t C : Text) {
        if (C == L'\n' && !Line.empty() && Line.back() == L' ') continue;  // CR LF is one break
        Line.push_back(C < 0x20 || (C >= 0x7F && C < 0xA0) ? L' ' : C);
    }
    return Line;
}

std::wstring WideArgument(std::string_view Argument) {
    std::optional<std::wstring> Wide = FromUtf8(Argument);
    if (!Wide) throw WrongUsage("an argument is not UTF-8 text");
    return *std::move(Wide);
}

std::string PathText(const std::filesystem::path& Path) { return Path.string(); }

}  // namespace kv::host
