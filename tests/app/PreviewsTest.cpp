#include "tests/app/ModelFixture.h"

#include "tests/support/PdfBuilder.h"

#include <QColorSpace>

namespace tallyfold {

using PreviewsOfModel = tests::ModelFixture;
using Counts = std::map<std::string, int>;

TEST_F(PreviewsOfModel, AnEmptyListHasNone)
{
    model->refreshPreviews();
    EXPECT_TRUE(model->hasPreviewTask());
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_TRUE(model->previews().isEmpty());
    EXPECT_FALSE(model->closeUp());
    EXPECT_FALSE(model->previewFileName());
    EXPECT_EQ(counts->take(), Counts());
}

TEST_F(PreviewsOfModel, TheFirstThreePagesAreShown)
{
    addPdfs({"ten.pdf"}, 10);
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_EQ(model->previews().size(), 3);
    EXPECT_EQ(model->previews()[0].width(), 1200);
    EXPECT_EQ(model->previews()[0].deviceIndependentSize().toSize(),
              QSize(1200, model->previews()[0].height()));
    EXPECT_EQ(model->previews()[0].colorSpace(), QColorSpace(QColorSpace::SRgb));
    EXPECT_EQ(model->previewFileName(), QStringLiteral("ten.pdf"));
    ASSERT_TRUE(model->closeUp());
    EXPECT_EQ(model->closeUp()->height(), static_cast<int>(1200.0 / 612 * (18 + 15 + 14)));
    EXPECT_EQ(counts->take(),
              (Counts{{"sources", 1}, {"previews", 1}, {"closeUp", 1}, {"previewFileName", 1}}));
}

TEST_F(PreviewsOfModel, AShortFileHasAsManyAsPages)
{
    addPdfs({"two.pdf"}, 2);
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_EQ(model->previews().size(), 2);
}

TEST_F(PreviewsOfModel, ManyChangesAreDrawnOnce)
{
    addPdfs({"a.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    counts->take();
    for (int change = 0; change < 5; ++change) {
        StampSettings stamp = model->settings().stamp;
        stamp.prefix += u'X';
        model->setStamp(stamp);
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_EQ(counts->take(), (Counts{{"settings", 5}, {"previews", 1}, {"closeUp", 1}}));
}

TEST_F(PreviewsOfModel, TheFirstSelectedFileInProductionOrderIsShown)
{
    addPdfs({"c.pdf", "b.pdf", "a.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_EQ(model->previewFileName(), QStringLiteral("a.pdf"));
    model->setSelection({idOf("c.pdf"), idOf("b.pdf")});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_EQ(model->previewFileName(), QStringLiteral("b.pdf"));
}

TEST_F(PreviewsOfModel, AnEmptiedListClearsThem)
{
    addPdfs({"a.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    counts->take();
    model->removeAll();
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_TRUE(model->previews().isEmpty());
    EXPECT_FALSE(model->closeUp());
    EXPECT_FALSE(model->previewFileName());
    EXPECT_EQ(counts->take(),
              (Counts{{"sources", 1}, {"previews", 1}, {"closeUp", 1}, {"previewFileName", 1}}));
}

TEST_F(PreviewsOfModel, AFileThatCannotBeDrawnHasNoneInSilence)
{
    tests::writeFile(folder / "sources" / "broken.pdf", "no PDF");
    model->add(std::vector{folder / "sources" / "broken.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_TRUE(model->previews().isEmpty());
    EXPECT_FALSE(model->closeUp());
    EXPECT_EQ(model->previewFileName(), QStringLiteral("broken.pdf"));
    EXPECT_FALSE(model->problem());
}

TEST_F(PreviewsOfModel, AResultThatIsOutdatedIsNotShown)
{
    addPdfs({"a.pdf", "b.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    QStringList shown;
    QObject::connect(model.get(), &AppModel::previewFileNameChanged, model.get(),
                     [&] { shown.append(model->previewFileName().value_or(QString())); });
    // Whenever drawing may have begun, another file is asked for.
    for (const char *name : {"b.pdf", "a.pdf", "b.pdf"}) {
        model->setSelection({idOf(name)});
        QElapsedTimer timer;
        timer.start();
        waitUntil([&timer] { return timer.elapsed() > Previews::delay.count(); });
    }
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    EXPECT_EQ(model->previewFileName(), QStringLiteral("b.pdf"));
    EXPECT_EQ(shown.back(), QStringLiteral("b.pdf"));
}

TEST_F(PreviewsOfModel, AModelThatGoesTakesItsRefreshWithIt)
{
    addPdfs({"a.pdf"}, 3);
    counts.reset();
    model.reset();
    QCoreApplication::processEvents();
}

} // namespace tallyfold
