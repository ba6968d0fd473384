// What has been placed on a page before it is drawn: texts, rules and a chart.
#pragma once

#include "reports/PageDevice.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

struct PlacedPage {
    struct Words {
        double X, Top;
        std::string Text;
        PageFont Font;
        PageAlign Align = PageAlign::Left;
    };

    struct Rule {
        double Left, Top, Width;
    };

    std::vector<Words> Texts;
    std::vector<Rule> Rules;
    std::optional<PageBox> Chart; // drawn by who placed it

    void drawWords(PageDevice& device) const {
        for (const Words& text : Texts)
            device.text(text.X, text.Top, text.Text, text.Font, text.Align);
        for (const Rule& rule : Rules)
            device.rule(rule.Left, rule.Top, rule.Width);
    }
};

} // namespace kestrane
