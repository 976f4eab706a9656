#include "platform/ErrorAdvice.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vw {

namespace {

/// What the program was doing.
enum class Work { BackUp, Restore, Delete, Save, Open, Other };

struct NamedWork {
    std::wstring_view procedure;
    Work work;
};

constexpr std::array kWorks{
    NamedWork{L"BackupAll", Work::BackUp},
    NamedWork{L"BackupPath", Work::BackUp},
    NamedWork{L"BackupFolder", Work::BackUp},
    NamedWork{L"BackupFile", Work::BackUp},
    NamedWork{L"RenamePackages", Work::BackUp},
    NamedWork{L"PackageComment", Work::BackUp},
    NamedWork{L"Extract", Work::Restore},
    NamedWork{L"mnuRestoreClick", Work::Restore},
    NamedWork{L"mnuRestoreToClick", Work::Restore},
    NamedWork{L"mnuDelCopyClick", Work::Delete},
    NamedWork{L"mnuDelCopiesClick", Work::Delete},
    NamedWork{L"DeletePath", Work::Delete},
    NamedWork{L"DellTemp", Work::Delete},
    NamedWork{L"FileSave", Work::Save},
    NamedWork{L"FileSaveAs", Work::Save},
    NamedWork{L"FileNew", Work::Save},
    NamedWork{L"FileOpen", Work::Open},
    NamedWork{L"GetList", Work::Open},
};

Work WorkOf(const Procedure& where) {
    const auto* const found = std::ranges::find(kWorks, where.name, &NamedWork::procedure);
    return found == kWorks.end() ? Work::Other : found->work;
}

constexpr Texts ConsequenceOf(Work work) noexcept {
    switch (work) {
        case Work::BackUp:
            return {L"The older copies are unchanged", L"النسخ الأقدم لم تتغير"};
        case Work::Restore:
            return {L"The stored copy is unchanged", L"النسخة المحفوظة لم تتغير"};
        case Work::Delete:
            return {L"What could not be deleted is still there", L"ما تعذّر حذفه ما زال موجوداً"};
        case Work::Save:
        case Work::Open:
            return {L"The list file is unchanged", L"ملف القائمة لم يتغير"};
        default:
            return {L"Nothing was changed", L"لم يتغير شيء"};
    }
}

constexpr Texts RetryOf(Work work) noexcept {
    switch (work) {
        case Work::BackUp:
            return {L"back up again", L"أعد النسخ"};
        case Work::Restore:
            return {L"restore again", L"أعد الاستعادة"};
        case Work::Delete:
            return {L"delete again", L"أعد الحذف"};
        case Work::Save:
            return {L"save the list again", L"احفظ القائمة مرة أخرى"};
        case Work::Open:
            return {L"open the list again", L"افتح القائمة مرة أخرى"};
        default:
            return {L"try again", L"أعد المحاولة"};
    }
}

/// Why, and what to do before the work is tried again.
struct Cause {
    int number;
    Texts reason;
    Texts remedy;
};

constexpr std::array kCauses{
    Cause{error_number::kOverflow,
          {L"A stored setting is not usable.", L"أحد الإعدادات المحفوظة غير صالح."},
          {L"correct it", L"صحّحه"}},
    Cause{error_number::kTypeMismatch,
          {L"A stored setting is not usable.", L"أحد الإعدادات المحفوظة غير صالح."},
          {L"correct it", L"صحّحه"}},
    Cause{error_number::kOutOfMemory,
          {L"The computer is short of memory.", L"لا توجد ذاكرة كافية."},
          {L"close other programs", L"أغلق البرامج الأخرى"}},
    Cause{error_number::kBadName,
          {L"Windows does not accept this name.", L"لا يقبل Windows هذا الاسم."},
          {L"give it a shorter or simpler name", L"اختر اسماً أقصر أو أبسط"}},
    Cause{error_number::kFileNotFound,
          {L"This file does not exist.", L"هذا الملف غير موجود."},
          {L"make sure that it is there", L"تأكد من وجوده"}},
    Cause{error_number::kDeviceError,
          {L"The drive could not be read or written.",
           L"تعذّرت القراءة من محرك الأقراص أو الكتابة "
           L"إليه."},
          {L"check the drive and its cable", L"افحص محرك الأقراص وكبله"}},
    Cause{error_number::kAlreadyExists,
          {L"Something else has this name already.", L"يوجد ملف أو مجلد آخر بهذا الاسم."},
          {L"rename it", L"أعد تسميته"}},
    Cause{error_number::kDiskFull,
          {L"The drive is full.", L"محرك الأقراص ممتلئ."},
          {L"make room or choose another drive", L"وفّر مساحة أو اختر محرك أقراص آخر"}},
    Cause{error_number::kTooManyFiles,
          {L"Too many files are open.", L"عدد الملفات المفتوحة كبير جداً."},
          {L"close other programs", L"أغلق البرامج الأخرى"}},
    Cause{error_number::kNoSuchDevice,
          {L"This drive does not exist.", L"محرك الأقراص هذا غير موجود."},
          {L"connect it", L"قم بتوصيله"}},
    Cause{error_number::kPermissionDenied,
          {L"Windows does not allow access to it.", L"لا يسمح Windows بالوصول إليه."},
          {L"check the rights on it", L"تحقق من أذونات الوصول"}},
    Cause{error_number::kNotReady,
          {L"The drive is not ready.", L"محرك الأقراص غير جاهز."},
          {L"connect it", L"قم بتوصيله"}},
    Cause{error_number::kAccessError,
          {L"Windows could not reach it.", L"تعذّر على Windows الوصول إليه."},
          {L"check the connection and the rights on it", L"تحقق من الاتصال وأذونات الوصول"}},
    Cause{
        error_number::kPathNotFound,
        {L"This folder or drive cannot be found.", L"تعذّر العثور على هذا المجلد أو محرك الأقراص."},
        {L"make sure that it is there", L"تأكد من وجوده"}},
    Cause{error_number::kZeroCopyNumber,
          {L"The number of copies in the list is 0.", L"عدد النسخ في القائمة هو 0."},
          {L"choose a number from 1 to 20", L"اختر عدداً من 1 إلى 20"}},
    Cause{error_number::kNotEnoughSpace,
          {L"Less than 50 MB would be left on the drive.",
           L"لن تبقى على محرك الأقراص مساحة حرة قدرها 50 ميغابايت."},
          {L"make room or choose another drive", L"وفّر مساحة أو اختر محرك أقراص آخر"}},
    Cause{error_number::kListPathMissing,
          {L"What the command line names does not exist.",
           L"الملف أو المجلد المذكور في سطر الأوامر غير موجود."},
          {L"correct the command line", L"صحّح سطر الأوامر"}},
};

// The usual reasons for which Windows refuses access need different remedies.
constexpr std::uint32_t kWriteProtectCode = 19;
constexpr std::uint32_t kSharingViolationCode = 32;
constexpr std::uint32_t kLockViolationCode = 33;

constexpr Cause kInUse{error_number::kPermissionDenied,
                       {L"Another program has this file open.", L"هذا الملف مفتوح في برنامج آخر."},
                       {L"close the program", L"أغلق البرنامج"}};
constexpr Cause kWriteProtected{
    error_number::kPermissionDenied,
    {L"The drive is write-protected.", L"محرك الأقراص محمي ضد الكتابة."},
    {L"remove the protection", L"أزل الحماية"}};
constexpr Cause kUnknown{0,
                         {L"Something unexpected went wrong.", L"حدث خطأ غير متوقع."},
                         {L"look at the report", L"راجع التقرير"}};

const Cause& CauseOf(const RuntimeError& error) {
    if (error.Number() == error_number::kPermissionDenied) {
        switch (error.SystemCode()) {
            case kSharingViolationCode:
            case kLockViolationCode:
                return kInUse;
            case kWriteProtectCode:
                return kWriteProtected;
            default:
                break;
        }
    }
    const auto* const found = std::ranges::find(kCauses, error.Number(), &Cause::number);
    return found == kCauses.end() ? kUnknown : *found;
}

// The copies of an item that vanished have made room already when its copy fails.
Texts Consequence(Work work, int number) {
    const bool isGone =
        number == error_number::kFileNotFound || number == error_number::kPathNotFound;
    if (work == Work::BackUp && isGone) return {L"No new copy was made", L"لم تُنشأ نسخة جديدة"};
    return ConsequenceOf(work);
}

}  // namespace

std::wstring ErrorAdvice(const Procedure& where, const RuntimeError& error, Language language) {
    const bool arabic = language == Language::Arabic;
    const Work work = WorkOf(where);
    const Cause& cause = CauseOf(error);
    std::wstring text(cause.reason.In(language));
    text.append(L" ").append(Consequence(work, error.Number()).In(language));
    text.append(arabic ? L"؛ " : L"; ").append(cause.remedy.In(language));
    text.append(arabic ? L" ثم " : L" and ").append(RetryOf(work).In(language)).append(L".");
    return text;
}

std::wstring ErrorBoxText(const Procedure& where, const RuntimeError& error, Language language) {
    return ErrorText(where, error) + L"\r\n\r\n" + ErrorAdvice(where, error, language);
}

}  // namespace vw
