#include "console/JsonLine.h"

#include <nlohmann/json.hpp>

#include "platform/Utf8.h"

namespace vw {

// An empty value allocates nothing, which clang-tidy cannot see.
struct JsonLine::Object {  // NOLINT(bugprone-exception-escape)
    nlohmann::ordered_json members;
};

JsonLine::JsonLine(std::string_view event) : object_(std::make_unique<Object>()) {
    object_->members["event"] = event;
}

JsonLine::~JsonLine() = default;

JsonLine& JsonLine::Text(std::string_view name, std::wstring_view value) {
    object_->members[std::string(name)] = ToUtf8(value);
    return *this;
}

JsonLine& JsonLine::Number(std::string_view name, std::int64_t value) {
    object_->members[std::string(name)] = value;
    return *this;
}

JsonLine& JsonLine::Bool(std::string_view name, bool value) {
    object_->members[std::string(name)] = value;
    return *this;
}

std::string JsonLine::Line() const {
    return object_->members.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace vw
