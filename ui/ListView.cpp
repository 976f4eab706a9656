#include "ui/ListView.h"

#include <algorithm>

#include "platform/RuntimeError.h"
#include "ui/Subclass.h"

namespace vw {

ListView::ListView(HWND control, const ControlData& data, Language language)
    : control_(control), data_(data), language_(language) {
    int position = 0;
    for (const ColumnData& column : data.columns) {
        std::wstring header(column.header.In(language));
        LVCOLUMNW info{};
        info.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH | LVCF_SUBITEM;
        info.fmt = EndsAtFarSide(column.kind, language) ? LVCFMT_RIGHT : LVCFMT_LEFT;
        info.cx = column.width;
        info.iSubItem = position;
        info.pszText = header.data();
        SendMessageW(control_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(position),
                     reinterpret_cast<LPARAM>(&info));
        ++position;
    }
    // Some systems show the buffer of a mirrored list as in a looking-glass.
    const LPARAM buffer = language == Language::Arabic ? 0 : LVS_EX_DOUBLEBUFFER;
    SendMessageW(control_, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | buffer);
    // The control asks for the warning sign as well.
    SendMessageW(control_, LVM_SETCALLBACKMASK, LVIS_OVERLAYMASK, 0);
    Subclass(control_, OnControlMessage, this);
}

ListView::~ListView() {
    if (control_ != nullptr) Unsubclass(control_);
}

int ListView::Count() const noexcept { return static_cast<int>(rows_.size()); }

ListView::Row* ListView::RowAt(int row) const noexcept {
    return row < 0 || row >= Count() ? nullptr : rows_[static_cast<std::size_t>(row)].get();
}

int ListView::Add(std::wstring_view text, RowIcon icon) {
    auto added = std::make_unique<Row>();
    added->icon = icon;
    added->cells.resize(data_.columns.size());
    added->cells.front().text = text;
    rows_.push_back(std::move(added));
    if (!isPaused_) ShowCount();
    return Count() - 1;
}

// A message for each row would take longer than all else that the row needs.
void ListView::ShowCount() {
    if (shownCount_ == Count()) return;
    // The first row takes the place of the text about the empty list, and the other way round.
    if (shownCount_ == 0 || rows_.empty()) InvalidateRect(control_, nullptr, TRUE);
    shownCount_ = Count();
    SendMessageW(control_, LVM_SETITEMCOUNT, static_cast<WPARAM>(shownCount_),
                 LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
}

// The control may ask for a row as long as it has its number, and others may ask the control: the
// number goes first. The message moves the marks of selection and focus up with their rows; whether
// it counts the row down depends on the system.
void ListView::Remove(int row) {
    if (RowAt(row) == nullptr) return;
    ShowCount();
    SendMessageW(control_, LVM_DELETEITEM, static_cast<WPARAM>(row), 0);
    rows_.erase(rows_.begin() + row);
    ShowCount();
    InvalidateRect(control_, nullptr, TRUE);
    SpeakWarnings();
}

void ListView::Clear() {
    // What screen readers say belongs to positions, which the next rows have too.
    ShowWarnings({});
    SendMessageW(control_, LVM_DELETEALLITEMS, 0, 0);
    rows_.clear();
    ShowCount();
}

int ListView::ColumnOf(std::wstring_view key) const {
    const auto column = std::find_if(data_.columns.begin(), data_.columns.end(),
                                     [&](const ColumnData& data) { return data.key == key; });
    if (column == data_.columns.end()) Throw(error_number::kInvalidCall, key);
    return static_cast<int>(column - data_.columns.begin());
}

std::wstring_view ListView::KeyOf(int column) const noexcept {
    const auto position = static_cast<std::size_t>(column);
    return position < data_.columns.size() ? data_.columns[position].key : std::wstring_view();
}

std::wstring ListView::SubItem(int row, std::wstring_view key) const {
    const auto column = static_cast<std::size_t>(ColumnOf(key));
    const Row* found = RowAt(row);
    return found == nullptr ? std::wstring() : found->cells[column].text;
}

void ListView::SetSubItem(int row, std::wstring_view key, std::wstring_view text,
                          std::optional<Value> value) {
    const int column = ColumnOf(key);
    Row* found = RowAt(row);
    if (found == nullptr) Throw(error_number::kInvalidCall, key);
    found->cells[static_cast<std::size_t>(column)] = {std::wstring(text), value};
    RepaintRow(row);
}

RowIcon ListView::IconOf(int row) const noexcept {
    const Row* found = RowAt(row);
    return found == nullptr ? RowIcon::File : found->icon;
}

std::size_t ListView::Tag(int row) const noexcept {
    const Row* found = RowAt(row);
    return found == nullptr ? 0 : found->tag;
}

void ListView::SetTag(int row, std::size_t tag) noexcept {
    if (Row* found = RowAt(row)) found->tag = tag;
}

int ListView::Find(std::wstring_view key, std::wstring_view text) const {
    const auto column = static_cast<std::size_t>(ColumnOf(key));
    const auto found = std::ranges::find_if(
        rows_, [&](const auto& row) { return row->cells[column].text == text; });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int ListView::Selected() const noexcept {
    return static_cast<int>(
        SendMessageW(control_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void ListView::Select(int row) {
    ShowCount();
    SetState(-1, 0);
    if (row < 0) return;
    SetState(row, LVIS_SELECTED | LVIS_FOCUSED);
    // Shift and the arrow keys go on from here.
    SendMessageW(control_, LVM_SETSELECTIONMARK, 0, row);
}

// Of one row, or of all when `row` is -1.
void ListView::SetState(int row, UINT state) {
    const bool outer = selecting_;
    selecting_ = true;
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = state;
    SendMessageW(control_, LVM_SETITEMSTATE, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    selecting_ = outer;
}

void ListView::EnsureVisible(int row) {
    ShowCount();
    SendMessageW(control_, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
}

void ListView::SetRedraw(bool on) {
    isPaused_ = !on;
    SendMessageW(control_, WM_SETREDRAW, on ? TRUE : FALSE, 0);
    if (!on) return;
    ShowCount();
    FitColumns();
    InvalidateRect(control_, nullptr, TRUE);
}

void ListView::Sort(std::wstring_view key, bool ascending, const Compare& compare) {
    const int column = ColumnOf(key);
    const auto position = static_cast<std::size_t>(column);
    const auto marked = [this](UINT mark) {
        return RowAt(static_cast<int>(
            SendMessageW(control_, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), mark)));
    };
    const Row* const selected = marked(LVNI_SELECTED);
    const Row* const focused = marked(LVNI_FOCUSED);
    std::ranges::stable_sort(rows_, [&](const auto& first, const auto& second) {
        const Cell& left = (ascending ? first : second)->cells[position];
        const Cell& right = (ascending ? second : first)->cells[position];
        if (left.value && right.value) return *left.value < *right.value;
        return compare(left.text, right.text) < 0;
    });
    // The control keeps its marks by position.
    if (selected != nullptr || focused != nullptr) {
        SetState(-1, 0);
        for (int row = 0; row < Count(); ++row) {
            const UINT state = (RowAt(row) == selected ? LVIS_SELECTED : 0U) |
                               (RowAt(row) == focused ? LVIS_FOCUSED : 0U);
            if (state != 0) SetState(row, state);
        }
    }
    InvalidateRect(control_, nullptr, TRUE);
    SpeakWarnings();
    MarkSortColumn(column, ascending);
}

}  // namespace vw
