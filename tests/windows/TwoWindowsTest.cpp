// Two windows of the program that hold the same list and save it at the same time: the file is
// always a whole list, the one of the one window or of the other.

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <random>

#include "platform/Handle.h"
#include "tests/support/Histories.h"
#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

class TwoWindows : public BackupWindows {
  protected:
    TwoWindows() {
        for (int i = 0; i < 12; ++i) {
            names_.push_back(program.tree.File(L"Home\\file" + std::to_wstring(i) + L".txt"));
        }
        WriteDefaultList(names_);
    }

    /// What the file says now; empty while a save keeps readers out.
    [[nodiscard]] std::string FileNow() const {
        const FileHandle file(CreateFileW(program.DefaultList().c_str(), GENERIC_READ,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, 0, nullptr));
        if (!file) {
            EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND)) << "no list";
            return {};
        }
        std::string bytes(1U << 16U, '\0');
        DWORD count = 0;
        ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
        bytes.resize(count);
        EXPECT_NE(bytes, "") << "an emptied list";
        return bytes;
    }

    void ExpectWhole(const std::string& bytes) const {
        EXPECT_TRUE(bytes.starts_with("BackupTo: ")) << bytes;
        EXPECT_TRUE(bytes.ends_with("\r\n")) << bytes;
        for (std::size_t at = bytes.find("Home"); at != std::string::npos;
             at = bytes.find("Home", at + 1)) {
            const std::string name = bytes.substr(at, bytes.find("\r\n", at) - at);
            EXPECT_TRUE(std::any_of(names_.begin(), names_.end(), [&](const std::wstring& item) {
                return item.ends_with(std::wstring(name.begin(), name.end()));
            })) << name;
        }
    }

    /// The list that a window shows, as a file.
    [[nodiscard]] std::string Shown(DrivenProgram& window) const {
        std::wstring text =
            L"BackupTo: " + Vault() + L"\r\nBackages: " + window.TextOf(ID_lblBackages) + L"\r\n";
        for (const std::wstring& item : window.List(ID_lsvBackupList).Column(1)) {
            text += item + L"\r\n";
        }
        std::string bytes;
        for (const wchar_t unit : text) bytes += static_cast<char>(unit);
        return bytes;
    }

    /// One edit by chance, not waited for.
    void BeginEdit(DrivenProgram& window) {
        const auto number = [this](int below) {
            return std::uniform_int_distribution<int>(0, below - 1)(random);
        };
        const DrivenList list = window.List(ID_lsvBackupList);
        if (list.Count() > 4 && number(2) == 0) {
            list.Select(number(list.Count()));
            window.Begin(ID_mnuDel);
        } else {
            list.Drop({names_[static_cast<std::size_t>(number(12))]});
        }
    }

    std::mt19937 random;

  private:
    std::vector<std::wstring> names_;
};

TEST_F(TwoWindows, SaveOneListAtOnce_LeaveAWholeList) {
    const auto histories = Histories::Usually(15);
    random.seed(histories.first);
    DrivenProgram first(program.With(L""));
    DrivenProgram second(program.With(L""));
    int looks = 0;
    for (unsigned step = 0; step < histories.count && !HasFailure(); ++step) {
        SCOPED_TRACE("first seed " + std::to_string(histories.first) + ", step " +
                     std::to_string(step));
        BeginEdit(first);
        BeginEdit(second);
        const ULONGLONG end = GetTickCount64() + 60;
        while (GetTickCount64() < end) {
            if (const std::string now = FileNow(); !now.empty()) ExpectWhole(now);
            ++looks;
        }
        first.WaitUntilReady();
        second.WaitUntilReady();
        EXPECT_THAT(FileNow(), testing::AnyOf(Shown(first), Shown(second)));
    }
    std::cout << 2 * histories.count << " saves of one list by two windows, " << looks
              << " looks\n";
    EXPECT_EQ(first.Close(), 0U);
    EXPECT_EQ(second.Close(), 0U);
    ExpectWhole(FileNow());
    EXPECT_FALSE(Exists(program.DefaultList() + L".tmp"));
}

}  // namespace
}  // namespace vw::test
