// Random histories of a user's files and lists, each run checked against a small model of what the
// program guarantees: which copies are under which names, with which contents and dates, what
// their comments say, and what the report says.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "engine/CPackage.h"
#include "platform/ProgramControl.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/BackupModel.h"
#include "tests/support/Histories.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw {
namespace {

using test::BackupModel;
using test::TempTree;
using test::TestEnvironment;
using test::Tree;
using Kind = BackupModel::Kind;

constexpr unsigned kHistories = 200;
constexpr int kSteps = 6;

class ListeningHost final : public ProgressReporter, public ProgramControl {
  public:
    void Msg(std::wstring_view, std::wstring_view message) override {
        messages.emplace_back(message);
    }
    void Report(std::wstring_view text, bool) override { report.emplace_back(text); }
    void BusyHide(bool) override {}
    void Ready(bool) override {}
    void frmUnload() override {}
    [[noreturn]] void EndAtOnce() override { throw test::ProgramEnded{76}; }

    std::vector<std::wstring> report;
    std::vector<std::wstring> messages;
};

struct Slot {
    const wchar_t* path;
    Kind kind;
};

// A folder as comments have it on an Arabic system: letters beyond 7 bits as the two digits of
// their byte, those that the code page lacks as four times "u" and a digit, between apostrophes.
std::string Encoded(const std::wstring& folder) {
    std::string text;
    bool inRun = false;
    for (const wchar_t unit : folder) {
        if ((unit >= 0x80) != inRun) text += '\'';
        inRun = unit >= 0x80;
        char byte = 0;
        BOOL lost = FALSE;
        WideCharToMultiByte(1256, WC_NO_BEST_FIT_CHARS, &unit, 1, &byte, 1, nullptr, &lost);
        char digits[16] = {byte};
        if (inRun && lost == FALSE) {
            std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
        } else if (inRun) {
            std::snprintf(digits, sizeof digits, "u%Xu%Xu%Xu%X", unit >> 12 & 15, unit >> 8 & 15,
                          unit >> 4 & 15, unit & 15);
        }
        text += digits;
    }
    return text;
}

// Items of one user. Names that collide by the rules of naming (a folder and its rule, equal names
// in two folders) are there on purpose.
constexpr Slot kSlots[] = {
    {L"A\\Report.doc", Kind::File},
    {L"B\\Report.doc", Kind::File},
    {L"B\\archive.tar.gz", Kind::File},
    {L"A\\README", Kind::File},
    {L"O'Brien\\list.txt", Kind::File},
    {L"\u0645\u062C\u0644\u062F\\\u0645\u0644\u0641.txt", Kind::File},
    {L"\u4E2D\u6587\\plan.txt", Kind::File},
    {L"A\\100% a\u00ABx\u00BBb #1.txt", Kind::File},
    {L"j.smith\\Note", Kind::File},
    {L"Work\\", Kind::Folder},
    {L"Work\\*", Kind::Rule},
    {L"Work", Kind::File},
    {L"A\\README\\", Kind::Folder},
    {L"A\\Old.Files\\", Kind::Folder},
    {L"k.jones\\Docs\\", Kind::Folder},
    {L"\u0645\u062C\u0644\u062F\\\u0635\u0648\u0631\\", Kind::Folder},
};

class History {
  public:
    explicit History(unsigned seed) : random_(seed) {
        tree_.Folder(L"store");
        for (const Slot& slot : kSlots) {
            MakeParent(slot);
            if (Chance(60)) Change(slot);
        }
    }

    // A few things that happen between two backups, then the backup.
    void Step() {
        for (int i = Number(0, 6); i > 0; --i) Change(AnySlot());
        if (Chance(25)) Rename(AnySlot(), AnySlot());
        if (Chance(30)) count_ = Chance(10) ? Number(-1, 0) : Number(1, 4);
        std::vector<BackupModel::Line> list;
        for (const Slot& slot : kSlots) {
            if (Chance(70)) list.push_back({tree_.Path(L"src") + L"\\" + slot.path, slot.kind});
        }
        std::shuffle(list.begin(), list.end(), random_);
        RunAndCompare(list);
    }

  private:
    const Slot& AnySlot() { return kSlots[Number(0, static_cast<int>(std::size(kSlots)) - 1)]; }
    int Number(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    bool Chance(int percent) { return Number(1, 100) <= percent; }

    static std::wstring Base(const Slot& slot) {
        std::wstring path = std::wstring(L"src\\") + slot.path;
        while (path.ends_with(L'*') || path.ends_with(L'\\')) path.pop_back();
        return path;
    }

    void MakeParent(const Slot& slot) {
        const std::wstring base = Base(slot);
        tree_.Folder(base.substr(0, base.rfind(L'\\')));
    }

    // Dates go back now and then, as when a clock was set or an old file came back.
    DateParts NextDate() {
        if (!Chance(15)) ++seconds_;
        const int back = Chance(10) ? 1 : 0;
        return {2020 - back, 5, 1 + seconds_ / 3600, 8, seconds_ / 60 % 60, seconds_ % 60};
    }

    void Write(const std::wstring& path) {
        tree_.File(path, "content " + std::to_string(++content_), NextDate());
    }

    void Change(const Slot& slot) {
        const std::wstring base = Base(slot);
        const bool there = test::Exists(tree_.Path(base));
        if (there && (slot.kind == Kind::File) != IsFile(base)) {
            // The user makes a folder of what was a file, or a file of a folder, now and then.
            return Chance(10) ? tree_.Remove(base) : void();
        }
        if (slot.kind == Kind::File) {
            if (!there || Chance(50)) return Write(base);
            return Chance(70) ? tree_.SetDate(base, NextDate()) : tree_.Remove(base);
        }
        if (there && Chance(8)) return tree_.Remove(base);
        const std::wstring names[] = {L"\\one.txt", L"\\two", L"\\sub\\three.bin",
                                      L"\\sub\\\u0623\u0631\u0628\u0639\u0629", L"\\Four. x"};
        const std::wstring file = base + names[Number(0, static_cast<int>(std::size(names)) - 1)];
        if (test::Exists(tree_.Path(file)) && Chance(40)) return tree_.Remove(file);
        if (Chance(20)) {
            tree_.Folder(base + L"\\empty " + std::to_wstring(Number(0, 2)));
        } else {
            Write(file);
        }
    }

    [[nodiscard]] bool IsFile(const std::wstring& path) const {
        return (GetFileAttributesW(tree_.Path(path).c_str()) & FILE_ATTRIBUTE_DIRECTORY) == 0;
    }

    // A file gets another name, or takes the name that another one had.
    void Rename(const Slot& from, const Slot& to) {
        const std::wstring source = tree_.Path(Base(from));
        if (from.kind != Kind::File || to.kind != Kind::File || &from == &to) return;
        if (!test::Exists(source) || !IsFile(source)) return;
        if (test::Exists(tree_.Path(Base(to))) && !IsFile(Base(to))) return;
        tree_.File(Base(to), test::ReadBytes(source), PartsOf(test::ReadDate(source)));
        tree_.Remove(source);
    }

    void RunAndCompare(const std::vector<BackupModel::Line>& list) {
        WriteList(list);
        ListeningHost host;
        ProgramState state;
        state.currentListPath = tree_.Path(L"list.vwl");
        CPackage(world_.system, state, host, host).BackupAll();
        const auto expected =
            model_.Run(tree_.Path(L"src"), test::ReadTree(tree_.Path(L"src")), list, count_);
        std::sort(host.messages.begin(), host.messages.end());
        EXPECT_EQ(host.messages, expected.messages);
        EXPECT_EQ(host.report, expected.report);
        std::vector<int> errors;
        for (const auto& error : world_.errors.Take()) errors.push_back(error.number);
        EXPECT_EQ(errors, expected.errors);
        CompareStore();
    }

    void WriteList(const std::vector<BackupModel::Line>& list) {
        std::wstring text = L"BackupTo: " + tree_.Path(L"store") + L"\r\nBackages: " +
                            std::to_wstring(count_) + L"\r\n";
        for (const auto& line : list) text += line.path + L"\r\n";
        std::string bytes = "\xEF\xBB\xBF";
        bytes += CodePage(CP_UTF8).Encode(text);
        tree_.File(L"list.vwl", bytes);
    }

    void CompareStore() {
        const Tree store = test::ReadTree(tree_.Path(L"store"));
        Tree expected;
        for (const auto& [name, copy] : model_.copies) {
            AddParents(name, expected);
            if (copy.isFile) {
                expected[name] = copy.content.at(L"");
                continue;
            }
            expected[name].isFolder = true;
            for (const auto& [path, node] : copy.content) {
                expected[std::wstring(name).append(L"\\").append(path)] = node;
            }
        }
        for (const auto& [name, comment] : model_.comments) AddParents(name, expected);
        std::set<std::wstring> comments;
        Tree copies;
        for (const auto& [path, node] : store) {
            if (!node.isFolder && path.ends_with(L".vwc")) {
                comments.insert(path);
            } else {
                copies[path] = node;
            }
        }
        EXPECT_EQ(copies, expected);
        CompareComments(comments);
    }

    static void AddParents(const std::wstring& name, Tree& expected) {
        for (std::size_t at = name.find(L'\\'); at != std::wstring::npos;
             at = name.find(L'\\', at + 1)) {
            expected[name.substr(0, at)].isFolder = true;
        }
    }

    void CompareComments(const std::set<std::wstring>& found) {
        std::set<std::wstring> expected;
        for (const auto& [name, comment] : model_.comments) {
            expected.insert(name + L".vwc");
            const DateParts date = PartsOf(comment.date);
            char text[40];
            std::snprintf(text, sizeof text, "%02d/%02d/%04d-%02d:%02d:%02d", date.day, date.month,
                          date.year, date.hour, date.minute, date.second);
            const std::string line = test::ReadBytes(tree_.Path(L"store") + L"\\" + name + L".vwc");
            EXPECT_EQ(line, "Backed Files Date Last Modified:" + std::string(text) +
                                "+Original Location:" + Encoded(comment.location) + "\r\n");
        }
        EXPECT_EQ(found, expected);
    }

    std::mt19937 random_;
    TempTree tree_;
    TestEnvironment world_;
    BackupModel model_;
    int count_ = 3;
    int seconds_ = 0;
    int content_ = 0;
};

TEST(ModelTest, RandomHistories_CopiesEqualTheModel) {
    const auto histories = test::Histories::Usually(kHistories);
    unsigned steps = 0;
    for (unsigned seed = histories.first; seed != histories.End() && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        History history(seed);
        for (int step = 1; step <= kSteps && !HasFailure(); ++step, ++steps) {
            SCOPED_TRACE("step " + std::to_string(step));
            history.Step();
        }
    }
    std::cout << steps << " runs compared with the model\n";
    RecordProperty("runs", static_cast<int>(steps));
    EXPECT_TRUE(HasFailure() || steps == histories.count * kSteps);
}

}  // namespace
}  // namespace vw
