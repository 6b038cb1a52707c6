#include "core/StampError.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(StampError, EveryFailureSaysItsKindAndItsName)
{
    const QString name = QStringLiteral("a.pdf");
    EXPECT_EQ(StampError::unreadable(name), (StampError{StampError::Kind::unreadable, name}));
    EXPECT_EQ(StampError::locked(name), (StampError{StampError::Kind::locked, name}));
    EXPECT_EQ(StampError::encrypted(name), (StampError{StampError::Kind::encrypted, name}));
    EXPECT_EQ(StampError::cannotWrite(name), (StampError{StampError::Kind::cannotWrite, name}));
    EXPECT_EQ(StampError::cancelled(), (StampError{StampError::Kind::cancelled, {}}));
}

} // namespace tallyfold
