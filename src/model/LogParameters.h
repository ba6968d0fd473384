// The figures and captions of parameters by their table (Parameters.h): the caption with a log's weighting, the figure
// in a log or a row, and whether a log can show it.
#pragma once

#include "model/Parameters.h"
#include "model/clsLog.h"
#include "model/clsLogInterval.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kestrane {

// Passed as the band text of a caption without a band.
constexpr std::string_view kNoBand = "\u00AC";

// The caption of a parameter (1..ParameterCount). With a log and a channel, the names of levels carry the channel's
// weighting. For Leq, Lmin, Lmax and Ln a band text other than kNoBand or the empty text is appended as " <band> Hz".
// For a log with channel B the channel's name is added. log may be null: then the caption has no weighting and no
// channel.
std::string VariableCaption(const Session& session, Parameter parameter, LogChannel channel, std::string_view bandText,
                            const clsLog* log);

// The caption in a log of a parameter other than an Ln; the names of levels carry the weighting of the channel (1, 2).
std::string levelCaption(const clsLog& log, LogChannel channel, Parameter parameter);

// The cumulative figure of a channel (1, 2), parameter and band (0..last; figures without bands ignore it). The
// overload flag is -1 or 0. A quantity that the channel does not have is 0.
clsValue cumulativeValue(const clsLog& log, LogChannel channel, Parameter parameter, int band);

// The bit of a cumulative figure in LogData::ReportedFigures.
constexpr std::uint64_t reportedBit(LogChannel channel, Parameter parameter) {
    return std::uint64_t{1} << ((channel == kChannelA ? 0 : ParameterCount) + parameter - 1);
}

// Whether a cumulative figure is there and is the one that the instrument reported. A figure that the program computed
// and saved is read back as if it had been reported; ReportedFigures tells the two apart.
bool isAsReported(const clsLog& log, LogChannel channel, Parameter parameter);

// The bits of all figures that are so.
std::uint64_t reportedFiguresOf(const clsLog& log);

// The figure of a row, counted from 1; row must be in 1..Count, which is not checked.
clsValue intervalValue(const clsLog& log, std::int64_t row, LogChannel channel, Parameter parameter, int band);

// The format of a figure in Pa²h. It is usual, except for a figure between 0 and 0.1, of which usual would show hardly
// more than zeros: that one gets as many decimals as three digits need ("0.0126").
std::string pa2HoursFormat(double figure, std::string_view usual);

// Whether the instrument never records this figure, whatever number the log holds for it.
bool isNeverRecorded(const clsLog& log, Parameter parameter);

// The quantity in which the rows keep a parameter of a channel. Quantity::End when no row has it, and for the overload
// flag.
Quantity intervalQuantity(LogChannel channel, Parameter parameter);
const Column<std::uint8_t>& overloadColumn(const IntervalColumns& rows, LogChannel channel);

// Makes the log's Plottable table match its data: an entry is set when the application's options allow it and the log
// holds a figure for it. Entries that are not plottable are no longer plotted either. While the log has no rows, the
// entries of kind 2 stay as they are.
void SetPlottableValues(clsLog& log);

// Reduces the Plottable table of a working copy to what a Brevik model records, by the model's name and the log's
// location type.
void RestrictToBrevik(const Session& session, clsLogOptions& options, std::string_view insName,
                      std::string_view locationType);

// The options that a log is shown with. They are its own; for the Brevik family they are reduced first, and only what
// is plottable after that is shown.
clsLogOptions displayOptions(const clsLog& log);

} // namespace kestrane
