#pragma once

#include <string>

#include "tests/restore/RestoreEnvironment.h"

namespace vw::test {

inline const std::wstring kQuestion =
    L"هل تريد بالتأكيد حذف الملف التالي واستبداله بالنسخة الاحتياطية:\r\n";

/// Fails the test unless a question has the buttons that were given for it: neither an icon nor
/// another default button.
inline void ExpectGivenQuestion(const MessageBoxRequest& box) {
    EXPECT_EQ(box.buttons, BoxButtons::YesNo);
    EXPECT_EQ(box.icon, BoxIcon::None);
    EXPECT_EQ(box.title, L"Vaultwright");
    EXPECT_TRUE(box.rightToLeft);
    EXPECT_FALSE(box.secondIsDefault);
}

/// Report.doc in three states, each backed up: N03 is the first, N01 the third, which is there.
class Restore : public RestoreEnvironment {
  protected:
    Restore() {
        for (int state = 1; state <= 3; ++state) {
            tree.File(L"Docs\\Report.doc", "state " + std::to_string(state),
                      {2024, 1, state, 9, 0, 0});
            BackUp(document);
        }
        browser.ListRestoreFiles();
    }
    [[nodiscard]] std::string Safety(int number = 21) const {
        return ReadBytes(vault + L"\\Report«00" + std::to_wstring(number) + L"».doc");
    }
    [[nodiscard]] bool HasSafety(int number = 21) const {
        return Exists(vault + L"\\Report«00" + std::to_wstring(number) + L"».doc");
    }

    const std::wstring document = tree.Path(L"Docs\\Report.doc");
};

}  // namespace vw::test
