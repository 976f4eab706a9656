#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "list/editing/FileDialogs.h"

namespace vw::test {

/// File dialogs that the test answers; one that was not planned fails the test and counts as
/// cancelled.
class ScriptedDialogs final : public FileDialogs {
  public:
    ~ScriptedDialogs() override {
        EXPECT_TRUE(answers_.empty()) << answers_.size() << " planned file dialogs did not come";
    }

    /// Plans what the next dialog gives; nothing for Cancel.
    void Expect(std::optional<std::wstring> answer) { answers_.push_back(std::move(answer)); }

    /// Drops what was planned and did not come.
    void Forget() { answers_.clear(); }

    /// The dialogs shown so far, and which of them were for saving.
    std::vector<FileDialogSetup> shown;
    std::vector<bool> saving;

    std::optional<std::wstring> ShowOpen(FileDialogSetup& dialog) override {
        return Answer(dialog, false);
    }
    std::optional<std::wstring> ShowSave(FileDialogSetup& dialog) override {
        return Answer(dialog, true);
    }

  private:
    std::optional<std::wstring> Answer(const FileDialogSetup& dialog, bool save) {
        shown.push_back(dialog);
        saving.push_back(save);
        if (answers_.empty()) {
            ADD_FAILURE() << "a file dialog that was not planned";
            return std::nullopt;
        }
        std::optional<std::wstring> answer = std::move(answers_.front());
        answers_.pop_front();
        return answer;
    }

    std::deque<std::optional<std::wstring>> answers_;
};

}  // namespace vw::test
