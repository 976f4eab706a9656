#include "tools/forms/SampleData.h"

#include <array>

namespace vw::test {

namespace {

struct Item {
    const wchar_t* name;
    const wchar_t* path;
    const wchar_t* type;
    const wchar_t* size;
    const wchar_t* date;
    const wchar_t* location;
    RowIcon icon;
};

constexpr std::array kItems{
    Item{L"Budget", L"C:\\Users\\Mona\\Documents\\Budget.xlsx", L".xlsx", L"48 KB",
         L"2025-10-02 18:41", L"C:\\Users\\Mona\\Documents", RowIcon::File},
    Item{L"Letters", L"C:\\Users\\Mona\\Documents\\Letters\\", L"Folder", L"2.4 MB",
         L"2025-09-28 09:12", L"C:\\Users\\Mona\\Documents", RowIcon::Folder},
    Item{L"رسالة إلى العائلة", L"C:\\Users\\Mona\\Documents\\رسالة إلى العائلة.docx", L".docx",
         L"31 KB", L"2025-10-11 21:05", L"C:\\Users\\Mona\\Documents", RowIcon::File},
    Item{L"files in Photos", L"D:\\Photos\\*", L"Rule", L"", L"", L"D:\\Photos", RowIcon::Rule},
    Item{L"صور الرحلة", L"D:\\Photos\\2025\\صور الرحلة\\", L"Folder", L"1.2 GB",
         L"2025-08-19 12:30", L"D:\\Photos\\2025", RowIcon::Folder},
    Item{L"Address book", L"C:\\Users\\Mona\\Documents\\Address book (new).csv", L".csv", L"6 KB",
         L"2025-07-01 08:00", L"C:\\Users\\Mona\\Documents", RowIcon::File},
    Item{L"حسابات ٢٠٢٥", L"C:\\العمل\\الحسابات\\حسابات ٢٠٢٥.xlsx", L".xlsx", L"212 KB",
         L"2025-11-03 16:22", L"C:\\العمل\\الحسابات", RowIcon::File},
    Item{L"Project", L"C:\\Work\\Project\\", L"Folder", L"318 MB", L"2025-11-14 17:58", L"C:\\Work",
         RowIcon::Folder},
    Item{L"Thesis", L"C:\\Work\\Thesis\\Thesis final version 3.odt", L".odt", L"4.7 MB",
         L"2025-11-15 02:13", L"C:\\Work\\Thesis", RowIcon::File},
    Item{L"files in Mail", L"C:\\Users\\Mona\\Mail\\*", L"Rule", L"", L"", L"C:\\Users\\Mona\\Mail",
         RowIcon::Rule},
};

struct Copy {
    const wchar_t* label;
    const wchar_t* size;
    const wchar_t* date;
    const wchar_t* path;
};

constexpr std::array kCopies{
    Copy{L"N01", L"48 KB", L"2025-10-02 18:41", L"D:\\Backup\\Budget«0001».xlsx"},
    Copy{L"N02", L"47 KB", L"2025-09-01 10:02", L"D:\\Backup\\Budget«0002».xlsx"},
    Copy{L"N03", L"44 KB", L"2025-08-03 19:37", L"D:\\Backup\\Budget«0003».xlsx"},
    Copy{L"U01", L"44 KB", L"2025-08-05 07:15", L"D:\\Backup\\Budget«0021».xlsx"},
};

void FillItems(ListView& list) {
    list.SetRedraw(false);
    for (const Item& item : kItems) {
        const int row = list.Add(item.name, item.icon);
        list.SetSubItem(row, L"Path", item.path);
        list.SetSubItem(row, L"Type", item.type);
        list.SetSubItem(row, L"Size", item.size);
        list.SetSubItem(row, L"Date", item.date);
        list.SetSubItem(row, L"SP", L"00");
        list.SetSubItem(row, L"Location", item.location);
    }
    list.Select(0);
    list.SetRedraw(true);
}

void FillVault(ListView& list) {
    list.SetRedraw(false);
    for (const Item& item : kItems) {
        if (item.icon == RowIcon::Rule) continue;
        const int row = list.Add(item.name, item.icon);
        list.SetSubItem(row, L"Type", item.type);
        list.SetSubItem(row, L"SP", L"0");
        list.SetSubItem(row, L"Orginal Location", item.location);
    }
    list.Select(0);
    list.SetRedraw(true);
}

void FillCopies(ListView& list) {
    list.SetRedraw(false);
    for (const Copy& copy : kCopies) {
        const int row = list.Add(copy.label, RowIcon::File);
        list.SetSubItem(row, L"Size", copy.size);
        list.SetSubItem(row, L"Date", copy.date);
        list.SetSubItem(row, L"BackupName", copy.path);
    }
    list.Select(0);
    list.SetRedraw(true);
}

}  // namespace

void FillMain(Form& form, bool rows) {
    form.SetChoices(L"cmbDestination", {L"A:", L"C:", L"D:", L"E:"});
    form.Choose(L"cmbDestination", L"D:");
    form.SetValue(L"vsBackages", 3);
    form.SetText(L"lblBackages", L"3");
    form.Menus().CheckOnly(L"mnuViewMethod", 3);
    form.Menus().CheckOnly(L"mnuViewAlign", 2);
    form.Tools(L"Toolbar1").Check(L"ViewDetails", true);
    if (!rows) return;
    FillItems(form.List(L"lsvBackupList"));
    FillVault(form.List(L"lsvRestore1"));
    FillCopies(form.List(L"lsvRestore2"));
}

void FillBusy(Form& form, bool report) {
    const bool arabic = form.InLanguage() == Language::Arabic;
    form.SetText(L"lblTitle", arabic ? L"نسخ احتياطي: " : L"Backing up: ");
    form.SetText(
        L"lblMsg",
        L"C:\\Users\\Mona\\Documents\\Travel\\2025\\Summer\\Coast\\رحلة البحر\\Diary of the "
        L"long way home.docx");
    form.SetText(L"lblSubMsg", arabic ? L"العنصر 4 من 10" : L"Item 4 of 10");
    form.SetProgress(L"ProgressBar1", 60);
    form.ShowControl(L"txtReport", report);
    for (const Item& item : kItems) {
        form.Append(L"txtReport", (arabic ? L"نسخ: " : L"Backing up: ") + std::wstring(item.path) +
                                      L" - " + item.size + L"\r\n");
    }
}

void FillAbout(Form& form, bool button) {
    form.SetText(L"lblVer", L"1.2");
    form.SetText(L"lblRevision", L"133");
    form.ShowControl(L"cmdClose", button);
}

}  // namespace vw::test
