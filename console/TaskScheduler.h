#pragma once

#include <memory>
#include <optional>
#include <string>

namespace vw {

/// The tasks of this program, in the folder "\Vaultwright" of the system's scheduler.
class TaskScheduler {
  public:
    /// Connects to the scheduler. Throws 68 when the system has none that answers.
    TaskScheduler();
    TaskScheduler(const TaskScheduler&) = delete;
    TaskScheduler& operator=(const TaskScheduler&) = delete;
    ~TaskScheduler();

    /// Makes or replaces a task; gives its definition as the scheduler keeps it. Throws 75 when the
    /// scheduler refuses it.
    std::wstring Register(const std::wstring& name, const std::wstring& xml);

    /// The definition of a task as the scheduler keeps it; nothing when there is no such task.
    [[nodiscard]] std::optional<std::wstring> Definition(const std::wstring& name);

    /// Removes a task. Throws 53 when there is none of this name.
    void Remove(const std::wstring& name);

  private:
    struct Objects;
    std::unique_ptr<Objects> objects_;
};

}  // namespace vw
