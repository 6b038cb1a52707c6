#include "ui/text/HelpTopics.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

namespace tallyfold {

TEST(HelpTopics, AreThereInTheirOrder)
{
    QStringList ids;
    for (const HelpTopic &topic : helpTopics()) {
        ids.append(topic.id);
    }
    EXPECT_EQ(ids.join(u' '), QStringLiteral("start numbers look cover output password privacy support"));
    EXPECT_EQ(helpTopics()[5].title, QStringLiteral("Password-protected PDFs"));
    EXPECT_EQ(helpTopics()[5].symbol, QStringLiteral("lock"));
    EXPECT_EQ(helpTopics()[5].paragraphs.size(), 5);
    EXPECT_TRUE(helpTopics()[7].paragraphs.isEmpty());
}

TEST(HelpTopics, NameTheProgramAndLeaveNothingToFillIn)
{
    EXPECT_TRUE(helpTopics()[5].paragraphs[0].startsWith(
        QStringLiteral("Tallyfold won’t stamp a password-protected PDF")));
    for (const HelpTopic &topic : helpTopics()) {
        for (const QString &paragraph : topic.paragraphs) {
            EXPECT_FALSE(paragraph.contains(QRegularExpression(QStringLiteral("%[0-9]"))))
                << paragraph.toStdString();
        }
    }
}

TEST(HelpTopics, SupportMailNamesTheProgram)
{
    EXPECT_TRUE(ProductLinks::ours().supportMail().endsWith(QStringLiteral("?subject=Tallyfold%20support")));
    EXPECT_TRUE(ProductLinks::ours().supportMail().startsWith(QStringLiteral("mailto:")));
}

} // namespace tallyfold
