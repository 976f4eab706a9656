// The disk fails in the middle of a restore, at any of its calls: the file that was to be
// overwritten or the restored one stands, whole; what was overwritten stands as a safety copy,
// whole; and what could not be done is told. tests/checks/restore_faults.sh makes the calls fail.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <iostream>
#include <random>
#include <thread>

#include "platform/Utf8.h"
#include "tests/support/Histories.h"
#include "tests/windows/DrivenProgram.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

/// Answers the boxes of a process as somebody who goes on whatever happens: yes to a question.
class Answering {
  public:
    explicit Answering(DWORD process) : thread_([this, process] { Answer(process); }) {}
    Answering(const Answering&) = delete;
    Answering& operator=(const Answering&) = delete;
    ~Answering() { Stop(); }

    /// What the boxes said that only told something.
    [[nodiscard]] std::vector<std::wstring> Told() {
        Stop();
        return told_;
    }

  private:
    void Answer(DWORD process) {
        while (!stop_) {
            for (const Box& box : BoxesOf(process)) {
                const bool asks = std::ranges::count(box.buttons, IDYES) > 0;
                if (!asks) told_.push_back(box.text);
                Press(box, asks ? IDYES : IDOK);
                while (IsWindow(box.handle) != 0) Sleep(5);
            }
            Sleep(5);
        }
    }
    void Stop() {
        stop_ = true;
        if (thread_.joinable()) thread_.join();
    }

    std::atomic<bool> stop_ = false;
    std::vector<std::wstring> told_;
    std::thread thread_;
};

class FailedRestore : public WindowsTest {
  protected:
    struct Outcome {
        int calls = 0;
        std::string failed;  ///< the call that failed, if the restore came to it
        std::vector<std::wstring> told;
    };

    // All of it lies on the drive of the copies, where the calls are counted.
    ~FailedRestore() override { program.tree.Remove(Drive() + L"\\Home"); }

    void Prepare() {
        program.tree.Remove(Vault());
        program.tree.File(Vault() + L"\\Letter«0001».txt", stored, {2024, 1, 2, 3, 4, 5});
        program.tree.File(Vault() + L"\\Letter«0001».txt.vwc",
                          "Backed Files Date Last Modified:02/01/2024-03:04:05+Original Location:" +
                              ToUtf8(Drive()) + "\\Home\r\n");
        program.tree.File(letter, unsaved, {2024, 5, 5, 5, 5, 5});
        WriteDefaultList({letter});
    }

    /// Restores the copy while the call of this number fails; 0 lets all of them through.
    Outcome Restore(int number, int error) {
        DrivenProgram window(program.With(L""));
        program.tree.Remove(log);
        Answering answering(window.Run().ProcessId());
        program.tree.File(control, Fixed(number, 8) + " " + Fixed(error, 4) + "\n");
        window.Begin(ID_mnuRestore);
        window.WaitUntilReady();
        // After a failure it stays for whoever wants to read its report.
        if (const HWND busy = FindWindowOf(window.Run().ProcessId(), L"frmBusyDialog")) {
            PostMessageW(busy, WM_CLOSE, 0, 0);
        }
        window.WaitUntilBusyDialogIsGone();
        program.tree.Remove(control);
        Outcome outcome;
        outcome.told = answering.Told();
        window.Close();
        const std::string calls = ReadBytes(log);
        outcome.calls = static_cast<int>(std::ranges::count(calls, '\n'));
        const std::size_t failed = calls.find("failed ");
        if (failed != std::string::npos) {
            outcome.failed = calls.substr(failed, calls.find('\n', failed) - failed);
        }
        return outcome;
    }

    void Judge(const Outcome& outcome) const {
        SCOPED_TRACE(outcome.failed);
        for (const std::wstring& text : outcome.told) SCOPED_TRACE(ToUtf8(text));
        const std::string now = ReadBytes(letter);
        EXPECT_TRUE(now == unsaved || now == stored) << now.size() << " bytes";
        EXPECT_TRUE(now == stored || !outcome.told.empty()) << "not restored, and nobody says so";
        const bool safe = Exists(safety);
        EXPECT_TRUE(safe || now == unsaved) << "overwritten without a safety copy";
        EXPECT_TRUE(!safe || ReadBytes(safety) == unsaved) << "half a safety copy";
        EXPECT_EQ(ReadBytes(Vault() + L"\\Letter«0001».txt"), stored) << "the copy itself";
    }

    [[nodiscard]] static std::string Fixed(int number, std::size_t width) {
        const std::string digits = std::to_string(number);
        return std::string(width - std::min(width, digits.size()), ' ') + digits;
    }

    /// A file that both sides know, given by its name outside.
    [[nodiscard]] static std::wstring Shared(const char* variable) {
        const char* const path = std::getenv(variable);
        std::wstring name = L"Z:" + FromUtf8(path == nullptr ? "" : path);
        std::ranges::replace(name, L'/', L'\\');
        return name;
    }

    const std::string stored = std::string(150000, 's');
    const std::string unsaved = std::string(170000, 'u');
    const std::wstring letter = Drive() + L"\\Home\\Letter.txt";
    const std::wstring safety = Vault() + L"\\Letter«0021».txt";
    const std::wstring control = Shared("VW_FAIL_CONTROL");
    const std::wstring log = Shared("VW_FAIL_LOG");
};

TEST_F(FailedRestore, LosesNeitherTheFileNorItsSafetyCopy) {
    constexpr int kBroken = 5;
    constexpr int kNoSpace = 28;
    const auto points = Histories::Usually(5);
    Prepare();
    const Outcome whole = Restore(0, 0);
    ASSERT_EQ(ReadBytes(letter), stored);
    ASSERT_EQ(ReadBytes(safety), unsaved);
    ASSERT_GT(whole.calls, 20) << "the calls of a restore were not found";
    std::mt19937 random(points.first);
    int failed = 0;
    int told = 0;
    for (unsigned point = 0; point != points.count && !HasFailure(); ++point) {
        // Spread evenly over the calls, with some chance.
        const auto at =
            static_cast<int>((point * 1000 + random() % 1000) * static_cast<unsigned>(whole.calls) /
                             (points.count * 1000)) +
            1;
        Prepare();
        const Outcome outcome = Restore(at, random() % 2 != 0 ? kNoSpace : kBroken);
        Judge(outcome);
        if (!outcome.failed.empty()) ++failed;
        if (!outcome.told.empty()) ++told;
        // What a failure left must not hinder the next restore.
        program.tree.File(letter, unsaved, {2024, 5, 5, 5, 5, 5});
        Restore(0, 0);
        EXPECT_EQ(ReadBytes(letter), stored) << "the next restore, after " << outcome.failed;
        EXPECT_EQ(ReadBytes(safety), unsaved);
    }
    EXPECT_GT(2 * failed, static_cast<int>(points.count));
    std::cout << points.count << " points of " << whole.calls << " calls tried, " << failed
              << " calls failed in a restore, " << told << " of them told\n";
}

}  // namespace
}  // namespace vw::test
