#include "explorer/Find.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <string_view>

namespace kestrane {

namespace {

// The letters of node keys, indexed by FindIn.
constexpr std::string_view kKinds[] = {"FILOT", "F", "LOT", "L", "O", "T"};

void addInOrder(std::vector<const TreeNode*>& all, const std::vector<TreeNode>& nodes) {
    for (const TreeNode& node : nodes) {
        all.push_back(&node);
        addInOrder(all, node.Children);
    }
}

class Fit {
public:
    explicit Fit(const FindEntry& entry) : entry_(entry), what_(compared(entry.What)) {}

    bool operator()(const TreeNode* node) const {
        if (kKinds[static_cast<std::size_t>(entry_.Where)].find(node->Key.front()) == std::string_view::npos)
            return false;
        const std::string text = compared(node->Text);
        return entry_.Entire ? text == what_ : text.find(what_) != std::string::npos;
    }

private:
    std::string compared(const std::string& text) const { return entry_.MatchCase ? text : upperCase(text); }

    const FindEntry& entry_;
    std::string what_;
};

} // namespace

std::optional<std::string> NodeSearch::Find(const std::vector<TreeNode>& nodes, const FindEntry& entry) {
    if (entry.What.empty()) return std::nullopt;
    if (entry.What != what_) lastHit_.clear();
    what_ = entry.What;
    std::vector<const TreeNode*> all;
    addInOrder(all, nodes);
    const auto last = std::find_if(all.begin(), all.end(), [&](const TreeNode* node) { return node->Key == lastHit_; });
    const auto behind = last == all.end() ? all.begin() : last + 1;
    const Fit fits(entry);
    auto hit = std::find_if(behind, all.end(), fits);
    if (hit == all.end()) {
        hit = std::find_if(all.begin(), behind, fits);
        if (hit == behind) return std::nullopt;
    }
    lastHit_ = (*hit)->Key;
    return lastHit_;
}

} // namespace kestrane
