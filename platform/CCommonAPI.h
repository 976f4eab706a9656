#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/ErrorTrap.h"
#include "platform/RawRegistry.h"
#include "platform/WindowsHeader.h"

namespace vw {

class AnsiCodec;
class MessageBoxes;

/// What the program asks of Windows beside files: the registry, the shell, the keyboard language.
/// One file per concern: Registry*.cpp, Shell*.cpp and Language*.cpp of this folder.
///
/// No operation lets an error out. One that fails gives its neutral result (empty, 0, false); the
/// error's text goes to `faults`, in the program the debugger's output.
class CCommonAPI {
  public:
    CCommonAPI(RawRegistry& registry, const AnsiCodec& ansi, MessageBoxes& boxes,
               ErrorSink& faults);

    // Registry. A path may begin with "\". Every access makes the key when it is missing. Texts
    // cross in the ANSI code page. Results are status codes of the system, 0 for success; a
    // required name that is empty gives 1010.

    /// The data of a value as text, empty when it is missing, shorter than two bytes or cannot be
    /// read. Data of any type come as their characters without the final NUL: a double word gives
    /// its raw bytes.
    [[nodiscard]] std::wstring RegValue(HKEY RegRootKey, std::wstring_view sRegistryKey,
                                        std::wstring_view sValueName, DWORD RegDataType);

    /// Stores `sValueData`; empty data delete the value, and with an empty name too the key with
    /// everything below it.
    void RegValue(HKEY RegRootKey, std::wstring_view sRegistryKey, std::wstring_view sValueName,
                  DWORD RegDataType, std::wstring_view sValueData);

    /// Makes a key of the machine (HKEY_LOCAL_MACHINE).
    /// Part of the given interface; not called by the program.
    LSTATUS RegKeyCreate(std::wstring_view sRegistryKey);

    /// Deletes one value with a name. 0 also when the key cannot be opened.
    LSTATUS RegDeleteValue(HKEY RegRootKey, std::wstring_view sRegistryKey,
                           std::wstring_view sValueName);

    /// Deletes a key with everything below it. A path without "\" deletes nothing and gives 0;
    /// "\Name" is the top-level key Name. 0 also when the parent cannot be opened.
    LSTATUS RegDeleteKeyVB(HKEY RegRootKey, std::wstring_view sRegistryKey);

    /// The English sentence for a status code of the registry; empty for any other code.
    /// Part of the given interface; not called by the program.
    [[nodiscard]] std::wstring RegGeErrorText(LSTATUS code);

    // Shell.

    /// Whether a log-on start entry of that name exists.
    [[nodiscard]] bool ApplicationSartup(std::wstring_view name);

    /// Writes the log-on start entry of that name with a command line, or removes it (`on` false
    /// or an empty command line). Nothing happens for an empty name or without the rights.
    void ApplicationSartup(std::wstring_view name, std::wstring_view sApplicationPath, bool on);

    /// Whether the key named exactly so below HKEY_CLASSES_ROOT is that of a file type.
    /// Part of the given interface; not called by the program.
    [[nodiscard]] bool RegisterFileType(std::wstring_view extensionKey);

    /// Registers a type of documents: their extension (with or without "."), icon and the program
    /// that opens them, which must be the path of an .exe. With `registerIt` false, or without a
    /// program, removes the type that the extension belongs to and gives its name in `typeName`.
    /// Part of the given interface; not called by the program.
    void RegisterFileType(std::wstring_view extension, std::wstring& typeName,
                          std::wstring_view sApplicationPath, std::wstring_view iconPath,
                          bool registerIt);

    /// Adds a command to the menu of a type of documents, on request as what a double click does.
    /// Part of the given interface; not called by the program.
    void RegisterFileTypeCommand(std::wstring_view typeName, std::wstring_view verb,
                                 std::wstring_view commandLine, bool makeDefault);

    /// The top-level window of that class and title, either left open by an empty text; null when
    /// there is none.
    /// Part of the given interface; not called by the program.
    [[nodiscard]] HWND FindWindow(std::wstring_view className, std::wstring_view title);

    /// Destroys a window of this thread.
    /// Part of the given interface; not called by the program.
    void DestroyWindowVB(HWND window);

    /// Keeps a window above all others.
    /// Part of the given interface; not called by the program.
    void TopMost(HWND form);

    /// Makes a window of this thread the active one.
    /// Part of the given interface; not called by the program.
    void ActiveWindow(HWND form);

    /// Starts the system's information tool; a box says so when there is none.
    /// Part of the given interface; not called by the program.
    void ShellSysInfo();

    /// The folder of Windows, without a final "\".
    /// Part of the given interface; not called by the program.
    [[nodiscard]] std::wstring WinDirectory();

    /// Always empty; kept for those who ask.
    /// Part of the given interface; not called by the program.
    [[nodiscard]] std::wstring WinVersion();

    /// Whether this is Windows of the NT line; false when the system does not say.
    [[nodiscard]] bool IsWinNT();

    // Keyboard language and names of languages.

    /// Whether the active keyboard layout is Arabic by its name. A system that names its languages
    /// in English never counts.
    [[nodiscard]] bool LanguageIsArabic();

    /// Goes back through the keyboard layouts, five at most, until the wanted one is active; then
    /// warns when the digits of the user's number format do not suit Arabic text.
    void LanguageIsArabic(bool wanted);

    /// The name of the active keyboard layout's language.
    [[nodiscard]] std::wstring GetActiveLanguage();

    /// The system's name of a language, without the country in brackets.
    [[nodiscard]] std::wstring CLanguageName(std::uint32_t languageIdentifier);

    /// The name of the language that the system was set up with.
    /// Part of the given interface; not called by the program.
    [[nodiscard]] std::wstring WinLocalLanguage();

    /// Switches the right-to-left layout of a window on or off. Children that exist already keep
    /// theirs.
    /// Part of the given interface; not called by the program.
    void LayoutRTL(HWND window, bool on);

  private:
    LSTATUS OpenKey(HKEY root, std::wstring_view path, RegistryKey& key);
    void RegisterType(std::wstring_view extensionKey, std::wstring_view typeName,
                      std::wstring_view program, std::wstring_view iconPath);
    void RemoveType(std::wstring_view extensionKey, std::wstring& typeName);

    RawRegistry& registry_;
    const AnsiCodec& ansi_;
    MessageBoxes& boxes_;
    ErrorTrap trap_;
};

}  // namespace vw
