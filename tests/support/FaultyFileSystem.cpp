#include "tests/support/FaultyFileSystem.h"

#include <algorithm>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/Utf8.h"

namespace vw::test {

const char* NameOf(FileCall call) {
    switch (call) {
        case FileCall::Stat:
            return "Stat";
        case FileCall::List:
            return "List";
        case FileCall::Copy:
            return "Copy";
        case FileCall::CreateFolder:
            return "CreateFolder";
        case FileCall::RemoveFile:
            return "RemoveFile";
        case FileCall::RemoveFolder:
            return "RemoveFolder";
        case FileCall::Rename:
            return "Rename";
        case FileCall::Replace:
            return "Replace";
        case FileCall::Read:
            return "Read";
        case FileCall::Write:
            return "Write";
        case FileCall::CopyFolderInfo:
            return "CopyFolderInfo";
        case FileCall::CopyAccessRights:
            return "CopyAccessRights";
        case FileCall::Hold:
            return "Hold";
        case FileCall::FreeSpace:
            return "FreeSpace";
        case FileCall::DriveTypeOf:
            return "DriveTypeOf";
        case FileCall::Identify:
            return "Identify";
        case FileCall::RealPath:
            return "RealPath";
        case FileCall::HaveSameBytes:
            return "HaveSameBytes";
    }
    return "?";
}

std::string Describe(const FileOperation& operation) {
    std::string text = NameOf(operation.call);
    text += " " + ToUtf8(operation.path);
    if (!operation.to.empty()) text += " -> " + ToUtf8(operation.to);
    return text;
}

OperationFilter AnyOperation() {
    return [](const FileOperation&) { return true; };
}

OperationFilter OnlyCalls(std::initializer_list<FileCall> calls) {
    return [wanted = std::vector<FileCall>(calls)](const FileOperation& operation) {
        return std::find(wanted.begin(), wanted.end(), operation.call) != wanted.end();
    };
}

OperationFilter OnlyChanges() {
    return OnlyCalls({FileCall::Copy, FileCall::CreateFolder, FileCall::RemoveFile,
                      FileCall::RemoveFolder, FileCall::Rename, FileCall::Replace,
                      FileCall::Write});
}

void FaultyFileSystem::FailNth(int n, int errorNumber, OperationFilter filter) {
    Plan(Fault::Fail, n, errorNumber, std::move(filter));
}

void FaultyFileSystem::FailFrom(int n, int errorNumber, OperationFilter filter) {
    Plan(Fault::FailFrom, n, errorNumber, std::move(filter));
}

void FaultyFileSystem::FillDiskFrom(int n) {
    Plan(Fault::FailFrom, n, error_number::kDiskFull,
         OnlyCalls({FileCall::Copy, FileCall::Write, FileCall::CreateFolder}));
}

void FaultyFileSystem::DieAtNth(int n, OperationFilter filter) {
    Plan(Fault::Die, n, 0, std::move(filter));
}

void FaultyFileSystem::IgnoreNth(int n, OperationFilter filter) {
    Plan(Fault::Ignore, n, 0, std::move(filter));
}

void FaultyFileSystem::TruncateNthCopy(int n) {
    Plan(Fault::Truncate, n, 0, OnlyCalls({FileCall::Copy}));
}

void FaultyFileSystem::OnOperation(std::function<void(const FileOperation&)> callback) {
    onOperation_ = std::move(callback);
}

void FaultyFileSystem::Heal() {
    Plan(Fault::None, 0, 0, AnyOperation());
    onOperation_ = nullptr;
}

void FaultyFileSystem::Plan(Fault fault, int n, int errorNumber, OperationFilter filter) {
    fault_ = fault;
    n_ = n;
    errorNumber_ = errorNumber;
    filter_ = std::move(filter);
    count_ = 0;
    dead_ = false;
    all_.clear();
    faults_.clear();
}

void FaultyFileSystem::RefuseAfterDeath() const {
    if (dead_) throw Died();
}

FaultyFileSystem::Act FaultyFileSystem::Before(const FileOperation& operation) {
    RefuseAfterDeath();
    if (onOperation_) onOperation_(operation);
    all_.push_back(operation);
    if (!filter_(operation)) return Act::Forward;
    ++count_;
    const bool hit = fault_ == Fault::FailFrom ? count_ >= n_ : count_ == n_;
    if (fault_ == Fault::None || !hit) return Act::Forward;

    faults_.push_back(operation);
    const bool leavesBytes = operation.call == FileCall::Copy || operation.call == FileCall::Write;
    switch (fault_) {
        case Fault::Die:
            if (leavesBytes) return Act::HalfAndDie;
            dead_ = true;
            throw Died();
        case Fault::Ignore:
            return Act::Skip;
        case Fault::Truncate:
            return Act::Half;
        default:
            break;
    }
    Throw(errorNumber_, operation.path);
}

void FaultyFileSystem::WriteHalf(std::wstring_view path, std::string_view bytes) {
    try {
        Inner().Write(path, bytes.substr(0, bytes.size() / 2), Flush::No);
    } catch (const RuntimeError&) {
        // The target refused the bytes: then nothing is left of them either.
    }
}

std::optional<FileInfo> FaultyFileSystem::Stat(std::wstring_view path) {
    if (Before({FileCall::Stat, std::wstring(path), {}}) == Act::Skip) return std::nullopt;
    return Inner().Stat(path);
}

void FaultyFileSystem::List(std::wstring_view folder, const EntryVisitor& visitor) {
    if (Before({FileCall::List, std::wstring(folder), {}}) == Act::Skip) return;
    Inner().List(folder, visitor);
}

void FaultyFileSystem::Copy(std::wstring_view from, std::wstring_view to,
                            const CopyProgress& progress) {
    const Act act = Before({FileCall::Copy, std::wstring(from), std::wstring(to)});
    if (act == Act::Skip) return;
    if (act == Act::Forward) {
        Inner().Copy(from, to, progress);
        return;
    }
    WriteHalf(to, Inner().Read(from));
    if (act == Act::Half) return;
    dead_ = true;
    throw Died();
}

void FaultyFileSystem::CreateFolder(std::wstring_view path) {
    if (Before({FileCall::CreateFolder, std::wstring(path), {}}) == Act::Skip) return;
    Inner().CreateFolder(path);
}

void FaultyFileSystem::RemoveFile(std::wstring_view path) {
    if (Before({FileCall::RemoveFile, std::wstring(path), {}}) == Act::Skip) return;
    Inner().RemoveFile(path);
}

void FaultyFileSystem::RemoveFolder(std::wstring_view path) {
    if (Before({FileCall::RemoveFolder, std::wstring(path), {}}) == Act::Skip) return;
    Inner().RemoveFolder(path);
}

void FaultyFileSystem::Rename(std::wstring_view from, std::wstring_view to) {
    if (Before({FileCall::Rename, std::wstring(from), std::wstring(to)}) == Act::Skip) return;
    Inner().Rename(from, to);
}

void FaultyFileSystem::Replace(std::wstring_view from, std::wstring_view to) {
    if (Before({FileCall::Replace, std::wstring(from), std::wstring(to)}) == Act::Skip) return;
    Inner().Replace(from, to);
}

std::string FaultyFileSystem::Read(std::wstring_view path) {
    if (Before({FileCall::Read, std::wstring(path), {}}) == Act::Skip) return {};
    return Inner().Read(path);
}

void FaultyFileSystem::Write(std::wstring_view path, std::string_view bytes, Flush flush) {
    const Act act = Before({FileCall::Write, std::wstring(path), {}});
    if (act == Act::Skip) return;
    if (act == Act::Forward) {
        Inner().Write(path, bytes, flush);
        return;
    }
    WriteHalf(path, bytes);
    dead_ = true;
    throw Died();
}

void FaultyFileSystem::CopyFolderInfo(std::wstring_view from, std::wstring_view to, Marks marks) {
    const FileOperation operation{FileCall::CopyFolderInfo, std::wstring(from), std::wstring(to)};
    if (Before(operation) == Act::Skip) return;
    Inner().CopyFolderInfo(from, to, marks);
}

void FaultyFileSystem::CopyAccessRights(std::wstring_view from, std::wstring_view to,
                                        std::string& usual) {
    const FileOperation operation{FileCall::CopyAccessRights, std::wstring(from), std::wstring(to)};
    // It never throws, whatever goes wrong with it.
    try {
        if (Before(operation) == Act::Skip) return;
    } catch (const RuntimeError&) {
        return;
    }
    Inner().CopyAccessRights(from, to, usual);
}

std::unique_ptr<HeldFile> FaultyFileSystem::Hold(std::wstring_view path) {
    if (Before({FileCall::Hold, std::wstring(path), {}}) == Act::Skip) return nullptr;
    return Inner().Hold(path);
}

FolderIdentity FaultyFileSystem::Identify(std::wstring_view folder) {
    if (Before({FileCall::Identify, std::wstring(folder), {}}) == Act::Skip) return {};
    return Inner().Identify(folder);
}

std::wstring FaultyFileSystem::RealPath(std::wstring_view path) {
    if (Before({FileCall::RealPath, std::wstring(path), {}}) == Act::Skip) {
        return std::wstring(path);
    }
    return Inner().RealPath(path);
}

// One that is ignored has compared nothing, so it must not say that the files are equal.
bool FaultyFileSystem::HaveSameBytes(std::wstring_view first, std::wstring_view second,
                                     const CopyProgress& progress) {
    const FileOperation operation{FileCall::HaveSameBytes, std::wstring(first),
                                  std::wstring(second)};
    return Before(operation) != Act::Skip && Inner().HaveSameBytes(first, second, progress);
}

std::uint64_t FaultyFileSystem::FreeSpace(std::wstring_view folder) {
    if (Before({FileCall::FreeSpace, std::wstring(folder), {}}) == Act::Skip) return 0;
    return Inner().FreeSpace(folder);
}

DriveType FaultyFileSystem::DriveTypeOf(std::wstring_view path) {
    if (Before({FileCall::DriveTypeOf, std::wstring(path), {}}) == Act::Skip) {
        return DriveType::Unknown;
    }
    return Inner().DriveTypeOf(path);
}

std::wstring FaultyFileSystem::TempFolder() {
    RefuseAfterDeath();
    return Inner().TempFolder();
}

std::wstring FaultyFileSystem::FullPath(std::wstring_view path) {
    RefuseAfterDeath();
    return Inner().FullPath(path);
}

}  // namespace vw::test
