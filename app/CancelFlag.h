#pragma once

#include <mutex>

namespace tallyfold {

/// Whether the user requested a stop. The only mutable state that the model and a running production share.
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
