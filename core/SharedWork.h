#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <shared_mutex>

namespace tallyfold {

/// Work that several threads do at the same time and that may need to be done alone, as when it ran short of
/// what all of them share.
class SharedWork {
public:
    /// Does one piece of work; whether it came to its end as it should.
    using Attempt = std::function<bool()>;

    /// Does `attempt` beside those of other threads. Where it fails, and there was another meanwhile, does it
    /// once more when there is none.
    void run(const Attempt &attempt);

private:
    std::shared_mutex m_turn;
    std::atomic<std::int64_t> m_underWay = 0;
    std::atomic<std::int64_t> m_begun = 0;
};

} // namespace tallyfold
