#include "views/CopyData.h"

#include "model/Captions.h"
#include "model/Session.h"
#include "views/CumulativePanel.h"
#include "views/DisplayBy.h"
#include "views/ExposureTable.h"

namespace kestrane {

namespace {

constexpr std::string_view kRowEnd = "\r\n";
constexpr std::string_view kTableBegin =
    R"(<table border="1" cellspacing="0" cellpadding="3" style="border-collapse:collapse">)";

void appendEscaped(std::string& html, std::string_view text) {
    for (const char c : text) {
        switch (c) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\r':
        case '\n':
            break;
        default:
            html += c;
        }
    }
}

// Calls visit(part) for each part of text that ends at a separator, and for the part behind the last separator; when
// that part is empty, only if isLastKept.
template <class Visit>
void forEachPart(std::string_view text, std::string_view separator, bool isLastKept, Visit visit) {
    for (std::size_t at = 0; at < text.size() || isLastKept;) {
        const std::size_t end = text.find(separator, at);
        visit(text.substr(at, end - at));
        if (end == std::string_view::npos) return;
        at = end + separator.size();
    }
}

// Appends a row. Its first cell is a caption, because it says what the row is.
void appendRow(std::string& html, std::string_view line, bool isHeading) {
    bool isFirst = true;
    html += "<tr>";
    forEachPart(line, "\t", true, [&](std::string_view cell) {
        const bool isCaption = isHeading || isFirst;
        html += isHeading ? "<th scope=\"col\">" : isFirst ? "<th scope=\"row\">" : "<td>";
        appendEscaped(html, cell);
        html += isCaption ? "</th>" : "</td>";
        isFirst = false;
    });
    html += "</tr>";
}

std::string paragraph(std::string_view text) {
    std::string html = "<p>";
    appendEscaped(html, text);
    return html += "</p>";
}

std::string htmlTable(std::string_view text, bool hasHeading) {
    std::string html(kTableBegin);
    html.reserve(text.size() * 2);
    forEachPart(text, kRowEnd, false, [&](std::string_view line) {
        appendRow(html, line, hasHeading);
        hasHeading = false;
    });
    return html += "</table>";
}

void appendLine(std::string& text, const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i)
        text += (i == 0 ? "" : "\t") + cells[i];
    text += kRowEnd;
}

} // namespace

ClipboardForms copiedLines(std::string text, bool hasHeading) {
    ClipboardForms forms;
    forms.Html = htmlTable(text, hasHeading);
    forms.Text = std::move(text);
    return forms;
}

ClipboardForms copiedTable(const clsLog& log, const CopiedRows& rows, bool hasHeading) {
    ClipboardForms forms = copiedLines(rows.Text, hasHeading);
    const Session& session = log.session();
    const std::string name = log.Name.empty() ? std::string() : withColon(session, log.Name) + " ";
    forms.Html =
        paragraph(name + session.LoadText(Text::CriterionLevel) + " " + std::to_string(log.Criterion) + " dB, " +
                  session.LoadText(Text::ExchangeRate) + " " + std::to_string(log.Exchange) + " dB") +
        forms.Html;
    if (rows.HasExcluded) forms.Html += paragraph("*" + session.LoadText(Text::IntervalRemoved));
    return forms;
}

ClipboardForms withLine(ClipboardForms forms, const std::string& line) {
    if (line.empty() || forms.Text.empty()) return forms;
    forms.Text.insert(0, line + std::string(kRowEnd));
    forms.Html.insert(0, paragraph(line));
    return forms;
}

ClipboardForms copiedCells(const CellTable& table) {
    std::string text;
    appendLine(text, table.Captions);
    for (std::size_t row = 0; row < table.RowCount; ++row) {
        std::vector<std::string> cells;
        for (std::size_t column = 0; column < table.Captions.size(); ++column)
            cells.push_back(table.Cell(row, column));
        appendLine(text, cells);
    }
    return copiedLines(std::move(text), true);
}

ClipboardForms copiedValues(const ChartData& chart, const Locale& locale) {
    return copiedLines(chartValuesText(chart, locale), true);
}

ClipboardForms copiedPanel(const clsLog& log, int band, PanelForm panel) {
    std::string text;
    const bool hasChannelB = log.IsChannelBOn && showsChannelB(panel);
    for (const PanelRow& row : cumulativePanel(log, band)) {
        if (!isShownIn(panel, row.Section)) continue;
        const bool hasB = hasChannelB && !row.B.Name.empty() && !row.B.Text.empty();
        if (row.A.Text.empty() && !hasB) continue;
        std::vector<std::string> cells = {row.Caption, valueText(row.A, {})};
        if (hasB) cells.push_back(valueText(row.B, {}));
        appendLine(text, cells);
    }
    ClipboardForms forms = copiedLines(std::move(text), false);
    return band > 0 ? withLine(std::move(forms), bandLabel(log, band)) : forms;
}

ClipboardForms copiedExposures(const clsLog& log) {
    const ExposureTable table = exposureTable(log);
    std::string text;
    appendLine(text, exposureCaptions(log.session()));
    for (const std::vector<std::string>& row : table.Rows)
        appendLine(text, row);
    appendLine(text, table.Totals);
    return copiedLines(std::move(text), true);
}

ClipboardForms copiedComparison(const HPDComparison& comparison) {
    std::string lines; // as cells; in the text form blanks separate them
    for (const auto& [caption, value] : comparison.Panel)
        appendLine(lines, {caption, value});
    appendLine(lines, {comparison.ResultLine});
    ClipboardForms forms = copiedLines(lines, false);
    forms.Text = ReplaceText(std::move(lines), "\t", " ");
    return forms;
}

} // namespace kestrane
