#include "app/KnownSources.h"

#include "app/LooseTask.h"
#include "app/SourceMessages.h"
#include "app/Translations.h"
#include "tests/app/ModelFixture.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sample.h"

#include <QGuiApplication>

#include <chrono>

namespace tallyfold {

namespace fs = std::filesystem;
using Counts = std::map<std::string, int>;
using Names = std::vector<std::string>;

namespace {

/// A list whose files change on the disk after they were added.
class ChangedSources : public tests::ModelFixture {
protected:
    fs::path source(const std::string &name) const
    {
        return folder / "sources" / name;
    }
    const SourceFile &listedAs(const std::string &name) const
    {
        const auto found =
            std::find_if(model->sources().begin(), model->sources().end(),
                         [&](const SourceFile &file) { return file.name.toStdString() == name; });
        EXPECT_NE(found, model->sources().end()) << name;
        return *found;
    }
    static void becomeActive()
    {
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    }
    /// What Stamp says; empty when it stamps.
    std::string said()
    {
        model->setProblem(std::nullopt);
        stampAndWait();
        return model->problem().value_or(QString()).toStdString();
    }

    const std::string again = " Nothing was written: look at the list, then stamp again.";
    const Translations translations;
};

} // namespace

TEST_F(ChangedSources, AreReadAnewWhenTheProgramBecomesActive)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"}, 2);
    const std::vector<SourceFile> before = model->sources();
    model->setSelection({idOf("b.pdf")});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    (void)pdf("b.pdf", 5);
    fs::remove(source("c.pdf"));
    counts->take();
    becomeActive();
    EXPECT_TRUE(waitUntil([this] { return listedAs("b.pdf").pageCount == 5; }));
    EXPECT_EQ(listed(), "a.pdf b.pdf c.pdf");
    EXPECT_EQ(listedAs("a.pdf"), before[0]);
    EXPECT_EQ(listedAs("b.pdf").id, before[1].id);
    EXPECT_EQ(listedAs("c.pdf").id, before[2].id);
    EXPECT_EQ(listedAs("c.pdf").problem, SourceProblem::unreadable);
    EXPECT_EQ(model->selection(), QSet<QUuid>{before[1].id});
    EXPECT_TRUE(model->hasPreviewTask());
    EXPECT_EQ(counts->take(), (Counts{{"sources", 1}, {"folderCheck", 1}})) << "nothing is told yet";
    EXPECT_EQ(undo.count(), 1);
}

TEST_F(ChangedSources, ThoseThatAreWhatTheyWereAreLeftAlone)
{
    addPdfs({"a.pdf", "b.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    counts->take();
    becomeActive();
    std::vector<SourceFile> sources = model->sources();
    stampAndWait();
    EXPECT_EQ(model->sources(), sources);
    EXPECT_EQ(written(), (Names{"Production Index.csv", "a.pdf", "b.pdf"}));
    EXPECT_FALSE(model->hasPreviewTask());
}

TEST_F(ChangedSources, StampSaysSoAndWaitsForASecondPress)
{
    addPdfs({"a.pdf", "b.pdf"}, 2);
    (void)pdf("a.pdf", 3);
    EXPECT_EQ(said(), "“a.pdf” has changed since it was added: it had 2 pages and has 3 pages now." + again);
    EXPECT_EQ(written(), Names{});
    EXPECT_EQ(said(), "");
    EXPECT_EQ(model->summary()->range, QStringLiteral("ABC000001 – ABC000005"));
    EXPECT_EQ(tests::soundPages(output / "a.pdf"), 3);
}

TEST_F(ChangedSources, StampSaysSoOfWhatWasReadAnewBefore)
{
    addPdfs({"a.pdf"}, 2);
    (void)pdf("a.pdf", 1);
    becomeActive();
    EXPECT_TRUE(waitUntil([this] { return listedAs("a.pdf").pageCount == 1; }));
    EXPECT_EQ(said(), "“a.pdf” has changed since it was added: it had 2 pages and has 1 page now." + again);
    EXPECT_EQ(said(), "");
}

TEST_F(ChangedSources, AChangeThatWasTakenBackOrRemovedIsNotTold)
{
    addPdfs({"a.pdf", "b.pdf"}, 2);
    (void)pdf("a.pdf", 3);
    (void)pdf("b.pdf", 3);
    becomeActive();
    EXPECT_TRUE(waitUntil([this] { return listedAs("a.pdf").pageCount == 3; }));
    (void)pdf("a.pdf", 2);
    model->remove({idOf("b.pdf")});
    EXPECT_EQ(said(), "");
    EXPECT_EQ(model->summary()->pages, 2);
}

TEST_F(ChangedSources, OfThoseWithAsManyPagesOnlyTheContentIsNew)
{
    addPdfs({"a.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    const FileDate before = listedAs("a.pdf").modified;
    tests::writeSample(source("a.pdf"), 1, "Something else");
    fs::last_write_time(source("a.pdf"), fs::last_write_time(source("a.pdf")) + std::chrono::hours(1));
    EXPECT_EQ(said(), "");
    EXPECT_GT(listedAs("a.pdf").modified, before);
    EXPECT_NE(tests::textOfPage(output / "a.pdf", 1).find("Something else"), std::string::npos);
}

TEST_F(ChangedSources, VanishedOnesAreToldBeforeTheRun)
{
    addPdfs({"a.pdf", "b.pdf"});
    fs::remove(source("b.pdf"));
    EXPECT_EQ(said(), "“b.pdf” isn’t there any more and won’t be stamped." + again);
    EXPECT_EQ(said(), "");
    EXPECT_EQ(written(), (Names{"Production Index.csv", "a.pdf"}));
    EXPECT_EQ(model->summary()->failures, QStringList());
}

TEST_F(ChangedSources, OnesThatComeBackAreToldAsWell)
{
    addPdfs({"a.pdf", "b.pdf"});
    fs::rename(source("b.pdf"), source("away"));
    EXPECT_NE(said(), "");
    fs::rename(source("away"), source("b.pdf"));
    EXPECT_EQ(said(), "“b.pdf” has changed since it was added and can be stamped now." + again);
    EXPECT_EQ(said(), "");
    EXPECT_EQ(model->summary()->files, 2);
}

TEST_F(ChangedSources, OnesWhoseProblemIsAnotherAreTold)
{
    addPdfs({"a.pdf", "b.pdf"});
    tests::writeFile(source("a.pdf"), "no PDF");
    EXPECT_EQ(said(), "“a.pdf” has changed since it was added and can’t be stamped any more." + again);
    tests::encrypt(pdf("plain.pdf"), source("locked.pdf"), "secret owner 256");
    fs::rename(source("locked.pdf"), source("a.pdf"));
    EXPECT_EQ(said(), "“a.pdf” has changed since it was added and still can’t be stamped." + again);
    EXPECT_EQ(listedAs("a.pdf").problem, SourceProblem::locked);
    EXPECT_EQ(said(), "");
    EXPECT_TRUE(model->isConfirmingProtected()) << "which has a question of its own";
}

TEST_F(ChangedSources, AFileOfTheSameSizeAndTimeInItsPlaceIsSeen)
{
    addPdfs({"a.pdf"});
    const std::string content = tests::readFile(source("a.pdf"));
    tests::writeFile(source("other"), std::string(content.size(), ' '));
    fs::last_write_time(source("other"), fs::last_write_time(source("a.pdf")));
    fs::rename(source("other"), source("a.pdf"));
    EXPECT_EQ(said(), "“a.pdf” has changed since it was added and can’t be stamped any more." + again);
}

TEST_F(ChangedSources, WhatUndoBringsBackIsAsItIsNow)
{
    addPdfs({"a.pdf", "b.pdf"}, 2);
    model->remove({idOf("b.pdf")});
    (void)pdf("a.pdf", 3);
    (void)pdf("b.pdf", 4);
    EXPECT_NE(said(), "");
    undo.undo();
    EXPECT_EQ(listedAs("a.pdf").pageCount, 3) << "the list before knew it with two";
    EXPECT_EQ(said(), "“b.pdf” has changed since it was added: it had 2 pages and has 4 pages now." + again);
    EXPECT_EQ(said(), "");
    EXPECT_EQ(model->summary()->pages, 7);
}

TEST_F(ChangedSources, AModelThatGoesWaitsForNoLook)
{
    addPdfs({"a.pdf"});
    (void)pdf("a.pdf", 3);
    becomeActive();
    counts.reset();
    model.reset();
    EXPECT_TRUE(waitUntil([] { return !LooseTask::isAnyLeft(); }));
}

TEST_F(ChangedSources, AreLookedForEachTimeTheProgramBecomesActive)
{
    addPdfs({"a.pdf"});
    for (const int pages : {2, 3, 4}) {
        (void)pdf("a.pdf", pages);
        becomeActive();
        EXPECT_TRUE(waitUntil([&] { return listedAs("a.pdf").pageCount == pages; })) << pages;
    }
}

TEST_F(ChangedSources, AreLookedForByOneThreadAtATime)
{
    std::vector<std::string> names;
    for (int file = 0; file < 100; ++file) {
        names.push_back(std::to_string(file) + ".pdf");
    }
    addPdfs(names);
    for (int look = 0; look < 50; ++look) {
        becomeActive();
        ASSERT_FALSE(LooseTask::isAnyLeft()) << "one was given up for look " << look;
    }
}

TEST(KnownSources, OfWhatWasNeverReadNothingIsKnown)
{
    const tests::TemporaryFolder folder;
    KnownSources known;
    const KnownSources::Reading reading =
        KnownSources::read(tests::writeSamples(folder.path(), {"read.pdf"}, 1).front());
    known.add(reading);
    const SourceFile &read = reading.source;
    SourceFile stranger = read;
    stranger.id = QUuid::createUuid();
    stranger.pageCount = 7;
    std::vector<SourceFile> sources{stranger, read};
    const std::vector<KnownSources::Look> looks = known.looksAt(sources);
    ASSERT_EQ(looks.size(), 1U);
    EXPECT_EQ(looks.front().id, read.id);
    const KnownSources::Look strange{stranger.id, stranger.url, looks.front().then};
    EXPECT_TRUE(known.unread(sources, {strange}).empty());
    known.renew(sources, {strange}, {reading});
    EXPECT_EQ(known.latest(sources), sources);
    EXPECT_TRUE(known.takeChanges(sources).empty());
}

TEST(KnownSources, WhatWasRemovedOrReadSinceTheLookIsNotReadAgain)
{
    const tests::TemporaryFolder folder;
    KnownSources known;
    std::vector<SourceFile> sources;
    for (const fs::path &path : tests::writeSamples(folder.path(), {"a.pdf", "b.pdf", "c.pdf"}, 1)) {
        const KnownSources::Reading reading = KnownSources::read(path);
        known.add(reading);
        sources.push_back(reading.source);
    }
    const std::vector<KnownSources::Look> looks = known.looksAt(sources);
    (void)tests::writeSamples(folder.path(), {"a.pdf", "b.pdf"}, 4);
    known.renew(sources, looks, {KnownSources::read(sources[0].url)});
    EXPECT_EQ(sources[0].pageCount, 4);
    EXPECT_EQ(sources[0].id, looks[0].id);
    EXPECT_EQ(sources[1].pageCount, 1) << "there was no reading of it";
    const std::vector<KnownSources::Look> unread = known.unread({sources[0], sources[1]}, looks);
    ASSERT_EQ(unread.size(), 1U);
    EXPECT_EQ(unread.front().id, sources[1].id);
}

TEST(KnownSources, ALookThatIsGivenUpEndsEarly)
{
    const tests::TemporaryFolder folder;
    KnownSources known;
    const KnownSources::Reading reading =
        KnownSources::read(tests::writeSamples(folder.path(), {"a.pdf"}, 1).front());
    known.add(reading);
    const SourceFile &source = reading.source;
    fs::remove(source.url);
    std::stop_source givenUp;
    EXPECT_EQ(KnownSources::changed(known.looksAt({source}), givenUp.get_token()).size(), 1U);
    givenUp.request_stop();
    EXPECT_TRUE(KnownSources::changed(known.looksAt({source}), givenUp.get_token()).empty());
}

TEST_F(ChangedSources, ManyAreTakenTogether)
{
    const auto change = [](const QString &name, bool isGone) {
        return SourceChange{name, 2, 3, true, !isGone, isGone};
    };
    std::vector<SourceChange> changes{change(QStringLiteral("a"), true), change(QStringLiteral("b"), false),
                                      change(QStringLiteral("c"), true), change(QStringLiteral("d"), false)};
    EXPECT_EQ(
        changedSourcesMessage(changes).toStdString(),
        "2 files aren’t there any more and won’t be stamped: a, c. 2 files have changed since they were "
        "added: b, d." +
            again);
    for (const QString &name : {QStringLiteral("e"), QStringLiteral("f"), QStringLiteral("g")}) {
        changes.push_back(change(name, true));
    }
    EXPECT_TRUE(changedSourcesMessage(changes).startsWith(QStringLiteral(
        "5 files aren’t there any more and won’t be stamped: a, c, e, f and 1 more. 2 files")));
}

} // namespace tallyfold
