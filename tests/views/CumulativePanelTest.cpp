#include "views/CumulativePanel.h"

#include "ShownLog.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// A log of both channels that holds every figure, each another.
struct FullLog : ShownLog {
    explicit FullLog(const std::string& insName) {
        log.InsName = insName;
        log.IsChannelBOn = true;
        log.FreqWeightB("C");
        log.TimeWeightA("Slow");
        log.TimeWeightB("Fast");
        log.MeasurementTimeFromInstrument = 3600;
        for (clsDate* date : {&log.StartDate, &log.EndDate})
            date->setDate("03/06/2024", {});
        log.StartTime.setTime("09:00:00", {});
        log.EndTime.setTime("10:00:00", {});
        log.Criterion = 85;
        log.Exchange = 3;
        log.LnNumberA(1, 10);
        log.LnNumberA(3, 90);
        float figure = 50;
        for (clsValue* value :
             {&log.LeqCumA(0),   &log.LminCumA(0),  &log.LmaxCumA(0), &log.PeakCumA,   &log.LepdETCumA,
              &log.LepdMTCumA,   &log.DoseETCumA,   &log.DoseMTCumA,  &log.DoseHourA,  &log.Ltm3CumA,
              &log.Ltm5CumA,     &log.SELCumA,      &log.Pa2hCumA,    &log.LAvgCumA,   &log.TWACumA,
              &log.LnCumA(1, 0), &log.LnCumA(3, 0), &log.LeqCumB,     &log.LminCumB,   &log.LmaxCumB,
              &log.PeakCumB,     &log.LepdETCumB,   &log.LepdMTCumB,  &log.DoseETCumB, &log.DoseMTCumB,
              &log.DoseHourB,    &log.SELCumB,      &log.Pa2hCumB})
            value->Value(figure += 1.1F);
        for (const LogChannel channel : {kChannelA, kChannelB}) {
            for (const Parameter parameter : kParameters)
                log.objLogOptions.Plottable.set(channel, kCumulative, parameter, true);
        }
    }

    // "caption value | value of channel B; " for each figure that is shown.
    std::string figures() const {
        std::string text;
        for (const PanelRow& row : cumulativePanel(log, 0)) {
            if (row.Section != PanelSection::Levels && row.Section != PanelSection::Exposure) continue;
            if (row.A.Text.empty() && row.B.Text.empty()) continue;
            text += row.Caption + ' ' + row.A.Text;
            if (!row.B.Text.empty()) text += " | " + row.B.Text;
            text += "; ";
        }
        return text;
    }
};

TEST(CumulativePanel, ShowsEveryFigureOfBothChannels) {
    FullLog full("Corvane 5");
    EXPECT_EQ(full.figures(),
              "LAeq 51.1 | 69.8; Amin 52.2 | 70.9; Amax 53.3 | 72.0; Apeak 54.4 | 73.1; LEP,d(ET) 55.5 | 74.2; "
              "LEP,d(MT) 56.6 | 75.3; Dose %(ET) 57.7 | 76.4; Dose %(MT) 58.8 | 77.5; Dose Hr % 59.9 | 78.6; "
              "Ltm 3 61.0; Ltm 5 62.1; LE 63.2 | 79.7; PA2h 64.3 | 80.8; Ln (L10) 67.6 (L90) 68.7; "
              "Exposure Time 08:00:00; ");
    full.log.IsChannelBOn = false;
    full.log.MeasurementTimeFromInstrument = 299; // too short for percentiles
    EXPECT_EQ(full.figures(),
              "LAeq 51.1; Amin 52.2; Amax 53.3; Apeak 54.4; LEP,d(ET) 55.5; LEP,d(MT) 56.6; Dose %(ET) 57.7; "
              "Dose %(MT) 58.8; Dose Hr % 59.9; Ltm 3 61.0; Ltm 5 62.1; LE 63.2; PA2h 64.3; "
              "Exposure Time 08:00:00; ");
}

// TWA8 is computed: 58.8 % in one hour are 470.4 % in eight, 85 + 3 lb 4.704.
TEST(CumulativePanel, ABrevikMeterShowsWhatItMeasuresAtItsLocation) {
    FullLog full("Brevik S");
    full.log.LocationType(NoiseAtWorkLocation);
    EXPECT_EQ(full.figures(),
              "LAeq 51.1 | 69.8; Amin 52.2 | 70.9; Amax 53.3 | 72.0; Apeak  | 73.1; LEP,d(ET) 55.5; "
              "LEP,d(MT) 56.6; Dose %(ET) 57.7; Dose %(MT) 58.8; Dose Hr % 59.9; PA2h 64.3; LAvg 65.4; TWA 66.5; "
              "TWA8 91.7; Exposure Time 08:00:00; ");
    full.log.LocationType(EnvironmentLocation);
    EXPECT_EQ(full.figures(),
              "LAeq 51.1 | 69.8; Amin 52.2 | 70.9; Amax 53.3 | 72.0; Apeak  | 73.1; LAvg 65.4; TWA 66.5; "
              "TWA8 91.7; Exposure Time 08:00:00; ");
}

} // namespace
} // namespace kestrane
