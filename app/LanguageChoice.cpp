#include "app/LanguageChoice.h"

#include <string_view>

#include "platform/CCommonAPI.h"
#include "platform/Conversions.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgramState.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

/// "Ar" or "En" makes a build of one language; empty lets the user choose.
constexpr std::wstring_view kForcedLanguage;

constexpr std::wstring_view kNeverChosen = L"N/A";

/// Whether the keyboard was switched and the digits were looked at since the choice became Arabic.
constexpr std::wstring_view kArabicPrepared = L"ArabicPrepared";

Language LanguageOf(bool arabic) { return arabic ? Language::Arabic : Language::English; }

}  // namespace

LanguageChoice::LanguageChoice(MRecentFiles::SettingsStore& settings, MessageBoxes& boxes,
                               ProgramState& state)
    : settings_(settings), boxes_(boxes), state_(state) {}

Language LanguageChoice::Read() {
    if constexpr (!kForcedLanguage.empty()) Write(LanguageOf(kForcedLanguage == L"Ar"));

    const std::wstring stored = settings_.GetSetting(setting::kArabic, kNeverChosen);
    if (!EqualNoCase(stored, kNeverChosen)) {
        state_.language = LanguageOf(ParseBool(stored));
    } else if (state_.silentRun) {
        state_.language = Language::English;
    } else {
        Write(LanguageOf(Ask()));
    }
    return state_.language;
}

void LanguageChoice::Write(Language language) {
    const bool arabic = language == Language::Arabic;
    settings_.SaveSetting(setting::kArabic, SettingText(arabic));
    if (arabic) settings_.SaveSetting(kArabicPrepared, SettingText(false));
    state_.language = language;
}

void LanguageChoice::PrepareArabicOnce(CCommonAPI& api) {
    if (!state_.IsArabic() || state_.silentRun) return;
    if (settings_.GetSetting(kArabicPrepared, SettingText(false)) == SettingText(true)) return;
    settings_.SaveSetting(kArabicPrepared, SettingText(true));
    api.LanguageIsArabic(true);
}

// The title's spelling is the one that users are used to.
bool LanguageChoice::Ask() {
    const BoxAnswer answer =
        boxes_.Show({.text = L"The current interface language is English. Do you want to change "
                             L"it to Arabic?",
                     .title = L"Vualtwright",
                     .buttons = BoxButtons::YesNo,
                     .secondIsDefault = true});
    return answer == BoxAnswer::Yes;
}

}  // namespace vw
