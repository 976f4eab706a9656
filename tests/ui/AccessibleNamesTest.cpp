// What screen readers are given of controls that do not speak for themselves.

#include "ui/AccessibleNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/ui/FormFixture.h"
// The accessibility declarations need those of the window system and of COM first.
#include <objbase.h>
#include <oleacc.h>

namespace vw::test {
namespace {

/// Notes what is said of which control, in the place of the service that screen readers ask.
class NotedProperties final : public IAccPropServices {
  public:
    struct Said {
        HWND control;
        GUID property;
        std::wstring text;
        DWORD element;  ///< counted from 1; 0 for the control itself
    };
    std::vector<Said> said;
    std::vector<DWORD> cleared;  ///< elements that are described no longer

    HRESULT WINAPI QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return 1; }
    ULONG WINAPI Release() override { return 1; }
    HRESULT WINAPI SetPropValue(const BYTE*, DWORD, MSAAPROPID, VARIANT) override { return S_OK; }
    HRESULT WINAPI SetPropServer(const BYTE*, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                 AnnoScope) override {
        return S_OK;
    }
    HRESULT WINAPI ClearProps(const BYTE*, DWORD, const MSAAPROPID*, int) override { return S_OK; }
    HRESULT WINAPI SetHwndProp(HWND, DWORD, DWORD, MSAAPROPID, VARIANT) override { return S_OK; }
    HRESULT WINAPI SetHwndPropStr(HWND control, DWORD, DWORD element, MSAAPROPID property,
                                  LPCWSTR text) override {
        said.push_back({control, property, text, element});
        return S_OK;
    }
    HRESULT WINAPI SetHwndPropServer(HWND, DWORD, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                     AnnoScope) override {
        return S_OK;
    }
    HRESULT WINAPI ClearHwndProps(HWND, DWORD, DWORD element, const MSAAPROPID*, int) override {
        cleared.push_back(element);
        return S_OK;
    }
    HRESULT WINAPI ComposeHwndIdentityString(HWND, DWORD, DWORD, BYTE**, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI DecomposeHwndIdentityString(const BYTE*, DWORD, HWND*, DWORD*, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI SetHmenuProp(HMENU, DWORD, MSAAPROPID, VARIANT) override { return S_OK; }
    HRESULT WINAPI SetHmenuPropStr(HMENU, DWORD, MSAAPROPID, LPCWSTR) override { return S_OK; }
    HRESULT WINAPI SetHmenuPropServer(HMENU, DWORD, const MSAAPROPID*, int, IAccPropServer*,
                                      AnnoScope) override {
        return S_OK;
    }
    HRESULT WINAPI ClearHmenuProps(HMENU, DWORD, const MSAAPROPID*, int) override { return S_OK; }
    HRESULT WINAPI ComposeHmenuIdentityString(HMENU, DWORD, BYTE**, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI DecomposeHmenuIdentityString(const BYTE*, DWORD, HMENU*, DWORD*) override {
        return E_NOTIMPL;
    }

    // AccessibleNames finds it here, as often as it asks.
    NotedProperties() { found_ = this; }
    static ComPtr<IAccPropServices> Find() {
        ++asked;
        return ComPtr<IAccPropServices>(found_);
    }
    inline static int asked = 0;

  private:
    inline static NotedProperties* found_ = nullptr;
};

TEST(ScreenReaders, ScrollBar_IsReadAsTheNumberOfCopies) {
    NotedProperties properties;
    LoadedForm main(MainForm(), Language::English);
    const HWND bar = main.Control(L"vsBackages");
    AccessibleNames names(NotedProperties::Find);
    names.Begin();
    names.Set(bar, L"Number of copies");
    names.SetValue(bar, L"3");
    names.SetValue(bar, L"20");
    ASSERT_EQ(properties.said.size(), 3U);
    for (const NotedProperties::Said& said : properties.said) EXPECT_EQ(said.control, bar);
    EXPECT_EQ(properties.said[2].text, L"20");
    EXPECT_EQ(properties.said[1].property, properties.said[2].property);
    EXPECT_NE(properties.said[0].property, properties.said[1].property);
}

TEST(ScreenReaders, RowWithWarning_IsDescribedUntilTheWarningGoes) {
    NotedProperties properties;
    LoadedForm main(MainForm(), Language::English);
    AccessibleNames names(NotedProperties::Find);
    names.Begin();
    ListView& copies = main.form.List(L"lsvRestore2");
    copies.Tips().Attach(&names);
    for (const wchar_t* const label : {L"N01", L"N02"}) copies.Add(label, RowIcon::Folder);
    copies.ShowWarnings({L"", L"This copy is incomplete."});
    ASSERT_EQ(properties.said.size(), 1U);
    EXPECT_EQ(properties.said[0].control, copies.Handle());
    EXPECT_EQ(properties.said[0].element, 2U);
    EXPECT_EQ(properties.said[0].text, L"This copy is incomplete.");
    properties.cleared.clear();
    copies.ShowWarnings({L"", L""});
    EXPECT_NE(std::ranges::find(properties.cleared, 2U), properties.cleared.end());
    copies.Tips().Detach();
}

TEST(ScreenReaders, Begin_GivesTheLastOfWhatWasSetBefore) {
    NotedProperties properties;
    LoadedForm main(MainForm(), Language::English);
    const HWND bar = main.Control(L"vsBackages");
    const int askedBefore = NotedProperties::asked;
    AccessibleNames names(NotedProperties::Find);
    names.Set(bar, L"Number of copies");
    names.SetValue(bar, L"3");
    names.SetValue(bar, L"20");
    names.Describe(bar, 0, L"");
    EXPECT_EQ(NotedProperties::asked, askedBefore) << "the service takes its time to load";
    EXPECT_TRUE(properties.said.empty());
    names.Begin();
    names.SetValue(bar, L"21");
    EXPECT_EQ(NotedProperties::asked, askedBefore + 1);
    EXPECT_EQ(properties.cleared, std::vector<DWORD>{1});
    std::vector<std::wstring> texts;
    for (const NotedProperties::Said& said : properties.said) texts.push_back(said.text);
    EXPECT_THAT(texts, testing::UnorderedElementsAre(L"Number of copies", L"20", L"21"));
    EXPECT_EQ(texts.back(), L"21");
}

TEST(ScreenReaders, NoNames_ServiceIsNotNeeded) {
    NotedProperties properties;
    const int askedBefore = NotedProperties::asked;
    AccessibleNames names(NotedProperties::Find);
    names.Begin();
    names.Set(nullptr, L"of a control that has no window");
    EXPECT_EQ(NotedProperties::asked, askedBefore);
}

}  // namespace
}  // namespace vw::test
