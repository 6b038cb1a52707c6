#pragma once

#include "app/LooseTask.h"
#include "app/SharedProgress.h"
#include "core/check/HashList.h"

#include <QObject>
#include <QString>

#include <filesystem>
#include <memory>

namespace tallyfold {

/// Writes the hash list of one finished production, in the background.
class HashListWriting final : public QObject {
    Q_OBJECT
public:
    /// Begins to write the list of `folder`.
    explicit HashListWriting(const std::filesystem::path &folder, QObject *parent = nullptr);
    /// Stops the writing, and waits until what is half-written is gone.
    ~HashListWriting() override;

    /// Files read so far and in all, in the place of pages.
    [[nodiscard]] check::Progress progress() const;
    /// Asks it to end soon, with no list. It tells of its end even so.
    void stop();

Q_SIGNALS:
    /// The list is there, or there is none.
    void ended(const tallyfold::check::HashesOutcome &outcome);

private:
    std::shared_ptr<SharedProgress> m_progress;
    LooseTask m_task;
};

/// What is said of a list that was written.
[[nodiscard]] QString writtenText(const check::HashesWritten &written);
/// Why there is none.
[[nodiscard]] QString failureText(const check::HashesNotWritten &failure);

} // namespace tallyfold
