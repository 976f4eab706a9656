#include "platform/ErrorTrap.h"

#include <new>

namespace vw {

std::wstring ErrorText(const Procedure& where, const RuntimeError& error) {
    std::wstring text = L"Error " + std::to_wstring(error.Number()) + L" in line " +
                        std::to_wstring(error.Line()) + L"\r\nin procedure ";
    text.append(where.name).append(L" of ").append(where.kind).append(L" ").append(where.container);
    const std::wstring details = ErrorDetails(error);
    if (!details.empty()) text += L"\r\n\r\n" + details;
    return text;
}

std::wstring ErrorDetails(const RuntimeError& error) {
    std::wstring text = error.Description();
    if (!error.Path().empty()) {
        if (!text.empty()) text += L"\r\n";
        text += error.Path();
    }
    return text;
}

void ReportCurrentError(ErrorSink& errors, const Procedure& where) {
    try {
        throw;
    } catch (const RuntimeError& error) {
        errors.Report(where, error);
    } catch (const std::bad_alloc&) {
        constexpr int kNumber = error_number::kOutOfMemory;
        errors.Report(where, RuntimeError(kNumber, DescriptionOf(kNumber), {}, 0));
    } catch (const std::exception&) {
        constexpr int kNumber = error_number::kInvalidCall;
        errors.Report(where, RuntimeError(kNumber, DescriptionOf(kNumber), {}, 0));
    }
}

}  // namespace vw
