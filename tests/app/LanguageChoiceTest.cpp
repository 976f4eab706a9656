#include "app/LanguageChoice.h"

#include <gtest/gtest.h>

#include "platform/CCommonAPI.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/ImportHook.h"
#include "tests/support/ScratchRegistry.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

const std::wstring kBaseName = L"VaultwrightTests-Language";
const std::wstring kKey = L"Software\\Tallowmere.Net\\" + kBaseName;
constexpr std::wstring_view kQuestion =
    L"The current interface language is English. Do you want to change it to Arabic?";

class LanguageChoices : public testing::Test {
  protected:
    ScratchKey key{HKEY_CURRENT_USER, kKey};
    SavedValue digits{HKEY_CURRENT_USER, L"Control Panel\\International", L"NumShape"};
    TestEnvironment world;
    MRecentFiles::SettingsStore settings{world.errors, kBaseName};
    ProgramState state;
    LanguageChoice choice{settings, world.boxes, state};
    SystemRegistry registry;
    CCommonAPI api{registry, world.ansi, world.boxes, world.errors};

    [[nodiscard]] std::wstring Stored() const { return settings.GetSetting(L"Arabic", L"absent"); }

    /// What the next start of the program does.
    void StartAgain(bool silently = false) {
        state = ProgramState();
        state.silentRun = silently;
        (void)choice.Read();
        choice.PrepareArabicOnce(api);
    }
};

TEST_F(LanguageChoices, FirstStart_AsksForTheLanguage) {
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    EXPECT_EQ(choice.Read(), Language::Arabic);
    EXPECT_TRUE(state.IsArabic());
    EXPECT_EQ(Stored(), L"-1");

    ASSERT_EQ(world.boxes.Shown().size(), 1U);
    const MessageBoxRequest& box = world.boxes.Shown().front();
    EXPECT_EQ(box.text, kQuestion);
    EXPECT_EQ(box.title, L"Vualtwright");
    EXPECT_EQ(box.buttons, BoxButtons::YesNo);
    EXPECT_EQ(box.icon, BoxIcon::None);
    EXPECT_TRUE(box.secondIsDefault);
    EXPECT_FALSE(box.rightToLeft);
}

TEST_F(LanguageChoices, AnswerIsNo_IsEnglishAndNotAskedAgain) {
    world.boxes.Expect(kQuestion, BoxAnswer::No);
    EXPECT_EQ(choice.Read(), Language::English);
    EXPECT_FALSE(state.IsArabic());
    EXPECT_EQ(Stored(), L"0");
    EXPECT_EQ(choice.Read(), Language::English);
    EXPECT_EQ(world.boxes.Shown().size(), 1U);
}

TEST_F(LanguageChoices, AnswerIsYes_IsArabicAndNotAskedAgain) {
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    EXPECT_EQ(choice.Read(), Language::Arabic);
    state.language = Language::English;
    EXPECT_EQ(choice.Read(), Language::Arabic);
    EXPECT_TRUE(state.IsArabic());
    EXPECT_EQ(world.boxes.Shown().size(), 1U);
}

TEST_F(LanguageChoices, StoredAsNeverChosen_AnyLetterCase_IsAsked) {
    settings.SaveSetting(L"Arabic", L"n/a");
    world.boxes.Expect(kQuestion, BoxAnswer::No);
    EXPECT_EQ(choice.Read(), Language::English);
    EXPECT_EQ(Stored(), L"0");
}

TEST_F(LanguageChoices, SilentFirstStart_AsksAndStoresNothing) {
    state.silentRun = true;
    state.language = Language::Arabic;
    EXPECT_EQ(choice.Read(), Language::English);
    EXPECT_FALSE(state.IsArabic());
    EXPECT_FALSE(KeyExists(HKEY_CURRENT_USER, kKey));

    state.silentRun = false;
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    EXPECT_EQ(choice.Read(), Language::Arabic);
}

TEST_F(LanguageChoices, SilentRun_UsesTheStoredLanguage) {
    settings.SaveSetting(L"Arabic", L"-1");
    state.silentRun = true;
    EXPECT_EQ(choice.Read(), Language::Arabic);
}

TEST_F(LanguageChoices, StoredYesOrNo_AnyForm_IsRead) {
    for (const std::wstring_view yes : {L"-1", L"True", L"true", L"1", L"7"}) {
        settings.SaveSetting(L"Arabic", yes);
        EXPECT_EQ(choice.Read(), Language::Arabic);
        EXPECT_TRUE(state.IsArabic());
        for (const std::wstring_view no : {L"0", L"False"}) {
            settings.SaveSetting(L"Arabic", no);
            EXPECT_EQ(choice.Read(), Language::English);
            EXPECT_FALSE(state.IsArabic());
        }
    }
}

TEST_F(LanguageChoices, StoredOtherText_ThrowsTypeMismatch) {
    for (const std::wstring_view text : {L"Arabic", L"", L"yes"}) {
        settings.SaveSetting(L"Arabic", text);
        EXPECT_EQ(NumberOf([&] { return choice.Read(); }), error_number::kTypeMismatch);
        EXPECT_EQ(Stored(), text);
    }
}

TEST_F(LanguageChoices, Write_StoresMinusOneOrZero) {
    choice.Write(Language::Arabic);
    EXPECT_EQ(Stored(), L"-1");
    EXPECT_TRUE(state.IsArabic());
    choice.Write(Language::English);
    EXPECT_EQ(Stored(), L"0");
    EXPECT_FALSE(state.IsArabic());
}

TEST_F(LanguageChoices, Arabic_WarnsAboutDigitsAtTheFirstStartOnly) {
    digits.Set(L"1");
    choice.Write(Language::Arabic);
    world.boxes.Expect(L"إن نمط الأرقام المستعمل غير صالح:");
    StartAgain();
    StartAgain();
    StartAgain();
    EXPECT_EQ(world.boxes.Shown().size(), 1U);
}

TEST_F(LanguageChoices, ArabicByTheQuestion_WarnsAboutDigitsOnce) {
    digits.Set(L"1");
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    world.boxes.Expect(L"إن نمط الأرقام المستعمل غير صالح:");
    StartAgain();
    StartAgain();
    EXPECT_EQ(world.boxes.Shown().size(), 2U);
}

TEST_F(LanguageChoices, ArabicAfterEnglish_WarnsAboutDigitsAgain) {
    digits.Set(L"1");
    for (int i = 0; i < 2; ++i) {
        choice.Write(Language::Arabic);
        world.boxes.Expect(L"إن نمط الأرقام المستعمل غير صالح:");
        StartAgain();
        choice.Write(Language::English);
        StartAgain();
    }
    EXPECT_EQ(world.boxes.Shown().size(), 2U);
}

TEST_F(LanguageChoices, English_NeverWarnsAboutDigits) {
    digits.Set(L"1");
    choice.Write(Language::English);
    StartAgain();
    EXPECT_TRUE(world.boxes.Shown().empty());
}

int switches = 0;

HKL WINAPI CountSwitch(HKL layout, UINT) {
    if (layout == reinterpret_cast<HKL>(HKL_PREV)) ++switches;
    return layout;
}

// No layout of the test's machine has the name that is looked for.
TEST_F(LanguageChoices, Arabic_SwitchesToAnArabicKeyboard) {
    const ImportHook count("ActivateKeyboardLayout", &CountSwitch);
    digits.Set(L"0");
    switches = 0;
    choice.Write(Language::English);
    StartAgain();
    EXPECT_EQ(switches, 0);
    choice.Write(Language::Arabic);
    StartAgain();
    EXPECT_GT(switches, 0);
}

TEST_F(LanguageChoices, SilentRun_LeavesTheWarningToTheNextStart) {
    digits.Set(L"1");
    choice.Write(Language::Arabic);
    StartAgain(true);
    EXPECT_TRUE(world.boxes.Shown().empty());
    world.boxes.Expect(L"إن نمط الأرقام المستعمل غير صالح:");
    StartAgain();
}

TEST_F(LanguageChoices, English_StoresNoOtherSetting) {
    choice.Write(Language::English);
    EXPECT_EQ(ReadValue(HKEY_CURRENT_USER, kKey, L"ArabicPrepared"), std::nullopt);
}

}  // namespace
}  // namespace vw::test
