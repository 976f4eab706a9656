#include "platform/DebugOutput.h"

#include "platform/WindowsHeader.h"

namespace vw {

void DebugOutput::Report(const Procedure& where, const RuntimeError& error) {
    OutputDebugStringW(ErrorText(where, error).append(L"\r\n").c_str());
}

}  // namespace vw
