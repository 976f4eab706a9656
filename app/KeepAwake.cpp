#include "app/KeepAwake.h"

namespace vw {

// The first call keeps a desktop awake, and a notebook with the charger. On a notebook that sleeps
// with its network on, and runs on battery, only the request keeps the process going.
KeepAwake::KeepAwake() noexcept {
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
    wchar_t reason[] = L"Files are being backed up, restored or cleaned.";
    REASON_CONTEXT context{};
    context.Version = POWER_REQUEST_CONTEXT_VERSION;
    context.Flags = POWER_REQUEST_CONTEXT_SIMPLE_STRING;
    context.Reason.SimpleReasonString = reason;
    request_.Reset(PowerCreateRequest(&context));
    if (request_) PowerSetRequest(request_.Get(), PowerRequestExecutionRequired);
}

// Closing the request clears it.
KeepAwake::~KeepAwake() { SetThreadExecutionState(ES_CONTINUOUS); }

}  // namespace vw
