#include "OldFiles.h"

#include "Measure.h"
#include "TestLogs.h"
#include "files/MachineLog.h"
#include "files/ProjectFile.h"
#include "files/SoundFiles.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

namespace kestrane::bench {

namespace {

constexpr double kMega = 1e6;
constexpr int kTimes = 5;
constexpr int kRows = 500'000;

// text(row, time, level) of each row, a minute apart
template <class Text>
std::string rows(Text text) {
    std::string all;
    for (int row = 0; row < kRows; ++row) {
        char time[16];
        std::snprintf(time, sizeof time, "%02d:%02d", row / 60 % 24, row % 60);
        char level[16];
        std::snprintf(level, sizeof level, "%.1f", 40 + row * 7 % 800 / 10.0);
        all += text(std::string(time), std::string(level));
    }
    return all;
}

std::string project() {
    return "<INSDATA><INSNAME>TR326</><LOG><MODE>0</><INTERVAL>60</>" +
           rows([](const std::string& time, const std::string& level) {
               std::string row = "<LOGSAMPLE><STARTDATE>14/10/2003</><STARTTIME>" + time + ":00</>";
               for (const char* name : {"LEQA", "LMINA", "LMAXA", "LNA_1", "LNA_2", "PEAKA", "DOSEA", "LEXA", "LEA"})
                   row.append("<").append(name).append(">").append(level).append("</>");
               return row + "</LOGSAMPLE>\r\n";
           }) +
           "</LOG></INSDATA>";
}

std::string projectOfRecords() {
    return "<INSDATA><INSNAME>TR326</><LOG><MODE>0</><INTERVAL>60</><STARTDATE>14/10/2003</>" +
           rows([](const std::string& time, const std::string& level) {
               std::string row = "<LOGSAMPLE>" + time + ":00,";
               for (int figure = 0; figure < 16; ++figure)
                   row.append(level).append(",");
               return row + "0</LOGSAMPLE>\r\n";
           }) +
           "</LOG></INSDATA>";
}

std::string report() {
    return "\"Logged\",\r\n\"TR32230417\",\r\n\"Exchange : 3\",\r\n\"Criterion:85\",\r\n\"Title:\",\r\n\"Edger\",\r\n"
           "\"Mode: IND\",\r\n\"Rows\",\r\n\"Start: 23:40 on 21/04/1998\",\r\n\"End  : 00:40 on 22/04/1999\",\r\n,\r\n"
           "\"Frequency weighting:A\",\r\n\"Time weighting:Slow\",\r\n,\r\n\"Leq:90.1\",\r\n\"LAE:125.7\",\r\n"
           "\"Dose:325.1%\",\r\n,\r\n\"Lmax:97.2\",\r\n,\"Peak:114.2\"\r\n,,,,,,,,,,\r\n" +
           rows([](const std::string& time, const std::string& level) {
               return "\"" + time + "\"," + level + "," + level + "," + level + "," + level + ",0,\r\n";
           });
}

std::string machineLog() {
    return "Corvane 5,C50331,04/11/2018,07/03/2019,23:28:00,85,3,SLM,Fast,A,OFF,Fast,C,70.0,60,0,ON,10,50,90,0,0,0,0,"
           "07/03/2019,23:40:00,\r\n" +
           rows([](const std::string& time, const std::string& level) {
               std::string row = time + ":00,";
               for (int figure = 0; figure < 16; ++figure)
                   row.append(level).append(",");
               return row + "0,\r\n";
           }) +
           "stoplog,0,01/01/2020,00:00:00," + std::string(18, ',');
}

// Megabytes a second of reading a text, the best of some times.
double rateOf(const std::function<std::string()>& makeText,
              const std::function<bool(clsFile&, std::string_view)>& read) {
    const auto work = [&] {
        const std::string text = makeText();
        double best = 0;
        for (int i = 0; i < kTimes; ++i) {
            BenchSession bench;
            clsFile file(bench.session, "old");
            bool isRead = false;
            const double seconds = secondsOf([&] { isRead = read(file, text); });
            if (!isRead || file.InstrumentDatas.front()->Locations.front()->LogIntervals.Count() != kRows) std::exit(1);
            best = std::max(best, static_cast<double>(text.size()) / kMega / seconds);
        }
        return best;
    };
    return measure(work).figure;
}

} // namespace

void measureOldFiles(Table& table) {
    constexpr double kRate = 50;
    const auto line = [&table](const char* what, std::string (*makeText)(), auto read) {
        table.line(std::string("read a ") + what + ": MB/s", rateOf(makeText, read), kRate, "MB/s", false, 1);
    };
    line("project file", project, ReadProject);
    line("project file of records", projectOfRecords, ReadProject);
    line("sound report", report, [](clsFile& file, std::string_view text) {
        ReadSoundCsv(file, text);
        return true;
    });
    line("machine log", machineLog, [](clsFile& file, std::string_view text) {
        std::string message;
        return ReadMachineLog(file, text, message);
    });
}

} // namespace kestrane::bench
