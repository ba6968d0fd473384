// Tables as text: cells with tabs between them, CR LF behind each line.
#pragma once

#include <string>
#include <vector>

namespace kestrane {

inline void addTabbedLine(std::string& text, const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i)
        text.append(i == 0 ? "" : "\t").append(cells[i]);
    text += "\r\n";
}

// A table as such lines, its captions first.
inline std::string tabbedText(const std::vector<std::string>& captions,
                              const std::vector<std::vector<std::string>>& rows) {
    std::string text;
    addTabbedLine(text, captions);
    for (const std::vector<std::string>& row : rows)
        addTabbedLine(text, row);
    return text;
}

} // namespace kestrane
