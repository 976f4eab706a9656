#pragma once

#include <string>
#include <vector>

#include "tests/windows/DrivenProgram.h"
#include "ui/resource.h"

namespace vw::test {

/// Names of the rows of a list view.
inline constexpr int kName = 0;

/// A test that backs up through the real windows.
class BackupWindows : public WindowsTest {
  protected:
    std::wstring Home(std::wstring_view name) const {
        return program.tree.Path(L"Home\\" + std::wstring(name));
    }
    void BackUp(DrivenProgram& window) {
        window.Begin(ID_mnuBackup);
        window.WaitForBusyDialog();
        window.WaitUntilBusyDialogIsGone();
        window.WaitUntilReady();
    }
    /// Enough files for a run that is still going on when the test looks.
    void MakeManyFiles(int count = 400) {
        for (int i = 0; i < count; ++i) {
            program.tree.File(L"Home\\Many\\f" + std::to_wstring(i) + L".txt",
                              std::string(20000, 'x'));
        }
    }
    std::vector<std::wstring> InVault() const {
        std::vector<std::wstring> names;
        for (const auto& [path, node] : ReadTree(Vault())) {
            if (path.find(L'\\') == std::wstring::npos) names.push_back(path);
        }
        return names;
    }

    const std::wstring letter =
        program.tree.File(L"Home\\Letter.txt", "first", {2024, 1, 1, 12, 0, 0});
};

}  // namespace vw::test
