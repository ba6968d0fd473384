// The system clipboard as the program uses it: it reads the files that another program put there, and puts its own data
// there in several forms at once. The programs use the Qt implementation (platform/qt), tests one of their own.
#pragma once

#include <string>
#include <vector>

namespace kestrane {

// One thing in each form in which other programs can take it; an empty form is not offered.
struct ClipboardForms {
    std::string Text; // UTF-8; tabs between cells, CR LF behind rows
    std::string Html; // a fragment
    std::string Png;  // the bytes of a picture
    std::string Svg;  // the same picture, drawn
};

class Clipboard {
public:
    virtual ~Clipboard() = default;

    // The paths of the local files on the clipboard, in their order; an empty list when it holds anything else.
    virtual std::vector<std::string> GetClipboardFiles() const = 0;

    // Replaces everything on the clipboard.
    virtual void Set(const ClipboardForms& forms) = 0;
};

} // namespace kestrane
