// The figures and captions of parameters by their table (Parameters.h): the caption with a log's weighting, the figure
// in a log or a row, and whether a log can show it.
#pragma once

#include "model/Parameters.h"
#include "model/clsLog.h"
#include "model/clsLogInterval.h"

#include <string>
#include <string_view>

namespace kestrane {

// Stands for no band in a caption.
constexpr std::string_view kNoBand = "\u00AC";
constexpr int kNoChannel = -1;

// The caption of a parameter (1..ParameterCount). With a log and a channel the level names carry its weighting; a band
// text other than kNoBand or empty is appended to Leq, Lmin, Lmax and Ln as " <band> Hz"; a log with channel B names
// the channel. log may be null.
std::string VariableCaption(const Session& session, int parameter, int channel, std::string_view bandText,
                            const clsLog* log);

// The caption of a parameter other than an Ln in a log: the level names carry the weighting of the channel (1, 2).
std::string levelCaption(const clsLog& log, int channel, int parameter);

// The cumulative figure of a channel (1, 2), parameter and band (0..last; figures without bands ignore it). Overload is
// -1 or 0. A quantity that a channel does not have is 0.
clsValue cumulativeValue(const clsLog& log, int channel, int parameter, int band);

// The same of a row, counted from 1.
clsValue intervalValue(const clsLog& log, std::int64_t row, int channel, int parameter, int band);

// Where the rows keep a parameter of a channel. Quantity::End: no row has it, or it is the overload flag.
Quantity intervalQuantity(int channel, int parameter);
const Column<std::uint8_t>& overloadColumn(const IntervalColumns& rows, int channel);

// Matches the log's Plottable table to its data: what the application's options allow and the log holds a figure for.
// Cumulative entries that fall away are not plotted either. Rows are looked at when the log has any.
void SetPlottableValues(clsLog& log);

// Cuts the Plottable table of a working copy to what a Brevik model records, by its name and the log's location type.
void RestrictToBrevik(const Session& session, clsLogOptions& options, std::string_view insName,
                      std::string_view locationType);

// The options that a log is shown with: its own, cut for the Brevik family (there, shown is what is also plottable).
clsLogOptions displayOptions(const clsLog& log);

} // namespace kestrane
