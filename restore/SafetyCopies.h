#pragma once

#include <string>
#include <vector>

#include "platform/System.h"

namespace vw {

class CPackage;
struct ProgramState;

/// The copies of an item, among which the safety copies of a restore belong.
struct SafetySeries {
    struct Copy {
        std::wstring path;
        int number = 0;
    };

    std::wstring folder;  ///< in which the copies lie
    int location = 0;
    std::vector<Copy> copies;
};

/// Keeps what a restore is about to overwrite: unless a copy of the series has it, it is copied
/// under the next number of a safety copy. Used while the destination is locked.
class SafetyCopies {
  public:
    /// How a copy that keeps what will be overwritten has to equal it. The date alone is enough
    /// only for a file that the user was asked about, and a copy that a backup completed.
    enum class Proof { Date, Content };

    enum class Outcome {
        Kept,
        Cancelled,
        Failed,  ///< the copy did not become whole, and was removed
    };

    SafetyCopies(System& system, ProgramState& state, CPackage& engine)
        : system_(system), state_(state), engine_(engine) {}

    /// Makes sure that a copy has what is at `path`, which must exist. Throws the
    /// error of the disk, and kOverflow with the sentence `allNumbersUsed` when no number is free.
    [[nodiscard]] Outcome Keep(const std::wstring& path, Proof proof, const SafetySeries& series,
                               const std::wstring& allNumbersUsed);

  private:
    [[nodiscard]] bool IsStored(const std::wstring& path, Proof proof, const SafetySeries& series);
    [[nodiscard]] std::wstring FreeName(const std::wstring& path, const SafetySeries& series) const;
    void RemovePartial(const std::wstring& copyName);

    System& system_;
    ProgramState& state_;
    CPackage& engine_;
};

}  // namespace vw
