#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "platform/WindowsHeader.h"

namespace vw::test {

/// A value as it is stored. Texts are kept as the bytes of UTF-16.
struct StoredValue {
    DWORD type = REG_NONE;
    std::string bytes;

    friend bool operator==(const StoredValue&, const StoredValue&) = default;
};

std::ostream& operator<<(std::ostream& stream, const StoredValue& value);

/// A text value as the registry keeps it, with its final NUL.
[[nodiscard]] StoredValue TextValue(std::wstring_view text);

/// Whether a key is there; asking makes none.
[[nodiscard]] bool KeyExists(HKEY root, const std::wstring& path);

/// A value; nothing when the key or the value is missing.
[[nodiscard]] std::optional<StoredValue> ReadValue(HKEY root, const std::wstring& path,
                                                   const std::wstring& name);

/// Stores a value, making its key when it is missing.
void WriteValue(HKEY root, const std::wstring& path, const std::wstring& name,
                const StoredValue& value);

/// Stores bytes through the ANSI side of the registry, with or without a final NUL as given.
void WriteAnsi(HKEY root, const std::wstring& path, const std::wstring& name, DWORD type,
               std::string_view bytes);

/// Deletes a key with everything below it, when it is there.
void DeleteKey(HKEY root, const std::wstring& path);

/// A key that belongs to one test: not there at its start, gone after it.
class ScratchKey {
  public:
    ScratchKey(HKEY root, std::wstring path);
    ScratchKey(const ScratchKey&) = delete;
    ScratchKey& operator=(const ScratchKey&) = delete;
    ~ScratchKey();

    [[nodiscard]] const std::wstring& Path() const noexcept { return path_; }

    /// The path of a key below this one.
    [[nodiscard]] std::wstring Path(std::wstring_view below) const;

  private:
    HKEY root_;
    std::wstring path_;
};

/// A value that belongs to the machine: it is put back at the end of the test.
class SavedValue {
  public:
    SavedValue(HKEY root, std::wstring path, std::wstring name);
    SavedValue(const SavedValue&) = delete;
    SavedValue& operator=(const SavedValue&) = delete;
    ~SavedValue();

    void Set(std::wstring_view text) const;
    void Remove() const;

  private:
    HKEY root_;
    std::wstring path_;
    std::wstring name_;
    bool keyWasThere_;
    std::optional<StoredValue> before_;
};

}  // namespace vw::test
