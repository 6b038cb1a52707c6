#include "app/CopyPages.h"

#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Waiting.h"

#include <gtest/gtest.h>

namespace tallyfold {

using namespace Qt::StringLiterals;

namespace {

class CopyPagesTest : public testing::Test {
protected:
    CopyPagesTest()
    {
        tests::writeSample(m_folder / "a.pdf", 3);
        QObject::connect(&m_pages, &CopyPages::shown, &m_pages,
                         [this](const CopyPages::Shown &shown) { m_shown.push_back(shown); });
    }

    [[nodiscard]] CopyPages::Wanted page(std::int64_t number, const QString &file = u"a.pdf"_s) const
    {
        return {m_folder.path(), file, number, 300};
    }
    bool wait()
    {
        return tests::waitUntil([this] { return !m_pages.isDrawing(); });
    }

    tests::TemporaryFolder m_folder;
    CopyPages m_pages;
    std::vector<CopyPages::Shown> m_shown;
};

} // namespace

TEST_F(CopyPagesTest, DrawAPageAsWideAsItIsWanted)
{
    m_pages.show(page(2));
    ASSERT_TRUE(wait());
    ASSERT_EQ(m_shown.size(), 1U);
    EXPECT_EQ(m_shown.front().wanted, page(2));
    EXPECT_EQ(m_shown.front().pages, 3);
    EXPECT_EQ(m_shown.front().picture.width(), 300);
    EXPECT_EQ(m_shown.front().picture.height(), 389); // 792 to 612.
}

TEST_F(CopyPagesTest, TellOfAPageThatIsNotThere)
{
    for (const std::int64_t number : {0, 4}) {
        m_pages.show(page(number));
        ASSERT_TRUE(wait());
        EXPECT_EQ(m_shown.back().pages, 3);
        EXPECT_TRUE(m_shown.back().picture.isNull());
    }
}

TEST_F(CopyPagesTest, TellOfAFileThatIsNotThere)
{
    m_pages.show(page(1, u"b.pdf"_s));
    ASSERT_TRUE(wait());
    EXPECT_EQ(m_shown.back().pages, std::nullopt);
}

TEST_F(CopyPagesTest, FindAFileWhoseNameIsNoText)
{
    tests::writeSample(m_folder / "caf\xe9.pdf", 2);
    m_pages.show(page(1, u"caf\ufffd.pdf"_s));
    ASSERT_TRUE(wait());
    EXPECT_EQ(m_shown.back().pages, 2);
}

TEST_F(CopyPagesTest, TheLastPageThatWasAskedForIsShownAlone)
{
    m_pages.show(page(1));
    m_pages.show(page(2));
    m_pages.show(page(1)); // As the first, which was given up.
    ASSERT_TRUE(wait());
    ASSERT_EQ(m_shown.size(), 1U);
    EXPECT_EQ(m_shown.front().wanted, page(1));
    EXPECT_FALSE(m_shown.front().picture.isNull());
}

TEST_F(CopyPagesTest, AnotherPageCanBeAskedForAtOnce)
{
    QObject::connect(&m_pages, &CopyPages::shown, &m_pages, [this](const CopyPages::Shown &shown) {
        if (shown.wanted.page < 3) {
            m_pages.show(page(shown.wanted.page + 1));
        }
    });
    m_pages.show(page(1));
    ASSERT_TRUE(tests::waitUntil([this] { return m_shown.size() == 3; }));
    EXPECT_EQ(m_shown.back().wanted.page, 3);
}

} // namespace tallyfold
