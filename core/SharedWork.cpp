#include "core/SharedWork.h"

#include <mutex>

namespace tallyfold {

void SharedWork::run(const Attempt &attempt)
{
    {
        const std::shared_lock together(m_turn);
        const std::int64_t others = m_underWay++;
        const std::int64_t begun = ++m_begun;
        const bool isDone = attempt();
        --m_underWay;
        if (isDone || (others == 0 && m_begun == begun)) {
            return;
        }
    }
    const std::unique_lock alone(m_turn);
    attempt();
}

} // namespace tallyfold
