#pragma once

#include <string>
#include <string_view>

#include "fsutil/WorkingName.h"
#include "platform/Handle.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {

/// A process that lives, and does nothing, as long as this object.
class LivingProcess {
  public:
    LivingProcess();
    LivingProcess(const LivingProcess&) = delete;
    LivingProcess& operator=(const LivingProcess&) = delete;
    ~LivingProcess();

    [[nodiscard]] const ProcessTag& Tag() const noexcept { return tag_; }

  private:
    KernelHandle process_;
    ProcessTag tag_;
};

/// A process of this computer that is no more.
[[nodiscard]] ProcessTag DeadProcess();
/// A process of another computer.
[[nodiscard]] ProcessTag ProcessElsewhere();

/// The name of a working entry for an item of the world (relative path) and copy 1 of it at the
/// first location.
[[nodiscard]] std::wstring LeftOverName(const EngineFixture& world, WorkingState state,
                                        std::wstring_view item, const ProcessTag& owner,
                                        Date date = kNoDate);

/// Gives all working entries of this process in the destination to another one.
void UpdateControls(const EngineFixture& world, const ProcessTag& owner);

/// The names of the working entries in the destination.
[[nodiscard]] Lines LeftOvers(const EngineFixture& world);

}  // namespace vw::test
