#pragma once

#include <string_view>

#include "platform/Language.h"

/// The sentences of the restore view.
namespace vw::restore_text {

inline constexpr Texts kFolderChanged{
    L"The folder of the copies is not the one that was shown: its drive was removed or exchanged. "
    L"Nothing was changed. The lists show what is there now.",
    L"مجلد النسخ ليس المجلد الذي كان معروضاً: أُزيل محرك الأقراص أو استُبدل. لم يتغيّر شيء، "
    L"وتعرض القائمتان الآن ما هو موجود."};
inline constexpr Texts kListedAnew{
    L"The drive of the copies was removed or exchanged. The lists show what is there now.",
    L"أُزيل محرك أقراص النسخ أو استُبدل. تعرض القائمتان الآن ما هو موجود."};
inline constexpr Texts kCopyChanged{
    L"This copy is not the one that was shown: it was moved, replaced or deleted meanwhile. "
    L"The lists show what is there now. Select the copy again.",
    L"هذه النسخة ليست النسخة التي كانت معروضة: نُقلت أو استُبدلت أو حُذفت في هذه الأثناء. "
    L"تعرض القائمتان الآن ما هو موجود. حدّد النسخة من جديد."};
inline constexpr Texts kAllNumbersUsed{
    L"All numbers of safety copies of this item, U01 to U79, are in use. Nothing was overwritten. "
    L"Delete safety copies that you no longer need, then restore again.",
    L"جميع أرقام نسخ الأمان لهذا العنصر، من U01 إلى U79، مستخدمة. لم تتم الكتابة فوق أي شيء. "
    L"احذف نسخ الأمان التي لم تعد بحاجة إليها ثم أعد الاستعادة."};
inline constexpr Texts kInsideCopy{
    L"This folder belongs to a stored copy. Choose another folder to restore to.",
    L"هذا المجلد جزء من نسخة احتياطية مخزنة. اختر مجلداً آخر للاستعادة إليه."};
inline constexpr Texts kCancelled{L"The restore was cancelled. Nothing was overwritten.",
                                  L"أُلغيت الاستعادة. لم تتم الكتابة فوق أي شيء."};
inline constexpr Texts kIncomplete{
    L"This copy is incomplete: files are missing that could not be read, or the backup was "
    L"cancelled.",
    L"هذه النسخة غير كاملة: تنقصها ملفات تعذرت قراءتها، أو أُلغي النسخ الاحتياطي."};

}  // namespace vw::restore_text
