#pragma once

namespace vw {

/// The four parts of a program's version.
struct ProgramVersion {
    int major = 0;
    int minor = 0;
    int build = 0;
    int revision = 0;

    friend bool operator==(const ProgramVersion&, const ProgramVersion&) = default;
};

/// The version record of the running program; zeros when it has none.
[[nodiscard]] ProgramVersion OwnVersion();

}  // namespace vw
