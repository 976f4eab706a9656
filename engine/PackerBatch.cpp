#include "engine/PackerBatch.h"

#include "fsutil/PathText.h"
#include "platform/Wildcards.h"

namespace vw {

namespace {

std::wstring Quoted(std::wstring_view text) {
    std::wstring quoted(text);
    return MFileDosShell::Quote(quoted);
}

}  // namespace

PackerFiles PackerFilesIn(std::wstring_view applicationFolder) {
    const std::wstring folder(applicationFolder);
    return {folder + L"\\Cancel.txt", folder + L"\\ToPackage.Bat", folder + L"\\R.txt"};
}

std::wstring PackerBatchStart(std::wstring_view applicationFolder) {
    return L"@echo off\r\nPath " + Quoted(applicationFolder) + L"\r\n";
}

std::wstring PackerBatchStep(std::wstring_view applicationFolder, std::wstring_view archive,
                             std::wstring_view files, std::wstring_view workingFolder) {
    const PackerFiles own = PackerFilesIn(applicationFolder);
    std::wstring lines = L"IF EXIST " + Quoted(own.cancelMarker) + L" GOTO END\r\n";
    if (MatchesWildcard(workingFolder, L"?:\\*")) {
        lines += L"CD " + Quoted(workingFolder) + L"\r\n";
        lines.append(workingFolder.substr(0, 2)).append(L"\r\n");
    }
    return lines + L"Package32 -9 -S " + Quoted(archive) + L" " + Quoted(files) + L" >> " +
           Quoted(own.report) + L"\r\n";
}

std::wstring PackerBatchEnd() { return L":END\r\n"; }

}  // namespace vw
