#pragma once

#include "app/CheckModel.h"
#include "app/Panels.h"
#include "ui/Desktop.h"
#include "ui/WindowState.h"
#include "ui/check/CheckFolders.h"
#include "ui/check/CheckProgress.h"
#include "ui/check/CheckResults.h"
#include "ui/check/CopyViewer.h"
#include "ui/check/ReportPanel.h"

#include <QDialog>
#include <QStackedWidget>

namespace tallyfold {

/// The window in which finished productions are checked. Nothing in their folders is changed.
class CheckWindow final : public QDialog {
    Q_OBJECT
public:
    /// What the window stands on; all of it outlives the window.
    struct Parts {
        Panels &panels;
        WindowState &windowState;
        Desktop &desktop;
        AskForReport askForReport = tallyfold::askForReport;
        CheckModel::Checker checker = check::checkProductions;
    };

    explicit CheckWindow(Parts parts, QWidget *parent = nullptr);

    [[nodiscard]] CheckModel &model();
    /// The window of pages, once one was shown; null before.
    [[nodiscard]] CopyViewer *viewer() const;

    /// Stops a check that runs; closes the window when none does.
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    [[nodiscard]] QWidget *makeEmptyState();
    [[nodiscard]] QWidget *makeCheck();
    void chooseFolder();
    void showFolders();
    void showState();
    void showPage(const check::Finding &finding);

    Parts m_parts;
    CheckModel m_model;
    QStackedWidget *m_pages; ///< Without folders, and with some.
    CheckFolders *m_folders;
    QStackedWidget *m_states; ///< Before a check, while one runs, after one.
    CheckProgress *m_progress;
    CheckResults *m_results;
    CopyViewer *m_viewer = nullptr;
};

} // namespace tallyfold
