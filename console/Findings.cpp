#include "console/Findings.h"

#include <string>

#include "console/Console.h"
#include "console/JsonLine.h"

namespace vw {

void Findings::Add(std::wstring_view kind, std::wstring_view path, std::wstring_view detail) {
    ++count_;
    Write("finding", kind, path, detail);
}

void Findings::Note(std::wstring_view kind, std::wstring_view path, std::wstring_view detail) {
    Write("note", kind, path, detail);
}

void Findings::Write(const char* event, std::wstring_view kind, std::wstring_view path,
                     std::wstring_view detail) {
    std::wstring line(kind);
    line.append(L": ").append(path);
    if (!detail.empty()) line.append(L" (").append(detail).append(L")");
    console_.output.Line(line);
    console_.output.Json(
        JsonLine(event).Text("kind", kind).Text("path", path).Text("detail", detail));
}

}  // namespace vw
