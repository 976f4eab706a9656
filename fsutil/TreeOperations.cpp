#include "fsutil/TreeOperations.h"

#include <utility>

#include "fsutil/PathText.h"
#include "fsutil/Patience.h"
#include "platform/RuntimeError.h"

namespace vw {

namespace {

// Length of the part of an absolute path that is no folder anyone could make or delete: "C:\", a
// share of a server.
std::size_t RootLength(std::wstring_view full) {
    constexpr std::wstring_view kServer = L"\\\\?\\UNC\\";
    constexpr std::wstring_view kDevice = L"\\\\?\\";
    std::size_t start = 0;
    if (full.starts_with(kServer)) {
        start = kServer.size();
    } else if (full.starts_with(kDevice)) {
        return kDevice.size() + 3;
    } else if (full.starts_with(L"\\\\")) {
        start = 2;
    } else {
        return 3;
    }
    const std::size_t share = full.find(L'\\', start);
    const std::size_t end = share == std::wstring_view::npos ? share : full.find(L'\\', share + 1);
    return end == std::wstring_view::npos ? full.size() : end + 1;
}

// The absolute form without a final "\", but for a drive root.
std::wstring TidyPath(FileSystem& files, std::wstring_view path) {
    std::wstring full = files.FullPath(path);
    while (full.size() > RootLength(full) && full.ends_with(L'\\')) full.pop_back();
    return full;
}

// Makes a folder; it is as good when somebody else made it meanwhile.
void CreateOneFolder(FileSystem& files, std::wstring_view path) {
    try {
        files.CreateFolder(path);
    } catch (const RuntimeError& error) {
        if (error.Number() != error_number::kAlreadyExists) throw;
        const std::optional<FileInfo> facts = files.Stat(path);
        if (!facts || !facts->isFolder) throw;
    }
}

// A folder on its way to being deleted: its sub-folders go first.
struct OpenFolder {
    std::size_t pathLength;
    std::vector<std::wstring> subFolders;
    bool emptiedByUs = false;  ///< something in it has been removed
};

// Removes single entries, with patience when there is some.
class EntryRemover {
  public:
    EntryRemover(FileSystem& files, Patience* patience) : files_(files), patience_(patience) {}

    void RemoveFile(const std::wstring& path) {
        if (patience_ == nullptr) {
            files_.RemoveFile(path);
        } else {
            patience_->Perform([&] { files_.RemoveFile(path); }, path);
        }
    }

    void RemoveFolder(const std::wstring& path, bool emptiedByUs) {
        if (patience_ == nullptr) {
            files_.RemoveFolder(path);
        } else {
            patience_->RemoveFolder(path, emptiedByUs);
        }
    }

  private:
    FileSystem& files_;
    Patience* patience_;
};

// Deletes one tree. The path is one text that grows and shrinks with the depth, and the folders on
// the way down are kept in a list of our own: trees can be thousands of levels deep.
class TreeRemover {
  public:
    TreeRemover(FileSystem& files, std::wstring_view root, const std::function<void()>& yield,
                EntryRemover entries)
        : files_(files), yield_(yield), entries_(entries), path_(root) {}

    void Run() {
        Enter();
        while (!open_.empty()) {
            OpenFolder& folder = open_.back();
            path_.resize(folder.pathLength);
            if (folder.subFolders.empty()) {
                entries_.RemoveFolder(path_, folder.emptiedByUs);
                open_.pop_back();
                if (!open_.empty()) open_.back().emptiedByUs = true;
                Yield();
            } else {
                path_ += L'\\' + folder.subFolders.back();
                folder.subFolders.pop_back();
                Enter();
            }
        }
    }

  private:
    // Lists the folder at path_ and deletes what is no folder. The listing ends before the first
    // entry goes, since a listing need not be true while entries vanish under it.
    void Enter() {
        OpenFolder folder{path_.size(), {}};
        std::vector<std::wstring> files;
        std::vector<std::wstring> links;
        files_.List(path_, [&](const FolderEntry& entry) {
            auto& kind = !entry.isFolder ? files : entry.isLink ? links : folder.subFolders;
            kind.emplace_back(entry.name);
        });
        for (const std::wstring& name : files) {
            entries_.RemoveFile(path_ + L'\\' + name);
            folder.emptiedByUs = true;
            Yield();
        }
        for (const std::wstring& name : links) {
            entries_.RemoveFolder(path_ + L'\\' + name, false);
            folder.emptiedByUs = true;
            Yield();
        }
        open_.push_back(std::move(folder));
    }

    void Yield() const {
        if (yield_) yield_();
    }

    FileSystem& files_;
    const std::function<void()>& yield_;
    EntryRemover entries_;
    std::wstring path_;
    std::vector<OpenFolder> open_;
};

}  // namespace

bool IsRoot(FileSystem& files, std::wstring_view path) {
    const std::wstring full = TidyPath(files, path);
    return full.size() <= RootLength(full);
}

void DeleteTree(FileSystem& files, std::wstring_view path, const std::function<void()>& yield,
                Patience* patience) {
    const std::optional<FileInfo> facts = files.Stat(path);
    if (!facts) return;
    const std::wstring top = TidyPath(files, path);
    // A path that came out wrong must never empty a whole drive.
    if (IsRoot(files, top)) Throw(error_number::kPermissionDenied, top);
    if (facts->isFolder && !facts->isLink) {
        TreeRemover(files, top, yield, EntryRemover(files, patience)).Run();
    } else {
        EntryRemover entries(files, patience);
        if (facts->isFolder) {
            entries.RemoveFolder(top, false);
        } else {
            entries.RemoveFile(top);
        }
        if (yield) yield();
    }
    // The system can report success for something that it did not delete.
    if (files.Stat(top)) Throw(error_number::kPermissionDenied, top);
}

void RemoveEmptyFolders(FileSystem& files, std::wstring folder, std::wstring_view top) {
    try {
        for (; folder.size() > top.size(); folder = MFileDosShell::CFileLocation(folder)) {
            files.RemoveFolder(folder);
        }
    } catch (const RuntimeError&) {
        // It holds something else, most often the comment of copy 1.
    }
}

void CreateFolders(FileSystem& files, std::wstring_view path) {
    const std::wstring full = TidyPath(files, path);
    const std::size_t rootLength = RootLength(full);
    // Lengths of the paths that have to be made, the deepest first.
    std::vector<std::size_t> missing;
    std::wstring_view current = full;
    while (current.size() > rootLength) {
        const std::optional<FileInfo> facts = files.Stat(current);
        if (facts && facts->isFolder) break;
        missing.push_back(current.size());
        current = current.substr(0, current.rfind(L'\\'));
    }
    const std::wstring_view root = std::wstring_view(full).substr(0, rootLength);
    if (current.size() <= rootLength && !files.Stat(root)) {
        Throw(error_number::kPathNotFound, root);
    }
    for (; !missing.empty(); missing.pop_back()) {
        CreateOneFolder(files, std::wstring_view(full).substr(0, missing.back()));
    }
}

}  // namespace vw
