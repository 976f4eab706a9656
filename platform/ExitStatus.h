#pragma once

namespace vw {

/// The exit code that schedulers and scripts get: 0 when all went well, else the first failure.
///
/// | code | meaning                                                                     |
/// | ---- | --------------------------------------------------------------------------- |
/// | 0    | all went well (also "/Author", "/S", the language switch, skipped links)     |
/// | 53   | a file of the list is missing                                               |
/// | 61   | the disk is full                                                            |
/// | 70   | a file is in use or may not be read                                         |
/// | 75   | an item was refused: it holds the destination or lies in it                 |
/// | 76   | the destination folder, or a folder of the list, is missing                 |
/// | 170  | another run kept the destination locked for ten minutes                     |
/// | 1004 | less than 50 MiB would be left on the disk                                  |
/// | 1223 | the run was cancelled, or ended from the icon's menu                        |
/// | 4008 | the list, or the item, on the command line does not exist                   |
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
