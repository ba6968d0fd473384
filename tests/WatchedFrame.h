// A frame that keeps what the logic told it.
#pragma once

#include "model/Session.h"

#include <string>
#include <vector>

namespace kestrane {

struct WatchedFrame : Frame {
    std::vector<std::string> Status, Errors; // texts in order, without the empty ones
    std::vector<std::string> Told;
    int Rebuilt = 0;
    std::vector<std::string> Chosen; // keys of logs, those only selected in brackets
    int Changes = 0;

    void SetPanel(Panel panel, const std::string& text) override {
        if (text.empty()) return;
        if (panel == Panel::Status) Status.push_back(text);
        if (panel == Panel::Error) Errors.push_back(text);
    }

    void Tell(const std::string& text) override { Told.push_back(text); }

    void RebuildExplorerTrees() override { ++Rebuilt; }

    void ChooseLog(const std::string& key, bool isToShow) override {
        Chosen.push_back(isToShow ? key : "[" + key + "]");
    }

    void LogValuesChanged(const clsLog&) override { ++Changes; }
};

} // namespace kestrane
