#pragma once

#include <string_view>

/// The names of the controls and menu entries that the logic behind the windows works with, as the
/// tables of the forms have them.
namespace vw::control {

inline constexpr std::wstring_view chkDontHide = L"chkDontHide";
inline constexpr std::wstring_view cmbDestination = L"cmbDestination";
inline constexpr std::wstring_view cmdCancel = L"cmdCancel";
inline constexpr std::wstring_view lblBackages = L"lblBackages";
inline constexpr std::wstring_view lblCopiesHeading = L"lblCopiesHeading";
inline constexpr std::wstring_view lblMsg = L"lblMsg";
inline constexpr std::wstring_view lblMsg1 = L"lblMsg1";
inline constexpr std::wstring_view lblNoFileToBack = L"lblNoFileToBack";
inline constexpr std::wstring_view lblNoRestore = L"lblNoRestore";
inline constexpr std::wstring_view lblSubMsg = L"lblSubMsg";
inline constexpr std::wstring_view lblTitle = L"lblTitle";
inline constexpr std::wstring_view lsvBackupList = L"lsvBackupList";
inline constexpr std::wstring_view lsvRestore1 = L"lsvRestore1";
inline constexpr std::wstring_view lsvRestore2 = L"lsvRestore2";
inline constexpr std::wstring_view Timer1 = L"Timer1";
inline constexpr std::wstring_view Toolbar1 = L"Toolbar1";
inline constexpr std::wstring_view txtReport = L"txtReport";
inline constexpr std::wstring_view vsBackages = L"vsBackages";
inline constexpr std::wstring_view mnuAddFile = L"mnuAddFile";
inline constexpr std::wstring_view mnuAddFiles = L"mnuAddFiles";
inline constexpr std::wstring_view mnuAddFolder = L"mnuAddFolder";
inline constexpr std::wstring_view mnuDel = L"mnuDel";
inline constexpr std::wstring_view mnuDelAll = L"mnuDelAll";
inline constexpr std::wstring_view mnuOptions = L"mnuOptions";
inline constexpr std::wstring_view mnuProp1 = L"mnuProp1";
inline constexpr std::wstring_view mnuProp1Cancel = L"mnuProp1Cancel";
inline constexpr std::wstring_view mnuProp1Maximize = L"mnuProp1Maximize";
inline constexpr std::wstring_view mnuRecentFile = L"mnuRecentFile";
inline constexpr std::wstring_view mnuViewAlign = L"mnuViewAlign";
inline constexpr std::wstring_view mnuViewMethod = L"mnuViewMethod";

}  // namespace vw::control
