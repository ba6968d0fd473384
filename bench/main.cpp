// kestrane-bench: the program's marks for speed and memory, each beside its yardstick in the same run. Prints one line
// a mark; the exit status is 1 when one is missed.
//     kestrane-bench [rows]      third-octave rows of the data file, 100000 unless told
#include "AssessmentWork.h"
#include "ChartRedraw.h"
#include "Measure.h"
#include "OldFiles.h"
#include "ReportPages.h"
#include "TestLogs.h"
#include "Windows.h"
#include "app/Documents.h"
#include "calc/Recalculation.h"
#include "calc/RowAnalysis.h"
#include "download/BinaryLogs.h"
#include "explorer/Edits.h"
#include "explorer/NodeEditing.h"
#include "explorer/NodeKeys.h"
#include "files/Loaders.h"
#include "files/XmlWriter.h"
#include "views/IntervalTable.h"
#include "views/RangeTable.h"
#include "views/Spectrogram.h"
#include "views/TimeChart.h"

#include <pugixml.hpp>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

namespace kestrane::bench {

namespace {

constexpr double kMega = 1e6;
constexpr double kMilli = 1e3;
constexpr int kTimes = 5;

clsLog& firstLog(const clsFile& file) {
    clsInsData& data = *file.InstrumentDatas.front();
    return *(data.ThirdOctaves.empty() ? data.Locations : data.ThirdOctaves).front();
}

// A folder that is gone at the end; in memory where there is such a place, so that no disk is measured.
class TemporaryFolder {
public:
    TemporaryFolder() {
        const std::filesystem::path memory = "/dev/shm";
        const auto parent = std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
        std::string name = parent / "kestrane-bench-XXXXXX";
        if (mkdtemp(name.data()) == nullptr) std::exit(1);
        path_ = name;
    }

    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string file(const char* name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

void saveThirdOctaves(const std::string& name, std::size_t rows) {
    measure([&] {
        BenchSession bench;
        FileSave(addDocument(bench.session, name, modeThirdOctave, rows));
        return 0.0;
    });
}

double openSeconds(const std::string& name) {
    BenchSession bench;
    clsFile file(bench.session, name);
    bool isOpen = false;
    const double seconds = secondsOf([&] { isOpen = FileOpen(file); });
    if (!isOpen) std::exit(1);
    return seconds;
}

double loadSeconds(const std::string& name) {
    BenchSession bench;
    const double seconds = secondsOf([&] {
        if (!OpenFile(bench.session, name, OpenSource::Named, false)) std::exit(1);
        bench.finishWork();
        RecalcValues(firstLog(*bench.session.OpenFiles.front()), kCalcFull);
        bench.finishWork();
    });
    const clsLog& log = firstLog(*bench.session.OpenFiles.front());
    if (log.LeqCumA(1).CalcValue() == 0) std::exit(1); // not what was to be measured
    return seconds;
}

// The bytes of a file, with the time of reading left out: that counts for the program and against it.
struct FileText {
    explicit FileText(const std::string& name) : size(std::filesystem::file_size(name)), bytes(new char[size]) {
        std::ifstream(name, std::ios::binary).read(bytes.get(), static_cast<std::streamsize>(size));
    }

    std::size_t size;
    std::unique_ptr<char[]> bytes;
};

double sumOfNumbers(const pugi::xml_node& node) {
    double sum = 0;
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_pcdata) {
            sum += static_cast<double>(std::strtof(child.value(), nullptr));
        } else {
            sum += sumOfNumbers(child);
        }
    }
    return sum;
}

double treeSeconds(const std::string& name, bool convert) {
    FileText text(name);
    const auto document = std::make_unique<pugi::xml_document>();
    return secondsOf([&] {
        if (!document->load_buffer_inplace(text.bytes.get(), text.size)) std::exit(1);
        if (convert) use(sumOfNumbers(*document));
    });
}

// The least that loading can do, on one core: reads the bytes, finds every tag and converts every number.
double floorSeconds(const std::string& name) {
    return secondsOf([&] {
        const FileText text(name);
        const char* at = text.bytes.get();
        const char* const end = at + text.size;
        const auto found = [&](char c) {
            return static_cast<const char*>(std::memchr(at, c, static_cast<std::size_t>(end - at)));
        };
        double sum = 0;
        for (at = found('<'); at != nullptr; at = found('<')) {
            at = found('>');
            if (at == nullptr) break;
            float number = 0;
            std::from_chars(++at, end, number);
            sum += static_cast<double>(number);
        }
        use(sum);
    });
}

double saveSeconds(const std::string& name, std::size_t rows, bool toNothing) {
    BenchSession bench;
    clsFile& file = addDocument(bench.session, name, modeThirdOctave, rows);
    return secondsOf([&] {
        if (!toNothing) {
            FileSave(file);
            return;
        }
        std::size_t size = 0;
        clsStringBuffer out([&](std::string_view piece) { size += piece.size(); });
        SetTagData(file, true, out);
        out.flush();
        use(static_cast<double>(size));
    });
}

std::size_t storeBytes(std::size_t rows) {
    return static_cast<std::size_t>(
        measure([&] { return static_cast<double>(walkingRows(modeThirdOctave, rows).bytes()); }).figure);
}

constexpr std::size_t kBroadbandRows = 600'000;
constexpr int kPasses = 40; // a pass is short: the best of these

template <class Pass>
double bestPass(Pass pass) {
    double best = secondsOf(pass);
    for (int i = 1; i < kPasses; ++i)
        best = std::min(best, secondsOf(pass));
    return best;
}

double recalculateSeconds() {
    RecalcRequest request;
    request.rows = walkingRows(modeBroadband, kBroadbandRows);
    request.Mode = modeBroadband;
    request.Interval = 1;
    return bestPass([&] { use(static_cast<double>(recalculateRows(request).zLeqCumA[0])); });
}

double memoryPassSeconds() {
    const IntervalColumns rows = walkingRows(modeBroadband, kBroadbandRows);
    return bestPass([&] {
        std::uint64_t sum = 0;
        for (const Quantity quantity : {Quantity::LeqA, Quantity::LminA, Quantity::LmaxA, Quantity::PeakA}) {
            for (const Level& level : rows.levels(quantity, 0)) {
                std::uint64_t word = 0;
                std::memcpy(&word, &level, sizeof word);
                sum += word;
            }
        }
        use(static_cast<double>(sum));
    });
}

// A long log that shows six quantities.
clsLog& addLongLog(Session& session) {
    clsLog& log = firstLog(addDocument(session, "long.xml", modeBroadband, kBroadbandRows));
    IntervalColumns& rows = log.LogIntervals.Columns();
    for (const Quantity quantity : {Quantity::LepdA, Quantity::DoseA})
        std::ranges::copy(rows.levels(Quantity::LeqA, 0), rows.writeLevels(quantity, 0).begin());
    log.objLogOptions.IsPlotted = PlotTable();
    for (const Parameter parameter : {eLeq, eLmin, eLmax, ePeak, eLepdET, eDoseET})
        log.objLogOptions.IsPlotted.set(kChannelA, kInterval, parameter, true);
    return log;
}

double chartSeconds() {
    BenchSession bench;
    const clsLog& log = addLongLog(bench.session);
    return bestPass([&] { use(fullLogChart(&log, {}).Series.back().Values.back()); });
}

// The spectrogram of a log in thirds of octaves, with a walk of its own in each band.
double spectrogramSeconds() {
    BenchSession bench;
    clsLog log(bench.session);
    log.Mode(modeThirdOctave);
    log.FreqWeightA("Z");
    IntervalColumns& rows = log.LogIntervals.Columns();
    rows.resize(kBroadbandRows, kBroadbandRows);
    for (int band = 1; band <= log.e("Last"); ++band) {
        float level = 60;
        std::minstd_rand dice(static_cast<unsigned>(band));
        for (Level& cell : rows.writeLevels(Quantity::LeqA, band)) {
            level = std::clamp(level + static_cast<float>(dice() % 21) / 10 - 1, 30.0F, 110.0F);
            cell = {level, level};
        }
    }
    return redrawSeconds(spectrogramChart(log, "A"));
}

// Opens the table and makes a screen of its cells.
double tableSeconds() {
    constexpr std::size_t kScreen = 60;
    BenchSession bench;
    const clsLog& log = addLongLog(bench.session);
    return bestPass([&] {
        const IntervalTable table(log, kChannelA, {});
        std::size_t size = 0;
        for (std::size_t row = kBroadbandRows - kScreen; row < kBroadbandRows; ++row) {
            for (std::size_t column = 0; column < table.columnCount(); ++column)
                size += table.cell(row, column).size();
        }
        use(static_cast<double>(size));
    });
}

// What the time chart is asked for: the figures of the marked half of a long log, its loudest hour, its distribution.
void measureQuestions(Table& table) {
    constexpr double kStrip = 50; // ms
    constexpr double kWindow = 20;
    constexpr double kHour = 3600;
    const auto line = [&](const char* what, double most, auto ask) {
        const Measured measured = measure([&] {
            BenchSession bench;
            const clsLog& log = addLongLog(bench.session);
            const std::vector<AnalysedRow> rows = analysedRows(log);
            return bestPass([&] { use(ask(log, rows)); });
        });
        table.line(what, measured.figure * kMilli, most, "ms", true, 1);
    };
    line("gather 600000 rows for these questions: ms", kStrip,
         [](const clsLog& log, const std::vector<AnalysedRow>&) { return analysedRows(log).back().Level; });
    line("figures of half of 600000 rows and of the rest: ms", kStrip,
         [](const clsLog& log, const std::vector<AnalysedRow>& rows) {
             const std::int64_t half = static_cast<std::int64_t>(kBroadbandRows) / 2;
             return static_cast<double>(rangeTable(log, rows, {half / 2, half / 2 + half}, 10).size());
         });
    line("loudest and quietest hour of 600000 rows: ms", kWindow,
         [](const clsLog&, const std::vector<AnalysedRow>& rows) {
             return static_cast<double>(worstStretches(rows, kHour).Loudest->First);
         });
    line("distribution of 600000 rows: ms", kStrip, [](const clsLog&, const std::vector<AnalysedRow>& rows) {
        return distributionOf(rows, 1)->front().Seconds + *levelExceeded(rows, 10);
    });
}

void measureViews(Table& table) {
    constexpr double kFilling = 100; // ms
    constexpr double kFrame = 16;
    constexpr double kGlance = 50;
    constexpr double kStart = 300;
    constexpr double kTab = 100;
    const Measured chart = measure(chartSeconds);
    table.line("fill a chart of 600000 rows, 6 series: ms", chart.figure * kMilli, kFilling, "ms", true, 1);
    const Measured screen = measure(tableSeconds);
    table.line("open a table of 600000 rows, show a screen: ms", screen.figure * kMilli, kFrame, "ms", true, 1);
    const Measured scroll = measure([] { return scrollSeconds(kBroadbandRows); });
    table.line("scroll it in its window, slowest step: ms", scroll.figure * kMilli, kFrame, "ms", true, 1);
    const Measured tabs = measure([] { return tabSeconds(kBroadbandRows); });
    table.line("show a tab of an octave log of 600000 rows, slowest: ms", tabs.figure * kMilli, kTab, "ms", true, 1);
    const Measured start = measure([] { return startSeconds(BENCH_SAMPLE); });
    table.line("start to the first window, with a sample: ms", start.figure * kMilli, kStart, "ms", true, 1);
    const Measured lines = measure([] { return redrawSeconds(kBroadbandRows, 6, eChartAs2D); });
    table.line("redraw a chart of 600000 rows, 6 series: ms", lines.figure * kMilli, kFrame, "ms", true, 1);
    measureQuestions(table);
    const Measured map = measure(spectrogramSeconds);
    table.line("redraw a spectrogram of 600000 rows, 33 bands: ms", map.figure * kMilli, kFrame, "ms", true, 1);
    const Measured ribbons = measure([] { return redrawSeconds(150, 26, eChartAs3D); });
    table.line("redraw a chart in 3D of 150 rows, 26 series: ms", ribbons.figure * kMilli, kGlance, "ms", true, 1);
}

void measureReport(Table& table, const std::string& name) {
    constexpr std::size_t kRows = 100'000;
    constexpr double kRate = 20'000;
    constexpr double kPages = 64; // MB, whatever the length
    const auto [report, tenth] = compare(
        kTimes, [&] { return reportSeconds(kRows, name); }, [&] { return reportSeconds(kRows / 10, name); });
    table.line("report of 100000 intervals as PDF: rows/s", static_cast<double>(kRows) / report.figure, kRate, "/s",
               false, 1);
    table.line("  memory beside that of a tenth of it",
               static_cast<double>(report.peakMemory - std::min(report.peakMemory, tenth.peakMemory)) / kMega, kPages,
               "MB", true, 1);
}

void measureAssessments(Table& table, const std::string& name) {
    constexpr std::size_t kLogs = 100, kRows = 28'800;
    constexpr int kRuns = 2; // they are long
    constexpr double kFrame = 16;
    const std::vector<std::string> files = linkedFiles(name, kRows, kLogs);
    const Compared opened = compare(
        kRuns, [&] { return assessSeconds(files); }, [&] { return readSeconds(files); });
    constexpr double kAndHashed = 1.3; // times the reading; their bytes are hashed meanwhile
    table.line("assessment over 100 logs of 28800 rows / reading them", opened.work.figure, opened.yardstick.figure,
               "s", true, kAndHashed);
    const Measured entry = measure([] { return entrySeconds(20, 20); });
    table.line("an entry among 20 groups of 20 tasks: ms", entry.figure * kMilli, kFrame, "ms", true, 1);
}

// Copies a log into another document, and moves it there and back. What the rows share, nothing copies.
double editSeconds(std::size_t rows) {
    BenchSession bench;
    Session& session = bench.session;
    addDocument(session, "from.xml", modeThirdOctave, rows);
    addDocument(session, "to.xml", modeThirdOctave, 1);
    AssignIdentities(session, false, 0);
    return secondsOf([&] {
        const bool isDone = PasteNode(session, "T1I1F1", "F2", false) && PasteNode(session, "T1I1F1", "F2", true) &&
                            exchangeStep(session, session.fileById(2), Direction::Undo);
        if (!isDone) std::exit(1);
    });
}

double columnPassSeconds(std::size_t rows) {
    const IntervalColumns columns = walkingRows(modeThirdOctave, rows);
    return bestPass([&] {
        double sum = 0;
        for (const Quantity quantity : {Quantity::LeqA, Quantity::LminA, Quantity::LmaxA}) {
            for (int band = 0; band <= lastBand(modeThirdOctave); ++band)
                for (const Level& level : columns.levels(quantity, band))
                    sum += static_cast<double>(level.CalcValue);
        }
        use(sum);
    });
}

// Megabytes a second of a download's binary records turned into the rows of a log.
double decodeRate() {
    constexpr std::size_t kRow = 104, kSummary = 160, kLevels = 12;
    std::string block(kBroadbandRows * kRow + kSummary, '\0');
    for (std::size_t row = 0; row < kBroadbandRows; ++row) {
        for (std::size_t i = 0; i < kLevels; ++i) {
            const double level = 40 + static_cast<double>((row * 7 + i * 31) % 800) / 10;
            std::memcpy(&block[row * kRow + i * sizeof level], &level, sizeof level);
        }
    }
    BenchSession bench;
    double best = 0;
    for (int i = 0; i < kTimes; ++i) {
        clsLog log(bench.session);
        log.IsChannelBOn = true;
        log.LnNumberA(3, 50);
        const double seconds = secondsOf([&] { decodeBlock(log, block, kBrevikLayout); });
        best = std::max(best, static_cast<double>(block.size()) / kMega / seconds);
    }
    return best;
}

int run(std::size_t rows) {
    const TemporaryFolder folder;
    const std::string name = folder.file("third-octave.xml");
    saveThirdOctaves(name, rows);
    const auto fileBytes = static_cast<double>(std::filesystem::file_size(name));
    std::printf("%zu third-octave rows, a file of %.0f MB\n", rows, fileBytes / kMega);
    Table table;

    const Compared open = compare(
        kTimes, [&] { return openSeconds(name); }, [&] { return treeSeconds(name, false); });
    table.line("open: seconds / tree", open.work.figure, open.yardstick.figure, "s", true, 0.5);
    constexpr double kHeaders = 150, kOfFile = 200 * kMega; // ms, bytes
    table.line("  of a file of 200 MB: ms", open.work.figure * kMilli * kOfFile / fileBytes, kHeaders, "ms", true, 1);
    const Compared load = compare(
        kTimes, [&] { return loadSeconds(name); }, [&] { return treeSeconds(name, true); });
    const Compared least = compare(
        kTimes, [&] { return loadSeconds(name); }, [&] { return floorSeconds(name); });
    table.line("open, load, recalculate: seconds / tree and numbers", load.work.figure, load.yardstick.figure, "s",
               true, 1);
    table.line("  seconds / finding every tag and number on one core", least.work.figure, least.yardstick.figure, "s",
               true, 1.3);
    table.line("  memory / file", static_cast<double>(load.work.peakMemory) / kMega, fileBytes / kMega, "MB", true,
               1.5);

    const std::string saved = folder.file("saved.xml");
    const Compared save = compare(
        kTimes, [&] { return saveSeconds(saved, rows, false); }, [&] { return saveSeconds(saved, rows, true); });
    constexpr double kSaving = 300;
    table.line("save to a file: MB/s", fileBytes / kMega / save.work.figure, kSaving, "MB/s", false, 1);
    table.line("save to nothing: MB/s", fileBytes / kMega / save.yardstick.figure, kSaving, "MB/s", false, 1);
    constexpr double kBesideStore = 64 * kMega;
    table.line("  memory / store and 64 MB", static_cast<double>(save.work.peakMemory) / kMega,
               (static_cast<double>(storeBytes(rows)) + kBesideStore) / kMega, "MB", true, 1);

    const Compared recalculate = compare(kTimes, recalculateSeconds, memoryPassSeconds);
    table.line("recalculate 600000 broadband rows / one memory pass", recalculate.work.figure * kMilli,
               recalculate.yardstick.figure * kMilli, "ms", true, 3);

    const Compared edit = compare(
        kTimes, [&] { return editSeconds(rows); }, [&] { return columnPassSeconds(rows); });
    table.line("copy, move, undo a log / one pass over its columns", edit.work.figure * kMilli,
               edit.yardstick.figure * kMilli, "ms", true, 1);

    constexpr double kDecoding = 50;
    table.line("decode a download's binary records: MB/s", measure(decodeRate).figure, kDecoding, "MB/s", false, 1);

    measureOldFiles(table);
    measureViews(table);
    measureReport(table, folder.file("report.pdf"));
    measureAssessments(table, folder.file("assessed.xml"));
    return table.missed() == 0 ? 0 : 1;
}

} // namespace

} // namespace kestrane::bench

int main(int argc, char** argv) {
    std::size_t rows = 100'000;
    if (argc > 1) {
        const char* const end = argv[1] + std::strlen(argv[1]);
        if (std::from_chars(argv[1], end, rows).ptr != end || rows == 0) {
            std::fprintf(stderr, "usage: kestrane-bench [rows]\n");
            return 2;
        }
    }
    return kestrane::bench::run(rows);
}
