#pragma once

#include <string>
#include <string_view>

#include "platform/Language.h"

namespace vw {

/// A report line of the run: a text in its language, and the path concerned. The path follows the
/// English text on the same line and the Arabic text on a line of its own, because a line of both
/// directions would be shown in the order of neither.
[[nodiscard]] inline std::wstring RunLine(std::wstring_view text, Language language,
                                          std::wstring_view path) {
    return std::wstring(text).append(language == Language::Arabic ? L"\r\n" : L" ").append(path);
}

[[nodiscard]] inline std::wstring RunLine(const Texts& text, Language language,
                                          std::wstring_view path) {
    return RunLine(text.In(language), language, path);
}

namespace run_text {
inline constexpr Texts kLinkLeftOut{L"Skipped link:", L"تم تخطي الارتباط التالي"};
inline constexpr Texts kEncrypted{L"Encrypted files, whose copies only this account can read:",
                                  L"ملفات مشفرة لا يمكن قراءة نسخها إلا من هذا الحساب"};
inline constexpr Texts kNotDownloaded{L"Not backed up, its files were not downloaded:",
                                      L"لم يُنسخ العنصر التالي، لأن ملفاته لم تُنزَّل"};
inline constexpr Texts kCloudOutOfReach{L"The cloud that keeps these files cannot be reached.",
                                        L"تعذر الوصول إلى السحابة التي تحفظ هذه الملفات."};
inline constexpr Texts kIncomplete{L"Cancelled, copy 1 is incomplete:",
                                   L"أُلغيت العملية، والنسخة رقم 1 غير كاملة"};
inline constexpr Texts kMissesFiles{L"Files are missing, copy 1 is incomplete:",
                                    L"تعذر نسخ بعض الملفات، والنسخة رقم 1 غير كاملة"};
inline constexpr Texts kOlderPartKept{L"Cancelled, the incomplete copy 1 of before was kept:",
                                      L"أُلغيت العملية، وبقيت النسخة السابقة رقم 1 غير الكاملة"};
inline constexpr Texts kReadyDropped{L"Copy of an interrupted run removed, there is a later one:",
                                     L"حُذفت نسخة من عملية نسخ سابقة انقطعت، لوجود نسخة أحدث منها"};
inline constexpr Texts kLeftAlone{L"Left alone, it was not made by this run:",
                                  L"لم يُستبدل ما يلي لأن عملية النسخ هذه لم تنشئه"};
inline constexpr Texts kChangedMeanwhile{L"Changed while it was copied:",
                                         L"تغيّر الملف التالي أثناء نسخه"};
inline constexpr Texts kFinishedLater{L"Completed an interrupted copy:",
                                      L"اكتملت نسخة من عملية نسخ سابقة انقطعت"};
inline constexpr Texts kWaiting{L"Waiting for another backup in:",
                                L"في انتظار انتهاء عملية نسخ أخرى في المجلد التالي"};
inline constexpr Texts kGivenUp{L"Skipped, another backup is using:",
                                L"لم يُنسخ شيء، لأن عملية نسخ أخرى ما زالت تستخدم المجلد التالي"};
inline constexpr Texts kOneComputerOnly{
    L"Nothing may be written here, so runs of other computers are not kept out:",
    L"لا يمكن الكتابة في المجلد التالي، لذا لا يمكن استبعاد عمليات نسخ من أجهزة أخرى"};
inline constexpr Texts kMissing{L"Not found:", L"تعذر العثور على المسار التالي"};
inline constexpr Texts kRefused{L"Refused, the destination and the item overlap:",
                                L"رُفض النسخ، لأن العنصر ومجلد النسخ متداخلان"};
}  // namespace run_text

}  // namespace vw
