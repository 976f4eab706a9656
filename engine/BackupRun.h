#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"
#include "engine/ItemBackup.h"
#include "engine/LocationNumbers.h"
#include "list/format/ListLine.h"
#include "platform/FileSystem.h"

namespace vw {

/// A backup run: walks the list, one item after another.
class BackupRun final : private EnginePart {
  public:
    BackupRun(const EngineContext& context, DestinationSession& session, LocationNumbers& numbers,
              ItemBackup& item);

    /// Backs up every item of the current list that changed since its newest copy.
    void BackUpList();

    /// Backs up one item, as a file.
    void BackUpFile(std::wstring_view path);

    /// Backs up one item with a known location number; see ItemBackup::BackUp. Errors are reported.
    void BackUpPath(std::wstring_view givenPath, std::int16_t location, ItemKind kind,
                    std::wstring_view givenCopy);

    /// The location number of an item; -1 after an error, which has been reported. For `isThere`
    /// see LocationNumbers::Find.
    [[nodiscard]] std::int16_t LocationOf(std::wstring_view path, bool isThere = false);

    /// The text of the current list. A missing list is made empty.
    [[nodiscard]] std::wstring ReadCurrentList();

  private:
    void StartRun();
    void ReadItems(std::wstring_view text);
    void BackUpUnderLock(std::wstring_view path, ItemKind kind);
    [[nodiscard]] std::optional<FileInfo> TryStat(std::wstring_view path);

    DestinationSession& session_;
    LocationNumbers& numbers_;
    ItemBackup& item_;
};

}  // namespace vw
