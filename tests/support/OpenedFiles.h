#pragma once

#include <string>

#include "tests/support/ScratchRegistry.h"
#include "tests/support/TempTree.h"

namespace vw::test {

/// Opens the files of one type with a program of the test's own, which writes down what is in
/// them: so a test sees which files the program under test has opened.
class OpenedFiles {
  public:
    /// `extension` with its point.
    OpenedFiles(const TempTree& tree, const std::wstring& extension)
        : note_(tree.Path(L"opened")), type_(HKEY_CLASSES_ROOT, extension, L"") {
        type_.Set(kType);
        WriteValue(HKEY_CLASSES_ROOT, key_.Path(L"shell\\open\\command"), L"",
                   TextValue(L"cmd.exe /c type \"%1\" >>\"" + note_ + L"\""));
    }

    /// What is in all files that were opened, one behind the other, once it has this size or the
    /// time is over.
    [[nodiscard]] std::string WaitFor(std::size_t size, int milliseconds = 20'000) const {
        std::string bytes;
        for (; milliseconds > 0 && bytes.size() < size; milliseconds -= 50) {
            Sleep(50);
            if (Exists(note_)) bytes = ReadBytes(note_);
        }
        return bytes;
    }

  private:
    static constexpr const wchar_t* kType = L"VaultwrightTest.Opened";

    const std::wstring note_;
    const SavedValue type_;
    const ScratchKey key_{HKEY_CLASSES_ROOT, kType};
};

}  // namespace vw::test
