#pragma once

#include "ui/Environment.h"
#include "ui/sheets/Alert.h"

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QString>

#include <optional>

namespace tallyfold {

/// Shows over a window what the model wants shown: its sheets, its problems, and its question about
/// password-protected files. At most one of each at a time.
class Sheets final : public QObject {
    Q_OBJECT
public:
    Sheets(const Environment &environment, QWidget *window);

    /// What is shown over the window now, the topmost first; null when it is free.
    [[nodiscard]] QDialog *current() const;

    /// Shows what the model wants to have shown, as when the window comes back.
    void showAll();

Q_SIGNALS:
    /// A problem was answered that is mended in the form's section called `name`.
    void sectionWanted(const QString &name);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    /// Whether anything can be shown: there is a window to show it over, and nothing else to be waited for.
    [[nodiscard]] bool isFree() const;
    void showSheet();
    void showProblem();
    void showConfirmation();
    [[nodiscard]] QWidget *top() const;

    Environment m_environment;
    QWidget *m_window;
    QPointer<QDialog> m_sheet;
    std::optional<Sheet> m_shownSheet;
    QPointer<Alert> m_problem;
    std::optional<QString> m_shownProblem;
    QPointer<Alert> m_confirmation;
};

} // namespace tallyfold
