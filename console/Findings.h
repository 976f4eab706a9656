#pragma once

#include <string_view>

namespace vw {

class Console;

/// What a check writes: findings, which make its exit code 1, and notes, which do not. The kinds
/// are words of their own for scripts; docs/console.md defines each.
class Findings {
  public:
    explicit Findings(Console& console) : console_(console) {}

    void Add(std::wstring_view kind, std::wstring_view path, std::wstring_view detail);
    void Note(std::wstring_view kind, std::wstring_view path, std::wstring_view detail);

    [[nodiscard]] int Count() const noexcept { return count_; }

  private:
    void Write(const char* event, std::wstring_view kind, std::wstring_view path,
               std::wstring_view detail);

    Console& console_;
    int count_ = 0;
};

}  // namespace vw
