#include "app/Previews.h"

#include "app/LooseTask.h"
#include "core/SourceClassifier.h"
#include "core/StampError.h"
#include "core/Stamper.h"
#include "tests/app/ModelFixture.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"
#include "tests/support/Waiting.h"

#include <QColorSpace>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <set>
#include <thread>

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

TEST_F(PreviewsOfModel, AScreenOfMorePixelsGetsMoreOfThemWithinLimits)
{
    addPdfs({"a.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    for (const auto &[wanted, drawn] :
         {std::pair(1600, 1600), std::pair(9000, 2400), std::pair(10, 1200), std::pair(1800, 1800)}) {
        model->setPreviewWidth(wanted);
        EXPECT_TRUE(model->hasPreviewTask());
        ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
        EXPECT_EQ(model->previews()[0].width(), drawn);
        ASSERT_TRUE(model->closeUp());
        EXPECT_EQ(model->closeUp()->width(), drawn);
    }
    model->setPreviewWidth(1800);
    EXPECT_FALSE(model->hasPreviewTask()) << "as it is already";
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

TEST_F(PreviewsOfModel, WhateverChangesTheListRefreshesThem)
{
    const auto refreshes = [this](const std::function<void()> &change) {
        EXPECT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
        change();
        return model->hasPreviewTask();
    };
    EXPECT_TRUE(refreshes([this] { addPdfs({"a.pdf", "b.pdf"}); }));
    EXPECT_TRUE(refreshes([this] { undo.undo(); }));
    EXPECT_TRUE(refreshes([this] { undo.redo(); }));
    EXPECT_TRUE(refreshes([this] { model->move({1}, 0); }));
    EXPECT_TRUE(refreshes([this] { model->move({1}, 0); })) << "when the order was the user's already";
    EXPECT_TRUE(refreshes([this] { model->remove({idOf("b.pdf")}); }));
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
    // Requests another file at any time after drawing may have begun.
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

namespace {

/// Drawings whose duration the test controls, on any threads.
class SlowDrawings {
public:
    /// Draws an empty page after `letEnd` for the file or a stop request.
    PreviewImages draw(const QString &name, const std::stop_token &givenUp)
    {
        std::unique_lock lock(m_lock);
        m_begun.append(name);
        m_most = std::max(m_most, ++m_underWay);
        m_changed.wait(lock, givenUp, [&] { return m_mayEnd.contains(name); });
        if (givenUp.stop_requested()) {
            m_givenUp.append(name);
            m_changed.wait(lock, [&] { return !m_isDeaf || m_mayEnd.contains(name); });
        }
        --m_underWay;
        PreviewImages images;
        images.pages.append(QImage(1, 1, QImage::Format_RGBA8888_Premultiplied));
        return images;
    }

    void letEnd(const QString &name)
    {
        const std::lock_guard lock(m_lock);
        m_mayEnd.insert(name);
        m_changed.notify_all();
    }

    /// From now on drawings ignore stop requests, as if a disk did not respond.
    void beDeaf()
    {
        const std::lock_guard lock(m_lock);
        m_isDeaf = true;
    }

    [[nodiscard]] QStringList begun() const
    {
        const std::lock_guard lock(m_lock);
        return m_begun;
    }
    [[nodiscard]] QStringList givenUp() const
    {
        const std::lock_guard lock(m_lock);
        return m_givenUp;
    }
    [[nodiscard]] int mostAtOnce() const
    {
        const std::lock_guard lock(m_lock);
        return m_most;
    }

private:
    mutable std::mutex m_lock;
    std::condition_variable_any m_changed;
    std::set<QString> m_mayEnd;
    QStringList m_begun;
    QStringList m_givenUp;
    int m_underWay = 0;
    int m_most = 0;
    bool m_isDeaf = false;
};

/// Previews of files that do not exist.
class PreviewsOfSlowFiles : public testing::Test {
protected:
    PreviewsOfSlowFiles()
    {
        QObject::connect(previews.get(), &Previews::refreshed, previews.get(),
                         [this](const PreviewImages &images, const std::optional<QString> &name) {
                             shown.append(name ? *name : QStringLiteral("nothing"));
                             EXPECT_EQ(images.pages.isEmpty(), !name);
                         });
    }
    ~PreviewsOfSlowFiles() override
    {
        previews.reset();
        for (const QString &name : drawings->begun()) {
            drawings->letEnd(name);
        }
        EXPECT_TRUE(tests::waitUntil([] { return !LooseTask::isAnyLeft(); }));
    }

    /// Requests the file `name`; empty for none.
    void want(const QString &name)
    {
        wanted = name;
        previews->refresh();
    }
    /// As above, and waits until it is drawn.
    void wantAndSeeBegun(const QString &name)
    {
        want(name);
        EXPECT_TRUE(tests::waitUntil([&] { return drawings->begun().contains(name); }));
    }
    /// Waits until no refresh is pending.
    void settle()
    {
        EXPECT_TRUE(tests::waitUntil([this] { return !previews->isRefreshing(); }));
    }

    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    const QString c = QStringLiteral("c");
    const QString d = QStringLiteral("d");
    QString wanted;
    QStringList shown;
    std::shared_ptr<SlowDrawings> drawings = std::make_shared<SlowDrawings>();
    std::unique_ptr<Previews> previews = std::make_unique<Previews>(
        [this]() -> std::optional<PreviewRequest> {
            if (wanted.isEmpty()) {
                return std::nullopt;
            }
            PreviewRequest request;
            request.file.source.name = wanted;
            return request;
        },
        [drawings = drawings](const PreviewRequest &request, const std::stop_token &givenUp) {
            return drawings->draw(request.file.source.name, givenUp);
        });
};

} // namespace

TEST_F(PreviewsOfSlowFiles, ANewRefreshDoesNotWaitForTheOldOne)
{
    wantAndSeeBegun(a);
    drawings->letEnd(b);
    want(b);
    settle();
    EXPECT_EQ(shown, QStringList(b));
    EXPECT_EQ(drawings->givenUp(), QStringList()) << "there is room for it to run out";
    drawings->letEnd(a);
    drawings->letEnd(c);
    want(c);
    settle();
    EXPECT_EQ(shown, QStringList({b, c})) << "what comes late is not shown";
}

TEST_F(PreviewsOfSlowFiles, AnEmptiedListIsClearedAtOnce)
{
    wantAndSeeBegun(a);
    want({});
    settle();
    EXPECT_EQ(shown, QStringList(QStringLiteral("nothing")));
    wantAndSeeBegun(b);
    want({});
    settle();
    EXPECT_EQ(shown.size(), 2) << "nor with two that run out";
}

TEST_F(PreviewsOfSlowFiles, OfThreeTheOldestIsGivenUp)
{
    wantAndSeeBegun(a);
    wantAndSeeBegun(b);
    drawings->letEnd(c);
    want(c);
    settle();
    EXPECT_EQ(shown, QStringList(c));
    EXPECT_EQ(drawings->givenUp(), QStringList(a));
    EXPECT_EQ(drawings->mostAtOnce(), 2);
}

TEST_F(PreviewsOfSlowFiles, NoMoreThanTwoAreUnderWayThoughNoneCanBeGivenUp)
{
    drawings->beDeaf();
    wantAndSeeBegun(a);
    wantAndSeeBegun(b);
    for (const QString &name : {c, d}) {
        want(name);
        EXPECT_TRUE(tests::waitUntil([this] { return drawings->givenUp().contains(a); }));
        std::this_thread::sleep_for(Previews::delay);
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(previews->isRefreshing());
    EXPECT_EQ(drawings->begun(), QStringList({a, b}));
    drawings->letEnd(d);
    drawings->letEnd(b); // Whichever ends.
    settle();
    EXPECT_EQ(drawings->begun(), QStringList({a, b, d})) << "the latest takes the place";
    EXPECT_EQ(shown, QStringList(d));
    EXPECT_EQ(drawings->mostAtOnce(), 2);
}

TEST_F(PreviewsOfSlowFiles, OneThatWaitsForRoomGivesWayToTheNextRefresh)
{
    drawings->beDeaf();
    wantAndSeeBegun(a);
    wantAndSeeBegun(b);
    want(c);
    EXPECT_TRUE(tests::waitUntil([this] { return drawings->givenUp().contains(a); }));
    want({});
    settle();
    EXPECT_EQ(shown, QStringList(QStringLiteral("nothing")));
    drawings->letEnd(a);
    drawings->letEnd(d);
    want(d);
    settle();
    EXPECT_EQ(drawings->begun(), QStringList({a, b, d}));
}

TEST_F(PreviewsOfSlowFiles, WhoeverGoesWaitsForNone)
{
    drawings->beDeaf();
    wantAndSeeBegun(a);
    wantAndSeeBegun(b);
    previews.reset();
    EXPECT_TRUE(LooseTask::isAnyLeft());
    EXPECT_TRUE(tests::waitUntil([this] { return drawings->givenUp().size() == 2; }));
    drawings->letEnd(a);
    drawings->letEnd(b);
    EXPECT_TRUE(tests::waitUntil([] { return !LooseTask::isAnyLeft(); }));
    EXPECT_EQ(shown, QStringList());
}

TEST_F(PreviewsOfSlowFiles, DrawingBeginsSoLongAfterTheLastOfManyChanges)
{
    drawings->letEnd(a);
    wanted = a;
    QElapsedTimer sinceLast;
    QElapsedTimer sinceFirst;
    sinceFirst.start();
    do {
        previews->refresh();
        sinceLast.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    } while (drawings->begun().isEmpty() && !sinceFirst.hasExpired(2 * Previews::delay.count()));
    EXPECT_TRUE(tests::waitUntil([this] { return !drawings->begun().isEmpty(); }));
    EXPECT_GE(sinceLast.elapsed(), 149) << "timers count whole milliseconds";
    settle();
    EXPECT_EQ(drawings->begun(), QStringList(a));
}

TEST(PreviewsOfAFile, HaveEveryPixelInItsPlace)
{
    const tests::TemporaryFolder folder;
    tests::PdfBuilder builder;
    const int content = builder.addStream({}, "1 0 0 rg 0 100 100 100 re f 0 0 1 rg 100 0 100 100 re f\n");
    builder.addPage("/MediaBox[0 0 200 200]/Contents " + tests::reference(content));
    tests::writeFile(folder / "a.pdf", builder.file());
    StampSettings settings;
    settings.prefix.clear();
    settings.margin = 5;
    const ProductionPlan plan({classify(folder / "a.pdf")}, settings);
    const PreviewImages images = PreviewImages::of(plan.files.front(), plan.settings);
    ASSERT_EQ(images.pages.size(), 1);
    const QImage &page = images.pages.front();
    ASSERT_EQ(page.size(), QSize(1200, 1200));
    for (const int place : {0, 10, 200, 400, 599}) {
        EXPECT_EQ(page.pixelColor(place, place), QColor(255, 0, 0)) << place;
        EXPECT_EQ(page.pixelColor(600 + place, place), QColor(255, 255, 255)) << place;
        EXPECT_EQ(page.pixelColor(place, 600 + place), QColor(255, 255, 255)) << place;
        EXPECT_EQ(page.pixelColor(600 + place, 600 + place / 2), QColor(0, 0, 255)) << place;
    }
}

TEST(PreviewsOfAFile, GivenUpBeforeTheyAreBegunAreNone)
{
    const tests::TemporaryFolder folder;
    const std::filesystem::path path = tests::writeSamples(folder.path(), {"a.pdf"}, 1).front();
    const ProductionPlan plan({classify(path)}, {});
    EXPECT_EQ(PreviewImages::of(plan.files.front(), plan.settings).pages.size(), 1);
    std::stop_source givenUp;
    givenUp.request_stop();
    EXPECT_TRUE(
        PreviewImages::of(plan.files.front(), plan.settings, 100, givenUp.get_token()).pages.isEmpty());
    try {
        (void)Stamper::previewImages(plan.files.front(), plan.settings, 3, 100, givenUp.get_token());
        ADD_FAILURE() << "it was copied to its end";
    } catch (const StampError &error) {
        EXPECT_EQ(error, StampError::cancelled());
    }
}

} // namespace tallyfold
