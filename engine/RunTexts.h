#pragma once

#include <string>
#include <string_view>

namespace vw {

/// A report line of the run in both interface languages; the path concerned follows it.
struct RunText {
    std::wstring_view english;
    std::wstring_view arabic;

    [[nodiscard]] std::wstring With(bool inArabic, std::wstring_view path) const {
        return std::wstring(inArabic ? arabic : english) + L" " + std::wstring(path);
    }
};

namespace run_text {
inline constexpr RunText kLinkLeftOut{L"Link left out:", L"تم تجاوز الارتباط:"};
inline constexpr RunText kIncomplete{L"Cancelled, copy 1 is incomplete:",
                                     L"أُلغيت العملية والنسخة رقم 1 غير كاملة:"};
inline constexpr RunText kChangedMeanwhile{L"Changed while it was copied:",
                                           L"تغيّر الملف أثناء نسخه:"};
inline constexpr RunText kFinishedLater{L"Copy of an interrupted run completed:",
                                        L"تم إكمال نسخة من عملية سابقة لم تكتمل:"};
inline constexpr RunText kWaiting{L"Waiting for another backup in:", L"بانتظار عملية نسخ أخرى في:"};
inline constexpr RunText kGivenUp{L"Nothing was backed up, another backup keeps using:",
                                  L"لم يتم النسخ لأن عملية نسخ أخرى تستعمل:"};
}  // namespace run_text

}  // namespace vw
