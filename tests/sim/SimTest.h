// A log of known figures for the instruments of the simulator, and bytes written as hexadecimal digits.
#pragma once

#include "TestSession.h"
#include "sim/Holdings.h"
#include "sim/Instrument.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace kestrane {

// The bytes of hexadecimal pairs with blanks between: "02 01 00 03".
inline std::string bytes(std::string_view hex) {
    std::string out;
    for (std::size_t at = 0; at + 1 < hex.size(); at += 3)
        out += static_cast<char>(std::stoi(std::string(hex.substr(at, 2)), nullptr, 16));
    return out;
}

inline std::string joined(const Reply& reply) {
    std::string all;
    for (const Piece& piece : reply.pieces)
        all += piece.bytes;
    return all;
}

struct SimTest : testing::Test, TestSession {
    clsLog log{session};
    clsLog octave{session};

    SimTest() {
        log.Name = "Press";
        log.LocationType(NoiseAtWorkLocation);
        log.Criterion = 85;
        log.Exchange = 3;
        log.Interval = 120;
        log.Threshold = "70";
        log.FreqWeightA("A");
        log.TimeWeightA("Slow");
        log.StartDate.setDate("26/11/2024", {});
        log.StartTime.setTime("13:05:07", {});
        log.EndDate.setDate("26/11/2024", {});
        log.EndTime.setTime("13:09:07", {});
        log.CalibDate.setDate("25/11/2024", {});
        log.CalibTime.setTime("09:10:11", {});
        log.FactoryCalibDate.setDate("04/12/2023", {});
        log.LmaxCumDateA = log.PeakCumDateA = log.LminCumDateA = log.StartDate;
        log.LmaxCumTimeA.setTime("13:06:01", {});
        log.PeakCumTimeA.setTime("13:06:02", {});
        log.LminCumTimeA.setTime("13:06:03", {});
        log.LeqCumA(0).Value(85.25F); // 853 in tenths
        log.LminCumA(0).Value(60.1F);
        log.LmaxCumA(0).Value(96.5F);
        log.PeakCumA.Value(118.2F);
        log.DoseETCumA.Value(106.8F);
        log.DoseMTCumA.Value(0.9F);
        log.DoseHourA.Value(13.4F);
        log.LepdETCumA.Value(85.3F);
        log.LepdMTCumA.Value(63.5F);
        log.SELCumA.Value(109);
        log.Pa2hCumA.Value(1.075F);
        log.LnNumberA(1, 50);
        log.LnNumberA(2, 10);
        log.LnNumberA(3, 90);
        log.LnCumA(1, 0).Value(80);
        log.LnCumA(2, 0).Value(88);
        log.LnCumA(3, 0).Value(70);
        addRow("13:05:07", 84, true);
        addRow("13:07:07", 86, false);

        octave.Mode(modeFullOctave);
        octave.Name = "Fan";
        octave.StartDate = log.StartDate;
        octave.StartTime = log.StartTime;
        octave.FreqWeightA("Z");
        octave.TimeWeightA("Fast");
        for (int band = 0; band <= octave.e("Last"); ++band)
            octave.LeqCumA(band).Value(static_cast<float>(60 + band));
    }

    void addRow(const char* time, float leq, bool isOverloaded) {
        clsLogInterval row;
        row.Initialize(log.objLogShared);
        row.StartDate = log.StartDate;
        row.StartTime.setTime(time, {});
        row.LmaxTimeA.setTime("13:08:09", {});
        row.LminTimeA.setTime("13:08:10", {});
        row.PeakTimeA.setTime("13:08:11", {});
        row.LeqA(0).Value(leq);
        row.LminA(0).Value(leq - 20);
        row.LmaxA(0).Value(leq + 10);
        row.PeakA.Value(leq + 30);
        row.DoseA.Value(0.5F);
        row.SELA.Value(leq + 20.8F);
        row.LepdA.Value(leq - 23.8F);
        row.LnA(1, 0).Value(leq - 1);
        row.LnA(2, 0).Value(leq + 2);
        row.LnA(3, 0).Value(leq - 3);
        row.LeqB.Value(leq + 4);
        row.PeakB.Value(leq + 31);
        row.OverloadedA = isOverloaded;
        log.LogIntervals.Add(row);
    }

    Holdings holdings(const char* model, const char* serial = "901226") { return {model, serial, {&log}, {}, {}}; }
};

} // namespace kestrane
