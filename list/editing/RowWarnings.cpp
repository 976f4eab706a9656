#include "list/editing/RowWarnings.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "engine/CopyName.h"
#include "engine/ItemChecks.h"
#include "fsutil/PathText.h"
#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "platform/Wildcards.h"

namespace vw {

namespace {

// Clocks of servers differ a little.
constexpr std::chrono::minutes kTolerated{5};

// The "\*" of a rule is no part of the folder whose files it means.
std::wstring_view ItemPath(std::wstring_view line) {
    if (line.ends_with(L"\\*")) line.remove_suffix(2);
    return line;
}

std::wstring CopyOf(std::wstring_view path, std::wstring_view destination) {
    std::wstring copy = CFilePackageName(path, 1, 0, destination);
    while (copy.ends_with(L'\\')) copy.pop_back();
    return copy;
}

RowWarning WarningOf(const RowFacts& row, std::wstring_view destination, Date now) {
    const std::wstring_view line = row.path;
    if (line.starts_with(L'"') || line.find(L',') != std::wstring_view::npos) {
        return RowWarning::ReadAsTwo;
    }
    const std::wstring_view path = ItemPath(line);
    if (MatchesWildcard(path, L"?:") || MatchesWildcard(path, L"?:\\"))
        return RowWarning::DriveRoot;
    if (OverlapsDestination(path, destination)) return RowWarning::Overlaps;
    if (HasImpossibleName(CopyOf(path, destination))) return RowWarning::ImpossibleName;
    if (ItemKindOf(line) == ItemKind::File &&
        MFileDosShell::CFileLocation(path).find(L'\'') != std::wstring::npos) {
        return RowWarning::ApostropheFolder;
    }
    if (row.newest && IsInFuture(*row.newest, now)) return RowWarning::FutureDate;
    return RowWarning::None;
}

// A quoted item may hold commas.
std::vector<std::wstring> LinesWithCommas(std::wstring_view text) {
    std::vector<std::wstring> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        const std::wstring_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.find(L',') != std::wstring_view::npos &&
            line.find(L'"') == std::wstring_view::npos)
            lines.emplace_back(line);
    }
    return lines;
}

}  // namespace

std::vector<RowWarning> WarningsOf(const std::vector<RowFacts>& rows, std::wstring_view destination,
                                   Date now) {
    std::vector<RowWarning> warnings;
    warnings.reserve(rows.size());
    for (const RowFacts& row : rows) {
        try {
            warnings.push_back(WarningOf(row, destination, now));
        } catch (const RuntimeError&) {
            // A path that cannot even be completed is refused at its turn.
            warnings.push_back(RowWarning::ImpossibleName);
        }
    }
    // Files of one name have location numbers of their own, folders and rules have not.
    std::unordered_multimap<std::wstring, std::size_t> series;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const bool numbered = ItemKindOf(rows[row].path) == ItemKind::File;
        const bool isRefused =
            warnings[row] != RowWarning::None && warnings[row] < RowWarning::SharedSeries;
        if (numbered || isRefused) continue;
        series.emplace(UpperCase(CopyOf(ItemPath(rows[row].path), destination)), row);
    }
    for (const auto& [copy, row] : series) {
        if (series.count(copy) > 1) warnings[row] = RowWarning::SharedSeries;
    }
    return warnings;
}

bool IsInFuture(Date newest, Date now) noexcept { return newest > now + kTolerated; }

std::vector<ItemWarning> WarningsOfList(std::wstring_view text, std::wstring_view destination,
                                        const std::function<bool(const std::wstring&)>& exists) {
    std::vector<ItemWarning> found;
    std::vector<RowFacts> rows;  // of one destination
    std::wstring place(destination);
    const auto endDestination = [&] {
        const std::vector<RowWarning> warnings = WarningsOf(rows, place, kNoDate);
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (warnings[row] != RowWarning::None) found.push_back({rows[row].path, warnings[row]});
        }
        rows.clear();
    };
    for (const std::wstring& line : LinesWithCommas(text)) {
        if (exists(line)) found.push_back({line, RowWarning::ReadAsTwo});
    }
    FieldReader fields(text);
    while (!fields.AtEnd()) {
        ListLine line = ReadListLine(fields.Next());
        if (line.kind == ListLineKind::Destination) {
            endDestination();
            place = std::move(line.value);
        } else if (line.kind == ListLineKind::Item) {
            rows.push_back({std::move(line.value), std::nullopt});
        }
    }
    endDestination();
    return found;
}

namespace {

Texts TextOf(RowWarning warning) {
    switch (warning) {
        case RowWarning::ReadAsTwo:
            return {
                L"The path holds a comma or a quotation mark: the list reads it as "
                L"several items and does not back it up. Rename it, or add the folder "
                L"that holds it.",
                L"في المسار فاصلة أو علامة اقتباس، فيُقرأ في القائمة على أنه أكثر من "
                L"عنصر ولا يُنسخ. أعد تسميته أو أضف المجلد الذي يحويه."};
        case RowWarning::DriveRoot:
            return {L"A whole drive is not backed up. Add the folders on it instead.",
                    L"لا يُنسخ محرك أقراص كامل. أضف المجلدات الموجودة عليه."};
        case RowWarning::Overlaps:
            return {
                L"Not backed up: it contains the folder of the copies, lies in it, or "
                L"its path begins with the same letters. Choose another drive for the "
                L"copies.",
                L"لن يُنسخ، لأنه يحوي مجلد النسخ أو يقع فيه أو يبدأ مساره بالأحرف "
                L"نفسها. اختر محرك أقراص آخر للنسخ."};
        case RowWarning::ImpossibleName:
            return {
                L"No drive takes the name of its copy. Give it a shorter or simpler "
                L"name.",
                L"لا يقبل أي محرك أقراص اسم نسخته. اختر له اسماً أقصر أو أبسط."};
        case RowWarning::SharedSeries:
            return {
                L"The list has another folder of this name, or a folder and its files: "
                L"they share their copies and replace those of each other. Rename one, "
                L"or take it off the list.",
                L"في القائمة مجلد آخر بالاسم نفسه، أو مجلد وقاعدة لملفاته، فتحلّ نسخ "
                L"أحدهما محل نسخ الآخر. أعد تسمية أحدهما أو أزله من القائمة."};
        case RowWarning::ApostropheFolder:
            return {
                L"The path of its folder holds an apostrophe: it is copied at every run, "
                L"each time as if it were new. Add the folder instead.",
                L"في مسار مجلده فاصلة عليا، فيُنسخ في كل مرة إلى سلسلة نسخ جديدة. أضف "
                L"المجلد بدلاً منه."};
        case RowWarning::FutureDate:
            return {
                L"Its newest date lies in the future, so later changes may go "
                L"unnoticed. Correct the date.",
                L"تاريخ أحدث ملف فيه في المستقبل، فقد لا تُلاحظ التغييرات التالية. صحّح "
                L"التاريخ."};
        default:
            return {};
    }
}

}  // namespace

std::wstring_view WarningText(RowWarning warning, Language language) {
    return TextOf(warning).In(language);
}

}  // namespace vw
