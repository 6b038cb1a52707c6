#include "ui/check/CheckProgress.h"

#include "app/CheckText.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tallyfold {

namespace {

/// A progress bar counts in int; productions may be larger.
constexpr int progressSteps = 10'000;

} // namespace

CheckProgress::CheckProgress(CheckModel &model, QWidget *parent)
    : QWidget(parent),
      m_model(&model),
      m_reading(new ElidedLabel(TextStyle::calloutStrong)),
      m_pages(new StyledLabel(TextStyle::callout, Tone::secondary)),
      m_bar(new QProgressBar),
      m_stop(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Stop"))))
{
    m_reading->setObjectName(QStringLiteral("checkReading"));
    m_pages->setObjectName(QStringLiteral("checkPages"));
    m_pages->setTabularDigits();
    m_bar->setObjectName(QStringLiteral("checkProgress"));
    m_bar->setTextVisible(false);
    m_stop->setObjectName(QStringLiteral("stopCheck"));
    m_stop->setAutoDefault(false);
    connect(m_stop, &QPushButton::clicked, this, [this] { m_model->stop(); });

    auto *bar = new QVBoxLayout;
    bar->setSpacing(spacing::tight + 2);
    bar->addWidget(m_reading);
    bar->addWidget(m_bar);
    bar->addWidget(m_pages);
    auto *row = new QHBoxLayout;
    row->setSpacing(spacing::wide);
    row->addLayout(bar, 1);
    row->addWidget(m_stop, 0, Qt::AlignVCenter);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, spacing::normal, 0, 0);
    layout->addLayout(row);
    layout->addStretch(1);

    connect(m_model, &CheckModel::progressChanged, this, &CheckProgress::showProgress);
    connect(m_model, &CheckModel::runningChanged, this, &CheckProgress::showProgress);
    showProgress();
}

QPushButton *CheckProgress::stopButton() const
{
    return m_stop;
}

void CheckProgress::showProgress()
{
    const check::Progress &progress = m_model->progress();
    const QString pages = pagesText(progress);
    m_reading->setText(m_model->isStopping() ? words(QT_TRANSLATE_NOOP("Words", "Stopping…"))
                                             : readingText(progress));
    m_pages->setText(pages);
    m_stop->setEnabled(!m_model->isStopping());
    m_bar->setAccessibleName(pages.isEmpty() ? m_reading->text() : pages);
    // While it is not known how much there is, the bar only says that something goes on.
    m_bar->setRange(0, progress.plannedPages > 0 ? progressSteps : 0);
    m_bar->setValue(progress.plannedPages > 0
                        ? static_cast<int>(progress.pages * progressSteps / progress.plannedPages)
                        : 0);
}

} // namespace tallyfold
