#pragma once

#include <QString>
#include <QStringList>

#include <filesystem>
#include <vector>

namespace tallyfold {

/// What a panel asks the user to choose.
struct OpenPanel {
    /// What can be chosen.
    enum class Content {
        pdfsAndFolders, ///< PDFs alone where the desktop's own panel takes no folders beside files.
        folderOfPdfs,   ///< The same where one panel takes both.
        folder,
    };

    QString title;
    QString message;
    QString prompt; ///< The button that confirms.
    Content content = Content::pdfsAndFolders;
    bool allowsMultipleSelection = false;
    bool canCreateDirectories = false;

    /// The panel that adds files to the list.
    [[nodiscard]] static OpenPanel forFiles();
    /// The panel that adds the files of a folder to the list.
    [[nodiscard]] static OpenPanel forFolder();
    /// The panel that chooses the output folder.
    [[nodiscard]] static OpenPanel forOutputFolder();
    /// The panel that chooses the folder of a finished production.
    [[nodiscard]] static OpenPanel forProduction();

    bool operator==(const OpenPanel &) const = default;
};

/// What came of a panel.
struct PanelAnswer {
    /// What was chosen, in the order the panel gives; nothing when it was cancelled.
    std::vector<std::filesystem::path> chosen;
    /// What was chosen as well and cannot be found: panels of desktops give names as text, and not every name
    /// is text.
    QStringList lost;

    bool operator==(const PanelAnswer &) const = default;
};

/// Shows panels. The model asks through this, so that it needs no window.
class Panels {
public:
    virtual ~Panels() = default;

    /// Asks the user, and waits for the answer.
    [[nodiscard]] virtual PanelAnswer run(const OpenPanel &panel) = 0;
};

} // namespace tallyfold
