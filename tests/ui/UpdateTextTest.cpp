#include "ui/text/UpdateText.h"

#include <gtest/gtest.h>

#include <set>

namespace tallyfold {

TEST(UpdateText, BeingUpToDateIsSaid)
{
    EXPECT_EQ(updateMessageOf(UpToDate{}),
              (UpdateMessage{QStringLiteral("You’re up to date"),
                             QStringLiteral("You have the newest version of Tallyfold."),
                             {},
                             {}}));
}

TEST(UpdateText, ANewerVersionIsNamedWithItsNotesAndLink)
{
    const QUrl link(QStringLiteral("https://example.org/"));
    EXPECT_EQ(updateMessageOf(NewerVersion{QStringLiteral("1.2"), QStringLiteral("100 %1 faster"), link}),
              (UpdateMessage{QStringLiteral("Tallyfold 1.2 is available"), QStringLiteral("100 %1 faster"),
                             link, QStringLiteral("Get the New Version")}));
}

TEST(UpdateText, WithoutNotesAndLinkThereIsStillSomethingToSay)
{
    EXPECT_EQ(updateMessageOf(NewerVersion{QStringLiteral("1.2"), {}, {}}),
              (UpdateMessage{QStringLiteral("Tallyfold 1.2 is available"),
                             QStringLiteral("There is a newer version of Tallyfold."),
                             {},
                             {}}));
}

TEST(UpdateText, EveryFailureHasItsWords)
{
    using Reason = UpdateCheckFailed::Reason;
    std::set<QString> texts;
    for (const Reason reason : {Reason::noFeed, Reason::noConnection, Reason::refusedRedirect,
                                Reason::tooLarge, Reason::tooSlow, Reason::badFeed, Reason::serverError}) {
        const UpdateMessage message = updateMessageOf(UpdateCheckFailed{reason});
        EXPECT_EQ(message.title, QStringLiteral("Couldn’t check for updates"));
        EXPECT_TRUE(message.link.isEmpty());
        EXPECT_TRUE(message.linkTitle.isEmpty());
        EXPECT_FALSE(message.text.isEmpty());
        texts.insert(message.text);
    }
    EXPECT_EQ(texts.size(), 7U);
}

} // namespace tallyfold
