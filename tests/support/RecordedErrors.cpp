#include "tests/support/RecordedErrors.h"

#include <gtest/gtest.h>

#include <utility>

#include "platform/Utf8.h"

namespace vw::test {

std::ostream& operator<<(std::ostream& stream, const ToldError& error) {
    return stream << "error " << error.number << " (" << ToUtf8(error.description) << ") of \""
                  << ToUtf8(error.path) << "\" in " << ToUtf8(error.procedure) << " of "
                  << ToUtf8(error.kind) << " " << ToUtf8(error.container);
}

RecordedErrors::~RecordedErrors() {
    for (const ToldError& error : errors_) ADD_FAILURE() << "nobody expected " << error;
}

std::vector<ToldError> RecordedErrors::Take() { return std::exchange(errors_, {}); }

ToldError RecordedErrors::TakeOne() {
    const std::vector<ToldError> taken = Take();
    if (taken.size() == 1) return taken.front();
    ADD_FAILURE() << "one error was expected, " << taken.size() << " were told";
    for (const ToldError& error : taken) ADD_FAILURE() << error;
    return {};
}

void RecordedErrors::BeginLimit(int most) {
    if (limits_++ > 0) return;
    most_ = most;
    told_ = 0;
}

int RecordedErrors::EndLimit() { return --limits_ > 0 ? 0 : told_; }

void RecordedErrors::Report(const Procedure& where, const RuntimeError& error) {
    if (limits_ > 0 && ++told_ > most_) {
        exitStatus_.Note(error.Number());
        return;
    }
    errors_.push_back({error.Number(), error.Description(), error.Path(), std::wstring(where.name),
                       std::wstring(where.kind), std::wstring(where.container)});
    exitStatus_.Note(error.Number());
}

}  // namespace vw::test
