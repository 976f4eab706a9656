#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/windows/DrivenProgram.h"
#include "ui/resource.h"

namespace vw::test {

// Columns of the list of items.
inline constexpr int kName = 0;
inline constexpr int kPath = 1;
inline constexpr int kType = 2;

/// A test that edits a backup list through the real window.
class EditingWindows : public WindowsTest {
  protected:
    std::string FileOf(const std::vector<std::wstring>& items, int copies = 3) const {
        std::string text =
            "BackupTo: " + ToBytes(Vault()) + "\r\nBackages: " + std::to_string(copies) + "\r\n";
        for (const std::wstring& item : items) text += ToBytes(item) + "\r\n";
        return text;
    }
    static std::string ToBytes(std::wstring_view text) {
        std::string bytes;
        for (const wchar_t unit : text) bytes += static_cast<char>(unit);
        return bytes;
    }
    std::wstring Home(std::wstring_view name) const {
        return program.tree.Path(L"Home\\" + std::wstring(name));
    }

    const std::wstring letter = program.tree.File(L"Home\\Letter.txt", "Dear Sir");
    const std::wstring photo = program.tree.File(L"Home\\Photo.jpg", std::string(3000, 'x'));
    const std::wstring deep = program.tree.File(L"Home\\Deep\\Inner.doc", "inner");
};

}  // namespace vw::test
