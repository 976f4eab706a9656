#pragma once

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/ScratchRegistry.h"

namespace vw::test {

/// The text in the bytes of Latin letters.
[[nodiscard]] inline std::string ToBytes(std::wstring_view text) {
    std::string bytes;
    for (const wchar_t unit : text) bytes += static_cast<char>(unit);
    return bytes;
}

[[nodiscard]] inline int HostileNumber(std::mt19937& random, int below) {
    return std::uniform_int_distribution<int>(0, below - 1)(random);
}

/// A text that no setting, destination, count or item should have.
[[nodiscard]] inline std::wstring HostileText(std::mt19937& random) {
    static const std::array<std::wstring, 26> kTexts{L"",
                                                     L" ",
                                                     L"\"",
                                                     L"..",
                                                     L"..\\..\\..",
                                                     L"CON",
                                                     L"NUL:",
                                                     L"C:",
                                                     L"C:\\*",
                                                     L"C:\\<>|?*",
                                                     L"\\\\.\\PhysicalDrive0",
                                                     L"\\\\?\\",
                                                     L"\\\\?\\GLOBALROOT\\Device\\Null",
                                                     L"\\\\nowhere\\share\\x",
                                                     L"Q:\\Backup",
                                                     L"99999999999999999999",
                                                     L"-5",
                                                     L"1e400",
                                                     L"0x10",
                                                     L"%n%s%s",
                                                     L"True",
                                                     L"maybe",
                                                     L"\x202E"
                                                     L"txt.exe",
                                                     L"\xD800",
                                                     L"A:\\",
                                                     L"http://127.0.0.1:1/"};
    const int kind = HostileNumber(random, 30);
    if (kind < 26) return kTexts[static_cast<std::size_t>(kind)];
    if (kind == 26) return std::wstring(70'000, L'x');
    if (kind == 27) return L"C:\\" + std::wstring(40'000, L'\\');
    std::wstring text;
    for (int i = HostileNumber(random, 300); i > 0; --i) {
        text += static_cast<wchar_t>(HostileNumber(random, 0x10000));
    }
    return text;
}

/// The same as a line of a list; sometimes of any bytes at all.
[[nodiscard]] inline std::string HostileBytes(std::mt19937& random) {
    if (HostileNumber(random, 3) != 0) return ToBytes(HostileText(random));
    std::string bytes;
    for (int i = HostileNumber(random, 500); i > 0; --i) {
        bytes += static_cast<char>(HostileNumber(random, 256));
    }
    return bytes;
}

/// A value of any type, whose bytes need not be what its type says.
[[nodiscard]] inline StoredValue HostileValue(std::mt19937& random) {
    static constexpr std::array<DWORD, 8> kTypes{REG_SZ,    REG_EXPAND_SZ, REG_MULTI_SZ, REG_DWORD,
                                                 REG_QWORD, REG_BINARY,    REG_NONE,     0x7777};
    const std::wstring text = HostileText(random);
    std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
    // Texts without an end, and halves of letters.
    if (HostileNumber(random, 2) == 0) bytes += std::string(2, '\0');
    if (HostileNumber(random, 4) == 0) bytes += 'h';
    const DWORD type = HostileNumber(random, 2) == 0
                           ? DWORD{REG_SZ}
                           : kTypes[static_cast<std::size_t>(HostileNumber(random, 8))];
    return {.type = type, .bytes = bytes};
}

[[nodiscard]] inline const wchar_t* HostileSettingName(std::mt19937& random) {
    static constexpr std::array<const wchar_t*, 9> kNames{
        L"Arabic",      L"ArabicPrepared", L"BackupTo",    L"Backages",   L"Startup",
        L"RecentFile1", L"RecentFile2",    L"RecentFile3", L"RecentFile4"};
    return kNames[static_cast<std::size_t>(HostileNumber(random, 9))];
}

/// What follows the program's name: a switch or none, one of these paths or a text that no
/// path is, with quotes and blanks as they come. Never "/D": that one cleans the user's
/// temporary folders, and would.
[[nodiscard]] inline std::wstring HostileArguments(std::mt19937& random,
                                                   const std::vector<std::wstring>& paths) {
    static const std::array<std::wstring, 20> kSwitches{
        L"",    L"",     L"",    L"/B ", L"/b\t",     L"/Backup ",  L"/BACKUP",
        L"/R ", L"/r",   L"/S ", L"/S",  L"/Startup", L"/Startup ", L"/Restore ",
        L"-B ", L"\\B ", L"/",   L"--",  L"/? ",      L"/Author "};
    static const std::array<std::wstring, 9> kAround{L"",   L"",  L"",   L"",    L"",
                                                     L"\"", L" ", L"\t", L"\"\""};
    const auto oneOf = [&random](const auto& texts) {
        return texts[static_cast<std::size_t>(
            HostileNumber(random, static_cast<int>(texts.size())))];
    };
    std::wstring text;
    for (int parts = HostileNumber(random, 4) / 2 + 1; parts > 0; --parts) {
        text += oneOf(kSwitches);
        text += oneOf(kAround);
        text += HostileNumber(random, 3) != 0 ? oneOf(paths) : HostileText(random);
        text += oneOf(kAround);
    }
    // It ends where the system's own text would, and is no longer than one may be.
    text.resize(std::min({text.find(L'\0'), text.size(), std::size_t{32'000}}));
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i - 1] == L'/' && (text[i] == L'D' || text[i] == L'd')) text[i] = L'x';
    }
    return text;
}

}  // namespace vw::test
