#include "tests/console/VwTest.h"

#include "platform/Utf8.h"

namespace vw::test {

std::wstring BuiltConsole() {
    std::wstring path(32768, L'\0');
    path.resize(
        GetEnvironmentVariableW(L"VW_CONSOLE", path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::wstring InQuotes(std::wstring_view path) {
    return L"\"" + std::wstring(path) + (path.ends_with(L'\\') ? L"\\\"" : L"\"");
}

void VwTest::RunsTo(DWORD exitCode, const std::wstring& arguments) {
    ProgramRun run(
        {.program = BuiltConsole(), .arguments = arguments, .currentFolder = tree.Path()});
    const DWORD code = run.WaitForEnd();
    lines = run.Lines();
    errors = run.Errors();
    EXPECT_EQ(code, exitCode) << ToUtf8(arguments) << "\n"
                              << ToUtf8(run.Output()) << ToUtf8(errors);
    EXPECT_TRUE(run.Boxes().empty());
}

void VwTest::MakeList(const Texts& items, int copies) const {
    std::wstring text = L"BackupTo: " + vault + L"\r\nBackages: " + std::to_wstring(copies);
    for (const std::wstring& item : items) text += L"\r\n" + tree.Path(item);
    tree.File(L"list.vwl", "\xEF\xBB\xBF" + ToUtf8(text + L"\r\n"));
}

std::wstring VwTest::Short(std::wstring text) const {
    const std::wstring root = tree.Path();
    for (std::size_t at = 0; (at = text.find(root, at)) != std::wstring::npos;) {
        text.replace(at, root.size(), L"~");
    }
    return text;
}

Texts VwTest::ShortLines() const {
    Texts shorter;
    for (const std::wstring& line : lines) shorter.push_back(Short(line));
    return shorter;
}

}  // namespace vw::test
