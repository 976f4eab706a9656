#include "platform/CCommonAPI.h"

namespace vw {

CCommonAPI::CCommonAPI(RawRegistry& registry, const AnsiCodec& ansi, MessageBoxes& boxes,
                       ErrorSink& faults)
    : registry_(registry),
      ansi_(ansi),
      boxes_(boxes),
      trap_(faults, L"Class Module", L"CCommonAPI") {}

}  // namespace vw
