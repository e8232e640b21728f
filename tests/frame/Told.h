// What a failure must have told, and the cases that fail when nothing was refused.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/CoreUtil.h"
#include "frame/vDesignPar.h"
#include "tests/support/TestPlatform.h"

namespace kv::test {

/// The values of an error as a case states them; what is left out must be empty.
struct Told {
    std::int32_t Number = 0;
    std::wstring_view Source{};
    std::wstring_view Description{};
    std::int32_t Line = 0;
    std::wstring_view HelpFile{};
    std::wstring_view HelpContext{};
    std::int32_t LastDLLError = 0;
};

inline std::string Shown(const KvError& Error) {
    return std::to_string(Error.Number) + " [" + Narrow(Error.Source) + "] \"" + Narrow(Error.Description) +
           "\" line " + std::to_string(Error.Line) + " help \"" + Narrow(Error.HelpFile) + "\" \"" +
           Narrow(Error.HelpContext) + "\" system " + std::to_string(Error.LastDLLError);
}

inline ::testing::AssertionResult Tells(const KvError& Error, const Told& Expected) {
    if (Error.Number == Expected.Number && Error.Source == Expected.Source &&
        Error.Description == Expected.Description && Error.Line == Expected.Line &&
        Error.HelpFile == Expected.HelpFile && Error.HelpContext == Expected.HelpContext &&
        Error.LastDLLError == Expected.LastDLLError)
        return ::testing::AssertionSuccess();
    KvError Wanted;
    Wanted.Number = Expected.Number;
    Wanted.Source = Expected.Source;
    Wanted.Description = Expected.Description;
    Wanted.Line = Expected.Line;
    Wanted.HelpFile = Expected.HelpFile;
    Wanted.HelpContext = Expected.HelpContext;
    Wanted.LastDLLError = Expected.LastDLLError;
    return ::testing::AssertionFailure() << "told " << Shown(Error) << "\ninstead of " << Shown(Wanted);
}

/// Whether the store holds just that error; it is emptied by the question.
inline ::testing::AssertionResult StoreTells(const Told& Expected) {
    const KvError Error = CoreUtil::Instance().LastError();
    CoreUtil::Instance().ForgetError();
    if (Error.Empty()) return ::testing::AssertionFailure() << "the store is empty";
    return Tells(Error, Expected);
}

/// Whether an operation has failed and the store tells why; the store is emptied by the question.
inline ::testing::AssertionResult FailsWith(bool Failed, const Told& Expected) {
    if (!Failed) return ::testing::AssertionFailure() << "nothing failed";
    return StoreTells(Expected);
}

/// Whether an operation has succeeded and left nothing in the store.
inline ::testing::AssertionResult Succeeds(bool Failed) {
    const KvError Error = CoreUtil::Instance().LastError();
    CoreUtil::Instance().ForgetError();
    if (Failed) return ::testing::AssertionFailure() << "failed: " << Shown(Error);
    if (!Error.Empty()) return ::testing::AssertionFailure() << "succeeded, but told " << Shown(Error);
    return ::testing::AssertionSuccess();
}

/// The number that `Body` raises, 0 when it raises nothing.
template <class Body>
std::int32_t NumberRaised(Body&& Run) {
    try {
        Run();
    } catch (const Failure& Raised) {
        return Raised.Error().Number;
    }
    return 0;
}

/// A test with a platform in place, an empty store and an empty list of keywords.
class FrameTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ClearParmCheck();
        CoreUtil::Instance().Pending() = KvError{};
    }

    TestPlatform Platform;
};

}  // namespace kv::test
