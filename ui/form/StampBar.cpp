#include "ui/form/StampBar.h"

#include "ui/controls/Separator.h"
#include "ui/form/WrittenNotice.h"
#include "ui/text/Messages.h"
#include "ui/text/PlanText.h"
#include "ui/text/ResultText.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"
#include "ui/theme/Symbols.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

namespace tallyfold {

namespace {

/// QProgressBar counts in int, which productions may exceed.
constexpr int progressSteps = 10'000;

} // namespace

StampBar::StampBar(const Environment &environment, QWidget *parent)
    : QWidget(parent),
      m_environment(environment),
      m_problemRow(new QWidget),
      m_problem(new SymbolLabel(QStringLiteral("exclamationmark.octagon.fill"), Tone::blocking,
                                TextStyle::callout, Tone::blocking)),
      m_startNext(new SmallButton(words(QT_TRANSLATE_NOOP("Words", "Start Next Production")))),
      m_status(new StyledLabel(TextStyle::calloutStrong)),
      m_chooseFirst(new StyledLabel(words(QT_TRANSLATE_NOOP("Words", "Choose an output folder first.")),
                                    TextStyle::caption, Tone::secondary)),
      m_stamp(new ProminentButton(words(QT_TRANSLATE_NOOP("Words", "Stamp")))),
      m_progressText(new StyledLabel(TextStyle::calloutStrong)),
      m_progress(new QProgressBar),
      m_cancel(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Cancel")))),
      m_idle(makeIdle()),
      m_running(makeRunning())
{
    setObjectName(QStringLiteral("stampBar"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new Separator);
    layout->addWidget(m_idle);
    layout->addWidget(m_running);

    connect(&environment.model, &AppModel::runningChanged, this, &StampBar::showRunning);
    connect(&environment.model, &AppModel::progressPagesChanged, this, &StampBar::showProgress);
    connect(&environment.model, &AppModel::outputFolderChanged, this, &StampBar::showStatus);
    connect(&environment.plan, &CurrentPlan::changed, this, &StampBar::showStatus);
    connect(&environment.output, &OutputCheck::changed, this, &StampBar::showProblem);
    connect(&environment.model, &AppModel::summaryChanged, this, &StampBar::offerNext);
    showRunning();
    showStatus();
    showProblem();
    offerNext();
}

QWidget *StampBar::makeIdle()
{
    m_problem->setObjectName(QStringLiteral("blockingProblem"));
    m_problem->setAnnounced();
    m_status->setObjectName(QStringLiteral("status"));
    m_chooseFirst->setObjectName(QStringLiteral("chooseFirst"));
    m_stamp->setObjectName(QStringLiteral("stamp"));
    auto *another = new SmallButton(words(QT_TRANSLATE_NOOP("Words", "Choose Another Folder…")));
    another->setObjectName(QStringLiteral("chooseAnother"));
    connect(another, &QPushButton::clicked, this, [this] { m_environment.model.chooseOutputFolder(); });
    m_startNext->setObjectName(QStringLiteral("startNextHere"));
    connect(m_startNext, &QPushButton::clicked, this, [this] { m_environment.model.startNextProduction(); });
    auto *problemLayout = new QVBoxLayout(m_problemRow);
    problemLayout->setContentsMargins(0, 0, 0, spacing::tight);
    problemLayout->setSpacing(spacing::tight + 2);
    problemLayout->addWidget(new WrittenNotice(m_environment));
    problemLayout->addWidget(m_problem);
    auto *ways = new QHBoxLayout;
    ways->setSpacing(spacing::normal);
    ways->addWidget(another);
    ways->addWidget(m_startNext);
    ways->addStretch(1);
    problemLayout->addLayout(ways);

    m_stamp->setIcon(symbolIcon(QStringLiteral("number.square.fill"), Tone::onAccent));
    m_stamp->setIconSize(QSize(18, 18));
    m_stamp->setToolTip(words(QT_TRANSLATE_NOOP("Words", "Write the stamped copies (⌘Return)")));
    connect(m_stamp, &QPushButton::clicked, this, [this] { m_environment.model.stamp(); });

    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_status);
    texts->addWidget(m_chooseFirst);
    auto *row = new QHBoxLayout;
    row->setSpacing(spacing::wide);
    row->addLayout(texts, 1);
    row->addWidget(m_stamp, 0, Qt::AlignVCenter);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(spacing::section, spacing::wide, spacing::section, spacing::wide);
    layout->setSpacing(spacing::tight);
    layout->addWidget(m_problemRow);
    layout->addLayout(row);
    return page;
}

QWidget *StampBar::makeRunning()
{
    m_progressText->setObjectName(QStringLiteral("progressText"));
    m_progress->setObjectName(QStringLiteral("progress"));
    m_progress->setRange(0, progressSteps);
    m_progress->setTextVisible(false);
    m_cancel->setObjectName(QStringLiteral("cancel"));
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_environment.model.cancelRun(); });
    auto *bar = new QVBoxLayout;
    bar->setSpacing(spacing::tight + 2);
    bar->addWidget(m_progressText);
    bar->addWidget(m_progress);
    auto *page = new QWidget;
    auto *layout = new QHBoxLayout(page);
    layout->setContentsMargins(spacing::section, spacing::wide, spacing::section, spacing::wide);
    layout->setSpacing(spacing::wide);
    layout->addLayout(bar, 1);
    layout->addWidget(m_cancel, 0, Qt::AlignBottom);
    // Not a shortcut of the button, which would delay the action by the animation of a click.
    auto *escape = new QShortcut(Qt::Key_Escape, page);
    connect(escape, &QShortcut::activated, m_cancel, &QPushButton::click);
    return page;
}

void StampBar::showRunning()
{
    const bool isRunning = m_environment.model.isRunning();
    if (isRunning) { // The list may change during the run, which does not affect it.
        m_pages = pagesToWrite(*m_environment.plan);
    }
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    m_idle->setVisible(!isRunning);
    m_running->setVisible(isRunning);
    if (hadFocus) { // The button that had the focus is hidden; the one in its place takes the focus.
        QWidget *next = isRunning ? static_cast<QWidget *>(m_cancel) : m_stamp;
        next->setFocus();
    }
    showProgress();
}

void StampBar::showProgress()
{
    const std::int64_t done = m_environment.model.progressPages();
    const QString text = progressText(done, m_pages);
    m_progressText->setText(text);
    m_progress->setAccessibleName(text);
    m_progress->setValue(m_pages > 0 ? static_cast<int>(done * progressSteps / m_pages) : 0);
}

void StampBar::showStatus()
{
    const ProductionPlan &plan = *m_environment.plan;
    m_status->setText(statusOf(plan));
    m_chooseFirst->setVisible(!m_environment.model.outputFolder() && !plan.files.empty());
}

void StampBar::showProblem()
{
    const std::optional<QString> problem = folderMessageOf(m_environment.output.conflicts());
    m_problem->setText(problem.value_or(QString()));
    m_problemRow->setVisible(problem.has_value());
}

void StampBar::offerNext()
{
    const std::optional<RunSummary> &summary = m_environment.model.summary();
    m_startNext->setVisible(summary.has_value());
    m_startNext->setToolTip(summary ? nextProductionHelp(*summary) : QString());
}

} // namespace tallyfold
