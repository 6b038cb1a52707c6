#pragma once

#include "app/CheckModel.h"
#include "app/HashListWriting.h"
#include "app/ReportSaver.h"
#include "ui/Desktop.h"
#include "ui/check/FindingsList.h"
#include "ui/check/ReportPanel.h"
#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/controls/Warning.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

namespace tallyfold {

/// What a check came to: the verdict, then the findings, and a way to save them.
/// For a production that is whole, its hash list can be written.
class CheckResults final : public QWidget {
    Q_OBJECT
public:
    CheckResults(CheckModel &model, Desktop &desktop, AskForReport askForReport, QWidget *parent = nullptr);

    /// What the keyboard goes to when a check has ended.
    [[nodiscard]] QWidget *first() const;

Q_SIGNALS:
    /// The user wants to see the page of the chosen finding.
    void pageWanted(const tallyfold::check::Finding &finding);

private:
    [[nodiscard]] QLayout *makeButtons();
    void showResult();
    void showVerdict();
    void showStale();
    void offerPage();
    void openPage();
    void saveReport();
    void askForHashes();
    void writeHashes();
    void tellHashes(const check::HashesOutcome &outcome);
    void tell(const QString &title, const QString &text);
    void tellSaved(const std::filesystem::path &path);
    void tellFailure(const ReportFailure &failure);

    CheckModel *m_model;
    Desktop *m_desktop;
    AskForReport m_askForReport;
    ReportSaver m_saver;
    QVBoxLayout *m_verdictPlace;
    SymbolLabel *m_verdict = nullptr; ///< Made anew for each result, as its symbol is another.
    StyledLabel *m_indexed;
    StyledLabel *m_checked;
    Warning *m_stale;
    FindingsList *m_findings;
    QWidget *m_room; ///< In the place of the findings where there are none.
    StyledLabel *m_saved;
    QPushButton *m_reveal;
    QPushButton *m_showPage;
    QPushButton *m_hashes;
    QPushButton *m_save;
    std::filesystem::path m_written; ///< What was written last.
};

} // namespace tallyfold
