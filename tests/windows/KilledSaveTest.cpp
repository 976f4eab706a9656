// The program is killed while it saves a list: the file has to be the old list or the new one.

#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <random>

#include "tests/support/Histories.h"
#include "tests/windows/DrivenProgram.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

class KilledSave : public WindowsTest {};

// Prints how many of the kills left the old list.
TEST_F(KilledSave, SoakSave_LeavesTheOldListOrTheNewOne) {
    std::vector<std::wstring> items;
    items.reserve(40);
    for (int i = 0; i < 40; ++i) {
        items.push_back(program.tree.File(L"Home\\file" + std::to_wstring(i) + L".txt"));
    }
    const auto histories = Histories::Usually(12);
    int old = 0;
    int inTheSave = 0;
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        WriteDefaultList(items);
        const std::string before = ReadBytes(program.DefaultList());
        std::string after = before;
        std::string first;
        for (const wchar_t unit : items[0]) first += static_cast<char>(unit);
        after.erase(after.find(first), first.size() + 2);
        DrivenProgram window(program.With(L""));
        window.Begin(ID_mnuDel);
        // The save has begun when its temporary file is there; a quick one may be over by then.
        const std::wstring temporary = program.DefaultList() + L".tmp";
        window.WaitUntil(
            [&] {
                if (Exists(temporary)) {
                    ++inTheSave;
                    return true;
                }
                return ReadBytes(program.DefaultList()) != before;
            },
            "no save", 0);
        const auto end =
            std::chrono::steady_clock::now() +
            std::chrono::microseconds(std::uniform_int_distribution<int>(0, 4000)(random));
        while (std::chrono::steady_clock::now() < end) SwitchToThread();
        window.Run().Terminate();
        const std::string now = ReadBytes(program.DefaultList());
        EXPECT_TRUE(now == before || now == after) << now;
        if (now == before) ++old;
        // What the kill left is no obstacle to the next save.
        DrivenProgram again(program.With(L""));
        const int count = again.List(ID_lsvBackupList).Count();
        again.Choose(ID_mnuDel);
        EXPECT_EQ(again.List(ID_lsvBackupList).Count(), count - 1);
        EXPECT_EQ(again.Close(), 0U);
        EXPECT_NE(ReadBytes(program.DefaultList()), now);
    }
    EXPECT_GT(inTheSave, 0) << "no kill came while a list was being saved";
    std::cout << histories.count << " steps in the windows: kills of a save, " << inTheSave
              << " aimed at its temporary file, " << old << " left the old list\n";
    RecordProperty("kills", static_cast<int>(histories.count));
}

}  // namespace
}  // namespace vw::test
