#include "app/DragFile.h"

#include "app/Documents.h"
#include "explorer/NodeKeys.h"
#include "exports/Export.h"
#include "files/XmlWriter.h"

namespace kestrane {

namespace {

std::string dataFileText(const Node& node) {
    if (node.data == nullptr) return DocumentText(*node.file, true);
    Session& session = node.file->session();
    clsFile part(session, node.file->FileName);
    if (node.log == nullptr) {
        part.append(*node.data, true, kAtEnd);
    } else {
        clsInsData data(session);
        data.Copy(*node.data, false);
        data.append(*node.log, kAtEnd);
        part.append(data, true, kAtEnd);
    }
    return DocumentText(part, true);
}

} // namespace

std::optional<FileToDrag> dataFileOf(const Session& session, const std::string& key) {
    const Node node = resolve(session, key);
    const bool isGroup = node.data != nullptr && node.log == nullptr && !key.starts_with(tINST);
    if (node.file == nullptr || isGroup || node.file->IsBusy() || !AreRowsRead(*node.file)) return std::nullopt;
    std::string title = node.file->ShortenedFileName();
    if (title.ends_with(".xml")) title.resize(title.size() - 4);
    if (node.log != nullptr) title += ", " + node.log->Name;
    return FileToDrag{fileNameOf(title) + ".xml", [node] { return dataFileText(node); }};
}

std::optional<FileToDrag> fileOfCopy(const ClipboardForms& forms, const std::string& title) {
    if (!forms.Png.empty()) return FileToDrag{fileNameOf(title) + ".png", [png = forms.Png] { return png; }};
    if (!forms.Text.empty()) return FileToDrag{fileNameOf(title) + ".csv", [text = forms.Text] { return csvOf(text); }};
    return std::nullopt;
}

} // namespace kestrane
