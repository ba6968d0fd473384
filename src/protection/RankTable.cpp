#include "protection/RankTable.h"

#include "calc/BandLevels.h"
#include "model/Acoustics.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "platform/TabbedText.h"
#include "protection/Attenuation.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr double kPercent = 100;

struct VerdictWords {
    const char* symbol;
    Text::Id words;
};

// By Verdict.
constexpr VerdictWords kVerdicts[] = {{"\u2713", Text::VerdictGood},
                                      {"\u25CB", Text::VerdictAcceptable},
                                      {"\u25BD", Text::VerdictOver},
                                      {"\u2717", Text::VerdictInsufficient},
                                      {"\u2013", Text::VerdictNone}};

// The standards have a column each; those of NRR that stand for a kind of protector share one.
struct StandardColumn {
    Text::Id caption;
    std::string_view method; // with which its figures begin
};

constexpr StandardColumn kStandards[] = {{Text::RankOctave, "Octave"},
                                         {Text::RankHML, "HML"},
                                         {Text::RankSNR, "SNR"},
                                         {Text::RankNrrB, "NRR OSHA App. B"},
                                         {Text::RankNrrHalf, "NRR OSHA 50 %"},
                                         {Text::RankNrrNiosh, "NRR NIOSH"}};

std::string number(const Session& session, const std::optional<double>& level) {
    return level ? formatNumber(*level, "##0.0", session.locale) : std::string();
}

// Of a plug the first of the deratings, that of formable ones.
std::optional<double> figureOf(const std::vector<StandardFigure>& figures, std::string_view method) {
    const auto found =
        std::ranges::find_if(figures, [&](const StandardFigure& figure) { return figure.Method.starts_with(method); });
    return found == figures.end() ? std::nullopt : std::optional(found->Level);
}

std::optional<double> withTimeWithout(const RankTable& table, const std::optional<double>& whileWorn) {
    if (!whileWorn || table.Worn >= 1) return whileWorn;
    if (!table.Unprotected) return std::nullopt;
    return levelPartlyProtected(*table.Unprotected, *whileWorn, table.Worn);
}

} // namespace

std::string verdictText(const Session& session, Verdict verdict) {
    const VerdictWords& words = kVerdicts[static_cast<std::size_t>(verdict)];
    return std::string(words.symbol) + " " + session.LoadText(words.words);
}

std::optional<double> levelUnderBoth(const RankTable& table, const RankTable::Row& first,
                                     const RankTable::Row& second) {
    constexpr double kSecondProtector = 5; // dB
    if (!first.WhileWorn || !second.WhileWorn || first.Protector->Tipe == second.Protector->Tipe) return std::nullopt;
    return withTimeWithout(table, std::min(*first.WhileWorn, *second.WhileWorn) - kSecondProtector);
}

RankTable rankTable(const clsLog& log, const std::vector<clsHP>& protectors, const clsOptions& options,
                    CorrectionKind iCorrectionFactor, double worn) {
    const Session& session = log.session();
    RankTable table;
    for (const Text::Id caption :
         {Text::ProtectorName, Text::ProtectorType, Text::FigureVerdict, Text::RankMethod, Text::RankTold})
        table.Captions.push_back(session.LoadText(caption));
    for (const StandardColumn& column : kStandards)
        table.Captions.push_back(session.LoadText(column.caption));
    table.Captions.push_back(session.LoadText(Text::RankPlus4));

    table.Unprotected = aWeightedLeq(log);
    table.Worn = worn;
    for (const RankedProtector& ranked : rankProtectors(log, protectors, options, iCorrectionFactor)) {
        const bool isTold = ranked.Result != kCannotCompute;
        RankTable::Row row{ranked.Protector,
                           {ranked.Protector->Name,
                            std::string(ranked.Protector->GetTipeStr()),
                            {},
                            ranked.Method,
                            isTold ? number(session, ranked.Result) : std::string()},
                           ranked.Level,
                           withTimeWithout(table, ranked.Level),
                           ranked.Verdict};
        for (const StandardColumn& column : kStandards)
            row.Cells.push_back(number(session, figureOf(ranked.Figures, column.method)));
        const double allowance = iCorrectionFactor == kCorrectionFourDecibels ? 0 : kRealWorldAllowance;
        row.Cells.push_back(
            number(session, ranked.Standard ? std::optional(*ranked.Standard + allowance) : std::nullopt));
        if (row.WhileWorn && worn < 1)
            row.Verdict = row.Level ? verdictOf(*row.Level, options.ActionLevel) : Verdict::None;
        row.Cells[table.VerdictColumn] =
            verdictText(session, row.Verdict) +
            (row.Level && worn < 1 ? " (" + number(session, row.Level) + ")" : std::string());
        table.Rows.push_back(std::move(row));
    }
    if (worn < 1)
        table.Note = ReplaceText(session.LoadText(Text::RankWornNote), "^",
                                 formatNumber(worn * kPercent, "##0", session.locale));
    return table;
}

std::string rankText(const RankTable& table) {
    std::string text;
    addTabbedLine(text, table.Captions);
    for (const RankTable::Row& row : table.Rows)
        addTabbedLine(text, row.Cells);
    if (!table.Note.empty()) addTabbedLine(text, {table.Note});
    return text;
}

} // namespace kestrane
