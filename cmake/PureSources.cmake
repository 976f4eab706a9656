# The pure files: text in, text out, no windows.h. They are part of their layers in the Windows
# build and are built a second time natively, under ASan and UBSan (preset "host").
# One name per line. A name without a file stops the configuration.

set(PURE_SOURCES
    app/CommandLine.cpp
    engine/CommentLine.cpp
    engine/CopyLabel.cpp
    engine/CopyName.cpp
    engine/NameEncoding.cpp
    fsutil/PathText.cpp
    fsutil/SizeText.cpp
    fsutil/WorkingName.cpp
    list/editing/FileDialogSetup.cpp
    list/editing/RecentOrder.cpp
    list/format/FieldReader.cpp
    list/format/ListLine.cpp
    list/format/ListText.cpp
    platform/Date.cpp
    platform/Wildcards.cpp
    platform/RuntimeError.cpp
    platform/TextCase.cpp
    platform/TextDirection.cpp
    platform/Utf8.cpp
    platform/LeadingInt.cpp
    restore/CopyGroup.cpp
    ui/DisplayText.cpp
    ui/Layout.cpp
    ui/ListViewRows.cpp
)

set(PURE_TESTS
    tests/app/CommandLineTest.cpp
    tests/engine/CommentLineTest.cpp
    tests/engine/CopyLabelTest.cpp
    tests/engine/CopyNameTest.cpp
    tests/engine/NameEncodingTest.cpp
    tests/fsutil/PathTextTest.cpp
    tests/fsutil/SizeTextTest.cpp
    tests/fsutil/WorkingNameTest.cpp
    tests/list/editing/FileDialogSetupTest.cpp
    tests/list/editing/RecentOrderTest.cpp
    tests/list/format/FieldReaderTest.cpp
    tests/list/format/ListLineTest.cpp
    tests/list/format/ListTextTest.cpp
    tests/platform/DateTest.cpp
    tests/platform/WildcardsTest.cpp
    tests/platform/RuntimeErrorTest.cpp
    tests/platform/TextCaseTest.cpp
    tests/platform/TextDirectionTest.cpp
    tests/platform/Utf8Test.cpp
    tests/platform/LeadingIntTest.cpp
    tests/restore/CopyGroupTest.cpp
    tests/ui/DisplayTextTest.cpp
    tests/ui/LayoutTest.cpp
    tests/ui/ListViewRowsTest.cpp
)
