// A frame that keeps what the logic told it.
#pragma once

#include "model/Session.h"

#include <string>
#include <vector>

namespace kestrane {

struct WatchedFrame : Frame {
    std::vector<std::string> Status, Errors; // texts in order, without the empty ones
    int Rebuilt = 0;
    int Changes = 0;

    void SetPanel(Panel panel, const std::string& text) override {
        if (text.empty()) return;
        if (panel == Panel::Status) Status.push_back(text);
        if (panel == Panel::Error) Errors.push_back(text);
    }

    void RebuildExplorerTrees() override { ++Rebuilt; }

    void LogValuesChanged(const clsLog&) override { ++Changes; }
};

} // namespace kestrane
