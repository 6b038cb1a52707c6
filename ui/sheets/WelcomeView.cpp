#include "ui/sheets/WelcomeView.h"

#include "app/RunMessages.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolView.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tallyfold {

namespace {

constexpr int sheetWidth = 520;

QLayout *pointOf(const QString &symbol, const QString &heading, const QString &sentence)
{
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(new StyledLabel(heading, TextStyle::headline));
    texts->addWidget(new StyledLabel(sentence, TextStyle::body, Tone::secondary));
    auto *row = new QHBoxLayout;
    row->setSpacing(spacing::section);
    row->addWidget(new SymbolView(symbol, Tone::accent, 32), 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    return row;
}

} // namespace

WelcomeView::WelcomeView(const Environment &environment, QWidget *parent)
    : SheetDialog(sheetWidth, {spacing::sheet + 8, spacing::sheet + 8, spacing::sheet + 8, spacing::sheet},
                  parent),
      m_environment(environment)
{
    setObjectName(QStringLiteral("welcomeView"));
    const QString title = words(QT_TRANSLATE_NOOP("Words", "Welcome to %1")).arg(displayedName());
    setWindowTitle(title);
    setAccessibleName(title);

    auto *heading = new StyledLabel(title, TextStyle::largeTitle);
    auto *subtitle =
        new StyledLabel(words(QT_TRANSLATE_NOOP(
                            "Words", "Bates numbers, legends and a production index for folders of PDFs")),
                        TextStyle::body, Tone::secondary);
    heading->setAlignment(Qt::AlignCenter);
    subtitle->setAlignment(Qt::AlignCenter);

    auto *help = new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Help")));
    help->setObjectName(QStringLiteral("welcomeHelp"));
    help->setAutoDefault(false);
    connect(help, &QPushButton::clicked, this, [this] { m_environment.openWindow(WindowId::help); });
    auto *start = new ProminentButton(words(QT_TRANSLATE_NOOP("Words", "Get Started")));
    start->setObjectName(QStringLiteral("getStarted"));
    start->setDefault(true);
    connect(start, &QPushButton::clicked, this, [this] {
        rememberSeen();
        accept();
    });
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(help, QDialogButtonBox::HelpRole);
    buttons->addButton(start, QDialogButtonBox::AcceptRole);

    QVBoxLayout *layout = &content();
    layout->setSpacing(spacing::section);
    layout->addWidget(heading);
    layout->addWidget(subtitle);
    layout->addSpacing(spacing::normal);
    layout->addLayout(pointOf(
        QStringLiteral("doc.on.doc"), words(QT_TRANSLATE_NOOP("Words", "Drop a folder of PDFs")),
        words(QT_TRANSLATE_NOOP("Words",
                                "Numbers run from file to file in the order you choose, with a prefix "
                                "like ABC000001, an optional legend and page X of Y."))));
    layout->addLayout(
        pointOf(QStringLiteral("eye"), words(QT_TRANSLATE_NOOP("Words", "See it before you write it")),
                words(QT_TRANSLATE_NOOP(
                    "Words", "The preview shows the first pages stamped exactly as they’ll be saved."))));
    layout->addLayout(pointOf(
        QStringLiteral("lock.shield"), words(QT_TRANSLATE_NOOP("Words", "Originals stay untouched")),
        words(QT_TRANSLATE_NOOP("Words",
                                "Stamped copies and a production index go to a folder you choose; nothing "
                                "is replaced, and nothing leaves this Mac."))));
    layout->addSpacing(spacing::normal);
    layout->addStretch(1);
    layout->addWidget(buttons);
    start->setFocus(); // Now that it belongs to the sheet.
}

void WelcomeView::rememberSeen()
{
    AppSettings settings = m_environment.model.settings();
    settings.onboardingDone = true;
    m_environment.model.setSettings(settings);
}

void WelcomeView::reject()
{
    rememberSeen();
    QDialog::reject();
}

} // namespace tallyfold
