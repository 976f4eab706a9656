#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/TempTree.h"
#include "tests/system/ProgramRun.h"

namespace vw::test {

using Texts = std::vector<std::wstring>;

/// The console program as the build made it (environment variable VW_CONSOLE).
[[nodiscard]] std::wstring BuiltConsole();

/// A path in double quotes, as it is on a command line. A final "\" is doubled, since it would
/// take the quote with it.
[[nodiscard]] std::wstring InQuotes(std::wstring_view path);

/// A test of the console program: a fresh folder with a destination in it.
class VwTest : public testing::Test {
  protected:
    TempTree tree;

    /// Where lists send their copies; exists from the start.
    const std::wstring vault = tree.Folder(L"Vault");

    /// Runs the program to its end and checks the exit code. Nothing but the two streams may be
    /// used: a box fails the test.
    void RunsTo(DWORD exitCode, const std::wstring& arguments);

    /// Writes the list that List() names: the destination, how many copies, the items. Items are
    /// relative to the tree.
    void MakeList(const Texts& items, int copies = 3) const;

    /// The list's path, ready for a command line.
    [[nodiscard]] std::wstring List() const { return InQuotes(tree.Path(L"list.vwl")); }

    /// A path in the destination.
    [[nodiscard]] std::wstring Stored(std::wstring_view name) const {
        return vault + L"\\" + std::wstring(name);
    }

    /// A date in January 2010, `step` times a good minute after its first second.
    [[nodiscard]] static DateParts Day(int step) { return {2010, 1, 1, step / 60, step % 60, 1}; }

    /// Text in which "~" means the tree's own path.
    [[nodiscard]] std::wstring Short(std::wstring text) const;
    [[nodiscard]] Texts ShortLines() const;

    /// What the last run wrote.
    Texts lines;
    std::wstring errors;
};

}  // namespace vw::test
