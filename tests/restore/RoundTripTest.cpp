// Random trees backed up again and again, then every copy of every item restored, to where it came
// from and elsewhere: it has to be what it was.

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <random>

#include "restore/CopiesIndex.h"
#include "tests/restore/RestoreWorld.h"
#include "tests/support/Histories.h"

namespace vw::test {
namespace {

class RoundTrip : public RestoreWorld {
  protected:
    /// An item and its states, newest first.
    struct Item {
        std::wstring path;  ///< relative; a final "\\" for a folder
        std::wstring name;  ///< in the list of items
        std::vector<Tree> states;
    };

    int Number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

    DateParts NextDate() {
        ++seconds_;
        return {2024, 3, 1 + seconds_ / 3600 % 28, seconds_ / 60 % 24, seconds_ % 60, 0};
    }

    std::string Bytes() {
        std::string bytes(static_cast<std::size_t>(Number(0, 3000)), ' ');
        for (char& byte : bytes) byte = static_cast<char>(Number(0, 255));
        return bytes;
    }

    void Change(const Item& item) {
        if (!item.path.ends_with(L'\\')) {
            tree.File(item.path, Bytes(), NextDate());
            return;
        }
        static const std::vector<std::wstring> names{L"a.txt", L"Sub\\b.bin", L"Sub\\Deep\\c",
                                                     L"رسالة.txt", L"Sub\\x y.doc"};
        for (const std::wstring& name : names) {
            const int chance = Number(0, 3);
            if (chance == 0) tree.Remove(item.path + name);
            if (chance > 1) tree.File(item.path + name, Bytes(), NextDate());
        }
        tree.Folder(item.path + L"Empty");
        tree.File(item.path + L"always.txt", Bytes(), NextDate());
    }

    [[nodiscard]] Tree Now(const std::wstring& path) const {
        const std::wstring full =
            tree.Path(path.ends_with(L'\\') ? path.substr(0, path.size() - 1) : path);
        if (path.ends_with(L'\\')) return ReadTree(full);
        return {{L"", {false, ReadBytes(full), ReadDate(full)}}};
    }

    void RestoreAll(Item& item) {
        browser.ListRestoreFiles();
        browser.RestoredPath(tree.Path(item.path));
        ASSERT_EQ(browser.Copies().Count(), static_cast<int>(item.states.size()));
        for (std::size_t i = 0; i < item.states.size(); ++i) {
            for (const bool elsewhere : {false, true}) {
                SelectCopy(CopyLabel(static_cast<int>(i) + 1));
                tree.Remove(elsewhere ? std::wstring(L"Elsewhere") : WithoutMark(item.path));
                tree.Folder(L"Elsewhere");
                if (elsewhere) {
                    dialogs.Expect(tree.Path(L"Elsewhere\\any name"));
                    commands.mnuRestoreToClick();
                    EXPECT_EQ(Now(L"Elsewhere\\" + NameOf(item)), item.states[i]);
                } else {
                    commands.mnuRestoreClick();
                    EXPECT_EQ(Now(item.path), item.states[i]);
                }
                ++restored_;
            }
        }
    }

    static std::wstring WithoutMark(std::wstring path) {
        if (path.ends_with(L'\\')) path.pop_back();
        return path;
    }
    static std::wstring NameOf(const Item& item) {
        std::wstring path = item.path;
        const bool folder = path.ends_with(L'\\');
        if (folder) path.pop_back();
        return path.substr(path.rfind(L'\\') + 1) + (folder ? L"\\" : L"");
    }

    std::mt19937 random_;
    int seconds_ = 0;
    int restored_ = 0;
};

TEST_F(RoundTrip, HistoriesComeBackAsTheyWere) {
    const auto histories = Histories::Usually(6);
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        random_.seed(seed);
        tree.Remove(vault);
        tree.Folder(vault);
        state.copiesCount = static_cast<std::int16_t>(Number(2, 4));
        std::vector<Item> items{{L"One\\Report.doc", L"", {}},
                                {L"Two\\Report.doc", L"", {}},
                                {L"One\\README", L"", {}},
                                {L"Work\\", L"", {}},
                                {L"j.smith\\Docs\\", L"", {}},
                                {L"j.smith\\Old\\Docs\\", L"", {}},
                                {L"مجلد\\Plan #1 [new].txt", L"", {}}};
        for (int run = Number(1, 5); run > 0; --run) {
            for (Item& item : items) {
                Change(item);
                BackUp(tree.Path(item.path));
                item.states.insert(item.states.begin(), Now(item.path));
                if (item.states.size() > static_cast<std::size_t>(state.copiesCount)) {
                    item.states.pop_back();
                }
            }
        }
        for (Item& item : items) RestoreAll(item);
    }
    std::cout << restored_ << " copies restored and compared\n";
    RecordProperty("restored", restored_);
}

}  // namespace
}  // namespace vw::test
