#include "tests/support/ScratchRegistry.h"

#include <gtest/gtest.h>

#include <utility>

#include "platform/Handle.h"

namespace vw::test {
namespace {

RegistryKey Open(HKEY root, const std::wstring& path, REGSAM access) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, access, &key) != ERROR_SUCCESS) return {};
    return RegistryKey(key);
}

RegistryKey Create(HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    const LSTATUS status =
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    EXPECT_EQ(status, ERROR_SUCCESS) << "the test could not make its key";
    return RegistryKey(status == ERROR_SUCCESS ? key : nullptr);
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const StoredValue& value) {
    stream << "type " << value.type << ", bytes";
    for (const char byte : value.bytes) stream << ' ' << static_cast<int>(static_cast<BYTE>(byte));
    return stream;
}

StoredValue TextValue(std::wstring_view text) {
    const std::wstring copy(text);
    return {REG_SZ, std::string(reinterpret_cast<const char*>(copy.c_str()),
                                (copy.size() + 1) * sizeof(wchar_t))};
}

bool KeyExists(HKEY root, const std::wstring& path) {
    return static_cast<bool>(Open(root, path, KEY_READ));
}

std::optional<StoredValue> ReadValue(HKEY root, const std::wstring& path,
                                     const std::wstring& name) {
    const RegistryKey key = Open(root, path, KEY_READ);
    if (!key) return std::nullopt;
    StoredValue value;
    DWORD size = 0;
    if (RegQueryValueExW(key.Get(), name.c_str(), nullptr, nullptr, nullptr, &size) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.bytes.resize(size);
    if (RegQueryValueExW(key.Get(), name.c_str(), nullptr, &value.type,
                         reinterpret_cast<BYTE*>(value.bytes.data()), &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return value;
}

void WriteValue(HKEY root, const std::wstring& path, const std::wstring& name,
                const StoredValue& value) {
    const RegistryKey key = Create(root, path);
    const LSTATUS status = RegSetValueExW(key.Get(), name.c_str(), 0, value.type,
                                          reinterpret_cast<const BYTE*>(value.bytes.data()),
                                          static_cast<DWORD>(value.bytes.size()));
    EXPECT_EQ(status, ERROR_SUCCESS) << "the test could not store its value";
}

void WriteAnsi(HKEY root, const std::wstring& path, const std::wstring& name, DWORD type,
               std::string_view bytes) {
    const RegistryKey key = Create(root, path);
    // The names of tests are plain ASCII.
    const LSTATUS status = RegSetValueExA(key.Get(), std::string(name.begin(), name.end()).c_str(),
                                          0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                                          static_cast<DWORD>(bytes.size()));
    EXPECT_EQ(status, ERROR_SUCCESS) << "the test could not store its value";
}

void DeleteKey(HKEY root, const std::wstring& path) {
    // An empty path would mean the root itself.
    if (path.empty() || !KeyExists(root, path)) return;
    EXPECT_EQ(RegDeleteTreeW(root, path.c_str()), ERROR_SUCCESS);
}

ScratchKey::ScratchKey(HKEY root, std::wstring path) : root_(root), path_(std::move(path)) {
    DeleteKey(root_, path_);
}

ScratchKey::~ScratchKey() { DeleteKey(root_, path_); }

std::wstring ScratchKey::Path(std::wstring_view below) const {
    return std::wstring(path_).append(L"\\").append(below);
}

SavedValue::SavedValue(HKEY root, std::wstring path, std::wstring name)
    : root_(root),
      path_(std::move(path)),
      name_(std::move(name)),
      keyWasThere_(KeyExists(root_, path_)),
      before_(ReadValue(root_, path_, name_)) {}

SavedValue::~SavedValue() {
    if (before_) {
        WriteValue(root_, path_, name_, *before_);
    } else {
        Remove();
        if (!keyWasThere_) DeleteKey(root_, path_);
    }
}

void SavedValue::Set(std::wstring_view text) const {
    WriteValue(root_, path_, name_, TextValue(text));
}

void SavedValue::Remove() const {
    const RegistryKey key = Open(root_, path_, KEY_SET_VALUE);
    if (key) RegDeleteValueW(key.Get(), name_.c_str());
}

}  // namespace vw::test
