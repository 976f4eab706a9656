#include "ui/EscapedError.h"

namespace vw {

void ReportEscaped(const std::exception_ptr& error, const ErrorTrap& trap) noexcept {
    try {
        trap(L"Form_Event", [&] { std::rethrow_exception(error); });
    } catch (...) {
        // What is no error, such as the end of the program in a test, has been noted by its origin.
    }
}

}  // namespace vw
