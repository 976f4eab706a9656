// FormShow.exe FORM LANGUAGE [OPTION...]: shows one form with sample data until it is closed, for
// looking at it and for taking its picture.
//
// FORM      main, busy or about
// LANGUAGE  en or ar
// OPTION    empty      main: lists without rows
//           max        maximised
//           report     busy: with its report open
//           opening    about: without its button, as at the start of the program
//           large, small, list
//                      main: another view of the lists than the details
//           WxH        inner size, such as 1008x661

#include <array>
#include <cwchar>
#include <string>
#include <string_view>
#include <vector>

#include "platform/WindowMessagePump.h"
#include "tools/forms/SampleData.h"
#include "ui/Form.h"
#include "ui/Forms.h"

namespace vw::test {

namespace {

class Silent final : public FormEvents {
  public:
    void OnControl(Form& form, const ControlEvent& event) override {
        if (event.control == L"cmdCancel" || event.control == L"cmdClose") form.Unload();
    }
};

void GiveInnerSize(const Form& form, int width, int height) {
    RECT inner{};
    RECT outer{};
    GetClientRect(form.Handle(), &inner);
    GetWindowRect(form.Handle(), &outer);
    SetWindowPos(form.Handle(), nullptr, 0, 0, outer.right - outer.left - inner.right + width,
                 outer.bottom - outer.top - inner.bottom + height, SWP_NOMOVE | SWP_NOZORDER);
}

void ShowAs(Form& form, ViewStyle style) {
    for (const auto* name : {L"lsvBackupList", L"lsvRestore1", L"lsvRestore2"}) {
        form.List(name).SetStyle(style);
        form.List(name).SetArrange(ViewArrange::Top);
    }
}

int Show(const std::vector<std::wstring>& arguments) {
    if (arguments.size() < 2) return 2;
    const auto has = [&](std::wstring_view option) {
        for (const std::wstring& argument : arguments) {
            if (argument == option) return true;
        }
        return false;
    };
    const bool main = arguments[0] == L"main";
    const bool busy = arguments[0] == L"busy";
    const FormData& data = main ? MainForm() : busy ? BusyForm() : AboutForm();
    const Language language = arguments[1] == L"ar" ? Language::Arabic : Language::English;

    Silent events;
    Form form(data, language, events);
    form.Load();
    if (main) FillMain(form, !has(L"empty"));
    if (busy) FillBusy(form, has(L"report"));
    if (!main && !busy) FillAbout(form, !has(L"opening"));
    for (const std::wstring& argument : arguments) {
        int width = 0;
        int height = 0;
        if (swscanf(argument.c_str(), L"%dx%d", &width, &height) == 2) {
            GiveInnerSize(form, width, height);
        }
    }
    if (main) {
        const std::array<std::wstring_view, 3> views{L"large", L"small", L"list"};
        for (std::size_t i = 0; i < views.size(); ++i) {
            if (has(views[i])) ShowAs(form, static_cast<ViewStyle>(i));
        }
    }
    if (has(L"max")) form.Maximise();
    form.Show();

    WindowMessagePump pump;
    pump.SetFilter(Form::TranslateKeys);
    pump.RunWhile([&] { return form.IsLoaded(); });
    return 0;
}

}  // namespace

}  // namespace vw::test

int wmain(int count, wchar_t** values) {
    return vw::test::Show(std::vector<std::wstring>(values + 1, values + count));
}
