#pragma once

#include <string_view>

#include "platform/UserLocale.h"
#include "ui/ListView.h"

namespace vw {

/// How a list is sorted until another column is clicked.
class SortOrder {
  public:
    void Apply(ListView& list) const { list.Sort(key_, !isDescending_, CompareForUser); }

    /// Sorts by a column (from 0). The direction changes at every call, whichever column it is.
    void Turn(ListView& list, int column) {
        isDescending_ = !isDescending_;
        key_ = list.Rows().KeyOf(column);
        Apply(list);
    }

  private:
    std::wstring_view key_ = kNameColumn;
    bool isDescending_ = false;
};

}  // namespace vw
