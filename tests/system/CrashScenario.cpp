#include "tests/system/CrashScenario.h"

#include "platform/Utf8.h"

namespace vw::test {

namespace {

DateParts DateOfState(int state) { return {2024, 1, state, 12, 0, 0}; }

TreeNode FileOfState(std::wstring_view name, std::size_t size, int state) {
    const std::string line = ToUtf8(name) + ", state " + std::to_string(state) + "\r\n";
    TreeNode node;
    while (node.bytes.size() < size) node.bytes += line;
    node.bytes.resize(size);
    // Small files must differ too.
    node.bytes += std::to_string(state);
    node.date = MakeDate(DateOfState(state));
    return node;
}

}  // namespace

CrashScenario::CrashScenario(std::wstring folder, History history)
    : folder_(std::move(folder)),
      history_(history),
      firstState_(history == History::None ? 1 : kCopies + 1),
      state_(firstState_),
      items_{
          {.line = L"Home\\Letter.txt", .entries = {}, .size = 200'000},
          {.line = L"Home\\Docs\\",
           .entries = {L"a.txt", L"b", L"Empty\\", L"رسالة.txt", L"Sub\\", L"Sub\\c.txt",
                       L"Sub\\Deeper\\", L"Sub\\Deeper\\d.txt"},
           .size = 70'000},
          {.line = L"Home\\Same.txt", .entries = {}, .size = 100, .changes = false},
          {.line = L"Home\\Notes\\*", .entries = {L"n.txt", L"o.txt"}, .size = 500},
          {.line = L"Home\\J.Smith\\README", .entries = {}, .size = 10},
          {.line = L"Home\\J.Smith\\Docs\\",
           .entries = {L"e.txt", L"Sub\\", L"Sub\\f.txt"},
           .size = 40},
          {.line = L"Home\\Data.old\\",
           .entries = {L"g.txt", L"Docs\\", L"Docs\\h.txt"},
           .size = 60},
          {.line = L"Home\\Old\\Letter.txt", .entries = {}, .size = 3'000, .location = 1},
      } {
    if (history != History::Incomplete) return;
    Item& docs = items_[1];
    docs.lacksFiles = true;
    docs.changes = false;
}

void CrashScenario::Prepare() {
    disk_.Remove(folder_);
    state_ = firstState_;
    killedState_ = firstState_;
    disk_.Folder(Vault());
    std::wstring list = L"BackupTo: " + Vault() + L"\r\nBackages: " + std::to_wstring(kCopies);
    for (const Item& item : items_) list += L"\r\n" + folder_ + L"\\" + item.line;
    disk_.File(List(), ToUtf8(list + L"\r\n"));
    // A rule leaves this out.
    disk_.File(folder_ + L"\\Home\\Notes\\Sub\\not.txt", "not in the rule", DateOfState(1));

    for (const Item& item : items_) {
        Write(Source(item), Content(item, NewestState(item)));
        const std::vector<int> before = StatesBefore();
        for (std::size_t i = 0; i < before.size(); ++i) {
            const int number = static_cast<int>(i) + 1;
            Write(Vault() + L"\\" + CopyName(item, number), StoredContent(item, number, before[i]));
        }
        if (!before.empty()) {
            disk_.File(Vault() + L"\\" + CopyName(item, 1) + L".vwc",
                       Comment(item, before.front()) + (item.lacksFiles ? kIncompleteMark : ""));
        }
    }
}

// What the copy of a state held after the earlier runs.
Tree CrashScenario::StoredContent(const Item& item, int number, int state) const {
    Tree content = Content(item, state);
    if (number > 1 || !item.lacksFiles) return content;
    for (const wchar_t* const file : {L"b", L"Sub\\c.txt", L"Sub\\Deeper\\d.txt"}) {
        content.erase(file);
    }
    content.erase(L"Sub\\Deeper");
    return content;
}

void CrashScenario::ChangeSources() {
    ++state_;
    for (const Item& item : items_) Write(Source(item), Content(item, NewestState(item)));
}

bool CrashScenario::IsFolder(const Item& item) { return !item.entries.empty(); }

std::wstring CrashScenario::Source(const Item& item) const {
    std::wstring path = folder_ + L"\\" + item.line;
    while (path.ends_with(L'\\') || path.ends_with(L'*')) path.pop_back();
    return path;
}

// What is at the item's place and below it; "" is the place itself.
Tree CrashScenario::Content(const Item& item, int state) const {
    Tree tree;
    if (!IsFolder(item)) {
        tree[L""] = FileOfState(item.line, item.size, state);
        return tree;
    }
    tree[L""].isFolder = true;
    for (const std::wstring& entry : item.entries) {
        if (entry.ends_with(L'\\')) {
            tree[entry.substr(0, entry.size() - 1)].isFolder = true;
        } else {
            tree[entry] = FileOfState(entry, item.size, state);
        }
    }
    return tree;
}

std::string CrashScenario::Comment(const Item& item, int state) const {
    const std::wstring source = Source(item);
    return "Backed Files Date Last Modified:0" + std::to_string(state) +
           "/01/2024-12:00:00+Original Location:" + ToUtf8(source.substr(0, source.rfind(L'\\'))) +
           "\r\n";
}

std::wstring CrashScenario::CopyName(const Item& item, int number) const {
    const std::wstring source = Source(item);
    const std::wstring name = source.substr(source.rfind(L'\\') + 1);
    // The last dot of the whole path counts, also that of a folder above.
    const std::size_t dot = source.rfind(L'.');
    return name.substr(0, name.rfind(L'.')) + L"«0" + std::to_wstring(item.location) + L"0" +
           std::to_wstring(number) + L"»" +
           (dot == std::wstring::npos ? std::wstring() : source.substr(dot));
}

// Its own states begin with that of copy 1, so that the run finds it unchanged.
int CrashScenario::NewestState(const Item& item) const {
    if (item.changes) return state_;
    return history_ == History::None ? 1 : kCopies;
}

std::vector<int> CrashScenario::StatesBefore() const {
    if (history_ == History::None) return {};
    std::vector<int> states;
    for (int state = kCopies; state >= 1; --state) states.push_back(state);
    return states;
}

int CrashScenario::StateOf(const Item& item, const Tree& content) const {
    for (int state = 1; state <= state_; ++state) {
        if (content == Content(item, state)) return state;
    }
    return 0;
}

void CrashScenario::Write(std::wstring_view path, const Tree& content) const {
    for (const auto& [name, node] : content) {
        const std::wstring place = std::wstring(path) + (name.empty() ? L"" : L"\\" + name);
        if (node.isFolder) {
            disk_.Folder(place);
        } else {
            disk_.File(place, node.bytes, PartsOf(node.date));
        }
    }
}

}  // namespace vw::test
