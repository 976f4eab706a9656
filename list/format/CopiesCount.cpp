#include "list/format/CopiesCount.h"

#include "platform/Conversions.h"
#include "platform/RuntimeError.h"

namespace vw {

void TakeCopiesCount(std::wstring_view value, std::int16_t& count) {
    try {
        count = ParseInt16(value);
    } catch (const RuntimeError&) {
        // The previous count stays.
    }
}

}  // namespace vw
