#include "ui/check/HashListView.h"

#include "app/CheckText.h"
#include "app/CountText.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <chrono>

namespace tallyfold {

namespace {

constexpr int viewWidth = 400;
constexpr std::chrono::milliseconds lookInterval{50};
/// A progress bar counts in int.
constexpr int progressSteps = 10'000;

} // namespace

HashListView::HashListView(const std::filesystem::path &folder, QWidget *parent)
    : QDialog(parent),
      m_writing(folder),
      m_text(new ElidedLabel(TextStyle::calloutStrong)),
      m_progress(new QProgressBar),
      m_stop(new QPushButton(words("Stop")))
{
    setObjectName(QStringLiteral("hashListView"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    const QString title = words(QT_TRANSLATE_NOOP("Words", "Writing the Hash List"));
    setWindowTitle(title);
    setAccessibleName(title);
    m_text->setObjectName(QStringLiteral("hashing"));
    m_progress->setObjectName(QStringLiteral("hashProgress"));
    m_progress->setTextVisible(false);
    m_progress->setRange(0, progressSteps);
    m_stop->setObjectName(QStringLiteral("stopHashing"));
    m_stop->setAutoDefault(false);
    connect(m_stop, &QPushButton::clicked, this, &HashListView::reject);
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(m_stop);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::sheet, spacing::sheet, spacing::sheet, spacing::section);
    layout->setSpacing(spacing::normal);
    layout->addWidget(m_text);
    layout->addWidget(m_progress);
    layout->addLayout(row);
    setFixedWidth(viewWidth);
    connect(&m_timer, &QTimer::timeout, this, &HashListView::look);
    connect(&m_writing, &HashListWriting::ended, this, [this](const check::HashesOutcome &outcome) {
        accept();
        Q_EMIT ended(outcome);
    });
    m_timer.start(lookInterval);
    look();
}

void HashListView::reject()
{
    m_stop->setEnabled(false);
    m_writing.stop();
}

void HashListView::look()
{
    const check::Progress progress = m_writing.progress();
    const QString text = readingText(progress);
    if (m_text->text() != text) {
        m_text->setText(text);
        m_progress->setAccessibleName(text);
    }
    m_progress->setValue(progress.plannedPages > 0
                             ? static_cast<int>(progress.pages * progressSteps / progress.plannedPages)
                             : 0);
}

} // namespace tallyfold
