#include "ui/sheets/ResultView.h"

#include "app/CountText.h"
#include "app/FailureText.h"
#include "core/SourceFile.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/Card.h"
#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/controls/SymbolView.h"
#include "ui/text/ResultText.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QScrollArea>

namespace tallyfold {

namespace {

constexpr int sheetWidth = 480;
constexpr int tallestFailures = 180;

/// Makes the whole path of what a label names its help text.
void tellPlace(QWidget &label, const std::filesystem::path &path)
{
    label.setToolTip(displayPath(path));
    label.setAccessibleDescription(displayPath(path));
}

} // namespace

ResultView::ResultView(const Environment &environment, QWidget *parent)
    : SheetDialog(sheetWidth, {spacing::sheet, spacing::sheet, spacing::sheet, spacing::section}, parent),
      m_environment(environment),
      m_summary(environment.model.summary().value_or(RunSummary()))
{
    setObjectName(QStringLiteral("resultView"));
    content().setSpacing(spacing::wide);
    addHeading(content());
    addRows(content());
    addFailures(content());
    content().addStretch(1);
    addButtons(content());
}

void ResultView::addHeading(QVBoxLayout &layout)
{
    const QString title = m_summary.cancelled ? words(QT_TRANSLATE_NOOP("Words", "Stopped"))
                                              : words(QT_TRANSLATE_NOOP("Words", "Production written"));
    setWindowTitle(title);
    setAccessibleName(title);
    auto *symbol = m_summary.cancelled
                       ? new SymbolView(QStringLiteral("stop.circle"), Tone::warning, 40)
                       : new SymbolView(QStringLiteral("checkmark.circle.fill"), Tone::success, 40);
    auto *heading = new StyledLabel(title, TextStyle::largeTitle);
    heading->setObjectName(QStringLiteral("resultTitle"));
    auto *counts = new StyledLabel(countText(m_summary.files, Counted::stampedCopies) +
                                       QStringLiteral(" · ") + countText(m_summary.pages, Counted::pages),
                                   TextStyle::body, Tone::secondary);
    counts->setObjectName(QStringLiteral("resultCounts"));
    tellPlace(*counts, m_summary.folder);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(heading);
    texts->addWidget(counts);
    auto *row = new QHBoxLayout;
    row->setSpacing(spacing::wide);
    row->addWidget(symbol, 0, Qt::AlignVCenter);
    row->addLayout(texts, 1);
    layout.addLayout(row);
}

void ResultView::addRows(QVBoxLayout &layout)
{
    auto *card = new Card;
    const auto addRow = [card](const QString &label, const QString &value, const char *name) -> QLabel & {
        auto *text = new StyledLabel(value, TextStyle::body);
        text->setObjectName(QLatin1String(name));
        text->setTabularDigits();
        text->setSelectable();
        text->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
        text->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        text->setAccessibleName(label + QStringLiteral(": ") + value);
        card->addRow(label, text);
        return *text;
    };
    if (m_summary.range) {
        addRow(words(QT_TRANSLATE_NOOP("Words", "Bates range")), *m_summary.range, "resultRange");
    }
    if (m_summary.index) {
        tellPlace(
            addRow(words(QT_TRANSLATE_NOOP("Words", "Index")), displayName(*m_summary.index), "resultIndex"),
            *m_summary.index);
    }
    if (m_summary.privilegeLog) {
        tellPlace(addRow(words(QT_TRANSLATE_NOOP("Words", "Privilege log")),
                         displayName(*m_summary.privilegeLog), "resultPrivilegeLog"),
                  *m_summary.privilegeLog);
    }
    if (m_summary.range || m_summary.index || m_summary.privilegeLog) {
        layout.addWidget(card);
    } else {
        delete card;
    }
    const bool isFull = m_summary.isSeriesFull();
    QString text;
    if (m_summary.cancelled) {
        text =
            words(QT_TRANSLATE_NOOP("Words", "%1 were finished before you stopped; the one in progress was "
                                             "removed and no index was written."))
                .arg(countText(m_summary.files, Counted::stampedCopies));
    } else if (isFull) {
        text = words(QT_TRANSLATE_NOOP("Words", "This series is full: no production can start at %1. Choose "
                                                "another prefix or suffix for the next one."))
                   .arg(m_summary.nextBates);
    } else {
        text = words(QT_TRANSLATE_NOOP("Words", "Next production starts at %1 to continue this series."))
                   .arg(m_summary.nextBates);
    }
    auto *next =
        new StyledLabel(text, TextStyle::body, m_summary.cancelled || isFull ? Tone::warning : Tone::text);
    next->setObjectName(QStringLiteral("resultNext"));
    setAccessibleDescription(writtenText(m_summary) + QLatin1Char(' ') + text);
    layout.addWidget(next);
}

void ResultView::addFailures(QVBoxLayout &layout)
{
    if (m_summary.failures.isEmpty()) {
        return;
    }
    auto *list = new QWidget;
    auto *lines = new QVBoxLayout(list);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(spacing::tight);
    for (const QString &name : m_summary.failures) {
        auto *line = new SymbolLabel(QStringLiteral("exclamationmark.triangle.fill"), Tone::warning,
                                     TextStyle::callout);
        line->setObjectName(QStringLiteral("failure"));
        line->setText(
            words(QT_TRANSLATE_NOOP("Words", "“%1” couldn’t be stamped (marked “failed” in the index)."))
                .arg(name));
        lines->addWidget(line);
    }
    auto *scroll = new QScrollArea; // There may be thousands, if a disk is full.
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setWidget(list);
    scroll->setMaximumHeight(qMin(tallestFailures, list->sizeHint().height() * 2));
    layout.addWidget(scroll);
    addReasons(layout);
}

void ResultView::addReasons(QVBoxLayout &layout)
{
    constexpr std::size_t mostReasons = 3; // More than the eye takes in before it turns to the index.
    std::size_t told = 0;
    for (const FailureReason &reason : m_summary.reasons) {
        const std::optional<QString> text = failureText(reason.example);
        if (!text) {
            continue;
        }
        if (++told > mostReasons) {
            break;
        }
        //: How many files, and why they could not be stamped.
        auto *line = new StyledLabel(m_summary.failures.size() == 1
                                         ? *text
                                         : words(QT_TRANSLATE_NOOP("Words", "%1: %2"))
                                               .arg(countText(reason.files, Counted::files), *text),
                                     TextStyle::callout);
        line->setObjectName(QStringLiteral("failureReason"));
        line->setSelectable();
        layout.addWidget(line);
    }
}

void ResultView::addButtons(QVBoxLayout &layout)
{
    auto *buttons = new QDialogButtonBox;
    auto *reveal = new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Show in Finder")));
    reveal->setObjectName(QStringLiteral("showInFinder"));
    connect(reveal, &QPushButton::clicked, this, [this] { m_environment.desktop.reveal(m_summary.folder); });
    buttons->addButton(reveal, QDialogButtonBox::ActionRole);
    QPushButton *next = nullptr;
    if (!m_summary.cancelled) {
        next = new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Start Next Production")));
        next->setObjectName(QStringLiteral("startNext"));
        next->setToolTip(nextProductionHelp(m_summary));
        connect(next, &QPushButton::clicked, this, [this] {
            m_environment.model.startNextProduction();
            accept();
        });
        buttons->addButton(next, QDialogButtonBox::ActionRole);
    }
    auto *done = new ProminentButton(words(QT_TRANSLATE_NOOP("Words", "Done")));
    done->setObjectName(QStringLiteral("done"));
    connect(done, &QPushButton::clicked, this, &QDialog::accept);
    buttons->addButton(done, QDialogButtonBox::RejectRole); // It closes, and takes back nothing.
    for (QPushButton *button : {reveal, next}) {
        if (button) {
            button->setAutoDefault(false);
        }
    }
    done->setDefault(true);
    layout.addSpacing(spacing::tight);
    layout.addWidget(buttons);
    done->setFocus(); // Now that it belongs to the sheet.
}

} // namespace tallyfold
