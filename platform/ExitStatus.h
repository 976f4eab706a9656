#pragma once

namespace vw {

/// The exit code that schedulers and scripts get: 0 when all went well, else the first failure.
///
/// | code | meaning                                                                     |
/// | ---- | --------------------------------------------------------------------------- |
/// | 0    | all went well (also "/Author", "/S", the language switch, skipped links)     |
/// | 53   | a file of the list is missing                                               |
/// | 76   | the destination folder, or a folder of the list, is missing                 |
/// | 75   | an item was refused: it holds the destination or lies in it                 |
/// | 170  | another run kept the destination locked                                     |
/// | 1223 | the run was cancelled, or ended from the icon's menu                        |
/// | else | the number of the first error that was reported (platform/RuntimeError.h)   |
class ExitStatus {
  public:
    /// Remembers a failure unless one was remembered before.
    void Note(int code) noexcept {
        if (code_ == 0) code_ = code;
    }

    [[nodiscard]] int Code() const noexcept { return code_; }

  private:
    int code_ = 0;
};

}  // namespace vw
