#pragma once

#include "app/FileState.h"
#include "core/SourceFile.h"

#include <QHash>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <vector>

namespace tallyfold {

/// A source whose page count or problem is another than the user knows of.
struct SourceChange {
    QString name;
    std::int64_t pagesBefore = 0;
    std::int64_t pages = 0;
    bool couldBeStamped = false;
    bool canBeStamped = false;
    bool isGone = false; ///< The file cannot be found any more.

    bool operator==(const SourceChange &) const = default;
};

/// What the sources of a list were on the disk when they were read, those that can come back into it by undo
/// among them. A source that is read anew stays the same one, with its identifier.
class KnownSources {
public:
    /// A source as it was when it was read. Plain values, for looking again on any thread.
    struct Look {
        QUuid id;
        std::filesystem::path url;
        FileState then;
    };

    /// A file as it was read. Plain values, so that it can come from any thread.
    struct Reading {
        SourceFile source;
        FileState state; ///< Before it was read: what changes meanwhile is seen later.
    };

    /// Reads the file at `location`.
    [[nodiscard]] static Reading read(const std::filesystem::path &location);

    /// Takes what was read for a new source.
    void add(const Reading &reading);

    /// What `sources` were when they were read.
    [[nodiscard]] std::vector<Look> looksAt(const std::vector<SourceFile> &sources) const;

    /// Those of `looks` whose file is not what it was; some of them where a stop is requested meanwhile.
    /// Nothing is opened.
    [[nodiscard]] static std::vector<Look> changed(const std::vector<Look> &looks,
                                                   const std::stop_token &givenUp = {});

    /// Those of `changed` that are among `sources` and were not read since.
    [[nodiscard]] std::vector<Look> unread(const std::vector<SourceFile> &sources,
                                           const std::vector<Look> &changed) const;

    /// Puts `readings`, each of the file at its place in `looks`, in the place of what `sources` have of
    /// them. Looks beyond the last of them are passed over.
    void renew(std::vector<SourceFile> &sources, const std::vector<Look> &looks,
               const std::vector<Reading> &readings);

    /// `sources` as they were last read.
    [[nodiscard]] std::vector<SourceFile> latest(const std::vector<SourceFile> &sources) const;

    /// The sources that are not what the user knows of: since they were added, or were given here before.
    [[nodiscard]] std::vector<SourceChange> takeChanges(const std::vector<SourceFile> &sources);

private:
    /// What the user knows of a source.
    struct Told {
        std::int64_t pages = 0;
        std::optional<SourceProblem> problem;
        bool operator==(const Told &) const = default;
    };
    struct Known {
        SourceFile source;
        FileState state;
        Told told;
    };
    static Told summaryOf(const SourceFile &source);

    QHash<QUuid, Known> m_known;
};

} // namespace tallyfold
