#pragma once

#include "app/RunSummary.h"
#include "ui/Environment.h"
#include "ui/sheets/SheetDialog.h"

#include <QVBoxLayout>

namespace tallyfold {

/// Tells of a production that was written or stopped, and offers the next one.
class ResultView final : public SheetDialog {
    Q_OBJECT
public:
    /// Shows the model's summary.
    explicit ResultView(const Environment &environment, QWidget *parent = nullptr);

private:
    void addHeading(QVBoxLayout &layout);
    void addRows(QVBoxLayout &layout);
    void addFailures(QVBoxLayout &layout);
    void addReasons(QVBoxLayout &layout);
    void addButtons(QVBoxLayout &layout);

    Environment m_environment;
    RunSummary m_summary;
};

} // namespace tallyfold
