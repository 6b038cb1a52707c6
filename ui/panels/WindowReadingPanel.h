#pragma once

#include "app/AppModel.h"
#include "app/ReadingPanel.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <chrono>

namespace tallyfold {

/// Waits for files that are read: at first with nothing but another cursor, as most are read in no time, then
/// with a view over a window, which goes on being painted.
class WindowReadingPanel final : public QObject, public ReadingPanel {
    Q_OBJECT
public:
    /// How long a window that does nothing is taken for one that is about to.
    static constexpr std::chrono::milliseconds usualPatience{1000};

    explicit WindowReadingPanel(std::chrono::milliseconds patience = usualPatience);

    /// The window that the view lies over; null for none.
    void setWindow(QWidget *window);
    /// Tells by the cursor that `model` reads.
    void follow(const AppModel &model);

    void await(SourceReading &reading) override;

private:
    std::chrono::milliseconds m_patience;
    QPointer<QWidget> m_window;
};

} // namespace tallyfold
