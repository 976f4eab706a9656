#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "platform/Handle.h"
#include "platform/Utf8.h"
#include "tests/support/TempTree.h"

namespace vw::test {

/// Standard output and standard error of this process as files, until the end of the scope.
class CapturedStreams {
  public:
    CapturedStreams() {
        SetStdHandle(STD_OUTPUT_HANDLE, output_.Get());
        SetStdHandle(STD_ERROR_HANDLE, error_.Get());
    }
    CapturedStreams(const CapturedStreams&) = delete;
    CapturedStreams& operator=(const CapturedStreams&) = delete;
    ~CapturedStreams() {
        SetStdHandle(STD_OUTPUT_HANDLE, outputBefore_);
        SetStdHandle(STD_ERROR_HANDLE, errorBefore_);
    }

    /// The lines that were written to standard output so far.
    [[nodiscard]] std::vector<std::wstring> Output() const { return Lines(L"Output.txt"); }
    /// The lines that were written to standard error so far.
    [[nodiscard]] std::vector<std::wstring> Errors() const { return Lines(L"Errors.txt"); }

  private:
    [[nodiscard]] FileHandle Open(std::wstring_view name) const {
        return FileHandle(CreateFileW(folder_.Path(name).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                      nullptr, CREATE_ALWAYS, 0, nullptr));
    }
    [[nodiscard]] std::vector<std::wstring> Lines(std::wstring_view name) const {
        std::wistringstream text(FromUtf8(ReadBytes(folder_.Path(name))));
        std::vector<std::wstring> lines;
        for (std::wstring line; std::getline(text, line);) {
            if (line.ends_with(L'\r')) line.pop_back();
            lines.push_back(line);
        }
        return lines;
    }

    const TempTree folder_;
    const HANDLE outputBefore_ = GetStdHandle(STD_OUTPUT_HANDLE);
    const HANDLE errorBefore_ = GetStdHandle(STD_ERROR_HANDLE);
    const FileHandle output_ = Open(L"Output.txt");
    const FileHandle error_ = Open(L"Errors.txt");
};

}  // namespace vw::test
