#include "platform/SecurityDescriptor.h"

#include <sddl.h>

#include "platform/SystemError.h"

namespace vw {

SecurityDescriptor::SecurityDescriptor(const wchar_t* text) {
    if (ConvertStringSecurityDescriptorToSecurityDescriptorW(
            text, SDDL_REVISION_1, &attributes_.lpSecurityDescriptor, nullptr) == 0) {
        RaiseLast(text);
    }
}

SecurityDescriptor::~SecurityDescriptor() { LocalFree(attributes_.lpSecurityDescriptor); }

}  // namespace vw
