#pragma once

#include <cstdint>
#include <string>

#include "platform/CancelToken.h"
#include "platform/Language.h"

namespace vw {

/// The program-wide state, in one place; the start procedure fills it and every part gets a
/// reference to it.
struct ProgramState {
    Language language = Language::English;
    bool silentRun = false;     ///< started with "/B", "/S", "/R" or "/D": nothing may wait
    CancelToken cancel;         ///< of the present work
    bool isWorking = false;     ///< long work is going on that ends early when it is cancelled
    bool endRequested = false;  ///< the session or the program ends: no partial copy is kept
    bool sessionEnds = false;   ///< Windows ends the session: no box is shown any more
    bool listModified = false;
    std::wstring applicationFolder;  ///< holds the program; no final "\"
    std::wstring executableBaseName;
    std::wstring currentListPath;
    std::wstring temporaryListPath;
    std::wstring defaultDestination;
    std::wstring BackupTo;  ///< destination of the list in use
    std::int16_t copiesCount = 3;

    [[nodiscard]] bool IsArabic() const noexcept { return language == Language::Arabic; }

    [[nodiscard]] std::wstring DefaultListPath() const {
        return applicationFolder + L"\\FilesList.vwl";
    }
    [[nodiscard]] std::wstring SingleItemListPath() const {
        return applicationFolder + L"\\OneFileList.vwl";
    }
};

}  // namespace vw
