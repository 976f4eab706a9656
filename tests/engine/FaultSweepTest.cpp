// Runs in which one disk operation after the other goes wrong. Whatever it is: no copy that is not
// whole is under a copy name, no older copy is lost beyond the rotation that was due, every
// failure is reported, and the next run completes.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/WorkingName.h"
#include "platform/ProgramControl.h"
#include "platform/RuntimeError.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw {
namespace {

using test::FaultyFileSystem;
using test::TempTree;
using test::TestEnvironment;
using test::Tree;

constexpr int kCount = 3;

class QuietHost final : public ProgressReporter, public ProgramControl {
  public:
    void Msg(std::wstring_view, std::wstring_view) override {}
    void Report(std::wstring_view, bool) override {}
    void BusyHide(bool) override {}
    void Ready(bool) override {}
    void frmUnload() override {}
    [[noreturn]] void EndAtOnce() override { throw test::ProgramEnded{76}; }
};

// One item of the list and everything that it ever was.
struct Item {
    std::wstring path;
    std::vector<Tree> versions;
};

// What the copies of one item are: for each copy number the version that it holds (from 0), or -1
// when it holds none of them whole.
using Series = std::vector<int>;

class SweptFixture {
  public:
    SweptFixture() {
        items_ = {{tree_.Path(L"src\\Plan.doc"), {}},
                  {tree_.Path(L"src\\Work\\"), {}},
                  {tree_.Path(L"src\\j.smith\\Docs\\"), {}}};
        tree_.Folder(L"store");
        std::string list = "BackupTo: ";
        list += Ansi(tree_.Path(L"store")) + "\r\nBackages: " + std::to_string(kCount) + "\r\n";
        for (const Item& item : items_) list += Ansi(item.path) + "\r\n";
        state_.currentListPath = tree_.File(L"list.vwl", list);
    }

    // Gives every item its next version.
    void Edit() {
        const int number = static_cast<int>(items_.front().versions.size());
        const std::string text = "version " + std::to_string(number);
        const DateParts date{2020, 1, 1, 10 + number / 3600, number / 60 % 60, number % 60};
        tree_.File(L"src\\Plan.doc", text, date);
        for (const wchar_t* folder : {L"src\\Work\\", L"src\\j.smith\\Docs\\"}) {
            tree_.File(std::wstring(folder) + L"a.txt", text + " a", date);
            tree_.File(std::wstring(folder) + L"sub\\b.txt", text + " b", date);
            tree_.Folder(std::wstring(folder) + L"empty");
        }
        for (Item& item : items_) item.versions.push_back(Content(item.path));
    }

    // Takes all copies away, as before the first run.
    void Empty() {
        tree_.Remove(L"store");
        tree_.Folder(L"store");
    }

    // One run of a process of its own; false when it died on the way.
    bool Run() {
        CPackage engine(world_.system, state_, host_, host_);
        try {
            engine.BackupAll();
            return true;
        } catch (const test::Died&) {
            return false;
        } catch (const test::ProgramEnded&) {
            world_.exitStatus.Note(error_number::kPathNotFound);
            return true;
        }
    }

    [[nodiscard]] Series CopiesOf(const Item& item) const {
        Series series;
        for (int number = 1; number <= kCount + 1; ++number) {
            const std::wstring copy = CFilePackageName(item.path, number, 0, tree_.Path(L"store"));
            if (!test::Exists(copy)) continue;
            const auto found = std::find(item.versions.begin(), item.versions.end(), Content(copy));
            series.push_back(found == item.versions.end()
                                 ? -1
                                 : static_cast<int>(found - item.versions.begin()));
        }
        return series;
    }

    [[nodiscard]] bool HasWorkingEntries() const {
        for (const auto& [path, node] : test::ReadTree(tree_.Path(L"store"))) {
            if (path.find(L".vwnew-") != std::wstring::npos ||
                path.find(L".vwready-") != std::wstring::npos ||
                path.find(L".vwold-") != std::wstring::npos) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] const std::vector<Item>& Items() const { return items_; }
    [[nodiscard]] TestEnvironment& World() { return world_; }

  private:
    static Tree Content(std::wstring path) {
        if (path.ends_with(L'\\')) path.pop_back();
        Win32FileSystem disk;
        if (disk.Stat(path)->isFolder) return test::ReadTree(path);
        return {{L"", {false, test::ReadBytes(path), test::ReadDate(path)}}};
    }

    [[nodiscard]] std::string Ansi(std::wstring_view text) const {
        return world_.ansi.Encode(text);
    }

    TempTree tree_;
    TestEnvironment world_;
    ProgramState state_;
    QuietHost host_;
    std::vector<Item> items_;
};

struct Plan {
    std::string name;
    std::function<void(FaultyFileSystem&, int)> arrange;
    bool dies = false;
    bool mayCostAFile = false;  ///< a folder item may lose single files, which is told
};

std::vector<Plan> Plans() {
    return {
        {"dies", [](FaultyFileSystem& files, int n) { files.DieAtNth(n); }, true, false},
        {"device error once", [](FaultyFileSystem& files, int n) { files.FailNth(n, 57); }, false,
         true},
        {"refused once", [](FaultyFileSystem& files, int n) { files.FailNth(n, 70); }, false, true},
        {"broken from there", [](FaultyFileSystem& files, int n) { files.FailFrom(n, 57); }, false,
         true},
        {"disk full from there", [](FaultyFileSystem& files, int n) { files.FillDiskFrom(n); },
         false, false},
    };
}

std::vector<Series> SeriesOf(const SweptFixture& swept) {
    std::vector<Series> all;
    for (const Item& item : swept.Items()) all.push_back(swept.CopiesOf(item));
    return all;
}

void ExpectNothingLost(const SweptFixture& swept, const std::vector<Series>& before,
                       bool mayBreakOne, const std::string& where) {
    for (std::size_t i = 0; i < before.size(); ++i) {
        const Series after = swept.CopiesOf(swept.Items()[i]);
        const bool folder = swept.Items()[i].path.ends_with(L'\\');
        EXPECT_LE(std::count(after.begin(), after.end(), -1),
                  std::count(before[i].begin(), before[i].end(), -1) + (mayBreakOne && folder))
            << where << ": a copy is not whole";
        Series kept = before[i];
        if (kept.size() == kCount) kept.pop_back();
        for (const int version : kept) {
            EXPECT_EQ(std::count(after.begin(), after.end(), version) > 0, true)
                << where << ": version " << version << " is lost";
        }
    }
}

void ExpectCompleted(const SweptFixture& swept, const std::vector<Series>& before, const Plan& plan,
                     const std::string& where) {
    EXPECT_FALSE(swept.HasWorkingEntries()) << where;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const Item& item = swept.Items()[i];
        const int current = static_cast<int>(item.versions.size()) - 1;
        const Series after = swept.CopiesOf(item);
        const bool folder = item.path.ends_with(L'\\');
        if (!plan.mayCostAFile || !folder) {
            Series expected = before[i];
            expected.insert(expected.begin(), current);
            expected.resize(std::min<std::size_t>(expected.size(), kCount));
            EXPECT_EQ(after, expected) << where << ", item " << testing::PrintToString(item.path);
            continue;
        }
        // An error in the middle of the date walk makes the item look changed once more, and a
        // copy with a failed file counts until the item changes again.
        ASSERT_FALSE(after.empty()) << where;
        EXPECT_TRUE(after[0] == current || after[0] == -1) << where;
    }
}

// One run with a fault at each operation; the series are full, or empty each time.
void Sweep(bool fullSeries) {
    int points = 0;
    for (const Plan& plan : Plans()) {
        SweptFixture swept;
        for (int i = 0; fullSeries && i < kCount; ++i) {
            swept.Edit();
            ASSERT_TRUE(swept.Run());
        }
        ASSERT_TRUE(swept.World().errors.All().empty());
        for (int n = 1;; ++n) {
            if (!fullSeries) swept.Empty();
            swept.Edit();
            const std::vector<Series> before = SeriesOf(swept);
            FaultyFileSystem& files = swept.World().files;
            swept.World().exitStatus = {};
            plan.arrange(files, n);
            const bool survived = swept.Run();
            if (files.Faults().empty() && survived) break;
            ++points;
            const std::string where =
                plan.name + " at " + std::to_string(n) + ", " +
                (files.Faults().empty() ? "?" : test::Describe(files.Faults().front()));
            files.Heal();
            const auto errors = swept.World().errors.Take();
            ExpectNothingLost(swept, before, plan.mayCostAFile && !errors.empty(), where);
            EXPECT_EQ(survived, !plan.dies) << where;
            for (const auto& error : errors) EXPECT_FALSE(error.path.empty()) << where;
            EXPECT_EQ(errors.empty(), swept.World().exitStatus.Code() == 0) << where;
            EXPECT_TRUE(swept.Run()) << where;
            EXPECT_TRUE(swept.World().errors.Take().empty()) << where;
            ExpectCompleted(swept, before, plan, where);
            if (testing::Test::HasFailure()) return;
        }
    }
    std::cout << points << " points of failure\n";
    testing::Test::RecordProperty("points", points);
    EXPECT_GT(points, 200);
}

TEST(FaultSweepTest, FirstRun_LosesNothing) { Sweep(false); }

TEST(FaultSweepTest, RunOnAFullSeries_LosesNothing) { Sweep(true); }

}  // namespace
}  // namespace vw
