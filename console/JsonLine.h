#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vw {

/// One JSON object, which becomes one line. Its members keep the order in which they are added.
class JsonLine {
  public:
    /// An object with the member "event".
    explicit JsonLine(std::string_view event);
    JsonLine(const JsonLine&) = delete;
    JsonLine& operator=(const JsonLine&) = delete;
    ~JsonLine();

    JsonLine& Text(std::string_view name, std::wstring_view value);
    JsonLine& Number(std::string_view name, std::int64_t value);
    JsonLine& Bool(std::string_view name, bool value);

    /// The object in UTF-8 on one line, without a line end. What is no valid Unicode text is
    /// written as U+FFFD.
    [[nodiscard]] std::string Line() const;

  private:
    struct Object;
    std::unique_ptr<Object> object_;
};

}  // namespace vw
