#include "platform/CCommonAPI.h"
#include "platform/MessageBoxes.h"
#include "platform/Wildcards.h"

namespace vw {
namespace {

std::wstring TypeKey(std::wstring_view typeName, std::wstring_view below = {}) {
    return std::wstring(L"\\").append(typeName).append(below);
}

}  // namespace

bool CCommonAPI::RegisterFileType(std::wstring_view extensionKey) {
    return trap_.Or(false, L"RegisterFileType", [&] {
        return !RegValue(HKEY_CLASSES_ROOT, extensionKey, L"", REG_SZ).empty();
    });
}

void CCommonAPI::RegisterFileType(std::wstring_view extension, std::wstring& typeName,
                                  std::wstring_view sApplicationPath, std::wstring_view iconPath,
                                  bool registerIt) {
    trap_(L"RegisterFileType", [&] {
        std::wstring extensionKey = extension.starts_with(L'.') ? L"\\" : L"\\.";
        extensionKey += extension;

        if (!registerIt || sApplicationPath.empty()) {
            RemoveType(extensionKey, typeName);
        } else if (MatchesWildcard(sApplicationPath, L"*.exe")) {
            RegisterType(extensionKey, typeName, sApplicationPath, iconPath);
        } else {
            boxes_.Show({.text = L"Please let sApplicationPath = full path and file name"});
        }
    });
}

void CCommonAPI::RegisterType(std::wstring_view extensionKey, std::wstring_view typeName,
                              std::wstring_view program, std::wstring_view iconPath) {
    const auto setDefault = [&](std::wstring_view key, std::wstring_view data) {
        RegValue(HKEY_CLASSES_ROOT, key, L"", REG_SZ, data);
    };
    setDefault(extensionKey, typeName);
    setDefault(TypeKey(typeName, L"\\DefaultIcon"), iconPath);
    setDefault(TypeKey(typeName, L"\\shell"), L"Open");
    setDefault(TypeKey(typeName, L"\\shell\\Open\\Command"),
               std::wstring(L"\"").append(program).append(L"\" %1"));
}

// The type that the extension really belongs to goes, whatever the caller took it for.
void CCommonAPI::RemoveType(std::wstring_view extensionKey, std::wstring& typeName) {
    typeName = RegValue(HKEY_CLASSES_ROOT, extensionKey, L"", REG_SZ);
    RegValue(HKEY_CLASSES_ROOT, extensionKey, L"", REG_SZ, L"");
    RegValue(HKEY_CLASSES_ROOT, TypeKey(typeName), L"", REG_SZ, L"");
}

void CCommonAPI::RegisterFileTypeCommand(std::wstring_view typeName, std::wstring_view verb,
                                         std::wstring_view commandLine, bool makeDefault) {
    trap_(L"RegisterFileTypeCommand", [&] {
        const std::wstring shell = TypeKey(typeName, L"\\shell");
        const std::wstring command = std::wstring(shell).append(L"\\").append(verb);
        RegValue(HKEY_CLASSES_ROOT, command + L"\\command", L"", REG_SZ, commandLine);
        if (makeDefault) RegValue(HKEY_CLASSES_ROOT, shell, L"", REG_SZ, verb);
    });
}

}  // namespace vw
