#pragma once

#include "platform/FileSystem.h"
#include "platform/LocalTime.h"

namespace vw {

/// The real disk.
class Win32FileSystem final : public FileSystem {
  public:
    [[nodiscard]] std::optional<FileInfo> Stat(std::wstring_view path) override;
    void List(std::wstring_view folder, const EntryVisitor& visitor) override;
    void Copy(std::wstring_view from, std::wstring_view to, const CopyProgress& progress) override;
    void CreateFolder(std::wstring_view path) override;
    void RemoveFile(std::wstring_view path) override;
    void RemoveFolder(std::wstring_view path) override;
    void Rename(std::wstring_view from, std::wstring_view to) override;
    void Replace(std::wstring_view from, std::wstring_view to) override;
    [[nodiscard]] std::string Read(std::wstring_view path) override;
    void Write(std::wstring_view path, std::string_view bytes, Flush flush) override;
    void CopyFolderInfo(std::wstring_view from, std::wstring_view to, Marks marks) override;
    void CopyAccessRights(std::wstring_view from, std::wstring_view to,
                          std::string& usual) override;
    [[nodiscard]] std::unique_ptr<HeldFile> Hold(std::wstring_view path) override;
    [[nodiscard]] FolderIdentity Identify(std::wstring_view folder) override;
    [[nodiscard]] std::wstring RealPath(std::wstring_view path) override;
    [[nodiscard]] bool HaveSameBytes(std::wstring_view first, std::wstring_view second,
                                     const CopyProgress& progress) override;
    [[nodiscard]] std::uint64_t FreeSpace(std::wstring_view folder) override;
    [[nodiscard]] DriveType DriveTypeOf(std::wstring_view path) override;
    [[nodiscard]] std::wstring TempFolder() override;
    [[nodiscard]] std::wstring FullPath(std::wstring_view path) override;

  private:
    LocalTime localTime_;
};

}  // namespace vw
