#pragma once

#include "ui/Environment.h"
#include "ui/list/FileList.h"
#include "ui/sheets/Sheets.h"
#include "ui/shell/PresetMenu.h"

#include <QMainWindow>
#include <QSplitter>
#include <QUndoStack>

namespace tallyfold {

/// The main window: the files, the form with its stamp bar, and the preview, side by side.
class MainView final : public QMainWindow {
    Q_OBJECT
public:
    explicit MainView(const Environment &environment, QWidget *parent = nullptr);
    ~MainView() override;

    /// The window's undoable changes.
    /// The size at which the window first opens on a screen that leaves it `available`: the usual one, or
    /// what there is room for with a frame around it.
    [[nodiscard]] static QSize firstSizeOn(QSize available);

    [[nodiscard]] QUndoStack &undoStack();
    [[nodiscard]] const Sheets &sheets() const;
    [[nodiscard]] PresetMenu &presetMenu();

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void addColumns();
    void addToolBar();
    void restorePlace();
    void rememberPlace();

    Environment m_environment;
    QUndoStack *m_undo;
    QSplitter *m_columns;
    PresetMenu *m_presets;
    Sheets *m_sheets;
};

} // namespace tallyfold
