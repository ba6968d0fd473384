#include "dialogs/Palettes.h"

#include "platform/Contrast.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

namespace kestrane {

namespace {

struct Colours {
    Rgb Window, Base, Alternate, Text, Button, Highlight, HighlightedText, Quiet, Disabled, Link, Visited, Tip, TipText;
};

constexpr Colours kLight = {0xefefef, 0xffffff, 0xf6f6f6, 0x17191c, 0xe6e6e6, 0x1f6fa8, 0xffffff,
                            0x565c64, 0x8d9299, 0x0b57a4, 0x6b3fa0, 0xffffdc, 0x17191c};
constexpr Colours kDark = {0x2b2d30, 0x1e1f22, 0x25272a, 0xe6e8ea, 0x3a3d41, 0x2a74a8, 0xffffff,
                           0xaab0b8, 0x7d838b, 0x6cb6ff, 0xc3a6ff, 0x44474c, 0xf2f3f4};
constexpr Colours kHighContrast = {0x000000, 0x000000, 0x101010, 0xffffff, 0x000000, 0xffe14d, 0x000000,
                                   0xffffff, 0xb4b4b4, 0x7fdbff, 0xe0b0ff, 0x000000, 0xffff00};

QPalette paletteOf(const Colours& colours) {
    QPalette palette{QColor(colours.Button), QColor(colours.Window)};
    const std::pair<QPalette::ColorRole, Rgb> roles[] = {
        {QPalette::WindowText, colours.Text},         {QPalette::Base, colours.Base},
        {QPalette::AlternateBase, colours.Alternate}, {QPalette::Text, colours.Text},
        {QPalette::ButtonText, colours.Text},         {QPalette::BrightText, colours.HighlightedText},
        {QPalette::Highlight, colours.Highlight},     {QPalette::HighlightedText, colours.HighlightedText},
        {QPalette::PlaceholderText, colours.Quiet},   {QPalette::Link, colours.Link},
        {QPalette::LinkVisited, colours.Visited},     {QPalette::ToolTipBase, colours.Tip},
        {QPalette::ToolTipText, colours.TipText}};
    for (const auto& [role, colour] : roles)
        palette.setColor(role, QColor(colour));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(colours.Disabled));
    return palette;
}

// The shade of quiet texts that can be read on the grounds of a palette.
QColor quietOf(const QPalette& palette) {
    const Rgb text = palette.color(QPalette::WindowText).rgb();
    Rgb shade = mixed(text, palette.color(QPalette::Window).rgb(), 0.35);
    for (const QPalette::ColorRole ground : {QPalette::Window, QPalette::Base, QPalette::AlternateBase})
        shade = readable(shade, palette.color(ground).rgb());
    return QColor::fromRgb(shade);
}

// The signs on the buttons of an inner window, in the colour of texts: those of the toolkit are made for light windows.
// Null for any other.
QIcon signOf(QStyle::StandardPixmap which) {
    constexpr int kSide = 48; // pixels; they are shown smaller
    constexpr int kLine = 5;
    QPixmap sign(kSide, kSide);
    sign.fill(Qt::transparent);
    QPainter painter(&sign);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QApplication::palette().color(QPalette::ButtonText), kLine));
    switch (which) {
    case QStyle::SP_TitleBarMinButton:
        painter.drawLine(10, 36, 38, 36);
        break;
    case QStyle::SP_TitleBarNormalButton:
        painter.drawRect(8, 18, 20, 20);
        painter.drawPolyline(QPolygon({{18, 16}, {18, 9}, {39, 9}, {39, 30}, {31, 30}}));
        break;
    case QStyle::SP_TitleBarCloseButton:
        painter.drawLine(11, 11, 37, 37);
        painter.drawLine(37, 11, 11, 37);
        break;
    default:
        return {};
    }
    return {sign};
}

// How the edges of what can be pressed or filled are drawn on top of the toolkit's: not at all, in the colour of what
// is disabled, or in the colour of the text. Shades would not be seen on dark grounds.
enum class Edges { None, Quiet, Strong };

// Gives what is pressed or chosen the height that a hand needs, and edges that are seen.
class HandyStyle : public QProxyStyle {
public:
    HandyStyle(const QString& base, Edges edges) : QProxyStyle(QStyleFactory::create(base)), edges_(edges) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        constexpr PixelMetric kHit[] = {PM_ScrollBarExtent, PM_TabBarScrollButtonWidth, PM_TitleBarButtonSize};
        const int usual = QProxyStyle::pixelMetric(metric, option, widget);
        return std::ranges::find(kHit, metric) != std::end(kHit) ? std::max(usual, kLeastHit) : usual;
    }

    QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override {
        const QIcon sign = signOf(which);
        return sign.isNull() ? QProxyStyle::standardIcon(which, option, widget) : sign;
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        constexpr ContentsType kHit[] = {CT_PushButton, CT_CheckBox,    CT_RadioButton,  CT_ComboBox,     CT_LineEdit,
                                         CT_SpinBox,    CT_Slider,      CT_ToolButton,   CT_ItemViewItem, CT_TabBarTab,
                                         CT_MenuItem,   CT_MenuBarItem, CT_HeaderSection};
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (std::ranges::find(kHit, type) != std::end(kHit) && !isSeparator(type, option))
            size.setHeight(std::max(size.height(), kLeastHit));
        return size;
    }

    // A box is hit above and below its words, too.
    QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override {
        QRect rect = QProxyStyle::subElementRect(element, option, widget);
        if (element != SE_CheckBoxClickRect && element != SE_RadioButtonClickRect) return rect;
        rect.setTop(option->rect.top());
        rect.setBottom(option->rect.bottom());
        return rect;
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (edges_ == Edges::None) return;
        constexpr PrimitiveElement kUsed[] = {PE_FrameLineEdit, PE_PanelButtonCommand, PE_IndicatorCheckBox, PE_Frame};
        constexpr PrimitiveElement kAround[] = {PE_FrameGroupBox, PE_FrameTabWidget, PE_PanelButtonTool, PE_FrameMenu};
        const bool isRound = element == PE_IndicatorRadioButton;
        const bool isAround = edges_ == Edges::Strong && std::ranges::find(kAround, element) != std::end(kAround);
        if (isRound || isAround || std::ranges::find(kUsed, element) != std::end(kUsed))
            drawEdge(*option, *painter, isRound);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        QProxyStyle::drawControl(element, option, painter, widget);
        const bool isTabInFront =
            edges_ == Edges::Strong && element == CE_TabBarTabShape && option->state.testFlag(State_Selected);
        if (isTabInFront) drawEdge(*option, *painter, false);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (edges_ == Edges::None) return;
        if (control == CC_ComboBox || control == CC_SpinBox || control == CC_Slider) drawEdge(*option, *painter, false);
        if (control != CC_ScrollBar) return;
        QStyleOption slider;
        slider.palette = option->palette;
        slider.state = option->state;
        slider.rect = subControlRect(control, option, SC_ScrollBarSlider, widget);
        drawEdge(slider, *painter, false);
    }

private:
    static bool isSeparator(ContentsType type, const QStyleOption* option) {
        const auto* const item = type == CT_MenuItem ? qstyleoption_cast<const QStyleOptionMenuItem*>(option) : nullptr;
        return item != nullptr && item->menuItemType == QStyleOptionMenuItem::Separator;
    }

    void drawEdge(const QStyleOption& option, QPainter& painter, bool isRound) const {
        painter.save();
        const bool isFocused = option.state.testFlag(State_HasFocus);
        const auto group = edges_ == Edges::Quiet ? QPalette::Disabled : option.palette.currentColorGroup();
        painter.setPen(isFocused ? option.palette.color(QPalette::Highlight)
                                 : option.palette.color(group, QPalette::WindowText));
        painter.setBrush(Qt::NoBrush);
        const QRect edge = option.rect.adjusted(0, 0, -1, -1);
        isRound ? painter.drawEllipse(edge) : painter.drawRect(edge);
        painter.restore();
    }

    const Edges edges_;
};

} // namespace

QPalette paletteOf(Appearance appearance) {
    switch (appearance) {
    case Appearance::Light:
        return paletteOf(kLight);
    case Appearance::Dark:
        return paletteOf(kDark);
    case Appearance::HighContrast:
        return paletteOf(kHighContrast);
    case Appearance::AsSystem:
        break;
    }
    QPalette palette; // what is not set here follows the desktop
    palette.setColor(QPalette::PlaceholderText, quietOf(palette));
    return palette;
}

void showAppearance(Appearance appearance) {
    static const QString styleOfDesktop = QApplication::style()->name();
    const bool isOfSystem = appearance == Appearance::AsSystem;
    const Edges edges = appearance == Appearance::HighContrast ? Edges::Strong
                        : appearance == Appearance::Dark       ? Edges::Quiet
                                                               : Edges::None;
    QApplication::setStyle(new HandyStyle(isOfSystem ? styleOfDesktop : QStringLiteral("Fusion"), edges));
    QApplication::setPalette(QPalette()); // so that nothing of the appearance before is left
    QApplication::setPalette(paletteOf(appearance));
}

int tableRowHeight(const QFontMetrics& font) {
    constexpr int kAround = 6; // pixels, above and below the text together
    return std::max(kLeastHit, font.height() + kAround);
}

void keepQuietTextReadable() {
    QPalette palette = QApplication::palette();
    const QColor quiet = quietOf(palette);
    const auto isReadable = [&](QPalette::ColorRole ground) {
        const QColor shade = palette.color(QPalette::PlaceholderText);
        return shade.alpha() == 255 && contrast(shade.rgb(), palette.color(ground).rgb()) >= kTextContrast;
    };
    if (isReadable(QPalette::Window) && isReadable(QPalette::Base)) return;
    palette = QPalette();
    palette.setColor(QPalette::PlaceholderText, quiet);
    QApplication::setPalette(palette);
}

} // namespace kestrane
