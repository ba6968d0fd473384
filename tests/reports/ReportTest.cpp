#include "reports/Report.h"
#include "ShownLog.h"
#include "calc/Recalculation.h"
#include "platform/Sha256.h"
#include "reports/RecordingPage.h"
#include "reports/ReportLanguage.h"
#include "views/LogWarnings.h"

#include "views/Selection.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// A quarter of an hour in a yard, with figures by hand.
struct Yard : ShownLog {
    clsFile file{session, "/data/yard.xml"};
    clsInsData data{session};

    explicit Yard(LogMode mode = modeBroadband) : ShownLog(mode) {
        log.objLogOptions.Plottable = PlotTable();
        log.StartDate = {3, 6, 2024};
        log.EndDate = {3, 6, 2024};
        log.StartTime = {9, 0, 0};
        log.EndTime = {9, 15, 0};
        log.CalibDate = {2, 6, 2024};
        log.TimeWeightA("Fast");
        log.Criterion = 85;
        data.InsSerial = "C50001";
        addRows(15);
        for (std::size_t row = 0; row < 15; ++row) {
            setLevel(Quantity::LeqA, 0, row, 70.04F + static_cast<float>(row));
            setLevel(Quantity::LmaxA, 0, row, 80);
        }
        log.LeqCumA(0).Value(80.96F);
        log.PeakCumA.Value(101);
        log.DoseETCumA.Value(12.34F);
        log.Pa2hCumA.Value(0.0126F);
        for (const Parameter parameter : {eLeq, eDoseET, ePa2Hr})
            log.objLogOptions.Plottable.set(kChannelA, kCumulative, parameter, true);
        log.objLogOptions.Plottable.set(kChannelA, kInterval, eLeq, true);
    }

    RecordingPage drawn(ReportForm form, const PageMetrics& metrics = kUpright) {
        Report report({file, data, log, modificationOf(log, log)}, form, metrics);
        RecordingPage page = recorded(report, metrics);
        EXPECT_EQ(page.pages, report.pageCount());
        return page;
    }

    static inline const RecordedMetrics kUpright{false};
    static inline const RecordedMetrics kLandscape{true};
};

using Lines = std::vector<std::string>;

TEST(Report, SpeaksTheLanguageOfReportsWhateverTheProgramSpeaks) {
    Yard yard;
    yard.session.Show(LanguageOf("fr"));
    const auto linesIn = [&yard](const char* language) {
        yard.session.Options.ReportLanguage = language;
        const auto report = inReportLanguage(yard.session, [&] {
            return std::make_unique<Report>(ReportSubject{yard.file, yard.data, yard.log},
                                            ReportForm::CumulativeAndIntervals, Yard::kUpright);
        });
        EXPECT_EQ(report->Language(), language);
        const RecordingPage page = recorded(*report, Yard::kUpright);
        Lines lines;
        for (std::size_t number = 0; number < page.pages; ++number)
            for (const std::string& line : page.lines(number))
                lines.push_back(line);
        return lines;
    };
    Lines lines = linesIn("de");
    for (const char* line :
         {"Kriteriumspegel: |85 dB", "Beginn, Datum: |Montag, 3. Juni 2024", "Dauer der Messung: |15 Min.",
          "Gesamtwerte: Montag, 3. Juni 2024, 09:00", "Intervall: Montag, 3. Juni 2024, 09:00"})
        EXPECT_NE(std::ranges::find(lines, line), lines.end()) << line;
    EXPECT_EQ(yard.session.LoadText(Text::CriterionLevel), "Niveau crit\u00E8re");
    EXPECT_EQ(yard.session.labels.Yes, "Oui");
    lines = linesIn("fr");
    EXPECT_NE(std::ranges::find(lines, "Niveau crit\u00E8re\u00A0: |85 dB"), lines.end()) << "with its no-break space";
}

TEST(Report, SaysWhatTheLogHolds) {
    Yard yard;
    const RecordingPage page = yard.drawn(ReportForm::Cumulative);
    const std::string dots(54, '.');
    EXPECT_EQ(page.pages, 2U);
    Lines lines = page.lines(0);
    const std::string foot = lines.back();
    lines.pop_back();
    EXPECT_TRUE(foot.starts_with("Kestrane 0.1.0, printed ") && foot.ends_with("|yard.xml|Page 1 of 2")) << foot;
    EXPECT_EQ(lines, (Lines{"Yard - Broadband Report",
                            "Log Name: |Yard",
                            "Instrument: |Corvane",
                            "Serial Number: |C50001",
                            "Ordwyn Calibration Due (factory calibration): ",
                            "Last User Calibration: |Sunday 2 June 2024",
                            "Log Start Date: |Monday 3 June 2024",
                            "Log End Date: |Monday 3 June 2024",
                            "Log Start Time: |09:00:00",
                            "Log End Time: |09:15:00",
                            "Log Length: |15 mins",
                            "Log Interval Length: |1 min",
                            "Log Type: |Broadband",
                            "Ln's Recorded: |No",
                            "Criterion Level: |85 dB",
                            "Exchange Rate: |3 dB",
                            "Log Location: |" + dots,
                            "Recorded By: |" + dots,
                            "Signature: |" + dots,
                            "Cumulative Data: Monday 3 June 2024, 09:00",
                            "Data",
                            "Frequency Weighting|A",
                            "Time Weighting|Fast",
                            "Overload Occurred|No",
                            "Mode:|Broadband",
                            "LAeq|81.0 dB",
                            "Apeak", // the log does not say that it was measured
                            "Amin",
                            "Amax",
                            "LE",
                            "LEP,d(ET)",
                            "Dose %(ET)|12.3 %",
                            "Dose Per Hour %",
                            "Pa2Hr|0.0126"}));
    EXPECT_EQ(page.find("Log Name: ")->font, kBodyFont);
    EXPECT_EQ(page.find("Log Name: ")->box.Top, 1.5 + 2 + 1);
    EXPECT_NEAR(page.find("Log Start Date: ")->box.Top - page.find("Last User Calibration: ")->box.Top, 4 * 0.3, 1e-9);
    ASSERT_EQ(page.charts.size(), 1U);
    EXPECT_GT(page.charts.front().box.Top, page.find("Signature: ")->box.Top);
    EXPECT_EQ(page.charts.front().box.Width, 18);
}

TEST(Report, SaysWhatItsFiguresAreNot) {
    Yard yard;
    clsLog& log = yard.log;
    log.objLogOptions.ExposureTime = 12;
    log.HasWholeFigures = true;
    log.UserCalibration = {9400, 9460, 0};
    for (const Parameter parameter : {ePeak, eTWA})
        log.objLogOptions.Plottable.set(kChannelA, kCumulative, parameter, true);
    setCriterion(log, {80, 3});
    const RecordingPage page = yard.drawn(ReportForm::Cumulative);
    Lines lines = page.lines(0);
    std::ranges::copy(page.lines(1), std::back_inserter(lines));
    for (const char* line :
         {"The calibration drifted by +0.6 dB, which is more than 0.5 dB.",
          "These cumulative figures are those of the whole log.", "Exposure Time|08:00:00 (figures: 12:00:00)",
          "Dose %(ET)|12.3 % as reported (85 dB, 3 dB, not for 12:00:00)", "Apeak|101.0 dB (not C-weighted)"})
        EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1) << line;
    log.HasWholeFigures = false;
    EXPECT_NE(yard.drawn(ReportForm::Cumulative)
                  .find("Not up to date with the dose: TWA.  A full recalculation brings it up to date."),
              nullptr);
}

TEST(Report, NamesBothChannelsAndTheLnsInUse) {
    Yard yard(modeFullOctave);
    clsLog& log = yard.log;
    log.IsChannelBOn = true;
    log.FreqWeightB("C");
    log.LeqCumB.Value(88.5F);
    log.objLogOptions.Plottable.set(kChannelB, kCumulative, eLeq, true);
    log.LnNumberA(1, 10);
    log.LnNumberA(3, 90);
    log.LnCumA(3, 0).Value(61.2F);
    log.objLogOptions.Plottable.set(kChannelA, kCumulative, eLn(3), true);
    log.LeqCumA(1).Value(40.25F);
    log.LmaxCumA(11).Value(55);
    const RecordingPage page = yard.drawn(ReportForm::Cumulative, Yard::kLandscape);
    ASSERT_EQ(page.pages, 2U); // the bands stand beside the cumulative figures
    const Lines figures = page.lines(1);
    const auto linesFrom = [&](const std::string& begin) {
        return std::count_if(figures.begin(), figures.end(),
                             [&](const std::string& line) { return line.starts_with(begin); });
    };
    for (const char* line : {"Channel A|Channel B", "Frequency Weighting|A|C", "LAeq/LCeq|81.0 dB|88.5 dB",
                             "Apeak/Cpeak", "Dose %(ET)|12.3 %", "L10", "L90|61.2 dB"})
        EXPECT_EQ(linesFrom(line), 1) << line;
    EXPECT_EQ(linesFrom("L0"), 0);
    for (const char* cell : {"Frequency Data (Channel A)", "Freq(Hz)", "16", "40.3 dB", "16k", "55.0 dB"}) {
        ASSERT_NE(page.find(cell), nullptr) << cell;
        EXPECT_GT(page.find(cell)->box.Left, page.find("88.5 dB")->box.Left) << cell;
    }
    EXPECT_EQ(yard.drawn(ReportForm::Cumulative).pages, 2U);
}

TEST(Report, ChartsALogWithoutIntervalsToo) {
    Yard yard;
    clsLog empty(yard.session);
    empty.StartTime = empty.EndTime = {9, 0, 0};
    empty.LeqCumA(0).Value(81.5F);
    for (const RecordedMetrics& metrics : {Yard::kUpright, Yard::kLandscape}) {
        Report report({yard.file, yard.data, empty}, ReportForm::Default, metrics);
        const RecordingPage page = recorded(report, metrics);
        ASSERT_EQ(page.charts.size(), 1U);
        EXPECT_EQ(page.drawnCharts.front().Data->Shape, ChartShape::Bar);
        EXPECT_EQ(page.drawnCharts.front().Data->Series[0].Values[0], 81.5F);
        EXPECT_EQ(page.faults(), "");
        EXPECT_EQ(page.find("09:00:00"), nullptr); // there is no date that it is of
    }
}

TEST(Report, ChartsTheBandsOfALogWithoutIntervals) {
    Yard yard(modeFullOctave);
    clsLog empty(yard.session);
    empty.Mode(modeFullOctave);
    const auto shownRows = [&] {
        Report report({yard.file, yard.data, empty}, ReportForm::Default, Yard::kUpright);
        return recorded(report, Yard::kUpright).drawnCharts.front().Data->RowCount;
    };
    empty.LeqCumA(0).Value(81.5F);
    EXPECT_EQ(shownRows(), 1U) << "no band has a level";
    empty.LeqCumA(4).Value(70);
    EXPECT_EQ(shownRows(), 1U + lastBand(modeFullOctave));
}

TEST(Report, HasTheWholeNoteThatItsChartCuts) {
    Yard yard;
    yard.log.Note = "a\nb\nc";
    EXPECT_EQ(yard.drawn(ReportForm::Cumulative).find("c"), nullptr);
    yard.log.Note += "\nmicrophone fell at 11:40";
    for (const RecordedMetrics& metrics : {Yard::kUpright, Yard::kLandscape}) {
        const RecordingPage page = yard.drawn(ReportForm::Cumulative, metrics);
        EXPECT_NE(page.find("microphone fell at 11:40"), nullptr);
        EXPECT_EQ(page.faults(), "");
    }
}

// The chart is as high as the table below it lets it be.
TEST(Report, KeepsTheFiguresOnTheFirstPage) {
    Yard yard;
    const double most = yard.drawn(ReportForm::Cumulative).charts.front().box.Height;
    for (int ln = 1; ln <= 4; ++ln)
        yard.log.LnNumberA(ln, static_cast<std::int16_t>(ln));
    const RecordingPage page = yard.drawn(ReportForm::Cumulative);
    EXPECT_EQ(page.find("L4")->page, 0U);
    EXPECT_LT(page.charts.front().box.Height, most);
    EXPECT_EQ(page.faults(), "");
}

TEST(Report, ListsIntervalsPageAfterPage) {
    Yard yard;
    clsLog& log = yard.log;
    log.IsChannelBOn = true;
    yard.addRows(160);
    for (std::size_t row = 0; row < 160; ++row)
        yard.setLevel(Quantity::LeqA, 0, row, 70.04F);
    yard.plot(kChannelB, kInterval, {eLepdET, eLe_Sel});
    log.LogIntervals.Columns().set(log.LogIntervals.Columns().StartDate, 159, fromCivil({2024, 6, 4}));
    log.LogIntervals.Columns().set<std::uint8_t>(log.LogIntervals.Columns().isExcluded, 1, 1);
    const RecordingPage page = yard.drawn(ReportForm::CumulativeAndIntervals);
    // 4.5 to 27.6 cm in lines of 0.3 cm: 77, of which 3.5 are for captions and 2 for the last line; so 71 rows a block,
    // and two blocks a page.
    ASSERT_EQ(page.pages, 5U);
    Lines first = page.lines(1);
    const auto rowsFrom = std::find(first.begin(), first.end(), "09:00:00|70.0 dB|10:11:00|70.0 dB") - first.begin();
    ASSERT_EQ(rowsFrom, 4);
    EXPECT_EQ(first.size(), 4 + 71 + 1U);
    first.resize(6);
    EXPECT_EQ(first,
              (Lines{"Yard - Broadband Report", "Modified Report", "Interval: Monday 3 June 2024, 09:00 Channel A",
                     "Interval|LAeq|Amin|Amax|Apeak|Interval|LAeq|Amin|Amax|Apeak", "09:00:00|70.0 dB|10:11:00|70.0 dB",
                     "*|09:01:00|70.0 dB|10:12:00|70.0 dB"}));
    EXPECT_EQ(page.lines(2)[2], "Interval: Monday 3 June 2024, 11:22 Channel A");
    EXPECT_EQ(page.lines(2)[4 + 17], "04/06/24") << "where the day changes";
    EXPECT_EQ(page.lines(2)[4 + 18], "11:39:00|70.0 dB");
    EXPECT_EQ(page.lines(3)[2], "Interval: Monday 3 June 2024, 09:00 Channel B");
    EXPECT_TRUE(page.lines(3)[3].starts_with("Interval|Leq|Lmin|Lmax|Peak|LEP,d(ET)|LE|Interval|"));
    const DrawnText* const removed = page.find("* indicates this interval has been removed from calculations");
    ASSERT_NE(removed, nullptr);
    EXPECT_EQ(removed->page, 4U) << "and nowhere else";
    EXPECT_EQ(page.faults(), "");

    yard.plot(kChannelA, kInterval, {eLepdET, eLe_Sel});
    yard.log.IsChannelBOn = false;

    struct Narrow : RecordedMetrics {
        double width() const override { return 12; }
    };

    EXPECT_EQ(yard.drawn(ReportForm::CumulativeAndIntervals, Narrow()).find("11:22:00")->page, 4U)
        << "a single block, behind two pages";
}

TEST(Report, EndsWithWhereItsFiguresComeFrom) {
    Yard yard;
    IntervalColumns& rows = yard.log.LogIntervals.Columns();
    for (const std::size_t row : {1, 2, 5})
        rows.set<std::uint8_t>(rows.isExcluded, row, 1);
    yard.log.FirmwareVersion = 1.5F;
    yard.log.Range = "60-130";
    yard.log.UserCalibration = {9400, 9420, -10};
    yard.file.FileName = SAMPLES_DIR "/shift-dosimeter.xml";
    const auto valueOf = [&](const std::string& caption) {
        const RecordingPage page = yard.drawn(ReportForm::CumulativeAndIntervals);
        EXPECT_EQ(page.faults(), "");
        const Lines lines = page.lines(page.pages - 1);
        const auto line = std::find_if(lines.begin(), lines.end(),
                                       [&](const std::string& text) { return text.starts_with(caption + ": |"); });
        return line == lines.end() ? "no line" : line->substr(caption.size() + 3);
    };
    EXPECT_EQ(valueOf("SHA-256 of the File"), sha256OfFile(yard.file.FileName));
    yard.file.OnDisk.Hash = "0123";
    EXPECT_EQ(valueOf("SHA-256 of the File"), "0123 (another program has changed the file since)");
    EXPECT_EQ(valueOf("Firmware"), "1.50");
    EXPECT_EQ(valueOf("Measuring Range"), "60-130");
    EXPECT_EQ(valueOf("Threshold"), "no line");
    EXPECT_EQ(valueOf("Calibration"), "94.0 dB before, 94.2 dB after, drift +0.2 dB; -0.1 dB added to all levels");
    EXPECT_EQ(valueOf("Intervals"), "15, 03/06/24 09:00:00 - 03/06/24 09:14:00");
    EXPECT_EQ(valueOf("Left Out of Calculations"), "3 (03/06/24 09:01:00 - 03/06/24 09:02:00; 03/06/24 09:05:00)");
    yard.file.FileName = "download";
    EXPECT_EQ(valueOf("SHA-256 of the File"), "not saved");
    yard.addRows(200);
    for (std::size_t row = 0; row < 200; row += 2)
        rows.set<std::uint8_t>(rows.isExcluded, row, 1);
    const RecordingPage page = yard.drawn(ReportForm::Cumulative);
    EXPECT_EQ(page.faults(), "");
    EXPECT_TRUE(std::any_of(page.texts.begin(), page.texts.end(),
                            [](const DrawnText& text) { return text.text.ends_with("and 60 more ranges)"); }));
}

TEST(Report, CarriesTheWordsOfTheCompanyAndTheChosenParts) {
    Yard yard;
    IntervalColumns& rows = yard.log.LogIntervals.Columns();
    rows.set<std::uint8_t>(rows.isExcluded, 3, 1);
    yard.log.CutReason = "Radio";
    yard.session.Options.ReportIntroduction = "To the works council";
    yard.session.Options.ReportClosing = "Measured by the rules of our house.";
    yard.session.Options.ReportFooter = "Fen Acoustics\nMill Lane 1";
    HistoryLine change = historyLine(yard.session, "Note");
    change.Before = "old";
    change.After = std::string(400, 'w');
    yard.file.History.add(change);
    const ReportParts parts = partsOf("history,exposure,criteria,none,spectrum"); // a broadband log has no spectrum
    EXPECT_EQ(wordsOf(parts), "spectrum,exposure,criteria,history");
    for (const RecordedMetrics& metrics : {Yard::kUpright, Yard::kLandscape}) {
        Report report({yard.file, yard.data, yard.log, modificationOf(yard.log, yard.log)},
                      ReportForm::CumulativeAndIntervals, metrics, parts);
        const RecordingPage page = recorded(report, metrics);
        EXPECT_EQ(page.faults(), "");
        ASSERT_EQ(page.pages, report.pageCount());
        std::string titles;
        for (std::size_t i = 0; i < page.pages; ++i) {
            const Lines lines = page.lines(i);
            titles += lines.front() + "|";
            EXPECT_EQ(lines[lines.size() - 3] + lines[lines.size() - 2], "Fen AcousticsMill Lane 1");
            EXPECT_TRUE(lines.back().ends_with("Page " + std::to_string(i + 1) + " of " + std::to_string(page.pages)));
        }
        EXPECT_NE(titles.find("Yard - Exp Calc|Yard - History|Yard - Broadband Report|"), std::string::npos) << titles;
        Lines first = page.lines(0);
        EXPECT_EQ(first[1], "Modified Report");
        EXPECT_EQ(first[2], "Modified Report: 1 of 15 intervals are excluded (reason: Radio)");
        EXPECT_EQ(first[3], "To the works council");
        const Lines last = page.lines(page.pages - 1);
        const auto closing = std::ranges::find(last, yard.session.Options.ReportClosing);
        EXPECT_LT(closing, std::ranges::find(last, "Provenance"));
        EXPECT_TRUE(std::ranges::any_of(
            last, [](const std::string& line) { return line.find("Note: old \u2192") != std::string::npos; }));
    }
    std::string longest; // of introductions
    for (int i = 0; i < 300; ++i)
        longest += std::string(500, 'x').append("\n");
    yard.session.Options.ReportIntroduction = longest;
    for (const RecordedMetrics& metrics : {Yard::kUpright, Yard::kLandscape})
        EXPECT_EQ(yard.drawn(ReportForm::Cumulative, metrics).faults(), "");
}

TEST(Report, TheExposureCalculatorOfARangeIsThatOfTheWholeLog) {
    Yard yard;
    const auto part = makeZoom(yard.log, 6, 10);
    ReportSubject subject{yard.file, yard.data, *part};
    subject.Opened = &yard.log;
    Report report(subject, ReportForm::Cumulative, Yard::kUpright, partsOf("exposure"));
    const RecordingPage page = recorded(report, Yard::kUpright);
    const DrawnText* const begin = page.find("09:00:00");
    ASSERT_NE(begin, nullptr);
    EXPECT_EQ(page.lines(begin->page).front(), "Yard - Exp Calc");
}

TEST(Report, GivesThePlotOfManySeriesItsHeight) {
    Yard yard;
    yard.log.objLogOptions = clsLogOptions();
    for (const Parameter parameter : kParameters) {
        yard.log.objLogOptions.Plottable.set(kChannelA, kInterval, parameter, true);
        yard.log.objLogOptions.IsPlotted.set(kChannelA, kInterval, parameter, true);
    }
    for (const RecordedMetrics& metrics : {Yard::kUpright, Yard::kLandscape}) {
        const RecordingPage page = yard.drawn(ReportForm::Cumulative, metrics);
        EXPECT_GE(metrics.plotHeight(page.drawnCharts.front(), 0, page.charts.front().box.Height), 5 - 1e-9);
        EXPECT_EQ(page.faults(), "");
    }
}

TEST(Report, HasIntervalsAsTheFormAndTheSettingsSay) {
    Yard yard;

    struct Case {
        ReportForm form;
        bool bySettings, hasRows, expected;
    };

    for (const Case& c :
         {Case{ReportForm::Default, true, true, true}, Case{ReportForm::Default, false, true, false},
          Case{ReportForm::Default, true, false, false}, Case{ReportForm::Cumulative, true, true, false},
          Case{ReportForm::CumulativeAndIntervals, false, true, true},
          Case{ReportForm::CumulativeAndIntervals, true, false, false}}) {
        yard.session.Options.PrintIntervals = c.bySettings;
        const clsLog empty(yard.session);
        EXPECT_EQ(includesIntervals(c.hasRows ? yard.log : empty, c.form), c.expected);
    }
    clsLog part(yard.session);
    part.Copy(yard.log, 2, 5);
    EXPECT_FALSE(isModified(yard.log, yard.log));
    EXPECT_TRUE(isModified(yard.log, part));
    EXPECT_EQ(logWarnings(yard.log), "");
    yard.log.LogIntervals.CutIntervals = {"1~" + std::to_string(yard.log.LogIntervals.Count())};
    yard.log.LogIntervals.ApplySelection();
    EXPECT_EQ(logWarnings(yard.log), "Every interval is excluded; these cumulative figures are older than that.");
}

TEST(Report, TriesALogoOnce) {
    Yard yard;
    yard.session.Options.CompanyLogoFile = "/logo.png";
    Report report({yard.file, yard.data, yard.log}, ReportForm::CumulativeAndIntervals, Yard::kLandscape);
    for (const double width : {6.0, 0.0}) { // a logo that is there, and one that fails
        RecordingPage page(Yard::kLandscape);
        page.pictureWidth = width;
        drawPages(report, page, {});
        ASSERT_EQ(page.pages, 3U);
        EXPECT_EQ(page.asked.size(), width > 0 ? 3U : 1U);
        EXPECT_EQ(page.pictures.size(), 3U);
    }
}

TEST(Report, LeavesRoomToSignOn) {
    for (const bool isLandscape : {false, true}) {
        Yard yard;
        const RecordedMetrics metrics(isLandscape);
        Report report({yard.file, yard.data, yard.log}, ReportForm::Cumulative, metrics);
        RecordingPage page(metrics);
        drawPages(report, page, {});
        double above = page.find("Exchange Rate: ")->box.Top + 0.3;
        for (const char* const caption : {"Log Location: ", "Recorded By: ", "Signature: "}) {
            const DrawnText* const line = page.find(caption);
            ASSERT_NE(line, nullptr) << caption;
            EXPECT_GE(line->box.Top - above, 0.8 - 1e-9) << caption << isLandscape;
            above = line->box.Top + 0.3;
        }
    }
}

TEST(Report, TitlesKeepClearOfTheLogo) {
    struct Case {
        std::string company;
        double logo, left, modified;
    };

    const std::string name = "Yard - Broadband Report"; // 4.6 cm
    for (const Case& c : {Case{"", 2, 8.2, 9}, Case{"", 6, 8.2, 9}, Case{std::string(50, 'c'), 6, 7.9, 11.4},
                          Case{std::string(76, 'c'), 2, 3.9, 10}}) { // 15.2 cm beside a narrow logo
        Yard yard;
        yard.session.Options.CompanyName = c.company;
        yard.session.Options.CompanyLogoFile = "/logo.png";
        RecordedMetrics metrics;
        metrics.logoWidth = c.logo;
        Report report({yard.file, yard.data, yard.log, "in a way"}, ReportForm::Cumulative, metrics);
        RecordingPage page(metrics);
        page.pictureWidth = c.logo;
        drawPages(report, page, {});
        EXPECT_NEAR(page.texts.front().box.Left, c.left, 1e-9);
        EXPECT_NEAR(page.find("Modified Report")->box.Left, c.modified, 1e-9) << "on the same axis";
        EXPECT_NE(page.find(c.company.empty() ? name : c.company), nullptr);
        EXPECT_EQ(page.faults(), "");
    }
}

TEST(Report, BreaksALongTitleBeforeItCutsIt) {
    Yard yard;
    yard.log.Name = "The yard behind the northern gate, between the press and the river, on the second day";
    std::string head;
    yard.session.Options.CompanyName = "Fen";
    for (const DrawnText& text : yard.drawn(ReportForm::Cumulative).texts) {
        if (!text.font.IsBold || text.box.Top > 3 || text.page > 0) continue;
        head += text.text + " ";
        EXPECT_EQ(text.font.Points, 10) << text.text; // all lines alike
    }
    EXPECT_EQ(head, "Fen " + yard.log.Name + " - Broadband Report ");
    yard.log.Name = std::string(400, 'w');
    bool isKindThere = false;
    for (const DrawnText& text : yard.drawn(ReportForm::Cumulative).texts)
        isKindThere = isKindThere || text.text.ends_with("w\u2026 - Broadband Report");
    EXPECT_TRUE(isKindThere);
}

// Nothing runs out of the page or over something else, whatever the texts are.
TEST(Report, HoldsTheLongestTexts) {
    for (const bool isLandscape : {false, true}) {
        for (const LogMode mode : {modeBroadband, modeFullOctave, modeThirdOctave}) {
            for (const std::string& name : {std::string(5000, 'W'), std::string("a\tb\nc"),
                                            std::string("\xC3\xA9 w ") + std::string(300, 'm') + " \xC3\xA9"}) {
                Yard yard(mode);
                clsLog& log = yard.log;
                log.Name = log.InsName = yard.data.InsSerial = yard.session.Options.CompanyName = name;
                yard.file.FileName = "/" + name;
                log.IsChannelBOn = true;
                log.FreqWeightB("C");
                for (int ln = 1; ln <= NumberOfLns; ++ln)
                    log.LnNumberA(ln, static_cast<std::int16_t>(ln));
                log.objLogOptions = clsLogOptions();
                for (const Parameter parameter : kParameters)
                    log.objLogOptions.IsPlotted.set(kChannelA, kInterval, parameter, true);
                const RecordedMetrics metrics(isLandscape);
                const RecordingPage page = yard.drawn(ReportForm::CumulativeAndIntervals, metrics);
                EXPECT_EQ(page.faults(), "") << isLandscape << mode;
                for (const DrawnText& text : page.texts)
                    EXPECT_EQ(text.text.find_first_of("\t\n"), std::string::npos);
            }
        }
    }
}

TEST(Report, GoesOnBesideItselfOnSmallPaper) {
    struct Postcard : RecordedMetrics {
        double width() const override { return 21; }

        double height() const override { return 14.8; }
    };

    Yard yard(modeThirdOctave);
    const Postcard paper;
    const RecordingPage page = yard.drawn(ReportForm::Cumulative, paper);
    EXPECT_EQ(page.faults(), "");
    std::size_t headings = 0;
    for (const DrawnText& text : page.texts)
        headings += text.text == "Frequency Data" ? 1 : 0;
    EXPECT_GT(headings, 1U);
    EXPECT_NE(page.find("20k"), nullptr);
    EXPECT_GT(page.find("20k")->box.Left, page.find("12.5")->box.Left);
}

TEST(Report, CriteriaHaveAPageOfTheirOwnInTheirReport) {
    Yard yard;
    // Sideways, the cumulative figures have a page of their own, too; no page is empty.
    for (const auto& [paper, criteria] : {std::pair(Yard::kUpright, 1U), {Yard::kLandscape, 2U}}) {
        const RecordingPage page = yard.drawn(ReportForm::CumulativeAndCriteria, paper);
        ASSERT_EQ(page.pages, criteria + 1);
        ASSERT_NE(page.find("OSHA PEL"), nullptr);
        EXPECT_EQ(page.find("OSHA PEL")->page, criteria);
        EXPECT_EQ(page.faults(), "");
    }
    yard.log.FreqWeightA("Z");
    EXPECT_EQ(yard.drawn(ReportForm::CumulativeAndCriteria).find("OSHA PEL"), nullptr) << "no level to judge by";
}

TEST(Report, StopsWhenTold) {
    Yard yard;
    yard.addRows(1000);
    Report report({yard.file, yard.data, yard.log}, ReportForm::CumulativeAndIntervals, Yard::kUpright);
    RecordingPage page(Yard::kUpright);
    EXPECT_FALSE(drawPages(report, page, [&](std::size_t drawn, std::size_t pages) {
        EXPECT_EQ(pages, report.pageCount());
        return drawn < 3;
    }));
    EXPECT_EQ(page.pages, 3U);
}

} // namespace
} // namespace kestrane
