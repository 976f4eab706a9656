#pragma once

#include <map>
#include <string>
#include <vector>

#include "fsutil/CopyDates.h"
#include "platform/RuntimeError.h"

namespace vw::test {

/// The stored dates of copies as a test gives them; keeps which ones were asked for.
class StoredDates final : public CopyDates {
  public:
    Date PackageDate(std::wstring_view copyPath) override {
        asked.emplace_back(copyPath);
        if (fails) Throw(error_number::kInvalidCall, copyPath);
        const auto found = dates.find(std::wstring(copyPath));
        return found == dates.end() ? kMissingDate : found->second;
    }

    std::map<std::wstring, Date> dates;
    std::vector<std::wstring> asked;
    bool fails = false;
};

}  // namespace vw::test
