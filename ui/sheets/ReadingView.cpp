#include "ui/sheets/ReadingView.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/controls/StyledLabel.h"
#include "ui/text/ReadingText.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <limits>

namespace tallyfold {

namespace {

constexpr int viewWidth = 400;
/// Often enough for numbers that run, and for the end not to be waited for.
constexpr std::chrono::milliseconds lookInterval{50};

/// A progress bar counts in int.
int barValue(std::int64_t count)
{
    return static_cast<int>(std::min<std::int64_t>(count, std::numeric_limits<int>::max()));
}

} // namespace

ReadingView::ReadingView(SourceReading &reading, QWidget *parent)
    : QDialog(parent), m_reading(&reading), m_progress(new QProgressBar)
{
    setObjectName(QStringLiteral("readingView"));
    setWindowModality(Qt::ApplicationModal);
    const QString title = words(QT_TRANSLATE_NOOP("Words", "Reading PDFs"));
    setWindowTitle(title);
    setAccessibleName(title);
    auto *text = new StyledLabel(TextStyle::calloutStrong);
    text->setTabularDigits();
    m_text = text;
    m_text->setObjectName(QStringLiteral("readingText"));
    setAnnounced(*m_text);
    m_progress->setObjectName(QStringLiteral("readingProgress"));
    m_progress->setTextVisible(false);
    auto *hint =
        new StyledLabel(words(QT_TRANSLATE_NOOP("Words", "When you stop, the files read so far are kept.")),
                        TextStyle::caption, Tone::secondary);
    setAccessibleDescription(hint->text());
    auto *stop = new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Stop")));
    stop->setObjectName(QStringLiteral("stopReading"));
    stop->setAutoDefault(false); // Return that was pressed before this came up is not for it.
    connect(stop, &QPushButton::clicked, this, &ReadingView::reject);

    auto *row = new QHBoxLayout;
    row->setSpacing(spacing::wide);
    row->addWidget(hint, 1);
    row->addWidget(stop, 0, Qt::AlignBottom);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::sheet, spacing::sheet, spacing::sheet, spacing::section);
    layout->setSpacing(spacing::normal);
    layout->addWidget(m_text);
    layout->addWidget(m_progress);
    layout->addLayout(row);
    setFixedWidth(viewWidth);
    connect(&m_timer, &QTimer::timeout, this, &ReadingView::look);
    m_timer.start(lookInterval);
    look();
}

void ReadingView::reject()
{
    m_reading->stop();
    QDialog::reject();
}

void ReadingView::look()
{
    const SourceReading::Progress progress = m_reading->progress();
    const QString text = readingText(progress);
    if (m_text->text() != text) {
        m_text->setText(text);
        m_progress->setAccessibleName(text);
    }
    m_progress->setRange(0, barValue(progress.files.value_or(0))); // From 0 to 0 it tells of no end.
    m_progress->setValue(barValue(progress.read));
    if (m_reading->isOver() && isVisible()) {
        accept();
    }
}

} // namespace tallyfold
