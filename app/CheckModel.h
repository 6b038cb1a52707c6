#pragma once

#include "app/LooseTask.h"
#include "app/SharedProgress.h"
#include "core/check/ProductionCheck.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <vector>

namespace tallyfold {

/// What a check came to, of which folders, and when.
struct CheckResult {
    std::vector<std::filesystem::path> folders;
    QDateTime ended; ///< Local time.
    check::Outcome outcome;
};

/// The folders of finished productions that are to be checked, the check that runs, and what the last one
/// came to. Signals tell of one property each, once, and only when it differs.
class CheckModel final : public QObject {
    Q_OBJECT
public:
    /// Checks folders, on a thread of its own; it may outlive the model.
    using Checker =
        std::function<check::Outcome(std::span<const std::filesystem::path> folders,
                                     const check::ShowProgress &show, const std::stop_token &givenUp)>;

    explicit CheckModel(Checker checker = check::checkProductions, QObject *parent = nullptr);
    /// Gives a check that runs up, and does not wait for it.
    ~CheckModel() override;

    [[nodiscard]] const std::vector<std::filesystem::path> &folders() const;
    /// Adds folders that are not there yet, by whatever path. A file stands for the folder it is in. Nothing
    /// while a check runs.
    void add(std::span<const std::filesystem::path> paths);
    /// Takes the folders with these indexes out. Nothing while a check runs.
    void remove(const std::set<std::size_t> &indexes);

    [[nodiscard]] bool isRunning() const;
    /// Whether a check that runs was asked to stop.
    [[nodiscard]] bool isStopping() const;
    /// Of the check that runs, or of the last one.
    [[nodiscard]] const check::Progress &progress() const;
    /// Starts a check of the folders, if there are any and none runs.
    void start();
    /// Asks a check that runs to come to its end with what it has found.
    void stop();

    /// What the last check came to; null while there is none.
    [[nodiscard]] const std::shared_ptr<const CheckResult> &result() const;
    /// Whether `result` is of other folders than there are now.
    [[nodiscard]] bool isResultOfOthers() const;

Q_SIGNALS:
    void foldersChanged();
    void runningChanged(); ///< Of stopping as well.
    void progressChanged();
    void resultChanged();

private:
    [[nodiscard]] bool has(const std::filesystem::path &folder) const;
    void lookAtProgress();
    void end(const std::shared_ptr<const CheckResult> &result);

    Checker m_checker;
    std::vector<std::filesystem::path> m_folders;
    std::shared_ptr<SharedProgress> m_shared;
    check::Progress m_progress;
    QTimer m_look;
    std::shared_ptr<const CheckResult> m_result;
    bool m_isStopping = false;
    std::unique_ptr<LooseTask> m_task;
};

} // namespace tallyfold
