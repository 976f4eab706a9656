#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "platform/Utf8.h"
#include "tests/support/TempTree.h"

namespace vw::test {

/// A folder with changes that no copy has, and a copy of it as it was before: what a restore that
/// is disturbed must not lose.
class WorkFolder {
  public:
    /// The folder is `home`\Work, its copy the first in `vault`; files of `bytes` and more.
    WorkFolder(const TempTree& tree, std::wstring_view home, std::wstring_view vault,
               std::size_t bytes)
        : tree_(tree), home_(home), vault_(vault), bytes_(bytes) {}

    /// Puts both there, and no other copy.
    void Prepare() {
        tree_.Remove(vault_);
        tree_.Remove(Path());
        Fill(Copy(1), 's', 2);
        tree_.File(Copy(1) + L"\\Gone.txt", std::string(bytes_, 'g'), {2024, 1, 1, 1, 1, 1});
        tree_.File(Copy(1) + L".vwc",
                   "Backed Files Date Last Modified:02/01/2024-03:04:05+Original Location:" +
                       ToUtf8(home_) + "\r\n");
        Fill(Path(), 'u', 5);
        tree_.File(Path() + L"\\Sub\\New.txt", std::string(bytes_, 'n'), {2024, 5, 1, 1, 1, 1});
        stored_ = ReadTree(Copy(1));
        unsaved_ = ReadTree(Path());
        restored_ = stored_;
        restored_.insert(*unsaved_.find(L"Sub\\New.txt"));
    }

    [[nodiscard]] std::wstring Path() const { return home_ + L"\\Work"; }
    /// The place of the copy of this number; 21 is that of the first safety copy.
    [[nodiscard]] std::wstring Copy(int number) const {
        const std::wstring path = Path();
        // Below a folder with a point in its name a copy lies in folders of its own.
        const std::size_t point = path.rfind(L'.');
        return vault_ + L"\\Work«00" + (number < 10 ? L"0" : L"") + std::to_wstring(number) + L"»" +
               (point == path.npos ? L"" : path.substr(point));
    }
    /// Whether all of it is; what a process left that was killed does not count.
    [[nodiscard]] bool IsRestored() const {
        Tree now = ReadTree(Path());
        std::erase_if(now, [](const auto& entry) { return IsLeftOver(entry.first); });
        return now == restored_;
    }
    [[nodiscard]] bool IsTouched() const { return ReadTree(Path()) != unsaved_; }
    [[nodiscard]] bool HasSafetyCopy() const { return Exists(Copy(21)); }
    /// Whether one of them holds all that was in the folder.
    [[nodiscard]] bool HasWholeSafetyCopy() const {
        for (int number = 21; number <= 24; ++number) {
            if (ReadTree(Copy(number)) == unsaved_) return true;
        }
        return false;
    }

    /// Whatever happened: each file is the old or the restored one, whole; when anything of the
    /// folder changed, all that was in it is a safety copy; and the copy is as it was.
    /// Working files of a process that was killed may be left beside them.
    void Judge(bool wasKilled) const {
        Tree now = ReadTree(Path());
        for (const auto& [path, node] : unsaved_) {
            SCOPED_TRACE(ToUtf8(path));
            const auto found = now.find(path);
            ASSERT_NE(found, now.end()) << "a file is gone";
            const auto old = stored_.find(path);
            EXPECT_TRUE(found->second == node ||
                        (old != stored_.end() && found->second == old->second))
                << "neither the old file nor the restored one: " << found->second;
            now.erase(found);
        }
        for (const auto& [path, node] : now) {
            SCOPED_TRACE(ToUtf8(path));
            if (wasKilled && IsLeftOver(path)) continue;
            const auto old = stored_.find(path);
            EXPECT_TRUE(old != stored_.end() && node == old->second) << "left beside it";
        }
        EXPECT_TRUE(HasWholeSafetyCopy() || !IsTouched()) << "overwritten without a safety copy";
        EXPECT_EQ(ReadTree(Copy(1)), stored_) << "the copy itself";
    }

  private:
    [[nodiscard]] static bool IsLeftOver(std::wstring_view path) { return path.ends_with(L".tmp"); }
    void Fill(const std::wstring& folder, char letter, int month) const {
        // Of other sizes, and each with a date of its own.
        std::size_t bytes = bytes_ + static_cast<std::size_t>(month) * 100;
        int day = 1;
        for (const auto* name : {L"a.txt", L"b.txt", L"Sub\\c.txt", L"Sub\\Deep\\d.txt"}) {
            tree_.File(folder + L"\\" + name, std::string(bytes, letter),
                       {2024, month, ++day, 3, 4, 5});
            bytes += 1000;
        }
    }

    const TempTree& tree_;
    std::wstring home_;
    std::wstring vault_;
    std::size_t bytes_;
    Tree stored_;
    Tree unsaved_;
    Tree restored_;
};

}  // namespace vw::test
