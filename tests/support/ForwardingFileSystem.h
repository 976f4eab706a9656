#pragma once

#include "platform/FileSystem.h"

namespace vw::test {

/// Hands every call to another file system. A test derives from it to change a single answer (a
/// small disk, a network drive) and leave the rest real.
class ForwardingFileSystem : public FileSystem {
  public:
    explicit ForwardingFileSystem(FileSystem& inner) : inner_(inner) {}

    std::optional<FileInfo> Stat(std::wstring_view path) override { return inner_.Stat(path); }
    void List(std::wstring_view folder, const EntryVisitor& visitor) override {
        inner_.List(folder, visitor);
    }
    void Copy(std::wstring_view from, std::wstring_view to, const CopyProgress& progress) override {
        inner_.Copy(from, to, progress);
    }
    void CreateFolder(std::wstring_view path) override { inner_.CreateFolder(path); }
    void RemoveFile(std::wstring_view path) override { inner_.RemoveFile(path); }
    void RemoveFolder(std::wstring_view path) override { inner_.RemoveFolder(path); }
    void Rename(std::wstring_view from, std::wstring_view to) override { inner_.Rename(from, to); }
    void Replace(std::wstring_view from, std::wstring_view to) override {
        inner_.Replace(from, to);
    }
    std::string Read(std::wstring_view path) override { return inner_.Read(path); }
    void Write(std::wstring_view path, std::string_view bytes, Flush flush) override {
        inner_.Write(path, bytes, flush);
    }
    void CopyFolderInfo(std::wstring_view from, std::wstring_view to, Marks marks) override {
        inner_.CopyFolderInfo(from, to, marks);
    }
    void CopyAccessRights(std::wstring_view from, std::wstring_view to,
                          std::string& usual) override {
        inner_.CopyAccessRights(from, to, usual);
    }
    std::unique_ptr<HeldFile> Hold(std::wstring_view path) override { return inner_.Hold(path); }
    FolderIdentity Identify(std::wstring_view folder) override { return inner_.Identify(folder); }
    std::wstring RealPath(std::wstring_view path) override { return inner_.RealPath(path); }
    bool HaveSameBytes(std::wstring_view first, std::wstring_view second,
                       const CopyProgress& progress) override {
        return inner_.HaveSameBytes(first, second, progress);
    }
    std::uint64_t FreeSpace(std::wstring_view folder) override { return inner_.FreeSpace(folder); }
    DriveType DriveTypeOf(std::wstring_view path) override { return inner_.DriveTypeOf(path); }
    std::wstring TempFolder() override { return inner_.TempFolder(); }
    std::wstring FullPath(std::wstring_view path) override { return inner_.FullPath(path); }

  protected:
    [[nodiscard]] FileSystem& Inner() const { return inner_; }

  private:
    FileSystem& inner_;
};

}  // namespace vw::test
