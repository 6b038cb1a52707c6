#pragma once

#include <mutex>

namespace tallyfold {

/// Whether the user asked to stop. The one thing that the model and a running production share and both may
/// change.
class CancelFlag {
public:
    void set(bool value)
    {
        const std::lock_guard guard(m_lock);
        m_value = value;
    }

    [[nodiscard]] bool value() const
    {
        const std::lock_guard guard(m_lock);
        return m_value;
    }

private:
    mutable std::mutex m_lock;
    bool m_value = false;
};

} // namespace tallyfold
