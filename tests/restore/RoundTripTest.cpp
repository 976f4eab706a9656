// Random trees backed up again and again, then every copy of every item restored, to where it came
// from and elsewhere: it has to be what it was.

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <random>

#include "engine/CopyLabel.h"
#include "tests/restore/RestoreEnvironment.h"
#include "tests/support/Histories.h"

namespace vw::test {
namespace {

constexpr DWORD kAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;

class RoundTrip : public RestoreEnvironment {
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

    /// Writes a file anew, protected or hidden as it comes.
    void Write(const std::wstring& path) {
        if (Exists(tree.Path(path))) tree.SetAttributes(path, kAttributes, false);
        tree.File(path, Bytes(), NextDate());
        if (Number(0, 3) == 0) tree.SetAttributes(path, FILE_ATTRIBUTE_READONLY);
        if (Number(0, 3) == 0) tree.SetAttributes(path, FILE_ATTRIBUTE_HIDDEN);
    }

    void Change(const Item& item) {
        if (!item.path.ends_with(L'\\')) {
            Write(item.path);
            return;
        }
        static const std::vector<std::wstring> names{L"a.txt", L"Sub\\b.bin", L"Sub\\Deep\\c",
                                                     L"رسالة.txt", L"Sub\\x y.doc"};
        for (const std::wstring& name : names) {
            const int chance = Number(0, 3);
            if (chance == 0) tree.Remove(item.path + name);
            if (chance > 1) Write(item.path + name);
        }
        tree.Folder(item.path + L"Empty");
        Write(item.path + L"always.txt");
    }

    [[nodiscard]] Tree Now(const std::wstring& path) const {
        if (path.ends_with(L'\\')) return ReadTree(tree.Path(WithoutMark(path)));
        // The file alone of all that is in its folder.
        const Tree all = ReadTree(tree.Path(path.substr(0, path.rfind(L'\\'))));
        const auto file = all.find(path.substr(path.rfind(L'\\') + 1));
        return file == all.end() ? Tree{} : Tree{{L"", file->second}};
    }

    /// Compares what was restored with what was backed up.
    void Compare(const std::wstring& path, const Tree& state) {
        EXPECT_EQ(Now(path), state);
        for (const auto& [name, node] : state) {
            readOnly_ += node.isReadOnly ? 1 : 0;
            hidden_ += node.isHidden ? 1 : 0;
        }
        ++restored_;
    }

    void RestoreAll(Item& item) {
        browser.ListRestoreFiles();
        browser.RestoredPath(tree.Path(item.path));
        ASSERT_EQ(browser.Copies().Rows().Count(), static_cast<int>(item.states.size()));
        for (std::size_t i = 0; i < item.states.size(); ++i) {
            for (const bool elsewhere : {false, true}) {
                SelectCopy(CopyLabel(static_cast<int>(i) + 1));
                tree.Remove(elsewhere ? std::wstring(L"Elsewhere") : WithoutMark(item.path));
                tree.Folder(L"Elsewhere");
                if (elsewhere) {
                    dialogs.Expect(tree.Path(L"Elsewhere\\any name"));
                    commands.mnuRestoreToClick();
                    Compare(L"Elsewhere\\" + NameOf(item), item.states[i]);
                } else {
                    commands.mnuRestoreClick();
                    Compare(item.path, item.states[i]);
                }
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
    int readOnly_ = 0;
    int hidden_ = 0;
};

TEST_F(RoundTrip, RandomHistories_RestoreEveryState) {
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
    std::cout << restored_ << " copies restored and compared, " << readOnly_
              << " files of them read-only, " << hidden_ << " hidden\n";
    EXPECT_GT(readOnly_, 0);
    RecordProperty("restored", restored_);
}

}  // namespace
}  // namespace vw::test
