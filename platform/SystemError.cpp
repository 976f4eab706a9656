#include "platform/SystemError.h"

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {

void RaiseCode(std::uint32_t systemCode, std::wstring_view path, const SourceLocation& where) {
    Raise(ErrorNumberOf(systemCode), path, where);
}

void RaiseLast(std::wstring_view path, const SourceLocation& where) {
    RaiseCode(GetLastError(), path, where);
}

}  // namespace vw
