#include "core/StampError.h"

#include <QHashFunctions>

namespace tallyfold {

StampError StampError::unreadable(const QString &name)
{
    return {Kind::unreadable, name};
}

StampError StampError::locked(const QString &name)
{
    return {Kind::locked, name};
}

StampError StampError::encrypted(const QString &name)
{
    return {Kind::encrypted, name};
}

StampError StampError::cannotWrite(const QString &name)
{
    return {Kind::cannotWrite, name};
}

StampError StampError::cancelled()
{
    return {Kind::cancelled, {}};
}

std::size_t hashValue(const StampError &error)
{
    return qHashMulti(0, static_cast<int>(error.kind), error.name);
}

} // namespace tallyfold
