#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "platform/Utf8.h"
#include "tests/windows/DrivenProgram.h"
#include "ui/resource.h"

namespace vw::test {

/// Answers the boxes of a process as somebody who goes on whatever happens: yes to a question.
class Answering {
  public:
    explicit Answering(DWORD process) : thread_([this, process] { Answer(process); }) {}
    Answering(const Answering&) = delete;
    Answering& operator=(const Answering&) = delete;
    ~Answering() { Stop(); }

    /// The texts of the boxes that asked nothing.
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

/// A test in which the disk fails at one call of a restore in the real window; the drive of the
/// copies is the one whose calls are counted, so what is overwritten lies on it too.
class FailingRestore : public WindowsTest {
  protected:
    struct Outcome {
        int calls = 0;
        std::string failed;  ///< the call that failed, if the restore came to it
        std::vector<std::wstring> told;

        [[nodiscard]] std::string AllTold() const {
            std::string all;
            for (const std::wstring& text : told) all += "told: " + ToUtf8(text) + "\n";
            return all;
        }
    };

    static constexpr int kBroken = 5;
    static constexpr int kNoSpace = 28;

    ~FailingRestore() override { program.tree.Remove(Home()); }

    [[nodiscard]] std::wstring Home() const { return Drive() + L"\\Home"; }

    /// What is in the comment of a copy of an item in `Home`.
    [[nodiscard]] std::string Comment() const {
        return "Backed Files Date Last Modified:02/01/2024-03:04:05+Original Location:" +
               ToUtf8(Home()) + "\r\n";
    }

    /// Restores the selected copy in this window while the call of this number fails; 0 lets all of
    /// them through.
    Outcome RestoreIn(DrivenProgram& window, int number, int error) {
        program.tree.Remove(log_);
        Answering answering(window.Run().ProcessId());
        program.tree.File(control_, Fixed(number, 8) + " " + Fixed(error, 4) + "\n");
        window.Begin(ID_mnuRestore);
        window.WaitUntilReady();
        CloseWhatStays(window);
        window.WaitUntilBusyDialogIsGone();
        program.tree.Remove(control_);
        Outcome outcome;
        outcome.told = answering.Told();
        const std::string calls = ReadBytes(log_);
        outcome.calls = static_cast<int>(std::ranges::count(calls, '\n'));
        const std::size_t failed = calls.find("failed ");
        if (failed != std::string::npos) {
            outcome.failed = calls.substr(failed, calls.find('\n', failed) - failed);
        }
        return outcome;
    }

    /// The same in a window of its own.
    Outcome Restore(int number, int error) {
        DrivenProgram window(program.With(L""));
        const Outcome outcome = RestoreIn(window, number, error);
        window.Close();
        return outcome;
    }

    /// The number of the call that fails at a point: spread evenly over the calls, with some
    /// chance.
    [[nodiscard]] static int CallAt(unsigned point, unsigned points, int calls, unsigned chance) {
        return static_cast<int>((point * 1000 + chance % 1000) * static_cast<unsigned>(calls) /
                                (points * 1000)) +
               1;
    }

  private:
    /// After a failure the busy dialog stays for a user who wants to read its report. One whose
    /// restore still goes on must not be taken for that: its calls go on.
    void CloseWhatStays(DrivenProgram& window) const {
        const auto busy = [&] { return FindWindowOf(window.Run().ProcessId(), L"frmBusyDialog"); };
        std::string calls;
        while (busy() != nullptr && ReadBytes(log_) != calls) {
            calls = ReadBytes(log_);
            Sleep(200);
            window.WaitUntilReady();
        }
        if (const HWND stays = busy()) PostMessageW(stays, WM_CLOSE, 0, 0);
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

    const std::wstring control_ = Shared("VW_FAIL_CONTROL");
    const std::wstring log_ = Shared("VW_FAIL_LOG");
};

}  // namespace vw::test
