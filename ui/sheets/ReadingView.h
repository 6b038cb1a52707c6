#pragma once

#include "app/SourceReading.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>

namespace tallyfold {

/// Shows how far files have been read, and can stop that: with its button, with Escape, or when it is closed.
/// Closes itself when all were read. Nothing else in the program takes clicks or keys meanwhile.
class ReadingView final : public QDialog {
    Q_OBJECT
public:
    /// Follows `reading`, which must outlive it.
    explicit ReadingView(SourceReading &reading, QWidget *parent = nullptr);

    void reject() override;

private:
    void look();

    SourceReading *m_reading;
    QLabel *m_text;
    QProgressBar *m_progress;
    QTimer m_timer;
};

} // namespace tallyfold
