#pragma once

#include "ui/Environment.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/StyledLabel.h"
#include "ui/controls/SymbolLabel.h"

#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QWidget>

#include <cstdint>

namespace tallyfold {

/// Starts a production, shows its progress, and stops it.
class StampBar final : public QWidget {
    Q_OBJECT
public:
    explicit StampBar(const Environment &environment, QWidget *parent = nullptr);

private:
    QWidget *makeIdle();
    QWidget *makeRunning();
    void showRunning();
    void showProgress();
    void showStatus();
    void showProblem();
    void offerNext();

    Environment m_environment;
    QWidget *m_problemRow;
    SymbolLabel *m_problem;
    QPushButton *m_startNext;
    StyledLabel *m_status;
    StyledLabel *m_chooseFirst;
    ProminentButton *m_stamp;
    StyledLabel *m_progressText;
    QProgressBar *m_progress;
    QPushButton *m_cancel;
    QWidget *m_idle;
    QWidget *m_running;
    std::int64_t m_pages = 0; ///< Pages of the running production.
};

} // namespace tallyfold
