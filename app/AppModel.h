#pragma once

#include "app/AppSettings.h"
#include "app/BackgroundTask.h"
#include "app/CancelFlag.h"
#include "app/KnownSources.h"
#include "app/LooseTask.h"
#include "app/Panels.h"
#include "app/Previews.h"
#include "app/ReadingPanel.h"
#include "app/RunSummary.h"
#include "app/SettingsStore.h"
#include "app/SourceReading.h"
#include "core/Production.h"
#include "core/ProductionPlan.h"
#include "core/SourceFile.h"

#include <QImage>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QUndoStack>
#include <QUuid>

#include <array>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <vector>

namespace tallyfold {

/// Which sheet the main window shows.
enum class Sheet { welcome, result };

/// The whole state behind the window. Views read its properties, change them or call its operations, and
/// follow its signals: each tells of one property, once, and only when its value differs. Lives on the main
/// thread.
class AppModel final : public QObject {
    Q_OBJECT
public:
    /// Writes a production on a thread of its own, as `Production::write` does.
    using Writer = std::function<ProductionResult(const ProductionPlan &, const std::filesystem::path &,
                                                  const ProductionOptions &, const Production::OnPage &)>;

    /// Reads the settings from `store`, and asks `panels`, which must outlive the model, when the user has to
    /// choose. Productions are written by `writer`, and files are read by `reader`.
    AppModel(std::unique_ptr<SettingsStore> store, Panels &panels, Writer writer = systemWriter(),
             SourceReading::Read reader = KnownSources::read);

    /// `Production::write`.
    [[nodiscard]] static Writer systemWriter();

    /// Has `panel`, which must outlive the model, wait for files that are read; null to wait here.
    void setReadingPanel(ReadingPanel *panel);

    /// Stops a running production after its current page and waits for it; nothing half-written stays.
    ~AppModel() override;

    // Settings and presets.

    [[nodiscard]] const AppSettings &settings() const;
    /// Saves them, and refreshes the previews when the stamp settings differ. Equal settings change nothing.
    void setSettings(const AppSettings &settings);
    /// The same for a change of the stamp settings alone.
    void setStamp(const StampSettings &stamp);

    [[nodiscard]] static const std::array<Preset, 3> &builtInPresets();
    /// Saves the stamp settings under `name` without spaces at its ends; a preset of exactly that name goes.
    /// A name of nothing else saves nothing.
    void savePreset(const QString &name);
    /// Puts the settings of `preset` in the place of the current stamp settings.
    void applyPreset(const Preset &preset);
    /// The same, undoably until the next production of the series is started.
    void applyPresetUndoably(const Preset &preset);
    /// Removes a saved preset, undoably: undoing puts it back behind those that it stood behind.
    void deletePreset(const QUuid &id);

    // The list of sources.

    [[nodiscard]] const std::vector<SourceFile> &sources() const;
    [[nodiscard]] const QSet<QUuid> &selection() const;
    /// Identifiers that are not in the list are left out.
    void setSelection(const QSet<QUuid> &selection);
    [[nodiscard]] const std::optional<std::filesystem::path> &outputFolder() const;
    void setOutputFolder(const std::optional<std::filesystem::path> &folder);
    [[nodiscard]] const std::optional<QString> &problem() const;
    void setProblem(const std::optional<QString> &problem);
    /// Rises whenever the output folder is to be looked at again.
    [[nodiscard]] std::int64_t folderCheck() const;
    /// The window's undo stack; null for none, and then nothing can be undone.
    [[nodiscard]] QUndoStack *undoManager() const;
    void setUndoManager(QUndoStack *undoManager);

    /// Asks for files and folders, and adds them.
    void chooseFiles();
    /// Asks for a folder, and adds the files in it.
    void chooseFolder();
    /// Adds PDFs and those in folders that are not in the list yet, undoably. Reads each once and returns
    /// when they are in the list: all of them, or those before the first that was not read when the reading
    /// was stopped. While others are read already, they are put off until those are in the list.
    void add(std::span<const std::filesystem::path> urls);
    /// Whether files are read. Events may happen meanwhile.
    [[nodiscard]] bool isReading() const;
    /// Remove files, undoably.
    void remove(const QSet<QUuid> &ids);
    void removeSelected();
    void removeAll();
    /// Moves rows of the list as it is numbered to before the row at `toOffset`; from then on files are
    /// numbered as they are listed.
    void move(const std::set<std::int64_t> &fromOffsets, std::int64_t toOffset);
    /// Asks for the output folder.
    void chooseOutputFolder();

    // Running a production.

    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] bool isConfirmingProtected() const;
    void setConfirmingProtected(bool isConfirming);
    /// Pages written so far in the current run, in steps.
    [[nodiscard]] std::int64_t progressPages() const;
    [[nodiscard]] const std::optional<RunSummary> &summary() const;
    [[nodiscard]] std::optional<Sheet> sheet() const;
    void setSheet(std::optional<Sheet> sheet);

    /// The plan of what would be written now, built anew.
    [[nodiscard]] ProductionPlan plan() const;
    /// What is to be written beside the copies.
    [[nodiscard]] ProductionOptions options() const;
    /// What is said under Output when planned names are taken in the output folder; looks there anew.
    [[nodiscard]] std::optional<QString> existingFilesMessage() const;

    /// Checks, asks and starts a production. `confirmed`: password-protected files may be left out. Refused
    /// quietly while one runs. Where files of the list are not what they were when they were added, it is
    /// told first, and starts when it is called again. Refused while files are read, too.
    void stamp(bool confirmed = false);
    /// The answer that password-protected files may be left out.
    void stampOthers();
    /// Stops the run after its current page.
    void cancelRun();
    /// Clears the list and goes on with the next number; where the series is full, the start number stays.
    void startNextProduction();

    // Previews.

    [[nodiscard]] const QList<QImage> &previews() const;
    [[nodiscard]] const std::optional<QImage> &closeUp() const;
    [[nodiscard]] const std::optional<QString> &previewFileName() const;
    /// Whether a refresh waits or draws.
    [[nodiscard]] bool hasPreviewTask() const;
    /// Draws the previews anew, a moment after the last call.
    void refreshPreviews();
    /// Draws pages `pixels` wide from now on, within what `PreviewImages` allows, and those shown anew if
    /// they are not.
    void setPreviewWidth(std::int64_t pixels);

Q_SIGNALS:
    void settingsChanged();
    void sourcesChanged();
    void readingChanged();
    void selectionChanged();
    void outputFolderChanged();
    void problemChanged();
    void folderCheckChanged();
    void undoManagerChanged();
    void runningChanged();
    void confirmingProtectedChanged();
    void progressPagesChanged();
    void summaryChanged();
    void sheetChanged();
    void previewsChanged();
    void closeUpChanged();
    void previewFileNameChanged();

private:
    /// Puts `value` into `property` and tells of it with `signal`, if it differs.
    template <typename Value> bool assign(Value &property, const Value &value, void (AppModel::*signal)())
    {
        if (property == value) {
            return false;
        }
        property = value;
        Q_EMIT(this->*signal)();
        return true;
    }

    void checkFolderAgain();
    void addChosen(const PanelAnswer &answer);
    void setPresets(const std::vector<Preset> &presets);
    void registerUndo(const QString &actionName, std::function<void()> swap);
    void setSources(const std::vector<SourceFile> &sources);
    void restoreSources(std::vector<SourceFile> &list);
    void changeSources(const std::vector<SourceFile> &sources, const QString &actionName);
    /// Lets nothing else be read while `work` reads.
    void readAlone(const std::function<void()> &work);
    /// What was read when `reading` was over or stopped.
    [[nodiscard]] std::vector<KnownSources::Reading> await(SourceReading &reading);
    void addNext();
    void addNow(std::vector<std::filesystem::path> items);
    /// Looks whether the files of the list are what they were, without waiting for their disks, and reads
    /// anew those that are not.
    void lookAtSources();
    /// Whether that was not stopped.
    bool readAnew(const std::vector<KnownSources::Look> &changed);
    /// Looks here and now; whether the list is what the user knows of. Tells if not, unless looking was
    /// stopped.
    [[nodiscard]] bool isListAsKnown();
    /// Takes the steps of an earlier series from the ends of the undo stack.
    void forgetStepsOfEarlierSeries();

    void run(const ProductionPlan &plan, const std::filesystem::path &folder,
             const ProductionOptions &options);
    void endRun();
    void showSummary(const RunSummary &summary);

    [[nodiscard]] std::optional<PreviewRequest> previewRequest() const;
    void showPreviews(const PreviewImages &images, const std::optional<QString> &name);

    std::unique_ptr<SettingsStore> m_store;
    Panels *m_panels;
    Writer m_writer;
    SourceReading::Read m_reader;
    ReadingPanel *m_readingPanel = nullptr;
    AppSettings m_settings;
    std::vector<SourceFile> m_sources;
    KnownSources m_known;
    std::deque<std::vector<std::filesystem::path>> m_toAdd; ///< What was asked for while others were read.
    bool m_isReading = false;
    QSet<QUuid> m_selection;
    std::optional<std::filesystem::path> m_outputFolder;
    std::optional<QString> m_problem;
    std::int64_t m_folderCheck = 0;
    QPointer<QUndoStack> m_undoManager;
    std::shared_ptr<std::int64_t> m_series = std::make_shared<std::int64_t>(0); ///< Counts productions.
    bool m_isRunning = false;
    bool m_isConfirmingProtected = false;
    std::int64_t m_progressPages = 0;
    std::optional<RunSummary> m_summary;
    std::optional<Sheet> m_sheet;
    QList<QImage> m_previewImages;
    std::optional<QImage> m_closeUp;
    std::optional<QString> m_previewFileName;
    std::int64_t m_previewWidth = PreviewImages::pageWidth;

    CancelFlag m_cancelFlag;
    std::unique_ptr<LooseTask> m_look; ///< The latest look at the files of the list.
    Previews m_previews;
    BackgroundTask m_production; ///< Last, so that it ends before what it uses.
};

} // namespace tallyfold
