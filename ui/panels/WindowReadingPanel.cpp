#include "ui/panels/WindowReadingPanel.h"

#include "ui/sheets/ReadingView.h"

#include <QApplication>

namespace tallyfold {

WindowReadingPanel::WindowReadingPanel(std::chrono::milliseconds patience) : m_patience(patience) {}

void WindowReadingPanel::setWindow(QWidget *window)
{
    m_window = window;
}

void WindowReadingPanel::follow(const AppModel &model)
{
    connect(&model, &AppModel::readingChanged, this, [&model] {
        if (model.isReading()) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
        } else {
            QApplication::restoreOverrideCursor();
        }
    });
}

void WindowReadingPanel::await(SourceReading &reading)
{
    if (reading.waitFor(m_patience)) {
        return;
    }
    ReadingView view(reading, m_window);
    QApplication::setOverrideCursor(Qt::BusyCursor); // There is something to click now.
    view.exec();
    QApplication::restoreOverrideCursor();
}

} // namespace tallyfold
