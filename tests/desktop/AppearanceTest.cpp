// Whether everything can be read in every appearance, measured as platform/Contrast.h says.
#include "charts/ChartLooks.h"
#include "desktop/Desk.h"
#include "dialogs/ModalDialog.h"
#include "dialogs/Palettes.h"
#include "dialogs/SignalColours.h"
#include "platform/Contrast.h"

#include <QComboBox>
#include <QLabel>

namespace kestrane {
namespace {

using Role = QPalette::ColorRole;

// Those of the program, and those of desktops that are not made for it.
std::map<std::string, QPalette> allPalettes() {
    return {{"light", paletteOf(Appearance::Light)},
            {"dark", paletteOf(Appearance::Dark)},
            {"high contrast", paletteOf(Appearance::HighContrast)},
            {"sand", QPalette(QColor(0xd9c9a3), QColor(0xe8dcc0))},
            {"slate", QPalette(QColor(0x3d4852), QColor(0x22292f))}};
}

double contrastOf(const QColor& colour, const QColor& ground) {
    return contrast(colour.rgb(), ground.rgb());
}

TEST(Appearances, EveryTextCanBeReadOnItsGround) {
    constexpr std::pair<Role, Role> kTexts[] = {{QPalette::WindowText, QPalette::Window},
                                                {QPalette::Text, QPalette::Base},
                                                {QPalette::Text, QPalette::AlternateBase},
                                                {QPalette::ButtonText, QPalette::Button},
                                                {QPalette::HighlightedText, QPalette::Highlight},
                                                {QPalette::ToolTipText, QPalette::ToolTipBase},
                                                {QPalette::PlaceholderText, QPalette::Window},
                                                {QPalette::PlaceholderText, QPalette::Base},
                                                {QPalette::PlaceholderText, QPalette::AlternateBase},
                                                {QPalette::Link, QPalette::Window},
                                                {QPalette::Link, QPalette::Base},
                                                {QPalette::LinkVisited, QPalette::Window}};
    for (const Appearance appearance : {Appearance::Light, Appearance::Dark, Appearance::HighContrast}) {
        const QPalette palette = paletteOf(appearance);
        for (const auto& [text, ground] : kTexts)
            EXPECT_GE(contrastOf(palette.color(text), palette.color(ground)), kTextContrast)
                << static_cast<int>(appearance) << ": " << text << " on " << ground;
        EXPECT_GE(contrastOf(palette.color(QPalette::Highlight), palette.color(QPalette::Base)), kLineContrast);
    }
}

TEST(Appearances, GradesAndFaultsCanBeReadOnEveryPalette) {
    for (const auto& [name, palette] : allPalettes()) {
        for (const Signal signal : {Signal::Good, Signal::Caution, Signal::Bad})
            for (const Role ground : {QPalette::Window, QPalette::Base, QPalette::AlternateBase})
                EXPECT_GE(contrastOf(signalColour(signal, palette), palette.color(ground)), kTextContrast) << name;
        EXPECT_GE(contrastOf(palette.color(QPalette::Text), faultyGround(palette)), kTextContrast) << name;
        EXPECT_GE(contrastOf(barColour(palette), palette.color(QPalette::Window)), kLineContrast) << name;
    }
}

TEST(Appearances, EveryLineOfAChartIsSeenAndItsTextsCanBeRead) {
    ChartData chart;
    chart.RowCount = 1;
    chart.ReferenceSeries = 1;
    for (int series = 0; series < 14; ++series) // a curve to compare with, the one that is compared, all colours
        chart.Series.push_back({"s", ChartAxis::Primary, {70}});
    chart.GradeColour = Colour{255, 255, 0};
    const ChartContent content(std::move(chart));
    std::map<std::string, ChartLooks> all = {{"paper", ChartLooks::ofPaper()}};
    for (const auto& [name, palette] : allPalettes())
        all[name] = ChartLooks::ofScreen(palette, 96);
    for (const auto& [name, looks] : all) {
        for (const QColor& ground : {looks.Background, looks.Excluded}) {
            for (std::size_t series = 0; series < content.series.size(); ++series)
                EXPECT_GE(contrastOf(looks.linePen(content, series).color(), ground), kLineContrast) << name << series;
            EXPECT_GE(contrastOf(looks.Frame, ground), kLineContrast) << name;
            for (const QColor& text :
                 {looks.Text, looks.QuietText, looks.Warning, looks.Emphasis, looks.titleColor(content.data)})
                EXPECT_GE(contrastOf(text, ground), kTextContrast) << name << text.name().toStdString();
        }
    }
}

TEST(Appearances, AreTakenOnAtOnceAndKept) {
    const QPalette before = QApplication::palette();
    Desk desk;
    const auto choose = [&](int appearance) {
        onDialog([&](QDialog& dialog) {
            control<QComboBox>(dialog, "cboAppearance").setCurrentIndex(appearance);
            dialog.accept();
        });
        desk.command("Settings...").trigger();
        desk.settle();
    };
    const auto errors = [&] {
        const auto& label = *desk.frame->findChild<QLabel*>("Error");
        return contrastOf(label.palette().color(label.foregroundRole()), desk.frame->palette().color(QPalette::Window));
    };
    EXPECT_GE(errors(), kTextContrast);
    for (const Appearance appearance : {Appearance::Dark, Appearance::HighContrast, Appearance::Light}) {
        choose(static_cast<int>(appearance));
        EXPECT_EQ(desk.tree().palette().color(QPalette::Base), paletteOf(appearance).color(QPalette::Base));
        EXPECT_GE(errors(), kTextContrast);
        EXPECT_EQ(readAppearance(desk.settings), appearance);
    }
    choose(static_cast<int>(Appearance::AsSystem));
    EXPECT_EQ(desk.tree().palette().color(QPalette::Base), before.color(QPalette::Base));
}

} // namespace
} // namespace kestrane
