#include "ui/form/WrittenNotice.h"

#include "core/SourceFile.h"
#include "ui/controls/Buttons.h"
#include "ui/text/ResultText.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

#include <utility>

namespace tallyfold {

WrittenNotice::WrittenNotice(const Environment &environment, QWidget *parent)
    : QWidget(parent),
      m_environment(environment),
      m_label(new SymbolLabel(QStringLiteral("folder"), Tone::secondary, TextStyle::callout)),
      m_place(new ElidedLabel(TextStyle::caption, Tone::secondary))
{
    m_place->setObjectName(QStringLiteral("writtenPlace"));
    m_label->setObjectName(QStringLiteral("written"));
    m_label->setAnnounced();
    auto *reveal = new SmallButton(words(QT_TRANSLATE_NOOP("Words", "Show in Finder")));
    reveal->setObjectName(QStringLiteral("showWritten"));
    connect(reveal, &QPushButton::clicked, this, [this] {
        if (const auto &summary = m_environment.model.summary()) {
            m_environment.desktop.reveal(summary->folder);
        }
    });
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, spacing::normal);
    layout->setSpacing(spacing::tight + 2);
    layout->addWidget(m_label);
    layout->addWidget(m_place);
    layout->addWidget(reveal);

    const AppModel *model = &environment.model;
    connect(model, &AppModel::runningChanged, this, &WrittenNotice::follow);
    // The model does not signal a summary that equals the one before, but it does signal its sheet.
    connect(model, &AppModel::summaryChanged, this, &WrittenNotice::take);
    connect(model, &AppModel::sheetChanged, this, &WrittenNotice::take);
    connect(model, &AppModel::outputFolderChanged, this, &WrittenNotice::showNotice);
    connect(model, &AppModel::settingsChanged, this, &WrittenNotice::showNotice);
    connect(&environment.plan, &CurrentPlan::changed, this, &WrittenNotice::showNotice);
    showNotice();
}

WrittenNotice::Run WrittenNotice::present() const
{
    const AppModel &model = m_environment.model;
    return {m_environment.plan.snapshot(), model.outputFolder(), model.options()};
}

bool WrittenNotice::isUnchanged() const
{
    if (!m_written || m_environment.model.isRunning()) {
        return false;
    }
    const Run now = present();
    return now.folder == m_written->folder && now.options == m_written->options &&
           (now.plan == m_written->plan || *now.plan == *m_written->plan);
}

void WrittenNotice::follow()
{
    if (m_environment.model.isRunning()) {
        m_started = present();
        m_written.reset();
    }
    showNotice();
}

void WrittenNotice::take()
{
    if (m_started && m_environment.model.sheet() == Sheet::result) {
        m_written = std::exchange(m_started, std::nullopt);
        showNotice();
    }
}

void WrittenNotice::showNotice()
{
    const bool isShown = isUnchanged();
    if (isShown) {
        const RunSummary &summary = *m_environment.model.summary();
        m_label->setText(writtenText(summary));
        m_place->setText(displayPath(summary.folder));
    }
    setVisible(isShown);
}

} // namespace tallyfold
