#include "cli/Json.h"

#include "calc/BandLevels.h"
#include "calc/Recalculation.h"
#include "explorer/NodeKeys.h"
#include "files/Loaders.h"
#include "model/LogParameters.h"
#include "model/LogTime.h"
#include "model/Session.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <string>

namespace kestrane {

std::string jsonText(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

namespace {

Json valueJson(const clsValue& value) {
    return {{"Value", singleJson(value.Value())}, {"CalcValue", singleJson(value.CalcValue())}};
}

Json bandsJson(const BandValues& values) {
    Json list = Json::array();
    for (int band = 0; band <= values.last(); ++band)
        list.push_back(valueJson(values(band)));
    return list;
}

Json lnsJson(const LnValues& values) {
    Json list = Json::array();
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        list.push_back(bandsJson(values.of(ln)));
    return list;
}

Json plotJson(const PlotTable& table) {
    Json all = Json::object();
    for (const Parameter parameter : kParameters) {
        all[std::string(parameterInfo(parameter).name)] = {{"A-C", table(kChannelA, kCumulative, parameter)},
                                                           {"A-I", table(kChannelA, kInterval, parameter)},
                                                           {"B-C", table(kChannelB, kCumulative, parameter)},
                                                           {"B-I", table(kChannelB, kInterval, parameter)}};
    }
    return all;
}

Json headerJson(const clsLog& log, const std::string& key) {
    return {
        {"Key", key},
        {"Name", log.Name},
        {"Mode", log.Mode()},
        {"ModeText", log.ModeWord()},
        {"LocationType", log.LocationType()},
        {"TestLocationType", log.TestLocationType()},
        {"OctaveType", log.OctaveType()},
        {"InsName", log.InsName},
        {"FirmwareVersion", singleJson(log.FirmwareVersion)},
        {"Number", log.Number},
        {"Criterion", log.Criterion},
        {"Exchange", log.Exchange},
        {"Threshold", log.Threshold},
        {"Range", log.Range},
        {"Region", log.Region},
        {"Note", log.Note},
        {"IsChannelBOn", log.IsChannelBOn},
        {"IsLnNumbersOn", log.IsLnNumbersOn},
        {"IsLoggingOverLoaded", log.IsLoggingOverLoaded},
        {"Interval", log.Interval},
        {"IsErraticIntervals", log.IsErraticIntervals},
        {"FullyCalculated", log.FullyCalculated},
        {"IsZoomed", log.IsZoomed},
        {"IsParent5Mins", log.IsParent5Mins},
        {"SaveDoseCalc", log.SaveDoseCalc},
        {"MeasurementTimeFromInstrument", log.MeasurementTimeFromInstrument},
        {"FactoryCalibDate", log.FactoryCalibDate.Format()},
        {"CalibDate", log.CalibDate.Format()},
        {"CalibTime", log.CalibTime.hh_mm_ss()},
        {"StartDate", log.StartDate.Format()},
        {"StartTime", log.StartTime.hh_mm_ss()},
        {"EndDate", log.EndDate.Format()},
        {"EndTime", log.EndTime.hh_mm_ss()},
        {"FreqWeightA", log.FreqWeightA()},
        {"FreqWeightB", log.FreqWeightB()},
        {"TimeWeightA", log.TimeWeightA()},
        {"TimeWeightB", log.TimeWeightB()},
        {"LeqTextA", log.LeqTextA()},
        {"LminTextA", log.LminTextA()},
        {"LmaxTextA", log.LmaxTextA()},
        {"PeakTextA", log.PeakTextA()},
        {"LeqTextB", log.LeqTextB()},
        {"LminTextB", log.LminTextB()},
        {"LmaxTextB", log.LmaxTextB()},
        {"PeakTextB", log.PeakTextB()},
        {"IntervalText", log.IntervalText()},
        {"LogLengthText", LogLengthText(log)},
        {"ExposureTime", singleJson(log.objLogOptions.ExposureTime)},
    };
}

Json figuresJson(const clsLog& log) {
    Json numbers = Json::array();
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        numbers.push_back(log.LnNumberA(ln));
    Json figures = {{"LnNumberA", numbers}, {"LnCumA", lnsJson(log.LnCumA)}};
    for (const ParameterInfo& info : parameters()) {
        if (info.bands != nullptr) figures[std::string(info.A.cumulativeName)] = bandsJson(log.*info.bands);
        for (const LogChannel channel : kChannels) {
            const ParameterSource& source = channel == kChannelA ? info.A : info.B;
            if (source.cumulative == nullptr) continue;
            Json& figure = figures[std::string(source.cumulativeName)] = valueJson(log.*source.cumulative);
            if (!reportedNote(log, channel, info.parameter).empty()) figure["Reported"] = true;
            const bool isThere = (log.*source.cumulative).CalcValue() != 0;
            if (isThere && isExposureNotAWeighted(log, channel, info.parameter)) figure["NotAWeighted"] = true;
        }
    }
    figures["TWA8CumA"] = singleJson(TWA8CumA(log));
    figures["LminCumDateA"] = log.LminCumDateA.Format();
    figures["LminCumTimeA"] = log.LminCumTimeA.hh_mm_ss();
    figures["LmaxCumDateA"] = log.LmaxCumDateA.Format();
    figures["LmaxCumTimeA"] = log.LmaxCumTimeA.hh_mm_ss();
    figures["PeakCumDateA"] = log.PeakCumDateA.Format();
    figures["PeakCumTimeA"] = log.PeakCumTimeA.hh_mm_ss();
    figures["Plottable"] = plotJson(log.objLogOptions.Plottable);
    figures["IsPlotted"] = plotJson(log.objLogOptions.IsPlotted);
    Json peaks = Json::array();
    for (const clsPeak& peak : log.Peaks) {
        peaks.push_back({{"PeakTime", peak.PeakTime.hh_mm_ss()}, {"SampleDuration", singleJson(peak.SampleDuration)}});
    }
    figures["Peaks"] = peaks;
    return figures;
}

// The levels of a row for one channel and parameter; a list of all bands when the parameter has bands.
Json rowLevelsJson(const clsLog& log, std::int64_t row, LogChannel channel, Parameter parameter) {
    if (!hasBands(intervalQuantity(channel, parameter)))
        return valueJson(intervalValue(log, row, channel, parameter, 0));
    Json list = Json::array();
    for (int band = 0; band <= lastBand(log.Mode()); ++band)
        list.push_back(valueJson(intervalValue(log, row, channel, parameter, band)));
    return list;
}

// A row as JSON; index is counted from 1.
Json rowJson(const clsLog& log, std::int64_t index) {
    const clsLogInterval row = log.LogIntervals.Item(index);
    Json json = {{"isExcluded", row.isExcluded},          {"mLngInterval", row.mLngInterval},
                 {"mIntCriterion", row.mIntCriterion},    {"mIntExchange", row.mIntExchange},
                 {"StartDate", row.StartDate.Format()},   {"StartTime", row.StartTime.hh_mm_ss()},
                 {"LminTimeA", row.LminTimeA.hh_mm_ss()}, {"LmaxTimeA", row.LmaxTimeA.hh_mm_ss()},
                 {"PeakTimeA", row.PeakTimeA.hh_mm_ss()}, {"OverloadedA", row.OverloadedA},
                 {"OverloadedB", row.OverloadedB}};
    for (const LogChannel channel : kChannels) {
        for (const ParameterInfo& info : parameters()) {
            const std::string_view name = sourceOf(channel, info.parameter).rowName;
            if (!name.empty()) json[std::string(name)] = rowLevelsJson(log, index, channel, info.parameter);
        }
    }
    Json& lns = json["LnA"] = Json::array();
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        lns.push_back(rowLevelsJson(log, index, kChannelA, eLn(ln)));
    return json;
}

// The members of an object without its braces.
std::string members(const Json& object) {
    const std::string text = jsonText(object);
    return text.substr(1, text.size() - 2);
}

// Calls write(item) for each item, with the brackets and commas of a JSON array around them.
template <class Items, class Write>
void writeArray(std::ostream& out, const Items& items, Write write) {
    out << '[';
    bool isFirst = true;
    for (const auto& item : items) {
        if (!isFirst) out << ',';
        isFirst = false;
        write(item);
    }
    out << ']';
}

} // namespace

Json singleJson(float value) {
    return toDouble(singleText(value), Locale{});
}

Json exposureJson(const clsLog& log) {
    Json rows = Json::array();
    for (const clsDoseLogSample& row : log.DoseLogIntervals) {
        rows.push_back({{"Criterion", row.Criterion},
                        {"Exchange", row.Exchange},
                        {"SampleDate", row.SampleDate.Format()},
                        {"SampleTime", row.SampleTime.hh_mm_ss()},
                        {"Note", row.Note},
                        {"Leq", singleJson(row.Leq.Value())},
                        {"Duration", row.Duration.hh_mm_ss()},
                        {"Lex", singleJson(row.getLex().Value())},
                        {"Dose", singleJson(row.getDose().Value())},
                        {"IsIncluded", row.IsIncluded}});
    }
    return rows;
}

void writeLog(std::ostream& out, const clsLog& log, const std::string& key, bool withIntervals) {
    const clsLogIntervals& rows = log.LogIntervals;
    out << '{' << members(headerJson(log, key)) << ',' << members(figuresJson(log)) << ",\"LogIntervals\":{"
        << members({{"Count", rows.Count()},
                    {"CutIntervals", rows.CutIntervals},
                    {"IntervalsToBeIncluded", rows.IntervalsToBeIncluded}});
    if (withIntervals) {
        out << ",\"Items\":[";
        for (std::int64_t index = 1; index <= rows.Count(); ++index) {
            if (index > 1) out << ',';
            out << jsonText(rowJson(log, index));
        }
        out << ']';
    }
    out << "},\"DoseLogIntervals\":" << jsonText(exposureJson(log)) << '}';
}

void writeDocument(std::ostream& out, clsFile& file, bool withIntervals) {
    out << '{'
        << members({{"FileName", file.FileName},
                    {"ShortenedFileName", file.ShortenedFileName()},
                    {"IsOldStyle", file.IsOldStyle()},
                    {"IsChanged", IsChanged(file)}})
        << ",\"InstrumentDatas\":";
    writeArray(out, file.InstrumentDatas, [&](const std::unique_ptr<clsInsData>& data) {
        out << '{'
            << members({{"Key", dataKey(*data, file)},
                        {"NameX", data->NameX},
                        {"InsName", data->InsName()},
                        {"InsSerial", data->InsSerial},
                        {"InsType", data->InsType},
                        {"FirmwareVersion", singleJson(data->FirmwareVersion)}});
        const auto writeLogs = [&](const char* name, const LogCollection& logs) {
            out << ",\"" << name << "\":";
            writeArray(out, logs, [&](const std::unique_ptr<clsLog>& log) {
                writeLog(out, *log, logKey(*log, *data, file), withIntervals);
            });
        };
        writeLogs("Locations", data->Locations);
        writeLogs("Octaves", data->Octaves);
        writeLogs("ThirdOctaves", data->ThirdOctaves);
        out << '}';
    });
    out << '}';
}

Json treeJson(const std::vector<TreeNode>& nodes) {
    Json list = Json::array();
    for (const TreeNode& node : nodes) {
        list.push_back(
            {{"Key", node.Key}, {"Text", node.Text}, {"Image", node.Image}, {"Children", treeJson(node.Children)}});
    }
    return list;
}

} // namespace kestrane
