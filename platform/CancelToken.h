#pragma once

namespace vw {

/// The wish of the user that the present work ends early. Whoever starts work begins a new token,
/// the controls that cancel request it, and the work asks for it between its steps.
class CancelToken {
  public:
    /// New work begins: what was requested before does not concern it.
    void Begin() noexcept { isRequested_ = false; }

    /// Asks the work to stop before its next step. Has no effect on work that begins later.
    void Request() noexcept { isRequested_ = true; }

    [[nodiscard]] bool IsRequested() const noexcept { return isRequested_; }

  private:
    bool isRequested_ = false;
};

}  // namespace vw
