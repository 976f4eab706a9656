#pragma once

#include <algorithm>

#include "tests/support/ForwardingFileSystem.h"

namespace vw::test {

/// A drive with one chain of folders, "X:\d\d\d...", deeper than any real disk of a test machine
/// takes, with one file "f" of one byte in each. Deleting works as on a disk: from the deepest up.
class EndlessFolders : public ForwardingFileSystem {
  public:
    EndlessFolders(FileSystem& inner, int depth, Date date)
        : ForwardingFileSystem(inner), depth_(depth), date_(date) {}

    std::optional<FileInfo> Stat(std::wstring_view path) override {
        FileInfo facts;
        facts.isFolder = true;
        if (LevelOf(path) > depth_) return std::nullopt;
        return facts;
    }
    void List(std::wstring_view folder, const EntryVisitor& visitor) override {
        const int level = LevelOf(folder);
        deepestListed = std::max(deepestListed, level);
        ++listings;
        FolderEntry file;
        file.name = L"f";
        file.size = 1;
        file.lastWrite = date_ + std::chrono::seconds{level};
        visitor(file);
        if (level == depth_) return;
        FolderEntry sub;
        sub.name = L"d";
        sub.isFolder = true;
        visitor(sub);
    }
    void RemoveFile(std::wstring_view) override { ++erasedFiles; }
    void RemoveFolder(std::wstring_view path) override {
        if (LevelOf(path) != depth_) wrongOrder = true;
        --depth_;
    }
    std::wstring FullPath(std::wstring_view path) override { return std::wstring(path); }

    int deepestListed = 0;
    int listings = 0;
    int erasedFiles = 0;
    bool wrongOrder = false;

  private:
    static int LevelOf(std::wstring_view path) {
        return static_cast<int>(std::count(path.begin(), path.end(), L'\\'));
    }

    int depth_;
    Date date_;
};

}  // namespace vw::test
