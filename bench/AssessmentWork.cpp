#include "AssessmentWork.h"

#include "Measure.h"
#include "TestLogs.h"
#include "app/Assessments.h"
#include "assessment/Assess.h"
#include "assessment/AssessmentEdits.h"
#include "desktop/assessment/frmAssessment.h"
#include "desktop/assessment/tvwAssessment.h"
#include "files/XmlWriter.h"

#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace kestrane::bench {

namespace {

constexpr int kEntries = 21;

AssessmentTask taskOf(const std::string& name, double hours, Sample sample) {
    AssessmentTask task;
    task.Name = name;
    task.Hours = hours;
    task.Samples.push_back(std::move(sample));
    return task;
}

} // namespace

std::vector<std::string> linkedFiles(const std::string& name, std::size_t rows, std::size_t count) {
    measure([&] {
        BenchSession bench;
        FileSave(addDocument(bench.session, name, modeBroadband, rows));
        return 0.0;
    });
    std::vector<std::string> files{name};
    while (files.size() < count) {
        files.push_back(name + std::to_string(files.size()) + ".xml");
        std::filesystem::create_hard_link(name, files.back());
    }
    return files;
}

double assessSeconds(const std::vector<std::string>& files) {
    BenchSession bench;
    Assessment assessment;
    AssessmentGroup& group = assessment.Groups.emplace_back();
    for (const std::string& file : files)
        group.Tasks.push_back(taskOf(file, 0.05, LogRows{file, {}, {}, {}, {}, {}}));
    AssessmentDocument document(assessment, {});
    Measurements measured;
    return secondsOf([&] {
        ReadDataFiles(bench.session, document, measured, [](std::size_t, std::size_t) { return true; });
        const auto results = assess(bench.session, document.Now(), document.Path(), measured);
        if (!results.front().LEX8h) std::exit(1);
    });
}

double readSeconds(const std::vector<std::string>& files) {
    BenchSession bench;
    return secondsOf([&] {
        for (const std::string& file : files) {
            if (!OpenFile(bench.session, file, OpenSource::Named, false)) std::exit(1);
            bench.finishWork();
            bench.session.OpenFiles.clear();
        }
    });
}

double entrySeconds(std::size_t groups, std::size_t tasks) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    qputenv("QT_QPA_PLATFORM", "offscreen");
    BenchSession bench;
    int count = 0;
    const QApplication application(count, nullptr);
    Assessment assessment;
    for (std::size_t i = 0; i < groups; ++i) {
        AssessmentGroup& group = assessment.Groups.emplace_back();
        group.Name = "Group " + std::to_string(i + 1);
        for (std::size_t task = 0; task < tasks; ++task)
            group.Tasks.push_back(taskOf("Task " + std::to_string(task + 1), 0.4, 80.0 + static_cast<double>(task)));
    }
    frmAssessment window(bench.session, AssessmentDocument(std::move(assessment), {}), {});
    QObject::connect(&window, &frmAssessment::WorkAsked, &window, [](const std::function<void()>& work) { work(); });
    window.resize(1200, 800);
    window.show();
    window.Refresh();
    QApplication::processEvents();
    auto& tree = *window.findChild<tvwAssessment*>();
    std::vector<double> times;
    for (int i = 0; i < kEntries; ++i) {
        const std::string hours = std::to_string(i % 2 == 0 ? 0.5 : 0.4);
        times.push_back(secondsOf([&] {
            emit tree.Entered({AssessmentKind::Task, 0, 0}, AssessmentColumn::Hours, hours);
            QApplication::processEvents(); // paints, too
        }));
    }
    if (!window.Document().CanExchange(Direction::Undo)) std::exit(1); // nothing was entered
    std::ranges::nth_element(times, times.begin() + kEntries / 2);
    return times[kEntries / 2];
}

} // namespace kestrane::bench
