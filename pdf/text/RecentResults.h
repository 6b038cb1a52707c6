#pragma once

#include <cstddef>
#include <map>
#include <mutex>
#include <utility>

namespace tallyfold::pdf {

/// A cache of the results for recent keys. May be used on several threads.
template <typename Key, typename Value> class RecentResults {
public:
    /// The value for `key`, from the cache or from `make`.
    template <typename Make> [[nodiscard]] Value valueFor(const Key &key, const Make &make)
    {
        {
            const std::scoped_lock lock(m_mutex);
            const auto known = m_values.find(key);
            if (known != m_values.end()) {
                return known->second;
            }
        }
        Value made = make();
        const std::scoped_lock lock(m_mutex);
        if (m_values.size() >= maxRemembered) {
            m_values.clear();
        }
        return m_values.insert_or_assign(key, std::move(made)).first->second;
    }

private:
    static constexpr std::size_t maxRemembered = 64;

    std::mutex m_mutex;
    std::map<Key, Value> m_values;
};

} // namespace tallyfold::pdf
