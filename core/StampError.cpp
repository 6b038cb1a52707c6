#include "core/StampError.h"

#include <QHashFunctions>

#include <array>
#include <type_traits>

namespace tallyfold {

StampError StampError::unreadable(const QString &name, const Cause &cause)
{
    return {Unreadable{name}, cause};
}

StampError StampError::locked(const QString &name)
{
    return {Locked{name}, {}};
}

StampError StampError::encrypted(const QString &name)
{
    return {Encrypted{name}, {}};
}

StampError StampError::cannotWrite(const QString &name, const Cause &cause)
{
    return {CannotWrite{name}, cause};
}

StampError StampError::cancelled()
{
    return {Cancelled{}, {}};
}

QString StampError::name() const
{
    return std::visit(
        [](const auto &which) {
            if constexpr (std::is_same_v<std::decay_t<decltype(which)>, Cancelled>) {
                return QString();
            } else {
                return which.name;
            }
        },
        value);
}

std::size_t hashValue(const StampError &error)
{
    return qHashMulti(0, error.value.index(), error.name());
}

QDebug operator<<(QDebug debug, const StampError &error)
{
    constexpr std::array cases{"unreadable", "locked", "encrypted", "cannot write", "cancelled"};
    static_assert(cases.size() == std::variant_size_v<StampError::Case>);
    const QDebugStateSaver saver(debug);
    debug.nospace() << cases[error.value.index()];
    if (error.cause) {
        debug << ", " << *error.cause;
    }
    return debug;
}

} // namespace tallyfold
