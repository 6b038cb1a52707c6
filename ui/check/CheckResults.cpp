#include "ui/check/CheckResults.h"

#include "app/CheckText.h"
#include "app/FindingText.h"
#include "app/RunMessages.h"
#include "core/SourceFile.h"
#include "core/check/ProductionFolder.h"
#include "ui/check/HashListView.h"
#include "ui/controls/Buttons.h"
#include "ui/sheets/Alert.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLocale>

#include <utility>

namespace tallyfold {

namespace {

struct Look {
    const char *symbol;
    Tone tone;
};

Look lookOf(Verdict::Kind kind)
{
    switch (kind) {
    case Verdict::Kind::whole:
        return {"checkmark.circle.fill", Tone::success};
    case Verdict::Kind::notWhole:
        return {"exclamationmark.octagon.fill", Tone::blocking};
    case Verdict::Kind::stopped:
        return {"stop.circle", Tone::warning};
    case Verdict::Kind::wholeAsChecked:
    case Verdict::Kind::nothing:
        break;
    }
    return {"exclamationmark.triangle.fill", Tone::warning};
}

} // namespace

CheckResults::CheckResults(CheckModel &model, Desktop &desktop, AskForReport askForReport, QWidget *parent)
    : QWidget(parent),
      m_model(&model),
      m_desktop(&desktop),
      m_askForReport(std::move(askForReport)),
      m_verdictPlace(new QVBoxLayout),
      m_indexed(new StyledLabel(TextStyle::callout)),
      m_checked(new StyledLabel(TextStyle::caption, Tone::secondary)),
      m_stale(new Warning),
      m_findings(new FindingsList),
      m_room(new QWidget),
      m_saved(new StyledLabel(TextStyle::caption, Tone::secondary)),
      m_reveal(new LinkButton(words(QT_TRANSLATE_NOOP("Words", "Show in Finder")))),
      m_showPage(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Show Page")))),
      m_hashes(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Write Hash List…")))),
      m_save(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Save Report…"))))
{
    setObjectName(QStringLiteral("checkResults"));
    m_indexed->setObjectName(QStringLiteral("indexed"));
    m_checked->setObjectName(QStringLiteral("checked"));
    m_stale->setObjectName(QStringLiteral("otherFolders"));
    m_stale->setText(words(
        QT_TRANSLATE_NOOP("Words", "This was the check of other folders than are listed now. Check again.")));
    for (StyledLabel *label : {m_indexed, m_checked}) {
        label->setSelectable();
    }
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, spacing::normal, 0, 0);
    layout->setSpacing(spacing::tight);
    layout->addLayout(m_verdictPlace);
    layout->addWidget(m_indexed);
    layout->addWidget(m_checked);
    layout->addWidget(m_stale);
    layout->addSpacing(spacing::normal);
    layout->addWidget(m_findings, 1);
    layout->addWidget(m_room, 1);
    layout->addSpacing(spacing::tight);
    layout->addLayout(makeButtons());

    connect(m_model, &CheckModel::resultChanged, this, &CheckResults::showResult);
    connect(m_model, &CheckModel::foldersChanged, this, &CheckResults::showStale);
    connect(m_findings, &FindingsList::currentChanged, this, &CheckResults::offerPage);
    connect(m_findings, &FindingsList::opened, this, &CheckResults::openPage);
    connect(&m_saver, &ReportSaver::savingChanged, this, [this] { m_save->setEnabled(!m_saver.isSaving()); });
    connect(&m_saver, &ReportSaver::saved, this, &CheckResults::tellSaved);
    connect(&m_saver, &ReportSaver::failed, this, &CheckResults::tellFailure);
}

QLayout *CheckResults::makeButtons()
{
    m_saved->setObjectName(QStringLiteral("reportSaved"));
    m_reveal->setObjectName(QStringLiteral("revealReport"));
    m_showPage->setObjectName(QStringLiteral("showPage"));
    m_hashes->setObjectName(QStringLiteral("writeHashes"));
    m_save->setObjectName(QStringLiteral("saveReport"));
    for (QPushButton *button : {m_reveal, m_showPage, m_hashes, m_save}) {
        button->setAutoDefault(false);
    }
    connect(m_reveal, &QPushButton::clicked, this, [this] { m_desktop->reveal(m_written); });
    connect(m_showPage, &QPushButton::clicked, this, &CheckResults::openPage);
    connect(m_hashes, &QPushButton::clicked, this, &CheckResults::askForHashes);
    connect(m_save, &QPushButton::clicked, this, &CheckResults::saveReport);
    auto *row = new QHBoxLayout;
    row->setSpacing(spacing::normal);
    row->addWidget(m_showPage);
    row->addWidget(m_saved, 1);
    row->addWidget(m_reveal);
    row->addWidget(m_hashes);
    row->addWidget(m_save);
    return row;
}

QWidget *CheckResults::first() const
{
    return m_findings->isVisibleTo(this) ? static_cast<QWidget *>(m_findings->view()) : m_save;
}

void CheckResults::showResult()
{
    const std::shared_ptr<const CheckResult> &result = m_model->result();
    const bool isAnyFound = !result->outcome.findings.empty();
    showVerdict();
    m_findings->setResult(result);
    m_findings->setVisible(isAnyFound);
    m_room->setVisible(!isAnyFound);
    m_showPage->setVisible(isAnyFound);
    // A list of what is damaged would only say that the damage is as it was.
    m_hashes->setVisible(result->folders.size() == 1 && result->outcome.isWhole() &&
                         result->outcome.copies > 0);
    m_saved->clear();
    m_reveal->hide();
    showStale();
}

void CheckResults::showVerdict()
{
    const CheckResult &result = *m_model->result();
    const Verdict verdict = Verdict::of(result.outcome);
    const Look look = lookOf(verdict.kind);
    delete m_verdict;
    m_verdict = new SymbolLabel(QLatin1String(look.symbol), look.tone, TextStyle::title);
    m_verdict->setObjectName(QStringLiteral("verdict"));
    m_verdict->setAnnounced();
    m_verdict->setText(verdict.text);
    m_verdictPlace->addWidget(m_verdict);
    m_indexed->setText(verdict.indexed);
    m_indexed->setVisible(!verdict.indexed.isEmpty());
    QStringList names;
    for (const std::filesystem::path &folder : result.folders) {
        names.append(folderName(folder));
    }
    //: When a check was, and of which folders.
    m_checked->setText(
        words(QT_TRANSLATE_NOOP("Words", "Checked %1: %2"))
            .arg(QLocale().toString(result.ended, QLocale::ShortFormat), names.join(QStringLiteral(", "))));
}

void CheckResults::showStale()
{
    m_stale->setVisible(m_model->isResultOfOthers());
}

void CheckResults::offerPage()
{
    const check::Finding *finding = m_findings->current();
    m_showPage->setEnabled(finding != nullptr && hasPage(*finding));
}

void CheckResults::openPage()
{
    const check::Finding *finding = m_findings->current();
    if (finding != nullptr && hasPage(*finding)) {
        Q_EMIT pageWanted(*finding);
    }
}

void CheckResults::saveReport()
{
    const std::shared_ptr<const CheckResult> result = m_model->result(); // Which may change meanwhile.
    const std::optional<std::filesystem::path> path =
        m_askForReport(result->folders.front().parent_path(), reportName(*result), window());
    if (path) {
        m_saved->clear();
        m_reveal->hide();
        m_saver.save({*result, displayedName() + QLatin1Char(' ') + QCoreApplication::applicationVersion()},
                     *path);
    }
}

void CheckResults::tellSaved(const std::filesystem::path &path)
{
    m_written = path;
    m_saved->setText(words(QT_TRANSLATE_NOOP("Words", "Saved “%1”.")).arg(displayName(path)));
    m_reveal->show();
}

void CheckResults::tellFailure(const ReportFailure &failure)
{
    const QString text =
        failure.kind == ReportFailure::Kind::inProduction
            ? words(QT_TRANSLATE_NOOP("Words", "Nothing is written into a folder that was checked. Choose "
                                               "another place for the report."))
            : words(QT_TRANSLATE_NOOP("Words", "The report couldn’t be written: %1. What was there before is "
                                               "as it was."))
                  .arg(failure.cause);
    tell(words(QT_TRANSLATE_NOOP("Words", "The report was not saved")), text);
}

void CheckResults::askForHashes()
{
    const std::filesystem::path &folder = m_model->result()->folders.front();
    auto *alert = new Alert(
        words(QT_TRANSLATE_NOOP("Words", "Write a hash list into the folder?")),
        words(QT_TRANSLATE_NOOP("Words", "“%1” will say of every copy in “%2”, and of the index, what its "
                                         "bytes are now (SHA-256), so that anybody can tell later whether "
                                         "one was changed. Nothing that is there is replaced."))
            .arg(check::ProductionFolder::hashListName, folderName(folder)),
        {{words("Cancel"), Alert::Role::cancel},
         {words(QT_TRANSLATE_NOOP("Words", "Write")), Alert::Role::prominent, [this] { writeHashes(); }}},
        window());
    alert->setObjectName(QStringLiteral("hashesAlert"));
    alert->open();
}

void CheckResults::writeHashes()
{
    m_saved->clear();
    m_reveal->hide();
    auto *view = new HashListView(m_model->result()->folders.front(), window());
    connect(view, &HashListView::ended, this, &CheckResults::tellHashes);
    view->open();
}

void CheckResults::tellHashes(const check::HashesOutcome &outcome)
{
    if (const auto *failure = std::get_if<check::HashesNotWritten>(&outcome)) {
        tell(words(QT_TRANSLATE_NOOP("Words", "No hash list was written")), failureText(*failure));
        return;
    }
    m_written = m_model->result()->folders.front() / check::ProductionFolder::hashListName.toStdString();
    m_saved->setText(writtenText(std::get<check::HashesWritten>(outcome)));
    m_reveal->show();
}

void CheckResults::tell(const QString &title, const QString &text)
{
    auto *alert = new Alert(title, text, {{words("OK"), Alert::Role::prominent}}, window());
    alert->setObjectName(QStringLiteral("checkAlert"));
    alert->open();
}

} // namespace tallyfold
