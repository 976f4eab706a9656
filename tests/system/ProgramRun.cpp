#include "tests/system/ProgramRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "platform/Utf8.h"

namespace vw::test {

namespace {

constexpr DWORD kPoll = 10;

/// The environment of the tests with another folder for temporary files.
std::wstring EnvironmentWith(const std::wstring& temporaryFolder) {
    std::wstring block;
    wchar_t* const own = GetEnvironmentStringsW();
    for (const wchar_t* entry = own; *entry != L'\0';
         entry += std::wstring_view(entry).size() + 1) {
        const std::wstring_view text = entry;
        if (text.starts_with(L"TEMP=") || text.starts_with(L"TMP=")) continue;
        block.append(text).append(1, L'\0');
    }
    FreeEnvironmentStringsW(own);
    block.append(L"TEMP=" + temporaryFolder).append(1, L'\0');
    block.append(L"TMP=" + temporaryFolder).append(2, L'\0');
    return block;
}

bool Seen(const std::vector<Box>& boxes, HWND box) {
    return std::any_of(boxes.begin(), boxes.end(),
                       [box](const Box& seen) { return seen.handle == box; });
}

std::wstring Decode(const std::string& bytes) {
    std::wstring text = FromUtf8(bytes);
    EXPECT_EQ(text.find(L'\uFFFD'), std::wstring::npos) << "output that is no UTF-8: " << bytes;
    return text;
}

}  // namespace

ProgramRun::ProgramRun(const ProgramStart& start) : patience_(start.patience) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    if (start.streams != ProgramStart::Streams::None) {
        Open(output_);
        Open(errors_);
        startup.hStdOutput = output_.write.Get();
        startup.hStdError = errors_.write.Get();
        if (start.streams == ProgramStart::Streams::OnePipe) {
            HANDLE same = nullptr;
            DuplicateHandle(GetCurrentProcess(), output_.write.Get(), GetCurrentProcess(), &same, 0,
                            TRUE, DUPLICATE_SAME_ACCESS);
            errors_.write.Reset(same);
            startup.hStdError = same;
        }
    }
    std::wstring commandLine = L"\"" + start.program + L"\"";
    if (!start.arguments.empty()) commandLine += L" " + start.arguments;
    std::wstring environment;
    if (!start.temporaryFolder.empty()) environment = EnvironmentWith(start.temporaryFolder);
    PROCESS_INFORMATION process{};
    // Windows give a program with windows no console to begin with; Wine would.
    const auto create = [&] {
        return CreateProcessW(start.program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                              CREATE_UNICODE_ENVIRONMENT | DETACHED_PROCESS,
                              environment.empty() ? nullptr : environment.data(),
                              start.currentFolder.empty() ? nullptr : start.currentFolder.c_str(),
                              &startup, &process);
    };
    // A busy Wine now and then fails to start any process, with this code, and then starts it.
    if (create() == 0 && (GetLastError() != ERROR_INTERNAL_ERROR || create() == 0)) {
        throw std::runtime_error("a test could not start " + ToUtf8(start.program) +
                                 ", system error " + std::to_string(GetLastError()));
    }
    process_.Reset(process.hProcess);
    CloseHandle(process.hThread);
    processId_ = process.dwProcessId;
    output_.write.Reset();
    errors_.write.Reset();
    if (start.streams == ProgramStart::Streams::BrokenPipe) {
        output_.read.Reset();
        errors_.read.Reset();
    }
}

ProgramRun::~ProgramRun() {
    if (!HasEnded()) Terminate();
}

DWORD ProgramRun::WaitForEnd(bool answerBoxes) {
    const ULONGLONG start = GetTickCount64();
    while (WaitForSingleObject(process_.Get(), kPoll) != WAIT_OBJECT_0) {
        Collect();
        SeeBoxes(answerBoxes);
        if (GetTickCount64() - start > patience_) FailAndEnd("has not ended");
    }
    Collect();
    DWORD code = 0;
    GetExitCodeProcess(process_.Get(), &code);
    return code;
}

void ProgramRun::WaitForAll(const std::vector<ProgramRun*>& runs) {
    const ULONGLONG start = GetTickCount64();
    const auto isGoingOn = [](ProgramRun* run) {
        run->Collect();
        run->SeeBoxes(true);
        return !run->HasEnded();
    };
    while (std::count_if(runs.begin(), runs.end(), isGoingOn) > 0) {
        if (GetTickCount64() - start > runs.front()->patience_) {
            for (ProgramRun* run : runs) {
                if (!run->HasEnded()) run->FailAndEnd("has not ended");
            }
            return;
        }
        Sleep(kPoll);
    }
}

bool ProgramRun::StaysFor(DWORD milliseconds) {
    const ULONGLONG start = GetTickCount64();
    while (!HasEnded() && GetTickCount64() - start < milliseconds) {
        Collect();
        Sleep(kPoll);
    }
    return !HasEnded();
}

bool ProgramRun::HasEnded() const {
    return WaitForSingleObject(process_.Get(), 0) == WAIT_OBJECT_0;
}

void ProgramRun::WaitForFullOutput() {
    constexpr DWORD kPipeBytes = 4096;
    const ULONGLONG start = GetTickCount64();
    while (!HasEnded()) {
        DWORD waiting = 0;
        PeekNamedPipe(output_.read.Get(), nullptr, 0, nullptr, &waiting, nullptr);
        if (waiting >= kPipeBytes) return;
        if (GetTickCount64() - start > patience_) FailAndEnd("has not filled its output");
        Sleep(kPoll);
    }
    ADD_FAILURE() << "the program ended before its output was full";
}

Box ProgramRun::WaitForBox() {
    const ULONGLONG start = GetTickCount64();
    while (!HasEnded()) {
        Collect();
        for (const Box& box : BoxesOf(processId_)) {
            if (Seen(boxes_, box.handle)) continue;
            boxes_.push_back(box);
            return box;
        }
        if (GetTickCount64() - start > patience_) FailAndEnd("has shown no box");
        Sleep(kPoll);
    }
    ADD_FAILURE() << "the program ended without a box";
    return {};
}

void ProgramRun::Answer(const Box& box, int button) {
    Press(box, button);
    const ULONGLONG start = GetTickCount64();
    while (!HasEnded() && IsWindow(box.handle) != 0) {
        Collect();
        if (GetTickCount64() - start > patience_) FailAndEnd("does not close its box");
        Sleep(kPoll);
    }
}

HWND ProgramRun::WaitForWindow(std::wstring_view classBeginning) {
    return WaitForWindowThat(classBeginning, false);
}

HWND ProgramRun::WaitForVisibleWindow(std::wstring_view classBeginning) {
    return WaitForWindowThat(classBeginning, true);
}

HWND ProgramRun::WaitForWindowThat(std::wstring_view classBeginning, bool isVisible) {
    const ULONGLONG start = GetTickCount64();
    while (!HasEnded()) {
        Collect();
        const HWND window = FindWindowOf(processId_, classBeginning);
        if (window != nullptr && (!isVisible || IsWindowVisible(window) != 0)) return window;
        if (GetTickCount64() - start > patience_) FailAndEnd("has not made its window");
        Sleep(kPoll);
    }
    return nullptr;
}

DWORD ProgramRun::EndByIcon() {
    const HWND icon = WaitForWindow(L"frmTrayIcon");
    if (icon == nullptr) {
        ADD_FAILURE() << "the program has no window frmTrayIcon";
    } else {
        PostMessageW(icon, WM_CLOSE, 0, 0);
    }
    return WaitForEnd();
}

void ProgramRun::Terminate() {
    TerminateProcess(process_.Get(), 0xDEAD);
    WaitForSingleObject(process_.Get(), INFINITE);
}

std::wstring ProgramRun::Output() const { return Decode(output_.bytes); }

std::wstring ProgramRun::Errors() const { return Decode(errors_.bytes); }

std::vector<std::wstring> ProgramRun::Lines() const {
    std::vector<std::wstring> lines;
    const std::wstring text = Output();
    std::size_t start = 0;
    for (std::size_t end = 0; (end = text.find(L"\r\n", start)) != std::wstring::npos;) {
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    EXPECT_EQ(start, text.size()) << "the last line has no end";
    return lines;
}

void ProgramRun::Open(Pipe& pipe) {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (CreatePipe(&read, &write, nullptr, 0) == 0) {
        throw std::runtime_error("a test could not make a pipe");
    }
    pipe.read.Reset(read);
    pipe.write.Reset(write);
    SetHandleInformation(write, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
}

// Takes what is there and never waits: another process may hold the other end open for longer.
void ProgramRun::Collect(Pipe& pipe) {
    DWORD waiting = 0;
    while (pipe.read &&
           PeekNamedPipe(pipe.read.Get(), nullptr, 0, nullptr, &waiting, nullptr) != 0 &&
           waiting > 0) {
        const std::size_t before = pipe.bytes.size();
        pipe.bytes.resize(before + waiting);
        DWORD count = 0;
        ReadFile(pipe.read.Get(), pipe.bytes.data() + before, waiting, &count, nullptr);
        pipe.bytes.resize(before + count);
    }
}

void ProgramRun::Collect() {
    Collect(output_);
    Collect(errors_);
}

void ProgramRun::SeeBoxes(bool answer) {
    for (const Box& box : BoxesOf(processId_)) {
        if (!Seen(boxes_, box.handle)) boxes_.push_back(box);
        if (answer) Press(box, box.buttons.empty() ? IDOK : box.buttons.back());
    }
}

void ProgramRun::FailAndEnd(const char* what) {
    std::string windows;
    for (const WindowFacts& window : WindowsOf(processId_)) {
        windows += "\n  " + ToUtf8(window.className) + (window.visible ? " shown" : " hidden") +
                   ": " + ToUtf8(window.title);
    }
    for (const Box& box : BoxesOf(processId_)) windows += "\n" + ToUtf8(box.text);
    ADD_FAILURE() << "the program " << what << "; its windows:" << windows;
    Terminate();
}

}  // namespace vw::test
