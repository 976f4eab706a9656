#include "app/RunRecord.h"

#include <algorithm>

#include "platform/DateText.h"

namespace vw {

void RunRecord::Begin(std::wstring_view path, int items) {
    *this = {};
    path_ = path;
    items_ = items;
    open_ = true;
}

void RunRecord::OnItem(ItemEvent event) {
    if (event == ItemEvent::Started) {
        CountItem(false);
        item_ = Item::Started;
    } else if (event == ItemEvent::Missing || event == ItemEvent::Refused) {
        NoteFailure();
    } else if (item_ == Item::Started) {
        if (event == ItemEvent::Unchanged) item_ = Item::Unchanged;
        if (event == ItemEvent::Copied) item_ = Item::Copied;
    }
}

void RunRecord::NoteFailure() noexcept {
    if (item_ != Item::None) item_ = Item::Failed;
}

// An item of which neither a copy nor a reason is known has been passed over.
void RunRecord::CountItem(bool cancelled) noexcept {
    switch (item_) {
        case Item::None:
            return;
        case Item::Copied:
            ++copied_;
            break;
        case Item::Unchanged:
            ++unchanged_;
            break;
        case Item::Failed:
            ++failed_;
            break;
        case Item::Started:
            ++(cancelled ? cancelled_ : failed_);
            break;
    }
}

void RunRecord::End(bool cancelled) {
    if (cancelled && item_ == Item::Copied) item_ = Item::Started;
    CountItem(cancelled);
    if (cancelled) {
        const int done = copied_ + unchanged_ + failed_ + cancelled_;
        cancelled_ += std::max(0, items_ - done);
    }
    open_ = false;
}

std::wstring RunRecord::Counts(Language language) const {
    const bool arabic = language == Language::Arabic;
    std::wstring text;
    const auto add = [&](int count, std::wstring_view english, std::wstring_view word) {
        if (!text.empty()) text += arabic ? L"، " : L", ";
        if (arabic) {
            text.append(word).append(L": ").append(std::to_wstring(count));
        } else {
            text.append(std::to_wstring(count)).append(L" ").append(english);
        }
    };
    add(copied_, L"copied", L"نُسخ");
    add(unchanged_, L"unchanged", L"لم يتغير");
    add(failed_, L"failed", L"فشل");
    if (cancelled_ > 0) add(cancelled_, L"cancelled", L"أُلغي");
    return text;
}

std::wstring RunRecord::ReportLine(Language language, Date now) const {
    return path_ + (language == Language::Arabic ? L"، " : L", ") + DateText(now) + L": " +
           Counts(language);
}

std::wstring RunRecord::StatusText(Language language, Date now) const {
    const std::wstring counts = DateText(now) + L": " + Counts(language);
    return language == Language::Arabic
               ? L"آخر نسخ احتياطي " + counts + L". انقر هنا أو اضغط Ctrl+R لعرض التقرير."
               : L"Last backup " + counts + L". Click here or press Ctrl+R for the report.";
}

}  // namespace vw
