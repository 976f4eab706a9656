// Random histories of a user's files: after each backup a check with all its contents is clean.

#include <iostream>
#include <random>

#include "tests/console/VwTest.h"
#include "tests/support/Histories.h"

namespace vw::test {
namespace {

constexpr int kSteps = 3;

class VwHistory : public VwTest {
  protected:
    void Play(unsigned seed) {
        random_.seed(seed);
        date_ = 0;
        Clear();
        const std::vector<Texts> lists{
            {L"a.txt", L"Work\\", L"Other\\a.txt"},
            {L"Work\\*", L"Old.dir\\Inner\\", L"README"},
            {L"Old.dir\\Inner\\", L"a.txt", L"Old.dir\\", L"\u0645\u0644\u0641\\"}};
        const Texts& items = lists[random_() % lists.size()];
        MakeList(items, 1 + static_cast<int>(random_() % 3));
        for (int step = 0; step < kSteps; ++step) {
            for (const std::wstring& item : items) Edit(item);
            RunsTo(0, L"backup --quiet " + List());
            RunsTo(0, L"check --content " + List());
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step;
        }
    }

  private:
    void Clear() const {
        for (const wchar_t* name : {L"a.txt", L"README", L"Work", L"Other", L"Old.dir",
                                    L"\u0645\u0644\u0641", L"Vault"}) {
            tree.Remove(name);
        }
        tree.Folder(L"Vault");
    }

    // Files come, go and change; the last thing is always a file with the newest date of all, so
    // that the change test sees it.
    void Edit(const std::wstring& item) {
        const bool isFile = !item.ends_with(L'\\') && !item.ends_with(L'*');
        const std::wstring folder = item.substr(0, item.find_last_of(L'\\') + 1);
        if (isFile) {
            if (!Exists(tree.Path(item)) || random_() % 2) Write(item);
            return;
        }
        if (Exists(tree.Path(folder)) && random_() % 3 == 0) return;
        for (unsigned i = random_() % 4; i > 0; --i) {
            const std::wstring name = folder + std::to_wstring(random_() % 5);
            if (random_() % 3 == 0) {
                tree.Remove(name);
            } else if (!Exists(tree.Path(name))) {
                random_() % 3 == 0 ? static_cast<void>(tree.Folder(name)) : Write(name);
            }
        }
        Write(folder + L"last" + std::to_wstring(random_() % 3));
    }

    void Write(const std::wstring& name) {
        tree.File(name, std::string(random_() % 5000, static_cast<char>('a' + random_() % 26)),
                  Day(++date_));
    }

    std::mt19937 random_;
    int date_ = 0;
};

TEST_F(VwHistory, AnyHistory_IsCheckedClean) {
    const Histories histories = Histories::Usually(5);
    for (unsigned seed = histories.first; seed < histories.End(); ++seed) {
        Play(seed);
        if (HasFailure()) return;
    }
    std::cout << histories.count << " histories checked clean\n";
}

}  // namespace
}  // namespace vw::test
