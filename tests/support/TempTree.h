#pragma once

#include <map>
#include <ostream>
#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/Handle.h"

namespace vw::test {

/// What is at one path of a tree.
struct TreeNode {
    bool isFolder = false;
    std::string bytes;
    Date date = kNoDate;  ///< of a file, local; kNoDate for a folder, whose date nobody keeps
    /// Of a file, as the system reports them; false for a folder, whose attributes nobody keeps.
    bool isReadOnly = false;
    bool isHidden = false;

    friend bool operator==(const TreeNode&, const TreeNode&) = default;
};

std::ostream& operator<<(std::ostream& stream, const TreeNode& node);

/// A tree as relative path ("Sub\a.txt") to what is there; two trees are compared with ==.
using Tree = std::map<std::wstring, TreeNode>;

/// Reads a whole tree; links to folders are shown as empty folders. Empty for a missing folder.
[[nodiscard]] Tree ReadTree(std::wstring_view folder);

/// The file's bytes; fails the test when there is no such file.
[[nodiscard]] std::string ReadBytes(std::wstring_view path);

/// The last-write date of a file or folder, local; fails the test when nothing is there.
[[nodiscard]] Date ReadDate(std::wstring_view path);

/// Whether anything is at an absolute path.
[[nodiscard]] bool Exists(std::wstring_view path);

/// Opens a file as a program does that shares it with nobody, for as long as the result lives.
[[nodiscard]] FileHandle OpenAlone(const std::wstring& path);

/// A fresh folder for one test, below the system's temporary folder, removed at the end with all
/// that is in it. It has its own calls to the system, not those under test. Relative paths are
/// taken below the folder; an absolute path may be given too, and paths of any length work.
class TempTree {
  public:
    TempTree();
    TempTree(const TempTree&) = delete;
    TempTree& operator=(const TempTree&) = delete;
    ~TempTree();

    /// The absolute path of the folder (no final "\") or of a path in it.
    [[nodiscard]] std::wstring Path(std::wstring_view relative = {}) const;

    /// Makes a folder and its parents; gives its absolute path.
    std::wstring Folder(std::wstring_view relative) const;

    /// Makes or overwrites a file with these bytes, and its parents; gives its absolute path.
    std::wstring File(std::wstring_view relative, std::string_view bytes = "x") const;

    /// The same with a last-write date.
    std::wstring File(std::wstring_view relative, std::string_view bytes,
                      const DateParts& date) const;

    /// Sets the last-write date of a file or folder, in local time as valid on that day.
    void SetDate(std::wstring_view relative, const DateParts& date) const;

    /// Sets or clears FILE_ATTRIBUTE_... flags of a file or folder, leaving the others.
    void SetAttributes(std::wstring_view relative, unsigned long flags, bool on = true) const;

    /// Makes a link at `relative` that shows the folder or file `target`. False when this system
    /// cannot make one: then the test has to skip.
    [[nodiscard]] bool Link(std::wstring_view relative, std::wstring_view target) const;

    /// Removes what is at a path, with all that is in it; links without what they show.
    void Remove(std::wstring_view relative) const;

  private:
    std::wstring root_;
};

}  // namespace vw::test
