#include "host/CommandsTools.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>
#include <system_error>
#include <vector>

#include "frame/TagTools.h"
#include "host/Text.h"

namespace kv::host {
namespace {

using Json = nlohmann::ordered_json;
using window::WindowCore;

// What a tool says of a class that is not its own. A button that an item does not serve does nothing at all,
// which would tell nobody on a command line anything.
[[noreturn]] void RefuseTool() {
    KvError Error;
    Error.Description = kToolNotServed;
    throw Refused({std::move(Error)});
}

void PressButton(Session& Work, const std::wstring& Clsid, const std::wstring& Name,
                 const std::wstring& Button) {
    Work.InWindow(Clsid, Name, [&](WindowCore& Core) {
        const std::vector<std::wstring>& Served = Core.Tree().Served();
        if (std::find(Served.begin(), Served.end(), Button) == Served.end()) RefuseTool();
        Core.TlbrButtonClick(Button, {.CurrItem = std::wstring(kRootKey)});
        Work.Must(false);
    });
}

bool IsStore(const Session& Work, const std::string& File) {
    std::error_code Missing;
    return std::filesystem::equivalent(File, Work.Chosen().Store, Missing);
}

}  // namespace

int ShowFreeTags(Session& Work, const std::wstring& Clsid, const std::wstring& Name) {
    PressButton(Work, Clsid, Name, L"FINDTAG");
    const std::vector<std::wstring> Runs = Work.Platform().TakeListed();
    if (Work.Chosen().Json) {
        Json All = Json::array();
        for (const std::wstring& Run : Runs) All.push_back(ToUtf8Lossy(Run));
        Work.Out() << All.dump(2) << '\n';
        return exit_code::kDone;
    }
    for (const std::wstring& Run : Runs) Work.Out() << ToUtf8Lossy(Run) << '\n';
    return exit_code::kDone;
}

int ExportConstants(Session& Work, const std::wstring& Clsid, const std::wstring& Name,
                    const std::string& File) {
    if (File.empty()) throw WrongUsage("--output names no file");
    if (IsStore(Work, File)) throw WrongUsage("--output names the store");
    Work.Platform().AnswerSaveFile(WideArgument(File));
    try {
        PressButton(Work, Clsid, Name, L"CONSTANTS");
    } catch (const Refused& No) {
        TellRefused(No.Errors(), Work.Err());
        return exit_code::kRefused;
    }
    return exit_code::kDone;
}

}  // namespace kv::host
