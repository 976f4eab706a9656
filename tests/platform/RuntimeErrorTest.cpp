#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include "tests/support/ErrorNumber.h"

namespace vw {
namespace {

TEST(RuntimeError, DescribesEveryNumber) {
    struct Row {
        int number;
        const wchar_t* description;
    };
    const Row rows[] = {
        {5, L"Invalid procedure call or argument"},
        {6, L"Overflow"},
        {7, L"Out of memory"},
        {13, L"Type mismatch"},
        {52, L"Bad file name or number"},
        {53, L"File not found"},
        {57, L"Device I/O error"},
        {58, L"File already exists"},
        {61, L"Disk full"},
        {62, L"Input past end of file"},
        {67, L"Too many files"},
        {68, L"Device unavailable"},
        {70, L"Permission denied"},
        {71, L"Disk not ready"},
        {75, L"Path/File access error"},
        {76, L"Path not found"},
        {170, L"Another run is using the destination"},
        {1000, L"Copies are numbered from 1"},
        {1004, L"Not enough free space on the disk"},
        {1223, L"The run was cancelled"},
        {4008, L"Path not found"},
        {10000, L"Error 10000"},
        {0, L"Error 0"},
        {-1, L"Error -1"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(DescriptionOf(row.number), row.description) << row.number;
    }
}

TEST(RuntimeError, Thrown_HasNumberDescriptionPathAndLine) {
    std::uint_least32_t line = 0;
    const RuntimeError error = test::ErrorOf([&] {
        line = SourceLocation::current().line() + 1;
        Throw(error_number::kPathNotFound, L"C:\\gone");
    });
    EXPECT_EQ(error.Number(), 76);
    EXPECT_EQ(error.Description(), L"Path not found");
    EXPECT_EQ(error.Path(), L"C:\\gone");
    EXPECT_EQ(error.Line(), line);
}

TEST(RuntimeError, ThrowWith_HasTheGivenDescriptionAndNoPath) {
    const RuntimeError error =
        test::ErrorOf([] { ThrowWith(error_number::kNotEnoughSpace, L"no room\r\nC"); });
    EXPECT_EQ(error.Number(), 1004);
    EXPECT_EQ(error.Description(), L"no room\r\nC");
    EXPECT_EQ(error.Path(), L"");
    EXPECT_GT(error.Line(), 0U);
}

TEST(RuntimeError, ErrorNumberOf_EachSystemCode_HasItsNumber) {
    struct Row {
        std::uint32_t systemCode;
        int number;
    };
    const Row rows[] = {
        {2, 53},                                   // file not found
        {3, 76},          {53, 76},   {67, 76},    // path, network path, network name not found
        {5, 70},          {32, 70},   {33, 70},    // access denied, sharing and lock violation
        {19, 70},                                  // write protected
        {80, 58},         {183, 58},               // exists already
        {112, 61},        {39, 61},   {1295, 61},  // disk full, quota used up
        {21, 71},                                  // not ready
        {15, 68},                                  // invalid drive
        {123, 52},        {161, 52},  {267, 52},   // invalid name, bad path name, no directory name
        {206, 52},                                 // name too long
        {23, 57},         {1117, 57}, {25, 57},    // checksum, device, seek
        {27, 57},                                  // sector not found
        {4, 67},                                   // too many open files
        {8, 7},           {14, 7},                 // out of memory
        {145, 75},                                 // folder not empty
        {0, 75},          {1, 75},    {87, 75},    // all the rest
        {0xFFFFFFFF, 75},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ErrorNumberOf(row.systemCode), row.number) << row.systemCode;
    }
}

}  // namespace
}  // namespace vw
