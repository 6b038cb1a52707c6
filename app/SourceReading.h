#pragma once

#include "app/KnownSources.h"
#include "app/LooseTask.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace tallyfold {

/// Reads files on threads of its own, as many at a time as there are processors and two at most. It begins at
/// once and can be stopped; the files whose turn it is then are left to run out unheard, so that nobody waits
/// for a disk that does not answer. Lives on one thread.
class SourceReading final {
public:
    /// Finds the files, on one of the threads. A stop is requested when they are not wanted any more.
    using Find = std::function<std::vector<std::filesystem::path>(const std::stop_token &stopped)>;
    /// Reads one of them, on any of the threads.
    using Read = std::function<KnownSources::Reading(const std::filesystem::path &)>;

    SourceReading(Find find, const Read &read, int threads = usualThreads());
    /// Stops it.
    ~SourceReading();
    SourceReading(const SourceReading &) = delete;
    SourceReading &operator=(const SourceReading &) = delete;

    /// One for each processor, at most two: each has a reader of pages beside it, which takes memory.
    [[nodiscard]] static int usualThreads();

    /// How far it has come.
    struct Progress {
        std::optional<std::int64_t> files; ///< Nothing while they are looked for.
        std::int64_t read = 0;             ///< So many of them were read: the first, without a gap.

        bool operator==(const Progress &) const = default;
    };
    [[nodiscard]] Progress progress() const;

    /// Whether all were read or it was stopped.
    [[nodiscard]] bool isOver() const;
    /// Waits until it is over, or `longest` has passed; whether it is over.
    bool waitFor(std::chrono::nanoseconds longest) const;
    /// Waits until it is over.
    void wait() const;

    /// Ends it. Nothing is read any more once all were read.
    void stop();

    /// What was read so far: of the first files, without a gap, in their order. Once.
    [[nodiscard]] std::vector<KnownSources::Reading> take();

private:
    struct Shared;

    std::shared_ptr<Shared> m_shared;
    std::vector<std::unique_ptr<LooseTask>> m_tasks;
};

} // namespace tallyfold
