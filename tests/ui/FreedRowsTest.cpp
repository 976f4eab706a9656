// What another program, such as a screen reader, may ask a list while its rows go.

#include <gmock/gmock.h>

#include "tests/ui/FormFixture.h"

namespace vw::test {
namespace {

using testing::Each;
using testing::SizeIs;

/// Asks for the text of a row whenever the list says that rows go, as a hook inside of the process
/// does, after the program has heard of it.
class Listener {
  public:
    Listener(HWND form, HWND list) : form_(form), list_(list) {
        SetWindowSubclass(form, Subclass, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    ~Listener() { RemoveWindowSubclass(form_, Subclass, 1); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::vector<std::wstring> heard;

  private:
    static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR data) {
        const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
        auto* self = reinterpret_cast<Listener*>(data);
        if (message != WM_NOTIFY) return result;
        const auto& change = *reinterpret_cast<const NMLISTVIEW*>(lParam);
        if (change.hdr.code == LVN_DELETEALLITEMS) self->Ask(0);
        if (change.hdr.code == LVN_DELETEITEM) self->Ask(change.iItem);
        return result;
    }
    void Ask(int row) {
        wchar_t text[200] = L"";
        LVITEMW item{};
        item.pszText = text;
        item.cchTextMax = 200;
        SendMessageW(list_, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
        heard.emplace_back(text);
    }

    HWND form_;
    HWND list_;
};

class FreedRows : public testing::TestWithParam<Language> {
  protected:
    FreedRows() {
        for (int row = 0; row < 3; ++row) list.Add(kLong, RowIcon::File);
    }

    static inline const std::wstring kLong = std::wstring(60, L'x');
    LoadedForm main{MainForm(), GetParam()};
    ListView& list = main.form.List(L"lsvBackupList");
    Listener listener{main.Handle(), list.Handle()};
};

TEST_P(FreedRows, Clear_ControlStillHoldsARow_TextIsWhole) {
    list.Clear();
    EXPECT_THAT(listener.heard, SizeIs(1));
    EXPECT_THAT(listener.heard, Each(kLong));
    EXPECT_EQ(list.Rows().Count(), 0);
}

TEST_P(FreedRows, Remove_ControlStillHoldsTheRow_TextIsWhole) {
    list.Remove(1);
    EXPECT_THAT(listener.heard, SizeIs(1));
    EXPECT_THAT(listener.heard, Each(kLong));
    EXPECT_EQ(list.Rows().Count(), 2);
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, FreedRows, testing::ValuesIn(kLanguages));

}  // namespace
}  // namespace vw::test
