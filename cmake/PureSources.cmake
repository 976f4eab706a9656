# The pure files: text in, text out, no windows.h. They are part of their rooms in the Windows
# build and are built a second time natively, under ASan and UBSan (preset "host").
# One name per line. A name without a file stops the configuration.

set(PURE_SOURCES
    app/CommandLine.cpp
    engine/CommentLine.cpp
    engine/CopyName.cpp
    engine/NameEncoding.cpp
    engine/WorkingName.cpp
    fsutil/PathText.cpp
    fsutil/SizeText.cpp
    list/format/FieldReader.cpp
    list/format/ListLine.cpp
    list/format/ListText.cpp
    platform/Date.cpp
    platform/Like.cpp
    platform/RuntimeError.cpp
    platform/TextCase.cpp
    platform/Utf8.cpp
    platform/Val.cpp
)

set(PURE_TESTS
)
