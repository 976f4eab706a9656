// Somebody who restores and deletes while sticks come, go and change, runs of another engine rotate
// the copies, and the disk fails now and then. A model has the bytes of every file and every copy
// after each step.

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <random>
#include <set>

#include "engine/CopyName.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/restore/RestoreFixture.h"
#include "tests/support/CopiesOnC.h"
#include "tests/support/Histories.h"

namespace vw::test {
namespace {

class RandomBrowser : public RestoreEnvironment {
  protected:
    ~RandomBrowser() override { drive.Insert(); }

    /// What a user protects. Every state of it begins with its path below the test's folder, so
    /// that its bytes show whose they are.
    struct Item {
        std::wstring path;
        bool isFolder = false;
    };

    [[nodiscard]] int Number(int first, int last) {
        return std::uniform_int_distribution<int>(first, last)(random_);
    }
    [[nodiscard]] bool Chance(int percent) { return Number(1, 100) <= percent; }

    /// All bytes that lie in a tree, by path.
    using Contents = std::map<std::wstring, std::string>;
    [[nodiscard]] static Contents ContentsOf(const std::wstring& folder) {
        Contents contents;
        for (const auto& [path, node] : ReadTree(folder)) {
            if (!node.isFolder && !path.ends_with(L".vwc")) {
                contents.emplace(folder + L"\\" + path, node.bytes);
            }
        }
        return contents;
    }
    /// Every copy of every stick and of C:, by paths that stay when sticks are exchanged.
    [[nodiscard]] Contents Copies() const {
        Contents all;
        for (const std::wstring& folder : {drive.BackupOn(L""), drive.BackupOn(L"second"), kOnC}) {
            Contents entries = ContentsOf(folder);
            // What is not named like a copy is not one yet, or not any more.
            std::erase_if(entries, [&](const auto& entry) {
                const std::wstring below = entry.first.substr(folder.size() + 1);
                return !FindCopyMark(below.substr(0, below.find(L'\\')));
            });
            all.merge(entries);
        }
        return all;
    }
    [[nodiscard]] static std::set<std::string> BytesOf(const Contents& contents) {
        std::set<std::string> bytes;
        for (const auto& [path, content] : contents) bytes.insert(content);
        return bytes;
    }

    [[nodiscard]] DateParts NextDate() {
        ++minutes_;
        return {
            2024, 1 + minutes_ / 28000, 1 + minutes_ / 1440 % 28, minutes_ / 60 % 24, minutes_ % 60,
            0};
    }
    void Edit(const Item& item) {
        const auto write = [&](const std::wstring& path) {
            tree.File(path, ToUtf8(item.path) + " " + std::to_string(++states_), NextDate());
        };
        if (!item.isFolder) return write(item.path);
        if (Chance(70)) write(item.path + L"\\a.txt");
        if (Chance(70)) write(item.path + L"\\Sub\\b.txt");
    }
    void EditAny() { Edit(items_.at(static_cast<std::size_t>(Number(0, 4)))); }

    /// Runs a backup with a second engine, as another process would.
    void BackUpElsewhere() {
        if (isOut_ && Chance(70)) return;
        const std::wstring folder = isOut_ || Chance(15) ? kOnC : vault;
        tree.Folder(folder);
        otherState_.BackupTo = folder;
        otherState_.copiesCount = 3;
        for (const Item& item : items_) {
            if (!Chance(60)) continue;
            const std::wstring path = tree.Path(item.path) + (item.isFolder ? L"\\" : L"");
            other_.BackupPath(path, item.isFolder ? std::int16_t{0} : other_.LocationID(path),
                              item.isFolder, item.isFolder);
        }
    }
    void ExchangeStick() {
        isOut_ = Chance(30);
        if (isOut_) {
            drive.PullOut();
        } else {
            drive.Insert(Chance(50) ? L"" : L"second");
        }
    }
    void ChooseDrive() {
        browser.RestoreFrom(Chance(80) ? vault : kOnC);
        browser.ListRestoreFiles();
    }
    void Click() {
        if (browser.Items().Rows().Count() == 0) return;
        const int row = Chance(10) ? -1 : Number(0, browser.Items().Rows().Count() - 1);
        browser.Items().Select(row);
        if (row >= 0 && Chance(90)) browser.lsvRestore1ItemClick(row);
    }
    void ClickCopy() {
        if (browser.Copies().Rows().Count() > 0) {
            browser.Copies().Select(Number(0, browser.Copies().Rows().Count() - 1));
        }
    }

    /// Gives a command to the program of this window; things happen while it asks.
    void Give(void (RestoreCommands::*command)()) {
        FakeMessageBoxes boxes;
        boxes.AnswerAll(Chance(85) ? BoxAnswer::Yes : BoxAnswer::No);
        boxes.OnBox([this] {
            if (Chance(15)) ExchangeStick();
            if (Chance(15)) BackUpElsewhere();
            if (Chance(15)) EditAny();
            if (Chance(10)) Click();
            before_ = Everything();
        });
        before_ = Everything();
        if (Chance(15)) {
            world.files.FailNth(Number(1, 80), error_number::kPermissionDenied);
        }
        System system{world.files,      world.pump,       boxes,       world.errors,
                      world.exitStatus, world.programEnd, world.clock, world.ansi};
        (Commands(system).*command)();
        world.files.Heal();
    }

    struct State {
        Contents files;
        Contents copies;
    };
    [[nodiscard]] State Everything() const { return {ContentsOf(tree.Path(L"Users")), Copies()}; }

    void Restore() {
        if (Chance(60)) EditAny();
        const bool elsewhere = Chance(25);
        if (elsewhere) {
            // A place of the item's own: what is kept there is a safety copy of the same item.
            std::wstring name = shownItem_;
            std::ranges::replace(name, L'\\', L'-');
            const std::wstring place = tree.Folder(L"Users\\Elsewhere\\" + name + L" place");
            const auto listed = browser.Selection();
            dialogs.Expect(place + L"\\" +
                           (listed && Chance(50) ? listed->item.name : L"Typed.doc"));
        } else {
            dialogs.Expect(std::nullopt);
        }
        Give(elsewhere ? &RestoreCommands::mnuRestoreToClick : &RestoreCommands::mnuRestoreClick);
        dialogs.Forget();
        const State now = Everything();
        const std::set<std::string> kept = BytesOf(now.copies);
        for (const auto& [path, bytes] : before_.files) {
            const auto found = now.files.find(path);
            ASSERT_NE(found, now.files.end()) << ToUtf8(path) << " is gone";
            if (found->second == bytes) continue;
            EXPECT_TRUE(kept.contains(bytes)) << "no copy has what was overwritten: " << bytes;
            ++overwritten_;
        }
        ExpectNoCopyLost(now, L"");
    }
    void Delete(void (RestoreCommands::*command)()) {
        Give(command);
        const State now = Everything();
        EXPECT_EQ(now.files, before_.files) << "a deletion changed a file";
        ExpectNoCopyLost(now, shownItem_);
    }

    /// Copies go by the deletion of the item that was shown only, and then only its own.
    void ExpectNoCopyLost(const State& now, const std::wstring& shownItem) {
        for (const auto& [path, bytes] : before_.copies) {
            const auto found = now.copies.find(path);
            if (found != now.copies.end()) {
                EXPECT_EQ(found->second, bytes) << "changed: " << ToUtf8(path);
                continue;
            }
            ++deleted_;
            EXPECT_FALSE(shownItem.empty()) << "deleted: " << ToUtf8(path);
            EXPECT_TRUE(shownItem.empty() || bytes.find(ToUtf8(shownItem) + " ") != bytes.npos)
                << "the user saw " << ToUtf8(shownItem) << ", and lost " << bytes;
        }
    }
    /// The item that the upper list shows as the one that commands act on, as the user reads it.
    [[nodiscard]] std::wstring ShownItem() {
        const auto listed = browser.Selection();
        if (!listed) return L"nothing";
        const std::wstring root = tree.Path() + L"\\";
        const std::wstring& place = listed->item.originalLocation;
        // Without copy 1 its folder is unknown; the name is all that the user sees.
        return (place.starts_with(root) ? place.substr(root.size()) : L"") + L"\\" +
               listed->item.name;
    }

    void ExpectOwnContents() {
        for (const Item& item : items_) {
            for (const auto& [path, bytes] : ContentsOf(tree.Path(L"Users"))) {
                const std::wstring own = tree.Path(item.path);
                if (path == own || path.starts_with(own + L"\\")) {
                    EXPECT_TRUE(bytes.starts_with(ToUtf8(item.path) + " "))
                        << ToUtf8(path) << " holds " << bytes;
                }
            }
        }
    }

    void Step() {
        shownItem_ = ShownItem();
        switch (Number(1, 12)) {
            case 1:
                return EditAny();
            case 2:
                return BackUpElsewhere();
            case 3:
            case 4:
                return ExchangeStick();
            case 5:
                return ChooseDrive();
            case 6:
                return Click();
            case 7:
            case 8:
                return ClickCopy();
            case 9:
            case 10:
                return Restore();
            case 11:
                return Delete(&RestoreCommands::mnuDelCopyClick);
            default:
                return Chance(40) ? Delete(&RestoreCommands::mnuDelCopiesClick) : Restore();
        }
    }

    void Begin(unsigned seed) {
        random_.seed(seed);
        isOut_ = false;
        for (const std::wstring& folder : {drive.BackupOn(L""), drive.BackupOn(L"second"), kOnC}) {
            tree.Remove(folder);
            tree.Folder(folder);
        }
        tree.Remove(L"Users");
        drive.Insert();
        for (const Item& item : items_) {
            Edit(item);
            Edit(item);
        }
        for (int run = 0; run < 4; ++run) {
            BackUpElsewhere();
            EditAny();
            if (run == 1) drive.Insert(L"second");
        }
        ChooseDrive();
    }

    const std::wstring kOnC = L"C:\\Backup";
    std::mt19937 random_;
    std::vector<Item> items_{{L"Users\\A\\Report.doc"},
                             {L"Users\\B\\Report.doc"},
                             {L"Users\\A\\Rapport «final».doc"},
                             {L"Users\\A\\Work", true},
                             {L"Users\\j.smith\\Docs", true}};
    ProgramState otherState_;
    CPackage other_{world.system, otherState_, engineProgress, AsProgram()};
    State before_;
    std::wstring shownItem_;
    int minutes_ = 0;
    int states_ = 0;
    bool isOut_ = false;
    CopiesOnC copiesOnC_;
    int overwritten_ = 0;
    int deleted_ = 0;
};

TEST_F(RandomBrowser, RandomSteps_EveryFileHasItsOwnContent) {
    if (!copiesOnC_.MayBeUsed()) GTEST_SKIP() << "somebody keeps copies on C:";
    const auto histories = Histories::Usually(5);
    int steps = 0;
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Begin(seed);
        for (int step = 0; step < 100 && !HasFailure(); ++step, ++steps) {
            SCOPED_TRACE("step " + std::to_string(step));
            Step();
            static_cast<void>(world.errors.Take());
            ExpectOwnContents();
        }
    }
    std::cout << steps << " steps in the browser, " << overwritten_ << " files overwritten, "
              << deleted_ << " copies deleted\n";
    EXPECT_GT(overwritten_, 2 * static_cast<int>(histories.count));
    EXPECT_GT(deleted_, 2 * static_cast<int>(histories.count));
}

}  // namespace
}  // namespace vw::test
