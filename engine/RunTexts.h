#pragma once

#include <string>
#include <string_view>

namespace vw {

/// A report line of the run in both interface languages. The path concerned follows it: behind the
/// English text on the same line, below the Arabic text on a line of its own, because a line of
/// both directions would be shown in the order of neither.
struct RunText {
    std::wstring_view english;
    std::wstring_view arabic;

    [[nodiscard]] std::wstring With(bool inArabic, std::wstring_view path) const {
        return std::wstring(inArabic ? arabic : english) + (inArabic ? L"\r\n" : L" ") +
               std::wstring(path);
    }
};

namespace run_text {
inline constexpr RunText kLinkLeftOut{L"Skipped link:", L"تم تخطي الارتباط التالي"};
inline constexpr RunText kEncrypted{L"Encrypted files, whose copies only this account can read:",
                                    L"ملفات مشفرة لا يمكن قراءة نسخها إلا من هذا الحساب"};
inline constexpr RunText kNotDownloaded{L"Not backed up, its files were not downloaded:",
                                        L"لم يُنسخ العنصر التالي، لأن ملفاته لم تُنزَّل"};
inline constexpr RunText kCloudOutOfReach{L"The cloud that keeps these files cannot be reached.",
                                          L"تعذر الوصول إلى السحابة التي تحفظ هذه الملفات."};
inline constexpr RunText kIncomplete{L"Cancelled, copy 1 is incomplete:",
                                     L"أُلغيت العملية، والنسخة رقم 1 غير كاملة"};
inline constexpr RunText kMissesFiles{L"Files are missing, copy 1 is incomplete:",
                                      L"تعذر نسخ بعض الملفات، والنسخة رقم 1 غير كاملة"};
inline constexpr RunText kOlderPartKept{L"Cancelled, the incomplete copy 1 of before was kept:",
                                        L"أُلغيت العملية، وبقيت النسخة السابقة رقم 1 غير الكاملة"};
inline constexpr RunText kReadyDropped{
    L"Copy of an interrupted run removed, there is a later one:",
    L"حُذفت نسخة من عملية نسخ سابقة انقطعت، لوجود نسخة أحدث منها"};
inline constexpr RunText kLeftAlone{L"Left alone, it was not made by this run:",
                                    L"لم يُستبدل ما يلي لأن عملية النسخ هذه لم تنشئه"};
inline constexpr RunText kChangedMeanwhile{L"Changed while it was copied:",
                                           L"تغيّر الملف التالي أثناء نسخه"};
inline constexpr RunText kFinishedLater{L"Completed an interrupted copy:",
                                        L"اكتملت نسخة من عملية نسخ سابقة انقطعت"};
inline constexpr RunText kWaiting{L"Waiting for another backup in:",
                                  L"في انتظار انتهاء عملية نسخ أخرى في المجلد التالي"};
inline constexpr RunText kGivenUp{L"Skipped, another backup is using:",
                                  L"لم يُنسخ شيء، لأن عملية نسخ أخرى ما زالت تستخدم المجلد التالي"};
inline constexpr RunText kOneComputerOnly{
    L"Nothing may be written here, so runs of other computers are not kept out:",
    L"لا يمكن الكتابة في المجلد التالي، لذا لا يمكن استبعاد عمليات نسخ من أجهزة أخرى"};
inline constexpr RunText kMissing{L"Not found:", L"تعذر العثور على المسار التالي"};
inline constexpr RunText kRefused{L"Refused, the destination and the item overlap:",
                                  L"رُفض النسخ، لأن العنصر ومجلد النسخ متداخلان"};
}  // namespace run_text

}  // namespace vw
