// The protectors of a list for one log as a table of texts, with the best first: the results of the program's own
// comparison and of each standard, and the verdict. It also estimates two protectors worn together, and one that is not
// worn all of the time.
#pragma once

#include "protection/Ranking.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// The verdict as a symbol and a word, such as "✓ good".
std::string verdictText(const Session& session, Verdict verdict);

struct RankTable {
    struct Row {
        const clsHP* Protector;
        std::vector<std::string> Cells;
        std::optional<double> WhileWorn; // dB
        std::optional<double> Level;     // dB, on which the verdict is based; includes the time without the protector
        kestrane::Verdict Verdict;
    };

    std::vector<std::string> Captions;
    std::vector<Row> Rows; // they point into the list
    static constexpr std::size_t VerdictColumn = 2;
    std::string Note; // says for how much of the time the protectors are worn; empty for all of it

    std::optional<double> Unprotected; // dB(A)
    double Worn = 1;                   // share of the time
};

// worn is the share of the time during which the protector is worn, from 0 to 1.
RankTable rankTable(const clsLog& log, const std::vector<clsHP>& protectors, const clsOptions& options,
                    CorrectionKind iCorrectionFactor, double worn);

// The lines of the table with tabs between the cells, CR LF behind each; the captions first, the note last.
std::string rankText(const RankTable& table);

// The level in dB under two protectors of the table worn together: the higher rating and 5 dB more (OSHA), with the
// time without them. This is an estimate. Nothing when one of the two has no level, and for two of the same type, of
// which nobody can wear both.
std::optional<double> levelUnderBoth(const RankTable& table, const RankTable::Row& first, const RankTable::Row& second);

} // namespace kestrane
