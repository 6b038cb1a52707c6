#pragma once

#include "core/check/ProductionCheck.h"

#include <mutex>

namespace tallyfold {

/// How far work is, which its threads tell and the main thread looks at now and then.
class SharedProgress {
public:
    void set(const check::Progress &progress)
    {
        const std::lock_guard guard(m_lock);
        m_progress = progress;
    }

    [[nodiscard]] check::Progress value() const
    {
        const std::lock_guard guard(m_lock);
        return m_progress;
    }

private:
    mutable std::mutex m_lock;
    check::Progress m_progress;
};

} // namespace tallyfold
