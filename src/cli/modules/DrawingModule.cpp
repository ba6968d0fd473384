// kestrane-drawing: charts as pictures and documents as PDF files.
#include "charts/chaTab.h"
#include "cli/Modules.h"
#include "printing/PdfFile.h"

#include <QApplication>
#include <QFont>

#include <optional>
#include <string_view>

namespace kestrane {

namespace {

// The toolkit's remarks about a missing desktop are not messages of this program.
void keepQuiet(QtMsgType, const QMessageLogContext&, const QString&) {}

// Fonts whose letters are as wide, for those of the settings that are missing.
void nameStandIns() {
    QFont::insertSubstitution("Arial", "Liberation Sans");
    QFont::insertSubstitution("Courier New", "Liberation Mono");
    QFont::insertSubstitution("Times New Roman", "Liberation Serif");
}

class QtDrawing : public Drawing {
public:
    QtDrawing() {
        qInstallMessageHandler(keepQuiet);
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_.emplace(count_, words_);
        nameStandIns();
    }

    void savePicture(const ChartData& chart, const Locale& locale, const std::string& path, PictureSize size) override {
        chaTab tab(locale);
        tab.setChart(chart);
        tab.savePicture(path, size);
    }

    bool writePdf(const Session& session, bool isLandscape, const LayOut& layOut, const std::string& path,
                  const PageProgress& progress) override {
        const Paper paper(a4Paper(isLandscape));
        return kestrane::writePdf(session, *layOut(paper), paper, path, progress);
    }

private:
    std::string name_ = "kestrane-cli";
    char* words_[2] = {name_.data(), nullptr};
    int count_ = 1;
    std::optional<QApplication> application_;
};

} // namespace

} // namespace kestrane

extern "C" void* kestraneModule(const char* version) {
    const bool isSame = std::string_view(version) == KESTRANE_VERSION_TEXT;
    return isSame ? static_cast<kestrane::Drawing*>(new kestrane::QtDrawing) : nullptr;
}
