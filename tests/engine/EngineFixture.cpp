#include "tests/engine/EngineFixture.h"

#include <gtest/gtest.h>

#include "platform/DateText.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/Utf8.h"
#include "platform/WindowsHeader.h"
// Behind the one above, whose types it needs.
#include <winioctl.h>

namespace vw::test {

namespace {

bool IsComment(std::wstring_view path) { return path.ends_with(kCommentExtension); }

std::wstring Truth(bool value) { return value ? L"true" : L"false"; }

std::wstring Replaced(std::wstring text, std::wstring_view from, std::wstring_view to) {
    for (std::size_t at = text.find(from); at != std::wstring::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

FileHandle Open(const std::wstring& path, DWORD shared) {
    FileHandle handle(CreateFileW((L"\\\\?\\" + path).c_str(), GENERIC_READ, shared, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!handle) ADD_FAILURE() << "could not hold open " << ToUtf8(path);
    return handle;
}

}  // namespace

Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

RecordingHost::RecordingHost(std::wstring root, ErrorSink& errors, const ExitStatus& exitStatus)
    : root_(std::move(root)), errors_(errors), exitStatus_(exitStatus) {}

void RecordingHost::Msg(std::wstring_view title, std::wstring_view message) {
    messages.push_back({std::wstring(title), std::wstring(message)});
    log.push_back(Short(L"* " + std::wstring(title) + L" " + std::wstring(message)));
}

void RecordingHost::Report(std::wstring_view text, bool wait) {
    log.push_back(Short((wait ? L"> " : L"") + std::wstring(text)));
}

void RecordingHost::BusyHide(bool pause) { log.push_back(L"[BusyHide " + Truth(pause) + L"]"); }

void RecordingHost::Ready(bool flag) { log.push_back(L"[Ready " + Truth(flag) + L"]"); }

void RecordingHost::OnItem(ItemEvent event, std::wstring_view path, const ItemSize& size) {
    static constexpr const wchar_t* kNames[] = {L"started ",   L"missing ", L"refused ",
                                                L"unchanged ", L"copying ", L"copied "};
    std::wstring line = kNames[static_cast<int>(event)] + std::wstring(path);
    if (event == ItemEvent::Copying) {
        line += L" " + std::to_wstring(size.files) + L" files " + std::to_wstring(size.bytes) +
                L" bytes";
    }
    events.push_back(Short(line));
}

void RecordingHost::OnItemStats(std::wstring_view path, std::uint64_t bytes, Date newest) {
    totals.push_back(Short(path) + L" " + std::to_wstring(bytes) + L" bytes " + DateText(newest));
}

void RecordingHost::OnFileCopied(std::uint64_t bytes) {
    events.push_back(L"file " + std::to_wstring(bytes));
}

void RecordingHost::EndAtOnce() {
    log.push_back(L"[EndAtOnce]");
    throw ProgramEnded{exitStatus_.Code()};
}

void RecordingHost::Report(const Procedure& where, const RuntimeError& error) {
    errors_.Report(where, error);
    std::wstring line = L"! " + std::to_wstring(error.Number()) + L" ";
    line.append(where.name).append(L" ").append(error.Path());
    log.push_back(Short(line));
}

std::wstring RecordingHost::Short(std::wstring_view text) const {
    return Replaced(std::wstring(text), root_, L"~");
}

std::uint64_t DriveDouble::FreeSpace(std::wstring_view folder) {
    asked.emplace_back(folder);
    const auto found = freeBytes.find(std::wstring(folder));
    return found == freeBytes.end() ? Inner().FreeSpace(folder) : found->second;
}

DriveType DriveDouble::DriveTypeOf(std::wstring_view path) {
    return kind ? *kind : Inner().DriveTypeOf(path);
}

std::optional<FileInfo> DriveDouble::Stat(std::wstring_view path) {
    auto facts = Inner().Stat(path);
    if (facts) Mark(path.substr(path.find_last_of(L'\\') + 1), *facts);
    return facts;
}

void DriveDouble::List(std::wstring_view folder, const EntryVisitor& visitor) {
    if (shownEmpty.contains(std::wstring(folder))) return;
    Inner().List(folder, [&](const FolderEntry& entry) {
        FolderEntry marked = entry;
        Mark(entry.name, marked);
        visitor(marked);
    });
}

void DriveDouble::Copy(std::wstring_view from, std::wstring_view to, const CopyProgress& progress) {
    if (copyCode != 0) RaiseCode(copyCode, from);
    Inner().Copy(from, to, progress);
}

void DriveDouble::Mark(std::wstring_view name, FileInfo& facts) const {
    const auto mark = marks.find(std::wstring(name));
    if (mark != marks.end()) mark->second(facts);
}

void DriveDouble::Rename(std::wstring_view from, std::wstring_view to) {
    if (held.contains(std::wstring(from))) Throw(error_number::kPermissionDenied, from);
    Inner().Rename(from, to);
}

EngineFixture::EngineFixture()
    : host(tree.Path(), errors, exitStatus), system{drive,      pump,       boxes, host,
                                                    exitStatus, programEnd, clock, ansi} {
    tree.Folder(L"Store");
    state.applicationFolder = tree.Folder(L"App");
    state.currentListPath = Path(L"App\\List.vwl");
    state.BackupTo = state.defaultDestination = Store();
}

std::wstring EngineFixture::Store(std::wstring_view name) const {
    return Path(L"Store") + (name.empty() ? L"" : L"\\" + std::wstring(name));
}

void EngineFixture::List(const Lines& items, int copies) const {
    std::wstring text =
        L"BackupTo: " + Store() + L"\r\nBackages: " + std::to_wstring(copies) + L"\r\n";
    for (const std::wstring& item : items) {
        text += (item.find(L':') == std::wstring::npos ? Path(item) : item) + L"\r\n";
    }
    ListText(text);
}

void EngineFixture::ListText(std::wstring_view text) const {
    tree.File(L"App\\List.vwl", ansi.Encode(Replaced(std::wstring(text), L"~", tree.Path())));
}

RunResult EngineFixture::Run() {
    return With([](CPackage& engine) { engine.BackupAll(); });
}

RunResult EngineFixture::With(const std::function<void(CPackage&)>& work) {
    host.log.clear();
    host.messages.clear();
    exitStatus = ExitStatus();
    RunResult result;
    {
        CPackage engine(system, state, host, host);
        try {
            work(engine);
        } catch (const ProgramEnded&) {
            result.ended = true;
        } catch (const Died&) {
            result.died = true;
        }
    }
    result.lines = host.log;
    result.errors = errors.Take();
    result.exitCode = exitStatus.Code();
    return result;
}

void EngineFixture::ExpectRun(const Lines& expected) {
    const RunResult result = Run();
    EXPECT_EQ(Joined(result.lines), Joined(expected + kDone));
    bool anyError = false;
    for (const std::wstring& line : expected) anyError = anyError || line.starts_with(L"! ");
    EXPECT_EQ(!result.errors.empty(), anyError);
}

Listing EngineFixture::Copies() const {
    Listing copies;
    for (const auto& [path, node] : ReadTree(Store())) {
        if (!IsComment(path)) copies[path] = node.isFolder ? kFolder : node.bytes;
    }
    return copies;
}

std::set<std::wstring> EngineFixture::Comments() const {
    std::set<std::wstring> names;
    for (const auto& [path, node] : ReadTree(Store())) {
        if (IsComment(path)) names.insert(path);
    }
    return names;
}

std::string EngineFixture::Comment(std::wstring_view copyName) const {
    const std::string bytes = ReadBytes(Store(copyName) + std::wstring(kCommentExtension));
    if (!bytes.ends_with("\r\n")) {
        ADD_FAILURE() << "a comment without its line end: " << bytes;
        return bytes;
    }
    return bytes.substr(0, bytes.size() - 2);
}

Lines BackedUp(const std::wstring& item, const Lines& files) {
    Lines lines{L"Backing: " + item};
    for (const std::wstring& file : files) lines.push_back(L"* Backing: " + file);
    return lines + Lines{L"\tDone."};
}

Lines BackedUp(const std::wstring& item) { return BackedUp(item, {item}); }

Lines NoChange(const std::wstring& item) {
    return {L"No change since last backup for the path:", L"> " + item};
}

Lines Missing(const std::wstring& item) { return {L"تأكد من توفر المجلد التالي", L"> " + item}; }

Lines Refused(const std::wstring& item) {
    return {L"لا يمكن نسخ المسار التالي إلى المجلد المحدد", L"> " + item};
}

DateParts Day(int step) {
    constexpr std::chrono::seconds kGoodMinute{61};
    return PartsOf(MakeDate({2010, 1, 1, 0, 0, 0}) + step * kGoodMinute);
}

FileHandle HoldOpen(const std::wstring& path) { return Open(path, 0); }

FileHandle HoldInPlace(const std::wstring& path) {
    return Open(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
}

void SetPartOfSecond(const std::wstring& file, unsigned ticks) {
    constexpr std::uint64_t kSecond = 10'000'000;
    const FileHandle handle(CreateFileW(file.c_str(), GENERIC_READ | FILE_WRITE_ATTRIBUTES, 0,
                                        nullptr, OPEN_EXISTING, 0, nullptr));
    FILETIME time{};
    if (GetFileTime(handle.Get(), nullptr, nullptr, &time) == 0) {
        ADD_FAILURE() << "could not date " << ToUtf8(file);
    }
    std::uint64_t value =
        (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    value = value / kSecond * kSecond + ticks;
    time = {static_cast<DWORD>(value), static_cast<DWORD>(value >> 32)};
    if (SetFileTime(handle.Get(), nullptr, nullptr, &time) == 0) {
        ADD_FAILURE() << "could not date " << ToUtf8(file);
    }
}

bool MakeLong(const std::wstring& file, std::uint64_t size) {
    const FileHandle handle(
        CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    DWORD count = 0;
    // Where the disk does not know of holes the length itself may still cost nothing.
    DeviceIoControl(handle.Get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &count, nullptr);
    LARGE_INTEGER length{};
    length.QuadPart = static_cast<LONGLONG>(size);
    return SetFilePointerEx(handle.Get(), length, nullptr, FILE_BEGIN) != 0 &&
           SetEndOfFile(handle.Get()) != 0;
}

std::string Joined(const Lines& lines) {
    std::string text;
    for (const std::wstring& line : lines) text += ToUtf8(line) + "\n";
    return text;
}

}  // namespace vw::test
