#include "dialogs/frmAbout.h"

#include "dialogs/Icons.h"
#include "dialogs/Words.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kEmblem = 64;

// The contact block of a firm.
constexpr int kAddressLines = 4;

enum class ContactKind { Plain, Page, Mail };

struct Contact {
    Text::Id captionId, textId;
    ContactKind kind;
};

constexpr Contact kContacts[] = {
    {Text::Telephone, Text::ContactTelephone, ContactKind::Plain}, {Text::Fax, Text::ContactFax, ContactKind::Plain},
    {Text::Support, Text::ContactSupport, ContactKind::Mail},      {Text::Sales, Text::ContactSales, ContactKind::Mail},
    {Text::HomePage, Text::ContactHomePage, ContactKind::Page},    {Text::Shop, Text::ContactShop, ContactKind::Page}};

QLabel* plainLabel(const QString& text) {
    auto* const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QLabel* contactLabel(const QString& text, ContactKind kind) {
    QLabel* const label = plainLabel(text);
    if (kind == ContactKind::Plain) return label;
    const QString escaped = text.toHtmlEscaped();
    const QString target = (kind == ContactKind::Mail ? "mailto:" : "") + escaped;
    label->setTextFormat(Qt::RichText);
    label->setText(QStringLiteral("<a href=\"%1\">%2</a>").arg(target, escaped));
    label->setTextInteractionFlags(Qt::TextBrowserInteraction);
    label->setOpenExternalLinks(true);
    return label;
}

} // namespace

frmAbout::frmAbout(const Session& session, QWidget* parent) : QDialog(parent), session_(session) {
    setObjectName("frmAbout");
    setWindowTitle(loadText(session, Text::AboutTitle));
    QLabel* const licence = plainLabel(loadText(session, Text::AboutLicence));
    licence->setObjectName("lblLicence");
    licence->setWordWrap(true);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    QPushButton* const ok = buttons->button(QDialogButtonBox::Ok);
    ok->setText(loadText(session, Text::Ok));
    ok->setIcon({});
    ok->setDefault(true);
    nameControl(*ok, "cmdOK", ok->text());
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(layout->spacing() * 2);
    layout->addLayout(product());
    layout->addLayout(contacts());
    layout->addWidget(licence);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    ok->setFocus();
}

QLayout* frmAbout::product() {
    auto* const emblem = new QLabel;
    emblem->setPixmap(iconOf("application").pixmap(QSize(kEmblem, kEmblem), devicePixelRatioF()));

    QLabel* const name = plainLabel(loadText(session_, Text::AboutVersion));
    name->setObjectName("lblVersion");
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    name->setFont(large);

    auto* const words = new QVBoxLayout;
    words->addWidget(name);
    words->addWidget(plainLabel(loadText(session_, Text::AboutPurpose)));
    words->addWidget(plainLabel(loadText(session_, Text::AboutCopyright)));
    auto* const layout = new QHBoxLayout;
    layout->addWidget(emblem, 0, Qt::AlignTop);
    layout->addLayout(words, 1);
    return layout;
}

QLayout* frmAbout::contacts() {
    QString address = loadText(session_, Text::ContactCompany);
    for (int line = 0; line < kAddressLines; ++line)
        address += '\n' + loadText(session_, Text::Id{Text::ContactAddress1 + line});
    auto* const form = new QFormLayout;
    for (const Contact& contact : kContacts) {
        auto* const caption = new QLabel(loadText(session_, contact.captionId));
        form->addRow(caption, contactLabel(loadText(session_, contact.textId), contact.kind));
    }
    form->setVerticalSpacing(fontMetrics().descent());

    auto* const layout = new QHBoxLayout;
    layout->addWidget(plainLabel(address), 0, Qt::AlignTop);
    layout->addSpacing(fontMetrics().averageCharWidth() * 4);
    layout->addLayout(form, 1);
    return layout;
}

} // namespace kestrane
