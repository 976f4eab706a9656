#pragma once

#include "platform/WindowsHeader.h"

namespace vw::test {

/// Puts a function of the test in the place of one of the system's, for calls of this program,
/// until the end of the scope: what a call was given, or what happens when it fails, shows nowhere
/// else.
class ImportHook {
  public:
    /// Fails the test when the program does not import that function.
    template <class Function>
    ImportHook(const char* name, Function* replacement)
        : ImportHook(name, reinterpret_cast<void*>(replacement)) {}
    /// For a function of a library that loads late, which no table of the program lists: `slot` is
    /// its "__imp_" symbol.
    template <class Function>
    ImportHook(void*& slot, Function* replacement)
        : ImportHook(&slot, reinterpret_cast<void*>(replacement)) {}
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;
    ~ImportHook();

    /// The system's own function.
    template <class Function>
    [[nodiscard]] Function* Original() const {
        return reinterpret_cast<Function*>(original_);
    }

  private:
    ImportHook(const char* name, void* replacement);
    ImportHook(void** slot, void* replacement);

    void** slot_ = nullptr;
    void* original_ = nullptr;
};

}  // namespace vw::test
