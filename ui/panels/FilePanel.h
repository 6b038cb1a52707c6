#pragma once

#include "app/Panels.h"
#include "ui/panels/FolderContents.h"

#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>

#include <filesystem>
#include <vector>

namespace tallyfold {

/// Lets the user choose PDFs and folders, both at once, which the desktops' own panels do not.
class FilePanel final : public QDialog {
    Q_OBJECT
public:
    /// Begins in `folder`, or in the home folder where that cannot be read.
    FilePanel(const OpenPanel &panel, const std::filesystem::path &folder, QWidget *parent = nullptr);

    /// What was chosen; the folder that is shown when its own path was given.
    [[nodiscard]] std::vector<std::filesystem::path> chosen() const;

    /// The folder that is shown.
    [[nodiscard]] const std::filesystem::path &folder() const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void addPlaces();
    void enter(const std::filesystem::path &folder);
    void openItem(const QModelIndex &index);
    [[nodiscard]] std::filesystem::path typedPath() const;
    void offerToAdd();
    void goToPath();
    void takePath();
    void take(std::vector<std::filesystem::path> chosen);

    FolderContents m_contents;
    QListWidget *m_places;
    QTreeView *m_list;
    QLineEdit *m_path;
    QPushButton *m_up;
    QPushButton *m_add;
    std::vector<std::filesystem::path> m_typed; ///< Given by its path, which goes before what is selected.
};

} // namespace tallyfold
