#include "files/OpenedFile.h"
#include "files/XmlWriter.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace kestrane {
namespace {

int any(int from, int to) {
    return *rc::gen::inRange(from, to + 1);
}

bool coin() {
    return any(0, 1) != 0;
}

void setAny(clsValue& value) {
    if (coin()) value.Value(*rc::gen::element(0.1F, -61.25F, 100.0F, 1E-05F, 16777217.0F, 3.4E38F, 1E-40F));
}

void setAny(clsDate& date) {
    if (coin())
        date.setDate(
            std::to_string(any(1, 28)) + "/" + std::to_string(any(1, 12)) + "/" + std::to_string(any(1901, 2100)), {});
}

void setAny(clsTime& time, int mostHours) {
    time = clsTime();
    time.setTimeFromSeconds(any(0, mostHours * 3600 + 3599));
}

// Texts without quotation marks and line ends, which do not come back; nor does what looks escaped.
std::string anyText() {
    const auto pieces = *rc::gen::container<std::vector<std::string>>(
        rc::gen::element<std::string>("a", " ", "/", "<b>", "|", "é", "€", "😀", ";", "&", "#39", "]]>", "--"));
    std::string text;
    for (const std::string& piece : pieces)
        text += piece;
    return text.find("&#39;") == std::string::npos ? text : std::string();
}

void fillRows(clsLog& log) {
    const int count = any(0, 8);
    for (int i = 0; i < count; ++i) {
        clsLogInterval row;
        row.Initialize(log.objLogShared);
        setAny(row.StartDate);
        for (clsTime* time : {&row.StartTime, &row.LminTimeA, &row.LmaxTimeA, &row.PeakTimeA})
            setAny(*time, 99);
        for (const RowMember& m : kRowMembers) {
            if (log.IsChannelBOn || m.quantity < Quantity::LeqB) setAny(row.*m.member);
        }
        const int band = any(0, lastBand(log.Mode()));
        setAny(row.LeqA(band));
        setAny(row.LmaxA(lastBand(log.Mode())));
        setAny(row.LnA(any(1, NumberOfLns), band));
        row.OverloadedA = coin();
        row.OverloadedB = log.IsChannelBOn && coin();
        log.LogIntervals.Add(row);
    }
    if (count > 0 && coin()) log.LogIntervals.CutIntervals = {"1~1", anyText()};
    log.LogIntervals.IntervalsToBeIncluded = !log.LogIntervals.CutIntervals.empty() && coin();
}

std::unique_ptr<clsLog> anyLog(Session& session) {
    auto log = std::make_unique<clsLog>(session);
    log->Mode(toLogMode(any(0, 2)));
    log->Name = anyText();
    log->Note = anyText() + "x"; // a note of a row would stand in for none
    log->IsLoggingOverLoaded = true;
    log->Criterion = static_cast<std::int16_t>(any(1, 32767));
    log->Exchange = static_cast<std::int16_t>(any(-32768, -1));
    log->FullyCalculated = coin();
    log->Interval = any(0, 100000);
    log->MeasurementTimeFromInstrument = any(0, 2147483646);
    log->Threshold = anyText();
    if (log->Mode() == modeBroadband && coin()) log->LocationType(NoiseAtWorkLocation);
    for (clsDate* date : {&log->StartDate, &log->EndDate, &log->CalibDate, &log->FactoryCalibDate, &log->PeakCumDateA})
        setAny(*date);
    for (clsTime* time : {&log->StartTime, &log->EndTime, &log->CalibTime, &log->LminCumTimeA})
        setAny(*time, 23);
    if (coin()) log->TimeWeightA("Slow");
    if (coin()) log->FreqWeightB("C");
    const int band = any(0, lastBand(log->Mode()));
    setAny(log->LeqCumA(band));
    setAny(log->LminCumA(lastBand(log->Mode())));
    const int ln = any(1, NumberOfLns);
    log->LnNumberA(ln, static_cast<std::int16_t>(any(1, 99)));
    log->LnCumA(ln, band).Value(50);
    log->IsLnNumbersOn = true;
    for (clsValue* value : {&log->PeakCumA, &log->DoseMTCumA, &log->LepdMTCumA, &log->Pa2hCumA, &log->Ltm5CumA})
        setAny(*value);
    log->IsChannelBOn = coin();
    if (!log->IsChannelBOn) log->FreqWeightB("");
    if (log->IsChannelBOn) {
        for (clsValue* value : {&log->LeqCumB, &log->PeakCumB, &log->LepdMTCumB, &log->Pa2hCumB})
            setAny(*value);
    }
    fillRows(*log);
    if (coin()) {
        log->SaveDoseCalc = true;
        clsDoseLogSample& sample = log->DoseLogIntervals.emplace_back();
        sample.Criterion = 85;
        setAny(sample.SampleDate);
        setAny(sample.Duration, 200);
        sample.Note = anyText();
        setAny(sample.Leq);
    }
    log->objLogOptions.IsPlotted = PlotTable();
    log->objLogOptions.IsPlotted.set(static_cast<LogChannel>(any(1, 2)), static_cast<FigureKind>(any(1, 2)),
                                     *rc::gen::element(eLeq, eDoseMT, eTWA, eLn(ln)), true);
    return log;
}

TEST(RoundTrip, WhatIsSavedIsReadBack) {
    EXPECT_TRUE(rc::check([] {
        OpenedFile saved("");
        const int collections = any(0, 2);
        for (int c = 0; c < collections; ++c) {
            auto data = std::make_unique<clsInsData>(saved.session);
            data->InsName(*rc::gen::element("Corvane", "TR324", "Brevik S"));
            data->InsType = static_cast<std::int16_t>(any(-32768, 32767));
            for (int logs = any(1, 3); logs > 0; --logs) {
                auto log = anyLog(saved.session);
                log->InsName = data->InsName();
                data->append(std::move(log), 0);
            }
            saved.file.InstrumentDatas.push_back(std::move(data));
        }
        FileSave(saved.file);
        OpenedFile read(readText(saved.file.FileName));
        RC_ASSERT(read.isOpen);
        for (const auto& data : read.file.InstrumentDatas) {
            for (const LogCollection* logs : {&data->Locations, &data->Octaves, &data->ThirdOctaves})
                for (const auto& log : *logs)
                    OpenedFile::loadRows(*log);
        }
        RC_ASSERT(DocumentText(read.file, true) == DocumentText(saved.file, true));
        for (std::size_t i = 0; i < saved.file.InstrumentDatas.size(); ++i) {
            for (const LogMode mode : {modeBroadband, modeFullOctave, modeThirdOctave}) {
                const LogCollection& before = saved.file.InstrumentDatas[i]->logsOf(mode);
                for (std::size_t n = 0; n < before.size(); ++n) {
                    const clsLog& after = *read.file.InstrumentDatas.at(i)->logsOf(mode).at(n);
                    RC_ASSERT(after.Note == before[n]->Note && after.Name == before[n]->Name);
                    RC_ASSERT(after.PeakCumA == before[n]->PeakCumA);
                    RC_ASSERT(after.LogIntervals.Count() == before[n]->LogIntervals.Count());
                }
            }
        }
    }));
}

} // namespace
} // namespace kestrane
