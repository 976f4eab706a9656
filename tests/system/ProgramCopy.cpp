#include "tests/system/ProgramCopy.h"

#include <algorithm>
#include <stdexcept>

#include "platform/Handle.h"
#include "platform/Utf8.h"

namespace vw::test {

namespace {

const std::wstring kSettings = L"Software\\Tallowmere.Net\\";
const std::wstring kRunKey = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";

std::wstring NextBaseName() {
    static int number = 0;
    return L"VwTest" + std::to_wstring(GetCurrentProcessId()) + L"n" + std::to_wstring(++number);
}

std::wstring Variable(const wchar_t* name) {
    std::wstring value(32768, L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

}  // namespace

std::wstring BuiltProgram() {
    if (std::wstring path = Variable(L"VW_PROGRAM"); !path.empty()) return path;
    std::wstring self(32768, L'\0');
    self.resize(GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size())));
    return self.substr(0, self.rfind(L'\\')) + L"\\..\\bin\\Vaultwright.exe";
}

std::wstring Quoted(std::wstring_view path) { return L"\"" + std::wstring(path) + L"\""; }

ProgramCopy::ProgramCopy()
    : baseName_(NextBaseName()),
      folder_(tree.Folder(L"Program")),
      settings_(HKEY_CURRENT_USER, kSettings + baseName_),
      logonEntry_(HKEY_LOCAL_MACHINE, kRunKey, baseName_) {
    const std::wstring built = BuiltProgram();
    const std::wstring own = Path();
    if (CopyFileW(built.c_str(), own.c_str(), TRUE) == 0) {
        throw std::runtime_error("a test could not copy the program " + ToUtf8(built));
    }
    SetSetting(L"Arabic", L"0");
    SetSetting(L"BackupTo", DefaultDestination());
}

std::optional<std::wstring> ProgramCopy::Setting(const std::wstring& name) const {
    const auto value = ReadValue(HKEY_CURRENT_USER, settings_.Path(), name);
    if (!value) return std::nullopt;
    const auto* const text = reinterpret_cast<const wchar_t*>(value->bytes.data());
    EXPECT_EQ(*value, TextValue(text)) << "a setting that is no text";
    return std::wstring(text);
}

void ProgramCopy::SetSetting(const std::wstring& name,
                             std::optional<std::wstring_view> value) const {
    if (value) {
        WriteValue(HKEY_CURRENT_USER, settings_.Path(), name, TextValue(*value));
    } else {
        RegDeleteKeyValueW(HKEY_CURRENT_USER, settings_.Path().c_str(), name.c_str());
    }
}

void ProgramCopy::EnableLogonStart() const { logonEntry_.Set(Path() + L" /S"); }

std::optional<std::wstring> ProgramCopy::LogonCommand() const {
    const auto value = ReadValue(HKEY_LOCAL_MACHINE, kRunKey, baseName_);
    if (!value) return std::nullopt;
    return std::wstring(reinterpret_cast<const wchar_t*>(value->bytes.data()));
}

std::wstring ProgramCopy::List(std::wstring_view relative,
                               const std::vector<std::wstring>& lines) const {
    std::wstring text;
    bool ascii = true;
    for (const std::wstring& line : lines) {
        text.append(line).append(L"\r\n");
        for (const wchar_t unit : line) ascii = ascii && unit < 0x80;
    }
    // A list that the code page of every machine can hold, else one in UTF-8.
    return tree.File(relative, (ascii ? "" : "\xEF\xBB\xBF") + ToUtf8(text));
}

ProgramStart ProgramCopy::With(std::wstring_view arguments) const {
    return {.program = Path(), .arguments = std::wstring(arguments)};
}

void SystemTest::RunsTo(DWORD exitCode, std::wstring_view arguments) {
    RunsTo(exitCode, program.With(arguments));
}

void SystemTest::RunsTo(DWORD exitCode, const ProgramStart& start) {
    ProgramRun run(start);
    EXPECT_EQ(run.WaitForEnd(), exitCode) << ToUtf8(start.arguments) << "\n"
                                          << ToUtf8(run.Errors());
    lines = run.Lines();
    outcome.clear();
    const auto isOutcome = [](const std::wstring& line) {
        return line.find(L" unchanged, ") != std::wstring::npos ||
               line.find(L"لم يتغير: ") != std::wstring::npos;
    };
    if (!lines.empty() && isOutcome(lines.back())) {
        outcome = lines.back();
        lines.pop_back();
    }
    errors = run.Errors();
    boxes = run.Boxes();
}

std::vector<std::wstring> SystemTest::InVault() const {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry{};
    const FindHandle find(FindFirstFileW((vault + L"\\*").c_str(), &entry));
    if (!find) return names;
    do {
        const std::wstring_view name = entry.cFileName;
        if (name != L"." && name != L"..") names.emplace_back(name);
    } while (FindNextFileW(find.Get(), &entry) != 0);
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace vw::test
