#include "fsutil/NetworkProbe.h"

#include <chrono>
#include <set>
#include <thread>

#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/TextCase.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr std::chrono::milliseconds kStep{10};

// "Z:\" or "\\server\share\", in capital letters; empty for a path that has neither.
std::wstring RootOf(std::wstring_view path) {
    if (path.starts_with(L"\\\\")) {
        const std::size_t share = path.find(L'\\', 2);
        if (share == std::wstring_view::npos) return {};
        return UpperCase(path.substr(0, path.find(L'\\', share + 1))) + L'\\';
    }
    if (path.size() < 2 || path[1] != L':') return {};
    return UpperCase(path.substr(0, 2)) + L'\\';
}

std::shared_future<void> Question(FileSystem& files, const std::wstring& root) {
    std::packaged_task<void()> task([&files, root] {
        try {
            static_cast<void>(files.Stat(root));
        } catch (const RuntimeError&) {
            // A refusal is an answer, too.
        }
    });
    std::shared_future<void> answer = task.get_future().share();
    std::thread(std::move(task)).detach();
    return answer;
}

bool IsOnNetwork(FileSystem& files, const std::wstring& root) {
    try {
        return files.DriveTypeOf(root) == DriveType::Network;
    } catch (const RuntimeError&) {
        return false;
    }
}

bool IsKnown(const std::shared_future<void>& answer) {
    return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

}  // namespace

void NetworkProbe::Ask(const std::vector<std::wstring>& paths) {
    roots_.clear();
    std::set<std::wstring> seen;
    for (const std::wstring& path : paths) {
        const std::wstring root = RootOf(path);
        if (root.empty() || !seen.insert(root).second) continue;
        if (IsOnNetwork(system_.files, root)) {
            roots_.emplace(root, Question(system_.files, root));
        }
    }
    const auto end = std::chrono::steady_clock::now() + kPatience;
    for (const auto& [root, answer] : roots_) {
        while (answer.wait_for(kStep) != std::future_status::ready &&
               std::chrono::steady_clock::now() < end) {
            system_.pump.ProcessMessagesIfDue();
        }
    }
}

bool NetworkProbe::MayAnswer(std::wstring_view path) const {
    if (roots_.empty()) return true;
    const auto root = roots_.find(RootOf(path));
    return root == roots_.end() || IsKnown(root->second);
}

void NetworkProbe::Require(std::wstring_view path) const {
    if (!MayAnswer(path)) RaiseCode(ERROR_SEM_TIMEOUT, path);
}

}  // namespace vw
