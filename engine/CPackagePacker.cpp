#include "engine/CPackage.h"
#include "engine/PackerBatch.h"
#include "platform/AnsiCodec.h"

namespace vw {

void CPackage::PackageBat_(std::wstring_view archive, std::wstring_view files,
                           std::wstring_view workingFolder, bool continued, bool finished,
                           const std::function<void(std::wstring_view)>& shellPath) {
    trap_(L"PackageBat_", [&] {
        const std::wstring& folder = state_.applicationFolder;
        const PackerFiles own = PackerFilesIn(folder);
        FileSystem& disk = system_.files;
        std::string batch;
        if (!continued) {
            if (disk.Stat(own.cancelMarker)) disk.RemoveFile(own.cancelMarker);
            batch = system_.ansi.Encode(PackerBatchStart(folder));
        } else {
            // A step is appended also to a batch file that somebody has removed meanwhile.
            if (disk.Stat(own.batch)) batch = disk.Read(own.batch);
            batch += system_.ansi.Encode(
                finished ? PackerBatchEnd()
                         : PackerBatchStep(folder, archive, files, workingFolder));
        }
        disk.Write(own.batch, batch, FileSystem::Flush::No);
        if (continued && finished) shellPath(own.batch);
    });
}

}  // namespace vw
