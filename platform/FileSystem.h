#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/HeldFile.h"

namespace vw {

/// What a listing or a query gives of a file or folder without opening it.
struct FileInfo {
    bool isFolder = false;
    /// A folder that is a junction, mount point or symbolic link; a file that has no bytes of its
    /// own: an app alias, a socket, a device, a link that leads nowhere.
    bool isLink = false;
    bool isHidden = false;
    bool isSystem = false;
    bool isReadOnly = false;
    bool isOnlyInCloud = false;  ///< a file whose bytes are downloaded when it is read
    bool isEncrypted = false;    ///< a file that only the account that encrypted it can read
    std::uint64_t size = 0;      ///< bytes; 0 for a folder
    Date lastWrite = kNoDate;    ///< local time, by the rules of that day's own year
    /// The same by the rules of the present year, by which older comments were written. Nearly
    /// always equal.
    Date lastWriteByPresentRules = kNoDate;
};

/// Whether both are files of the same length and date, or both are folders of the same date.
[[nodiscard]] inline bool HaveSameInfo(const FileInfo& first, const FileInfo& second) noexcept {
    return first.isFolder == second.isFolder && first.size == second.size &&
           IsSameDate(first.lastWrite, second.lastWrite);
}

/// One entry of a folder. The name lives only as long as the call that shows it.
struct FolderEntry : FileInfo {
    std::wstring_view name;
};

/// Distinguishes a folder from every other one, also from one that takes its name later: another
/// stick under the same drive letter, or a folder that was deleted and made anew.
struct FolderIdentity {
    std::uint32_t volume = 0;  ///< serial number of the volume; 0 when it has none
    /// Number of the folder on its volume; 0 when the volume gives none, or another at each
    /// opening.
    std::uint64_t folder = 0;
    std::wstring device;  ///< share or device behind the drive letter; may be empty

    /// Whether both mean one folder. The device decides only where the folder has no number.
    [[nodiscard]] bool IsSameAs(const FolderIdentity& other) const {
        if (volume != other.volume) return false;
        return folder != 0 ? folder == other.folder : other.folder == 0 && device == other.device;
    }
};

enum class DriveType { Unknown, Removable, Fixed, Network, Optical, Memory };

/// The disk, as the whole program sees it. Paths are taken as people type them: "\" or "/", double
/// separators, relative, longer than 260 characters. Every failure is thrown as a RuntimeError
/// with the path. Links to files show the file; `isLink` marks links to folders and to nothing.
class FileSystem {
  public:
    /// Sees each entry of a folder.
    using EntryVisitor = std::function<void(const FolderEntry&)>;
    /// Called now and then during a long copy, so that windows can repaint.
    using CopyProgress = std::function<void()>;

    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    virtual ~FileSystem() = default;

    /// Facts of the file or folder at `path`; nothing when none is there (a path with wildcards
    /// names none). Throws kPermissionDenied and others when the disk cannot answer.
    [[nodiscard]] virtual std::optional<FileInfo> Stat(std::wstring_view path) = 0;

    /// Calls `visitor` for every entry of a folder but "." and "..", in the disk's order. Throws
    /// kPathNotFound when there is no such folder, kPermissionDenied when it may not be read.
    virtual void List(std::wstring_view folder, const EntryVisitor& visitor) = 0;

    /// Copies one file to a free name, with its date, attributes and alternate streams. Throws
    /// kFileNotFound when `from` is no file, kAlreadyExists when something is at `to`, kDiskFull,
    /// kPermissionDenied when either is in use or refused. A failed copy leaves no file behind.
    virtual void Copy(std::wstring_view from, std::wstring_view to,
                      const CopyProgress& progress) = 0;

    /// Makes one folder. Throws kPathNotFound without its parent, kAlreadyExists when something is
    /// there already.
    virtual void CreateFolder(std::wstring_view path) = 0;

    /// Deletes one file, read-only or not. Throws kFileNotFound when it is missing,
    /// kPermissionDenied when it is in use.
    virtual void RemoveFile(std::wstring_view path) = 0;

    /// Deletes one empty folder, or a link to a folder without what it shows. Throws
    /// kAccessError when the folder is not empty, kPermissionDenied when it is in use.
    virtual void RemoveFolder(std::wstring_view path) = 0;

    /// Renames a file or folder on one drive. Never replaces: throws
    /// kAlreadyExists when `to` exists.
    virtual void Rename(std::wstring_view from, std::wstring_view to) = 0;

    /// Renames a file over an existing one in one step, or to a free name.
    virtual void Replace(std::wstring_view from, std::wstring_view to) = 0;

    /// All bytes of a file. Throws kFileNotFound, kPathNotFound, kPermissionDenied when it is in
    /// use, kAccessError when access is denied.
    [[nodiscard]] virtual std::string Read(std::wstring_view path) = 0;

    /// Makes or empties a file and writes `bytes`; with Flush::Yes they are on the disk itself when
    /// the call returns. Throws kDiskFull, kPathNotFound, kPermissionDenied when the file is in
    /// use, kAccessError when access is denied. A failed write leaves no file behind.
    enum class Flush { No, Yes };
    virtual void Write(std::wstring_view path, std::string_view bytes, Flush flush) = 0;

    /// Gives the folder `to` the dates of creation and of the last change of the folder `from`, and
    /// its hidden, system and read-only marks; with Marks::Keep `to` keeps those that it has too.
    /// Links are followed. Throws kPermissionDenied, kPathNotFound.
    enum class Marks { Replace, Keep };
    virtual void CopyFolderInfo(std::wstring_view from, std::wstring_view to, Marks marks) = 0;

    /// Passes the access rights that were given to the file `from` itself, not to its folder, on to
    /// the new file `to` in the same folder. `usual` holds the rights that new files get there, so
    /// that they are read once for a folder: empty at first, then what an earlier call put there.
    /// Does what the account may; never throws.
    virtual void CopyAccessRights(std::wstring_view from, std::wstring_view to,
                                  std::string& usual) = 0;

    /// Makes or opens a hidden file that nobody else can open until the result is destroyed, which
    /// deletes it. One that is left over may be opened by every account. Throws
    /// kPermissionDenied when another process holds it or it may not be made (the system's code
    /// says which), kPathNotFound without its folder.
    [[nodiscard]] virtual std::unique_ptr<HeldFile> Hold(std::wstring_view path) = 0;

    /// Which folder it is that a path names now, links followed. Throws kPathNotFound when there is
    /// none, kFileNotFound for a file, others when the disk cannot answer.
    [[nodiscard]] virtual FolderIdentity Identify(std::wstring_view folder) = 0;

    /// The path of an existing file or folder without links and other detours; the absolute path
    /// where the system has none.
    [[nodiscard]] virtual std::wstring RealPath(std::wstring_view path) = 0;

    /// Whether two files hold the same bytes. `progress` is called now and then. Throws what goes
    /// wrong while they are read. May be called in several threads at the same time.
    [[nodiscard]] virtual bool HaveSameBytes(std::wstring_view first, std::wstring_view second,
                                             const CopyProgress& progress) = 0;

    /// Bytes that the user may still write on the drive of `folder`.
    [[nodiscard]] virtual std::uint64_t FreeSpace(std::wstring_view folder) = 0;

    /// Kind of the drive that holds `path`; network for \\server\share.
    [[nodiscard]] virtual DriveType DriveTypeOf(std::wstring_view path) = 0;

    /// The folder for temporary files, without a final "\".
    [[nodiscard]] virtual std::wstring TempFolder() = 0;

    /// The absolute form of a path, without double separators and relative steps.
    [[nodiscard]] virtual std::wstring FullPath(std::wstring_view path) = 0;
};

}  // namespace vw
