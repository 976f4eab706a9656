#pragma once

#include <string>
#include <string_view>

namespace vw {

/// Files of the external packer, all in the program's own folder.
struct PackerFiles {
    std::wstring cancelMarker;  ///< while it exists every step of the batch is skipped
    std::wstring batch;
    std::wstring report;  ///< what the packer printed
};

[[nodiscard]] PackerFiles PackerFilesIn(std::wstring_view applicationFolder);

/// First lines of a new batch file, each ended by CR LF.
[[nodiscard]] std::wstring PackerBatchStart(std::wstring_view applicationFolder);

/// Lines of one packing step. A working folder on a drive letter is made the current one.
[[nodiscard]] std::wstring PackerBatchStep(std::wstring_view applicationFolder,
                                           std::wstring_view archive, std::wstring_view files,
                                           std::wstring_view workingFolder);

/// The label at the end, which a cancelled batch jumps to.
[[nodiscard]] std::wstring PackerBatchEnd();

}  // namespace vw
