#pragma once

#include <functional>

#include "console/Arguments.h"
#include "console/Console.h"
#include "console/Verbs.h"
#include "platform/Win32FileSystem.h"
#include "tests/console/VwTest.h"
#include "tests/support/FaultyFileSystem.h"

namespace vw::test {

/// Runs verbs in this process, on a disk that fails where the test says or on another one.
class VerbTest : public VwTest {
  protected:
    /// Runs a verb and gives the exit code; keeps its lines and errors, in order, in `lines`.
    int RunVerb(const std::function<int(Console&)>& verb) {
        lines.clear();
        Output output;
        output.SetStyle(Output::Style::Quiet);
        output.SetCopy([this](std::wstring_view line) { lines.emplace_back(line); });
        Console console(output, shown);
        return console.Run([&] { return verb(console); });
    }
    int RunCheck() {
        return RunVerb([this](Console& console) {
            return Check(console, {.list = tree.Path(L"list.vwl"), .content = false});
        });
    }
    int RunBackup(bool keepMissing = true) {
        return RunVerb([&](Console& console) {
            return Backup(console, {.list = tree.Path(L"list.vwl"),
                                    .keepMissing = keepMissing,
                                    .logFolder = {},
                                    .logsToKeep = 0});
        });
    }

    Win32FileSystem disk;
    FaultyFileSystem files{disk};
    FileSystem* shown = &files;  ///< the disk that the verbs see
};

}  // namespace vw::test
