// One object open in a window without a screen: server, tree and window core over a stored object in memory.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "server/vdSvr.h"
#include "tests/support/TestPlatform.h"
#include "window/TreeModel.h"
#include "window/WindowCore.h"

namespace kv::test {

/// What an operation came back with: nothing, or the error that the operator was shown.
using Outcome = std::optional<KvError>;

class Desk final : private window::TreeFace {
  public:
    /// Opens `Content` as an object of the class. Opened tells whether that went well.
    explicit Desk(std::wstring_view ClassWord, RegObject Content = Named(L"PROVA"));
    ~Desk() override;

    static RegObject Named(std::wstring_view Name);

    /// Key of the n-th leaf (1-based) of a section, in display order; empty when there is none.
    std::wstring Leaf(std::wstring_view Section, int Nth = 1) const;
    /// The text of a leaf; fails the test when it can't be rendered.
    std::wstring Text(const std::wstring& Key);
    /// Saves a section text; strict or lax.
    Outcome Put(const std::wstring& Key, std::wstring Text, bool Strict = true);
    /// The tree as text, one node a line: depth, key with its ids as "#", caption, images, kind.
    std::wstring Picture() const;
    /// The value words as text, one keyword a line.
    std::wstring Offered() const;
    /// The object as text.
    std::wstring Exported();
    /// Runs an operation of the core; the error shown by it, with number 0 and no text where none was.
    template <class Call>
    Outcome Try(Call&& Operation) {
        Platform.Shown.clear();
        const bool Failed = Operation();
        EXPECT_LE(Platform.Shown.size(), 1U) << "an error is shown once";
        if (!Failed) {
            EXPECT_TRUE(Platform.Shown.empty()) << "a success shows nothing";
            return std::nullopt;
        }
        return Platform.Shown.empty() ? KvError{} : Platform.Shown.front();
    }

    TestPlatform Platform;
    ClipItem Clipboard;
    std::shared_ptr<MemoryRegData> Object;
    std::shared_ptr<window::TreeModel> Tree = std::make_shared<window::TreeModel>();
    vdSvr Server;
    window::WindowCore Core;
    Outcome Opened;

  private:
    [[nodiscard]] bool Run(TreeCall&) override { return false; }
};

/// Whether an outcome is the failure told.
::testing::AssertionResult Refused(const Outcome& Got, std::int32_t Number, std::wstring_view Source,
                                   std::wstring_view Description, std::optional<int> Line = {});
/// Whether an outcome is a failure without number and text.
::testing::AssertionResult RefusedSilently(const Outcome& Got);
/// Whether an outcome is a success.
::testing::AssertionResult Accepted(const Outcome& Got);

}  // namespace kv::test
