#include <string>
#include <type_traits>
#include <vector>

#include "console/Arguments.h"
#include "console/Console.h"
#include "console/Interrupts.h"
#include "console/Output.h"
#include "console/Verbs.h"
#include "platform/StandardStreams.h"
#include "platform/WindowsHeader.h"

// The names that the user types reach the verbs as they are: the shells of Windows leave wildcards
// to the programs, and the run-time library must not replace "C:\Photos\*" by what is there.
extern "C" {
extern int _dowildcard;  // NOLINT(clang-diagnostic-reserved-identifier)
int _dowildcard = 0;
}

namespace vw {
namespace {

int Run(Console& console, const Arguments& arguments) {
    return std::visit(
        [&](const auto& verb) {
            using Verb = std::decay_t<decltype(verb)>;
            if constexpr (std::is_same_v<Verb, BackupArguments>) {
                return Backup(console, verb);
            } else if constexpr (std::is_same_v<Verb, PreviewArguments>) {
                return Preview(console, verb);
            } else if constexpr (std::is_same_v<Verb, CheckArguments>) {
                return Check(console, verb);
            } else if constexpr (std::is_same_v<Verb, CopiesArguments>) {
                return Copies(console, verb);
            } else if constexpr (std::is_same_v<Verb, RestoreArguments>) {
                return Restore(console, verb);
            } else if constexpr (std::is_same_v<Verb, DiffArguments>) {
                return Diff(console, verb);
            } else if constexpr (std::is_same_v<Verb, ScheduleArguments>) {
                return Schedule(console, verb);
            } else {
                return kWrongArguments;
            }
        },
        arguments.verb);
}

// The scheduler opens a window for a console program. One that only writes errors does without.
void LeaveOwnConsole() {
    DWORD process = 0;
    if (GetConsoleProcessList(&process, 1) == 1) FreeConsole();
}

int Main(const std::vector<std::wstring>& words) {
    const Arguments arguments = ReadArguments(words);
    if (!arguments.text.empty()) {
        StandardStreams streams;
        if (!arguments.isWrong) {
            streams.Report(arguments.text);
            return 0;
        }
        streams.Error(arguments.text);
        return kWrongArguments;
    }
    Interrupts::Watch(!arguments.quiet && !arguments.json);
    if (arguments.quiet) LeaveOwnConsole();
    Output output;
    if (arguments.json) output.SetStyle(Output::Style::Json);
    if (arguments.quiet) output.SetStyle(Output::Style::Quiet);
    Console console(output);
    return console.Run([&] { return Run(console, arguments); });
}

}  // namespace
}  // namespace vw

int wmain(int count, wchar_t** words) {
    return vw::Main(std::vector<std::wstring>(words + (count > 0 ? 1 : 0), words + count));
}
