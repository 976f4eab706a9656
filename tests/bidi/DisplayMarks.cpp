// What the check of the display order asks the program's own code: reads lines from its input, each
// a kind, a tab and a text in UTF-8 with U+0001 for a line break, and writes the text with marks.
// Kinds: "box" the text of a right-to-left message box, "tip" a sentence in a tool tip, "path" a
// path in one, "name" a name in one, "report" a line of the Arabic report.

#include <algorithm>
#include <iostream>
#include <string>

#include "platform/TextDirection.h"
#include "platform/Utf8.h"

namespace {

constexpr char kBreak = '\x01';

std::wstring Marked(const std::string& kind, const std::wstring& text) {
    if (kind == "box") return vw::MarkLines(text);
    if (kind == "report") return vw::MarkReport(text);
    if (kind == "name") return vw::MarkTip(text);
    return kind == "tip" ? vw::MarkSentence(text) : vw::MarkPath(text);
}

}  // namespace

int main() {
    std::string line;
    while (std::getline(std::cin, line)) {
        const std::size_t tab = line.find('\t');
        if (tab == std::string::npos) return 1;
        std::string text = line.substr(tab + 1);
        std::replace(text.begin(), text.end(), kBreak, '\n');
        std::string marked = vw::ToUtf8(Marked(line.substr(0, tab), vw::FromUtf8(text)));
        std::replace(marked.begin(), marked.end(), '\n', kBreak);
        std::cout << marked << '\n';
    }
    return 0;
}
