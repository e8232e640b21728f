#include "host/desktop/Desk.h"

#include <utility>

#include "frame/CoreUtil.h"
#include "host/Places.h"

namespace kv::desktop {

Desk::Desk(const std::filesystem::path& ProgramDir, const std::filesystem::path& Temp)
    : Platform_(ProgramDir, Temp),
      Before_(CoreUtil::Instance().SetPlatform(&Platform_)),
      FollowsStore_(ProgramDir.empty()) {}

Desk::~Desk() { CoreUtil::Instance().SetPlatform(Before_); }

void Desk::OpenStore(const std::filesystem::path& File) {
    std::filesystem::path Whole = std::filesystem::absolute(File).lexically_normal();
    auto Opened = std::make_unique<host::KvRegSvr>(Whole);
    if (FollowsStore_) Platform_.SetProgramFolder(host::ProgramFolderOf(Whole));
    Registry_ = std::move(Opened);
    Store_ = std::move(Whole);
}

}  // namespace kv::desktop
