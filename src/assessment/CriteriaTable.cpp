#include "assessment/CriteriaTable.h"

#include "assessment/Criteria.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "platform/Numbers.h"
#include "platform/TabbedText.h"

namespace kestrane {

namespace {

using Figures = CriterionFigures;

constexpr const char* kNone = "\u2013";
constexpr const char* kExceeded = "\u2717";
constexpr const char* kBelow = "\u2713";

std::string number(const clsLog& log, const std::optional<double>& figure, std::string_view pattern) {
    return figure ? formatNumber(*figure, pattern, log.session().locale) : std::string(kNone);
}

std::string limits(const clsLog& log, const Figures& figures) {
    std::string text;
    for (const CriterionLimit& limit : figures.Limits) {
        const char* symbol = !limit.Exceeded ? kNone : *limit.Exceeded ? kExceeded : kBelow;
        text += (text.empty() ? "" : "  ") + std::string(symbol) + " " +
                number(log, limit.Value, limit.IsDose ? "##0" : "##0 dB") + (limit.IsDose ? " %" : "");
    }
    return text;
}

std::string remark(const Figures& figures) {
    return figures.Note + (figures.Note.empty() || figures.Missing.empty() ? "" : "; ") + figures.Missing;
}

struct TableColumn {
    Text::Id caption;
    std::string (*cell)(const clsLog& log, const Figures& figures);
};

template <auto member>
std::string level(const clsLog& log, const Figures& figures) {
    return number(log, figures.*member, "##0.0");
}

template <auto member>
std::string setting(const clsLog& log, const Figures& figures) {
    return number(log, figures.*member, "##0.0#");
}

// By CriteriaColumn.
constexpr TableColumn kColumns[] = {
    {Text::CriteriaColumn, [](const clsLog&, const Figures& figures) { return figures.Title; }},
    {Text::CriteriaLex, level<&Figures::LEX8h>},
    {Text::CriteriaProjectedDose, level<&Figures::ProjectedDose>},
    {Text::CriteriaProjectedTwa, level<&Figures::ProjectedTWA>},
    {Text::CriteriaLimits, limits},
    {Text::CriteriaRemark, [](const clsLog&, const Figures& figures) { return remark(figures); }},
    {Text::CriteriaDose, level<&Figures::Dose>},
    {Text::CriteriaTwa, level<&Figures::TWA>},
    {Text::CriteriaLavg, level<&Figures::LAVG>},
    {Text::CriteriaLevel, setting<&Figures::Criterion>},
    {Text::CriteriaThreshold, setting<&Figures::Threshold>},
    {Text::CriteriaExchange, setting<&Figures::Exchange>},
};

// A threshold of 0 dB leaves nothing out.
OwnCriterion ownOf(const clsLog& log) {
    const double threshold = isNumeric(log.Threshold, {}) ? toDouble(log.Threshold, {}) : 0;
    return {static_cast<double>(log.Criterion), threshold, static_cast<double>(log.Exchange)};
}

} // namespace

CriteriaTable criteriaTable(const clsLog& log) {
    const bool hasOwn = log.Criterion > 0 && log.Exchange > 0;
    const Criteria criteria = criteriaOf(log, hasOwn ? std::optional(ownOf(log)) : std::nullopt);
    CriteriaTable table;
    for (const TableColumn& column : kColumns)
        table.Captions.push_back(log.session().LoadText(column.caption));
    for (const Figures& figures : criteria.All) {
        std::vector<std::string>& row = table.Rows.emplace_back();
        for (const TableColumn& column : kColumns)
            row.push_back(column.cell(log, figures));
    }
    return table;
}

std::string criteriaText(const CriteriaTable& table) {
    return tabbedText(table.Captions, table.Rows);
}

} // namespace kestrane
