#include "list/editing/RecentOrder.h"

#include <gtest/gtest.h>

#include <ostream>

namespace vw {
namespace {

struct Opening {
    const char* name;
    RecentPaths before;
    std::wstring_view path;
    int position;
    RecentPaths after;
};

// For the messages of failed tests.
std::ostream& operator<<(std::ostream& stream, const Opening& opening) {
    return stream << opening.name;
}

class RecentOrder : public testing::TestWithParam<Opening> {};

TEST_P(RecentOrder, PutsTheOpenedOneAtTheTop) {
    EXPECT_EQ(RecentPosition(GetParam().before, GetParam().path), GetParam().position);
    EXPECT_EQ(WithRecentPath(GetParam().before, GetParam().path), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    RecentFiles, RecentOrder,
    testing::Values(
        Opening{"FirstOfAll", {}, L"a", 0, {L"a"}},
        Opening{"SecondNewOne", {L"a"}, L"b", 0, {L"b", L"a"}},
        Opening{"SameTwice", {L"a", L"b"}, L"a", 1, {L"a", L"b"}},
        Opening{"SecondOne", {L"a", L"b", L"c", L"d"}, L"b", 2, {L"b", L"a", L"c", L"d"}},
        Opening{"ThirdOneOfFour", {L"a", L"b", L"c", L"d"}, L"c", 3, {L"c", L"a", L"b", L"d"}},
        Opening{"FourthOne", {L"a", L"b", L"c", L"d"}, L"d", 4, {L"d", L"a", L"b", L"c"}},
        Opening{"NewOneOfFour", {L"a", L"b", L"c", L"d"}, L"e", 0, {L"e", L"a", L"b", L"c"}},
        Opening{"OtherCase", {L"a", L"Dir\\B", L"c"}, L"dIR\\b", 2, {L"dIR\\b", L"a", L"c"}},
        Opening{"NewOneBesideAGap", {L"a", L"", L"c"}, L"e", 0, {L"e", L"a", L"", L"c"}},
        Opening{"EmptyPathAtAGap", {L"a", L"", L"c"}, L"", 2, {L"", L"a", L"c"}}),
    [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace vw
