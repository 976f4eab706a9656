// The language of the windows, which is asked for once in the life of an installation.

#include <gmock/gmock.h>

#include "tests/system/ProgramCopy.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LanguageAtStart : public SystemTest {
  protected:
    /// The class of the icon's window, which shows the language.
    [[nodiscard]] std::wstring IconClass() {
        // Not enabled, so it does nothing and stays.
        ProgramRun run(program.With(L"/Startup"));
        const HWND icon = run.WaitForWindow(L"frmTrayIcon");
        std::wstring name = ClassOf(icon);
        EXPECT_EQ(run.EndByIcon(), 0U);
        EXPECT_THAT(run.Boxes(), IsEmpty());
        return name;
    }

    void WaitForSetting(const std::wstring& value) const {
        for (int i = 0; i < 3000 && program.Setting(L"Arabic") != value; ++i) Sleep(10);
        EXPECT_EQ(program.Setting(L"Arabic"), value);
    }
};

TEST_F(LanguageAtStart, SilentFirstStart_AsksAndStoresNothing) {
    program.SetSetting(L"Arabic", std::nullopt);
    EXPECT_EQ(IconClass(), L"frmTrayIconEn");
    RunsTo(0, L"/B");
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(program.Setting(L"Arabic"), std::nullopt);
}

TEST_F(LanguageAtStart, FirstStartWithAWindow_AsksOnce) {
    program.SetSetting(L"Arabic", std::nullopt);
    {
        ProgramRun run(program.With(L"/Author"));
        const Box question = run.WaitForBox();
        EXPECT_EQ(question.title, L"Vualtwright");
        EXPECT_EQ(question.text,
                  L"The current interface language is English. Do you want to change it to "
                  L"Arabic?");
        EXPECT_THAT(question.buttons, ElementsAre(IDYES, IDNO));
        EXPECT_EQ(question.defaultButton, IDNO);
        EXPECT_EQ(program.Setting(L"Arabic"), std::nullopt);
        run.Answer(question, IDNO);
        const Box author = run.WaitForBox();
        EXPECT_EQ(author.title, L"Vaultwright");
        EXPECT_EQ(program.Setting(L"Arabic"), L"0");
        run.Answer(author);
        EXPECT_EQ(run.WaitForEnd(), 0U);
    }
    RunsTo(0, L"/Author");
    EXPECT_THAT(boxes, SizeIs(1));
}

TEST_F(LanguageAtStart, AnswerIsYes_WindowsAreArabic) {
    program.SetSetting(L"Arabic", L"n/A");
    {
        ProgramRun run(program.With(L"/Author"));
        run.Answer(run.WaitForBox(), IDYES);
        WaitForSetting(L"-1");
    }
    EXPECT_EQ(IconClass(), L"frmTrayIconAr");
}

// Arabic text needs digits in the shape of their context; the first start in Arabic says so once.
TEST_F(LanguageAtStart, Arabic_WarnsAboutDigitsOnce) {
    const SavedValue digits(HKEY_CURRENT_USER, L"Control Panel\\International", L"NumShape");
    digits.Set(L"1");
    program.SetSetting(L"Arabic", L"-1");
    {
        ProgramRun run(program.With(L""));
        const Box warning = run.WaitForBox();
        EXPECT_EQ(warning.title, L"Vaultwright");
        EXPECT_EQ(warning.text,
                  L"إن نمط الأرقام المستعمل غير صالح:\r\n"
                  L"من قائمة ابدأ اختر إعدادات- لوحة التحكم- إعدادات إقليمية\r\n"
                  L"ثم انقر لسان التبويب {الرقم} ثم غير نمط الأرقام إلى موضعية أو إلى السياق.");
        EXPECT_THAT(warning.buttons, SizeIs(1));
        run.Answer(warning);
        EXPECT_EQ(ClassOf(run.WaitForVisibleWindow(L"frmMain")), L"frmMainAr");
    }
    ProgramRun again(program.With(L""));
    EXPECT_NE(again.WaitForVisibleWindow(L"frmMain"), nullptr);
    EXPECT_THAT(again.Boxes(), IsEmpty());
}

TEST_F(LanguageAtStart, StoredYesOrNo_IsUsed) {
    for (const std::wstring_view yes : {L"-1", L"True", L"1"}) {
        program.SetSetting(L"Arabic", yes);
        EXPECT_EQ(IconClass(), L"frmTrayIconAr");
        EXPECT_EQ(program.Setting(L"Arabic"), yes);
    }
    for (const std::wstring_view no : {L"0", L"false"}) {
        program.SetSetting(L"Arabic", no);
        EXPECT_EQ(IconClass(), L"frmTrayIconEn");
    }
}

}  // namespace
}  // namespace vw::test
