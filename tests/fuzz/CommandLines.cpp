// Any command line is cut and understood, and the silent ones keep to their switches.
#include "app/CommandLine.h"
#include "platform/TextCase.h"
#include "tests/fuzz/FuzzSupport.h"

using vw::fuzz::Guarantee;

namespace {

bool BeginsOrEndsBlank(std::wstring_view text) {
    return !text.empty() && (text.front() == L' ' || text.front() == L'\t' || text.back() == L' ' ||
                             text.back() == L'\t');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vw::fuzz::Input input(data, size);
    const std::wstring whole = vw::fuzz::WithWords(
        input.RestAsText(), {L"v.exe ", L"/Backup ", L"/restore ", L"/Startup", L"/Author", L"/D",
                             L"/Dele Temp", L".vwl", L"\"C:\\a b\\v.exe\" "});

    const std::wstring arguments = vw::ArgumentText(whole);
    Guarantee(whole.ends_with(arguments), "arguments end the command line");
    Guarantee(vw::ArgumentText(L"\"C:\\a b\\v.exe\" " + arguments) == arguments,
              "arguments stay the same behind another name");

    const vw::CommandLine commandLine = vw::SplitCommandLine(arguments);
    Guarantee(commandLine.switchWord.find_first_of(L" \t") == std::wstring::npos,
              "a switch holds no blank");
    Guarantee(arguments.starts_with(commandLine.switchWord), "a switch begins the arguments");
    Guarantee(arguments.find(commandLine.argument) != std::wstring::npos,
              "an argument is a piece of the arguments");
    const std::wstring quoted = L'"' + commandLine.argument + L'"';
    Guarantee(
        !BeginsOrEndsBlank(commandLine.argument) || arguments.find(quoted) != std::wstring::npos,
        "an argument has no blanks around it unless they were quoted");

    const vw::StartAction action = vw::ActionFor(commandLine);
    const bool isSilentAction =
        action == vw::StartAction::BackupList || action == vw::StartAction::BackupItem ||
        action == vw::StartAction::BackupDefaultList || action == vw::StartAction::Restore ||
        action == vw::StartAction::DeleteTemporary;
    Guarantee(!isSilentAction || vw::StartsSilently(arguments), "work without a window is silent");
    Guarantee(!vw::IsStartupCommand(arguments) || vw::StartsSilently(arguments),
              "the start at log-on is silent");
    return 0;
}
