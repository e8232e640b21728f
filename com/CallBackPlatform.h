// The door to the operator: the call-back object of a host for what it has, the system for the rest.
#pragma once

#include <functional>
#include <utility>

#include "com/ByName.h"
#include "com/Ref.h"
#include "com/window/WindowsPlatform.h"
#include "frame/Platform.h"

namespace kv::com {

class CallBackPlatform final : public kv::Platform {
  public:
    void ShowError(const KvError& Error) override;
    Answer MessageBox(std::wstring_view Text, std::int32_t Style) override;
    std::optional<std::wstring> SaveFile(std::wstring_view Title, std::wstring_view Filter,
                                         std::int32_t FilterIndex, std::int32_t Flags) override;
    void ShowList(std::wstring_view Caption, std::span<const std::wstring> Items) override;
    void Beep() override;
    void SetPointer(std::int32_t Pointer) override;
    std::wstring ProgramFolder() override { return System_.ProgramFolder(); }
    std::wstring TempFolder() override { return System_.TempFolder(); }

    /// Sets the object that is asked, null for none; answers the one before. Each call on a server object
    /// sets its own.
    Ref<IDispatch> Ask(Ref<IDispatch> Object) noexcept { return std::exchange(CallBack_, std::move(Object)); }

  private:
    /// What the object answers; none where it lacks the member. `Early` calls it by its interface.
    std::optional<Variant> Answered(const wchar_t* Name,
                                    const std::function<HRESULT(::CallBack&, VARIANT&)>& Early,
                                    std::initializer_list<const VARIANT*> Arguments);

    Ref<IDispatch> CallBack_;
    WindowsPlatform System_;
};

}  // namespace kv::com
