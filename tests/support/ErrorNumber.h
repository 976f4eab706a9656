#pragma once

#include "platform/RuntimeError.h"

namespace vw::test {

/// The error that a call throws; one of number 0 when it throws none.
template <class Call>
[[nodiscard]] RuntimeError ErrorOf(const Call& call) {
    try {
        static_cast<void>(call());
    } catch (const RuntimeError& error) {
        return error;
    }
    return {0, {}, {}, 0};
}

/// The number of the error that a call throws; 0 when it throws none.
template <class Call>
[[nodiscard]] int NumberOf(const Call& call) {
    return ErrorOf(call).Number();
}

}  // namespace vw::test
