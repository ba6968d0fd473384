#include "explorer/ExplorerTree.h"

#include "explorer/NodeKeys.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace kestrane {

namespace {

// The pass in which a file is listed, by its format and extension. The last row of each format takes any other
// extension.
struct Pass {
    bool isOldStyle;
    std::string_view extension;
};

constexpr Pass kPasses[] = {{false, ".xml"}, {false, ".zdp"}, {false, ""}, {true, ".log"},
                            {true, ".zd2"},  {true, ".zd4"},  {true, ""}};

std::size_t passOf(const clsFile& file) {
    std::string extension = file.FileName.substr(file.FileName.size() < 4 ? 0 : file.FileName.size() - 4);
    for (char& c : extension)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const auto pass = std::find_if(std::begin(kPasses), std::end(kPasses), [&](const Pass& p) {
        return p.isOldStyle == file.IsOldStyle() && (p.extension.empty() || p.extension == extension);
    });
    return static_cast<std::size_t>(pass - std::begin(kPasses));
}

struct Group {
    LogMode mode;
    Text::Id text;
    bool clsInsData::*expanded;
};

constexpr Group kGroups[] = {{modeBroadband, Text::TreeBroadband, &clsInsData::ExpandedL},
                             {modeFullOctave, Text::TreeFullOctave, &clsInsData::ExpandedO},
                             {modeThirdOctave, Text::TreeThirdOctave, &clsInsData::ExpandedT}};

TreeNode instrumentNode(const clsInsData& data, const clsFile& file) {
    TreeNode node{dataKey(data, file), instrumentText(data, file), "INSTRUMENT", data.InsSerial, data.Expanded, {}};
    for (const Group& group : kGroups) {
        const LogCollection& logs = data.logsOf(group.mode);
        if (logs.empty()) continue;
        TreeNode groupNode{groupKey(group.mode, data, file),
                           data.session().LoadText(group.text),
                           "FILECLOSE",
                           {},
                           data.*group.expanded,
                           {}};
        for (const auto& log : logs) {
            groupNode.Children.push_back(
                {logKey(*log, data, file), log->Name, log->IsOpen ? "FILEOPEN" : "FILECLOSE", {}, false, {}});
        }
        node.Children.push_back(std::move(groupNode));
    }
    return node;
}

} // namespace

std::string markOf(const clsFile& file) {
    return (file.IsUnsaved() ? "*" : "") + (file.ReadOnly ? file.session().LoadText(Text::ReadOnlyMark) : "");
}

// A collection that has just been downloaded has no name of its own yet.
const std::string& collectionName(const clsInsData& data) {
    return data.NameX.empty() ? data.InsName() : data.NameX;
}

std::string instrumentText(const clsInsData& data, const clsFile& file) {
    const std::string text = collectionName(data) + " [" + data.InsSerial + "]";
    const bool isBeside = data.session().Options.FilesOnTreeView == eDisplayFilesBesideLogNames;
    return isBeside ? text + " (" + file.ShortenedFileName() + ")" : text;
}

std::vector<TreeNode> buildTree(const Session& session) {
    std::vector<TreeNode> roots;
    for (std::size_t pass = 0; pass < std::size(kPasses); ++pass) {
        for (const auto& file : session.OpenFiles) {
            if (passOf(*file) != pass) continue;
            std::vector<TreeNode> instruments;
            for (const auto& data : file->InstrumentDatas)
                instruments.push_back(instrumentNode(*data, *file));
            if (session.Options.FilesOnTreeView == eDisplayFilesAsNodes) {
                roots.push_back(
                    {fileKey(*file), file->ShortenedFileName(), "FILE", {}, file->Expanded, std::move(instruments)});
            } else {
                std::move(instruments.begin(), instruments.end(), std::back_inserter(roots));
            }
        }
    }
    return roots;
}

} // namespace kestrane
