#pragma once

#include "list/editing/FileDialogs.h"

namespace vw {

class Form;

/// The system's file dialogs, over the main window.
class UserFileDialogs final : public FileDialogs {
  public:
    explicit UserFileDialogs(Form& main) : main_(main) {}

    std::optional<std::wstring> ShowOpen(FileDialogSetup& dialog) override;
    std::optional<std::wstring> ShowSave(FileDialogSetup& dialog) override;

  private:
    Form& main_;
};

}  // namespace vw
