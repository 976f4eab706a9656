#pragma once

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/ForwardingFileSystem.h"

namespace vw::test {

/// The calls that can go wrong. TempFolder and FullPath never do, so they are not counted.
enum class FileCall {
    Stat,
    List,
    Copy,
    CreateFolder,
    RemoveFile,
    RemoveFolder,
    Rename,
    Replace,
    Read,
    Write,
    CopyFolderInfo,
    CopyAccessRights,
    Hold,
    FreeSpace,
    DriveTypeOf,
    Identify,
    RealPath,
    HaveSameBytes
};

/// "Stat", "List"...
[[nodiscard]] const char* NameOf(FileCall call);

/// One call that reached the file system. `to` is empty but for Copy, Rename, Replace and
/// HaveSameBytes.
struct FileOperation {
    FileCall call;
    std::wstring path;
    std::wstring to;
};

/// "Rename C:\A -> C:\B" in UTF-8, for the messages of tests.
[[nodiscard]] std::string Describe(const FileOperation& operation);

/// Whether an operation counts. The fault plans below count matching operations only.
using OperationFilter = std::function<bool(const FileOperation&)>;

/// Every operation.
[[nodiscard]] OperationFilter AnyOperation();
/// The operations of these kinds.
[[nodiscard]] OperationFilter OnlyCalls(std::initializer_list<FileCall> calls);
/// The operations that change the disk: Copy, CreateFolder, the removing and renaming ones, Write.
[[nodiscard]] OperationFilter OnlyChanges();

/// Thrown when the planned death of the process is reached, and by every later call. It is no
/// std::exception, so that no error trap takes it, as none takes a power cut.
struct Died {};

/// A file system that goes wrong on request, at the n-th operation (from 1) that passes the
/// filter; until then, and without a plan, it forwards. One plan at a time: a new one replaces the
/// old one and starts counting anew.
class FaultyFileSystem : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    /// The n-th operation throws `errorNumber` and has no effect.
    void FailNth(int n, int errorNumber, OperationFilter filter = AnyOperation());

    /// From the n-th on all throw `errorNumber`: a drive that is gone, a folder without rights.
    void FailFrom(int n, int errorNumber, OperationFilter filter = AnyOperation());

    /// From the n-th Copy, Write or CreateFolder on the disk is full (61).
    void FillDiskFrom(int n);

    /// The process dies at the n-th operation: Died is thrown, and by every later call too. A Copy
    /// or Write that it dies in leaves the first half of the bytes at its target, as a kill does.
    void DieAtNth(int n, OperationFilter filter = AnyOperation());

    /// The n-th operation reports success and has no effect.
    void IgnoreNth(int n, OperationFilter filter = AnyOperation());

    /// The n-th Copy reports success and leaves the first half of the file.
    void TruncateNthCopy(int n);

    /// Called before every operation, also without a plan; for acting at a chosen moment.
    void OnOperation(std::function<void(const FileOperation&)> callback);

    /// No plan, no death, nothing counted, nothing kept.
    void Heal();

    /// Operations that passed the filter since the plan was made or since Heal: the n over which a
    /// sweep runs.
    [[nodiscard]] int Count() const noexcept { return count_; }

    /// The operations that went wrong so far.
    [[nodiscard]] const std::vector<FileOperation>& Faults() const noexcept { return faults_; }

    /// Every operation since the plan was made or since Heal.
    [[nodiscard]] const std::vector<FileOperation>& Operations() const noexcept { return all_; }

    std::optional<FileInfo> Stat(std::wstring_view path) override;
    void List(std::wstring_view folder, const EntryVisitor& visitor) override;
    void Copy(std::wstring_view from, std::wstring_view to, const CopyProgress& progress) override;
    void CreateFolder(std::wstring_view path) override;
    void RemoveFile(std::wstring_view path) override;
    void RemoveFolder(std::wstring_view path) override;
    void Rename(std::wstring_view from, std::wstring_view to) override;
    void Replace(std::wstring_view from, std::wstring_view to) override;
    std::string Read(std::wstring_view path) override;
    void Write(std::wstring_view path, std::string_view bytes, Flush flush) override;
    void CopyFolderInfo(std::wstring_view from, std::wstring_view to, Marks marks) override;
    void CopyAccessRights(std::wstring_view from, std::wstring_view to,
                          std::string& usual) override;
    std::unique_ptr<HeldFile> Hold(std::wstring_view path) override;
    FolderIdentity Identify(std::wstring_view folder) override;
    std::wstring RealPath(std::wstring_view path) override;
    bool HaveSameBytes(std::wstring_view first, std::wstring_view second,
                       const CopyProgress& progress) override;
    std::uint64_t FreeSpace(std::wstring_view folder) override;
    DriveType DriveTypeOf(std::wstring_view path) override;
    std::wstring TempFolder() override;
    std::wstring FullPath(std::wstring_view path) override;

  private:
    enum class Fault { None, Fail, FailFrom, Die, Ignore, Truncate };
    enum class Act { Forward, Skip, Half, HalfAndDie };

    void Plan(Fault fault, int n, int errorNumber, OperationFilter filter);
    [[nodiscard]] Act Before(const FileOperation& operation);
    void RefuseAfterDeath() const;
    void WriteHalf(std::wstring_view path, std::string_view bytes);

    Fault fault_ = Fault::None;
    int n_ = 0;
    int errorNumber_ = 0;
    OperationFilter filter_ = AnyOperation();
    std::function<void(const FileOperation&)> onOperation_;
    int count_ = 0;
    bool dead_ = false;
    std::vector<FileOperation> all_;
    std::vector<FileOperation> faults_;
};

}  // namespace vw::test
