#pragma once

#include <QString>

#include <filesystem>
#include <vector>

namespace tallyfold {

/// What a panel asks the user to choose.
struct OpenPanel {
    /// What can be chosen.
    enum class Content { pdfsAndFolders, folder };

    QString message;
    QString prompt; ///< The button that confirms.
    Content content = Content::pdfsAndFolders;
    bool allowsMultipleSelection = false;
    bool canCreateDirectories = false;

    /// The panel that adds files to the list.
    [[nodiscard]] static OpenPanel forFiles();
    /// The panel that chooses the output folder.
    [[nodiscard]] static OpenPanel forOutputFolder();

    bool operator==(const OpenPanel &) const = default;
};

/// Shows panels. The model asks through this, so that it needs no window.
class Panels {
public:
    virtual ~Panels() = default;

    /// What the user chose, in the order the panel gives; nothing when it was cancelled.
    [[nodiscard]] virtual std::vector<std::filesystem::path> run(const OpenPanel &panel) = 0;
};

} // namespace tallyfold
