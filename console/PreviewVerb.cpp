#include <map>
#include <optional>
#include <vector>

#include "console/Console.h"
#include "console/ConsoleList.h"
#include "console/JsonLine.h"
#include "console/SilentHost.h"
#include "console/SizeWords.h"
#include "console/StoredCopies.h"
#include "console/Verbs.h"
#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "list/editing/RowWarnings.h"
#include "platform/FileSystem.h"
#include "platform/LocalTime.h"
#include "platform/RuntimeError.h"

namespace vw {
namespace {

/// The room that a run leaves on a drive besides the copy.
constexpr std::uint64_t kSpareBytes = std::uint64_t{50} * 1024 * 1024;

/// What a run would do with one item.
struct Plan {
    std::string result;
    std::wstring detail;
    int code = 0;           ///< what the run would note for its exit code
    ItemSize size{};        ///< of the new copy
    std::wstring leaves{};  ///< path of the copy that makes room; empty for none
};

class Previewer {
  public:
    Previewer(Console& console, CPackage& engine) : console_(console), engine_(engine) {}

    void Show(const ConsoleItem& item) {
        console_.state.BackupTo = item.destination;
        console_.state.copiesCount = item.copiesCount;
        const Plan plan = PlanFor(item);
        console_.exitStatus.Note(plan.code);
        rows_[item.destination].push_back({item.line, newest_});
        needed_[item.destination] += plan.size.bytes;
        std::wstring line(plan.result.begin(), plan.result.end());
        line += L": " + item.line;
        if (!plan.detail.empty()) line += L" (" + plan.detail + L")";
        console_.output.Line(line);
        console_.output.Json(
            JsonLine("item")
                .Text("path", item.line)
                .Text("result", std::wstring(plan.result.begin(), plan.result.end()))
                .Text("detail", plan.detail)
                .Number("files", static_cast<std::int64_t>(plan.size.files))
                .Number("bytes", static_cast<std::int64_t>(plan.size.bytes))
                .Text("leaves", plan.leaves));
    }

    /// Writes why items will not be backed up the way their owner may think.
    void ShowWarnings(const std::wstring& destination) {
        const std::vector<RowFacts>& rows = rows_[destination];
        const auto warnings = WarningsOf(rows, destination, LocalNow());
        for (std::size_t row = 0; row < rows.size(); ++row) {
            // An item that is refused has been shown as such.
            if (warnings[row] == RowWarning::None || warnings[row] == RowWarning::Overlaps)
                continue;
            const std::wstring text(WarningText(warnings[row], Language::English));
            console_.output.Line(L"warning: " + rows[row].path + L" (" + text + L")");
            console_.output.Json(
                JsonLine("warning").Text("path", rows[row].path).Text("text", text));
        }
    }

    void ShowRoom(const std::wstring& destination) {
        const std::uint64_t needed = needed_[destination];
        const std::uint64_t free = console_.system.files.FreeSpace(destination);
        const bool isEnough = needed == 0 || free >= needed + kSpareBytes;
        if (!isEnough) console_.exitStatus.Note(error_number::kNotEnoughSpace);
        console_.output.Line(std::wstring(isEnough ? L"room: " : L"too little room: ") +
                             destination + L" (" + BytesText(needed) + L" needed, " +
                             BytesText(free) + L" free)");
        console_.output.Json(JsonLine("room")
                                 .Text("path", destination)
                                 .Number("needed", static_cast<std::int64_t>(needed))
                                 .Number("free", static_cast<std::int64_t>(free))
                                 .Bool("enough", isEnough));
    }

  private:
    Plan PlanFor(const ConsoleItem& item) {
        FileSystem& files = console_.system.files;
        newest_.reset();
        const auto facts = files.Stat(item.path);
        if (!facts) {
            return {"missing", L"the item does not exist",
                    item.IsFolder() ? error_number::kPathNotFound : error_number::kFileNotFound};
        }
        if (engine_.IsRefused(item.path)) {
            return {"refused", L"it holds the destination or lies in it",
                    error_number::kAccessError};
        }
        const std::int16_t location = engine_.LocationID(item.line);
        if (location < 0) return {"fails", L"it gets no location number", error_number::kOverflow};
        const auto stats = MFileDosShell::GetItemStats(console_.system, engine_, item.path, facts);
        newest_ = stats.newest;
        const auto copyName = [&](int number) {
            return CFilePackageName(item.path, number, location, item.destination);
        };
        const std::wstring first = copyName(1);
        if (files.Stat(first) && stats.HasDate(engine_.PackageDate(first))) {
            const auto comment = CommentOf(console_, first);
            if (!comment || !comment->isIncomplete) return {"unchanged", L""};
            return {"incomplete", L"copy 1 is completed"};
        }
        if (item.copiesCount <= 0) {
            return {"fails", DescriptionOf(error_number::kZeroCopyNumber),
                    error_number::kZeroCopyNumber};
        }
        if (facts->isFolder != item.IsFolder()) {
            return {"fails",
                    facts->isFolder ? L"it is a folder: a folder's line ends with \"\\\""
                                    : L"it is no folder",
                    facts->isFolder ? error_number::kFileNotFound : error_number::kPathNotFound};
        }
        Plan plan{.result = "new copy", .detail = L""};
        plan.size = item.kind == ItemKind::Folder
                        ? ItemSize{stats.treeFiles, stats.treeBytes}
                        : ItemSize{stats.files, static_cast<std::uint64_t>(stats.bytes)};
        plan.detail = FilesAndBytesText(plan.size.files, plan.size.bytes);
        if (files.Stat(copyName(item.copiesCount))) {
            plan.leaves = copyName(item.copiesCount);
            plan.detail += L"; leaves: " + plan.leaves;
        }
        return plan;
    }

    Console& console_;
    CPackage& engine_;
    std::map<std::wstring, std::uint64_t> needed_;
    std::map<std::wstring, std::vector<RowFacts>> rows_;
    std::optional<Date> newest_;  ///< of the item that is being planned
};

}  // namespace

int Preview(Console& console, const PreviewArguments& arguments) {
    const ConsoleList list = ReadConsoleList(console, arguments.list);
    SilentHost host(console);
    ConsoleProgram program;
    CPackage engine(console.system, console.state, host, program);
    Previewer previewer(console, engine);
    for (const ConsoleItem& item : list.items) {
        Console::StopIfRequested();
        console.Try([&] {
            const auto destination = console.system.files.Stat(item.destination);
            // A run ends here.
            if (destination && destination->isFolder) previewer.Show(item);
        });
    }
    for (const std::wstring& destination : list.destinations) {
        console.Try([&] {
            const auto facts = console.system.files.Stat(destination);
            if (!facts || !facts->isFolder) {
                ThrowWith(error_number::kPathNotFound, L"The destination folder does not exist",
                          destination);
            }
            previewer.ShowWarnings(destination);
            previewer.ShowRoom(destination);
        });
    }
    return 0;
}

}  // namespace vw
