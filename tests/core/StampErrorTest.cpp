#include "core/StampError.h"

#include <gtest/gtest.h>

namespace tallyfold {

TEST(StampError, EveryFailureSaysItsKindAndItsName)
{
    const QString name = QStringLiteral("a.pdf");
    const std::vector<StampError> errors{StampError::unreadable(name), StampError::locked(name),
                                         StampError::encrypted(name), StampError::cannotWrite(name)};
    EXPECT_TRUE(errors[0].is<StampError::Unreadable>());
    EXPECT_TRUE(errors[1].is<StampError::Locked>());
    EXPECT_TRUE(errors[2].is<StampError::Encrypted>());
    EXPECT_TRUE(errors[3].is<StampError::CannotWrite>());
    for (const StampError &error : errors) {
        EXPECT_EQ(error.name(), name);
    }
    EXPECT_TRUE(StampError::cancelled().is<StampError::Cancelled>());
    EXPECT_EQ(StampError::cancelled().name(), QString());
    EXPECT_NE(errors[0], errors[1]);
    EXPECT_NE(errors[0], StampError::unreadable(QStringLiteral("b.pdf")));
}

TEST(StampError, TheCauseMakesNoOtherError)
{
    const QString name = QStringLiteral("a.pdf");
    const FailureCause cause{FailureCause::During::writingCopy,
                             std::make_error_code(std::errc::no_space_on_device)};
    EXPECT_EQ(StampError::cannotWrite(name, cause), StampError::cannotWrite(name));
    EXPECT_EQ(hashValue(StampError::cannotWrite(name, cause)), hashValue(StampError::cannotWrite(name)));
    EXPECT_EQ(StampError::cannotWrite(name, cause).cause, cause);
}

TEST(StampError, SaysInALogWhatLedToIt)
{
    const auto logged = [](const StampError &error) {
        QString text;
        QDebug(&text).nospace() << error;
        return text;
    };
    const QString name = QStringLiteral("a.pdf");
    EXPECT_EQ(logged(StampError::cannotWrite(
                  name, FailureCause{FailureCause::During::writingCopy,
                                     std::make_error_code(std::errc::no_space_on_device)})),
              QStringLiteral("cannot write, writing the copy: No space left on device"));
    EXPECT_EQ(logged(StampError::unreadable(
                  name, FailureCause{FailureCause::During::readingSource, FailureCause::Finding::changed})),
              QStringLiteral("unreadable, reading the source: changed meanwhile"));
    EXPECT_EQ(logged(StampError::locked(name)), QStringLiteral("locked"));
}

} // namespace tallyfold
