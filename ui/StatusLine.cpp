#include "ui/StatusLine.h"

#include "ui/Form.h"

namespace vw {

void StatusLine::ShowNotice(std::wstring_view text) {
    notice_ = text;
    Update();
}

void StatusLine::ShowOutcome(std::wstring_view text, bool failed) {
    notice_.clear();
    outcome_ = text;
    failed_ = failed;
    Update();
}

void StatusLine::Update() {
    main_.SetText(L"sbrStatus", notice_.empty() ? outcome_ : notice_);
    main_.SetAlert(L"sbrStatus", notice_.empty() && failed_);
}

}  // namespace vw
