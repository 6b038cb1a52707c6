#include "tests/app/ModelFixture.h"

#include "tests/support/PdfBuilder.h"
#include "tests/support/UnreadableFolder.h"

#include <QGuiApplication>

namespace tallyfold {

namespace fs = std::filesystem;
using SourceList = tests::ModelFixture;
using Counts = std::map<std::string, int>;

TEST_F(SourceList, FilesAreAddedInTheirOrderAndRead)
{
    model->add(std::vector{pdf("b.pdf", 2), pdf("a.pdf", 1)});
    EXPECT_EQ(listed(), "b.pdf a.pdf");
    EXPECT_EQ(model->sources()[0].pageCount, 2);
    EXPECT_EQ(counts->take(), (Counts{{"sources", 1}}));
    EXPECT_TRUE(model->hasPreviewTask());
    EXPECT_EQ(undo.undoText(), QStringLiteral("Add Files"));
}

TEST_F(SourceList, AFileIsListedOnceHoweverItIsGiven)
{
    const fs::path path = pdf("a.pdf");
    model->add(
        std::vector{path, path, folder / "sources", folder / "sources" / "." / ".." / "sources" / "a.pdf"});
    EXPECT_EQ(listed(), "a.pdf");
    counts->take();
    model->add(std::vector{folder / "output" / ".." / "sources" / "a.pdf"});
    EXPECT_EQ(listed(), "a.pdf");
    EXPECT_EQ(counts->take(), Counts());
    EXPECT_EQ(undo.count(), 1);
}

TEST_F(SourceList, NothingGivenChangesNothing)
{
    model->add({});
    EXPECT_EQ(counts->take(), Counts());
    EXPECT_EQ(undo.count(), 0);
}

TEST_F(SourceList, AFolderWithoutPdfsIsToldAndCannotBeUndone)
{
    tests::writeFile(folder / "sources" / "notes.txt", "text");
    model->add(std::vector{folder / "sources"});
    EXPECT_EQ(model->problem(),
              QStringLiteral("No PDFs there. Tallyfold stamps PDF files; add a folder of PDFs or the "
                             "PDFs themselves."));
    EXPECT_EQ(counts->take(), (Counts{{"problem", 1}}));
    EXPECT_EQ(undo.count(), 0);
}

TEST_F(SourceList, AFolderThatCannotBeReadIsToldAndTheRestIsAdded)
{
    pdf("a.pdf");
    const fs::path deep = folder / "sources" / "deep";
    tests::makeUnreadableFolder(deep);
    model->add(std::vector{folder / "sources"});
    EXPECT_EQ(listed(), "a.pdf");
    EXPECT_TRUE(model->problem()->endsWith(
        QStringLiteral("couldn’t be read to its end. PDFs in it may be missing from the list.")));
    model->setProblem(std::nullopt);
    model->add(std::vector{deep});
    EXPECT_TRUE(model->problem()->startsWith(QStringLiteral("The folder “ddd")));
    EXPECT_EQ(listed(), "a.pdf");
    tests::makeUnreadableFolder(folder / "sources" / "deeper");
    model->add(std::vector{folder / "sources"});
    EXPECT_EQ(model->problem(),
              QStringLiteral("2 folders couldn’t be read to their end. PDFs in them may be missing from the "
                             "list."));
}

TEST_F(SourceList, WhatCannotBeStampedIsListedWithItsProblem)
{
    tests::writeFile(folder / "sources" / "broken.pdf", "no PDF");
    model->add(std::vector{folder / "sources" / "broken.pdf"});
    ASSERT_EQ(model->sources().size(), 1U);
    EXPECT_EQ(model->sources()[0].problem, SourceProblem::unreadable);
}

TEST_F(SourceList, TheFilePanelIsAskedForWhatIsAdded)
{
    model->chooseFiles();
    EXPECT_EQ(counts->take(), Counts());
    panels.answer = {pdf("a.pdf"), pdf("sub/b.pdf")};
    model->chooseFiles();
    EXPECT_EQ(listed(), "a.pdf b.pdf");
    ASSERT_EQ(panels.asked.size(), 2U);
    const OpenPanel &panel = panels.asked[0];
    EXPECT_EQ(panel.title, QStringLiteral("Add PDFs"));
    EXPECT_EQ(panel.message,
              QStringLiteral("Choose PDFs or folders of PDFs to number. They’re only read, never changed."));
    EXPECT_EQ(panel.prompt, QStringLiteral("Add"));
    EXPECT_EQ(panel.content, OpenPanel::Content::pdfsAndFolders);
    EXPECT_TRUE(panel.allowsMultipleSelection);
    EXPECT_FALSE(panel.canCreateDirectories);
}

TEST_F(SourceList, AFolderIsAddedByAPanelOfItsOwn)
{
    pdf("sub/a.pdf");
    panels.answer = {pdf("sub/b.pdf").parent_path()};
    model->chooseFolder();
    EXPECT_EQ(listed(), "a.pdf b.pdf");
    const OpenPanel &panel = panels.asked.at(0);
    EXPECT_EQ(panel.title, QStringLiteral("Add Folder"));
    EXPECT_EQ(panel.prompt, QStringLiteral("Add"));
    EXPECT_EQ(panel.content, OpenPanel::Content::folderOfPdfs);
    EXPECT_FALSE(panel.canCreateDirectories);
}

TEST_F(SourceList, WhatAPanelLostIsToldWithTheWayThatWorks)
{
    panels.answer = {pdf("a.pdf")};
    panels.lost = {QStringLiteral("odd\ufffd.pdf")};
    for (const auto choose : {&AppModel::chooseFiles, &AppModel::chooseFolder}) {
        model->setProblem(std::nullopt);
        ((*model).*choose)();
        EXPECT_EQ(listed(), "a.pdf") << "what was found is added all the same";
        EXPECT_EQ(model->problem(),
                  QStringLiteral("“odd\ufffd.pdf” can’t be found by the name that the desktop’s dialog gives "
                                 "it, as happens with names that aren’t valid text. Add the folder it is in "
                                 "(File › Add Folder…), or drop it on the list."));
    }
    panels.answer.clear();
    panels.lost = {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"),
                   QStringLiteral("5")};
    model->chooseFiles();
    EXPECT_EQ(model->problem(),
              QStringLiteral("5 items can’t be found by the names that the desktop’s dialog gives them, as "
                             "happens with names that aren’t valid text: 1, 2, 3, 4 and 1 more. Add the "
                             "folder they are in (File › Add Folder…), or drop them on the list."));
}

TEST_F(SourceList, AnOutputFolderThatAPanelLostIsTold)
{
    panels.lost = {QStringLiteral("odd\ufffd")};
    model->chooseOutputFolder();
    EXPECT_EQ(model->outputFolder(), std::nullopt);
    EXPECT_EQ(model->problem(),
              QStringLiteral("“odd\ufffd” can’t be found by the name that the desktop’s dialog gives it, as "
                             "happens with names that aren’t valid text. Choose another folder, or give this "
                             "one another name."));
}

TEST_F(SourceList, TheFolderPanelChoosesTheOutputFolder)
{
    model->chooseOutputFolder();
    EXPECT_EQ(counts->take(), Counts());
    panels.answer = {output};
    model->chooseOutputFolder();
    EXPECT_EQ(model->outputFolder(), output);
    EXPECT_EQ(counts->take(), (Counts{{"outputFolder", 1}, {"folderCheck", 1}}));
    model->chooseOutputFolder();
    EXPECT_EQ(counts->take(), (Counts{{"folderCheck", 1}}));
    const OpenPanel &panel = panels.asked[0];
    EXPECT_EQ(panel.title, QStringLiteral("Output Folder"));
    EXPECT_EQ(panel.message,
              QStringLiteral("Choose an empty folder for the stamped copies and the index. Nothing in it "
                             "is ever replaced."));
    EXPECT_EQ(panel.prompt, QStringLiteral("Choose"));
    EXPECT_EQ(panel.content, OpenPanel::Content::folder);
    EXPECT_TRUE(panel.canCreateDirectories);
    EXPECT_FALSE(panel.allowsMultipleSelection);
}

TEST_F(SourceList, BecomingActiveLooksAtTheFolderAgain)
{
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_EQ(model->folderCheck(), 0);
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(model->folderCheck(), 1);
    EXPECT_EQ(counts->take(), (Counts{{"folderCheck", 1}}));
}

TEST_F(SourceList, ARemovedFileComesBackToItsPlace)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    const std::vector<SourceFile> before = model->sources();
    model->remove({idOf("b.pdf")});
    EXPECT_EQ(listed(), "a.pdf c.pdf");
    EXPECT_EQ(undo.undoText(), QStringLiteral("Remove File"));
    undo.undo();
    EXPECT_EQ(model->sources(), before);
    EXPECT_EQ(undo.redoText(), QStringLiteral("Remove File"));
    undo.redo();
    EXPECT_EQ(listed(), "a.pdf c.pdf");
    undo.undo();
    undo.undo();
    EXPECT_EQ(listed(), "");
    undo.redo();
    EXPECT_EQ(model->sources(), before);
}

TEST_F(SourceList, SeveralRemovedFilesHaveTheirOwnActionName)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    model->setSelection({idOf("a.pdf"), idOf("c.pdf")});
    model->removeSelected();
    EXPECT_EQ(listed(), "b.pdf");
    EXPECT_EQ(undo.undoText(), QStringLiteral("Remove Files"));
    model->removeAll();
    EXPECT_EQ(listed(), "");
    EXPECT_EQ(undo.undoText(), QStringLiteral("Remove File"));
    counts->take();
    model->removeAll();
    EXPECT_EQ(counts->take(), Counts());
}

TEST_F(SourceList, UnknownFilesAreNotRemoved)
{
    addPdfs({"a.pdf"});
    counts->take();
    model->remove({QUuid::createUuid()});
    EXPECT_EQ(counts->take(), Counts());
    EXPECT_EQ(undo.count(), 1);
}

TEST_F(SourceList, TheSelectionNeverHoldsWhatIsGone)
{
    addPdfs({"a.pdf", "b.pdf"});
    const QUuid kept = idOf("a.pdf");
    model->setSelection({kept, idOf("b.pdf"), QUuid::createUuid()});
    EXPECT_EQ(model->selection().size(), 2);
    bool isSound = true;
    QObject::connect(model.get(), &AppModel::sourcesChanged, model.get(), [&] {
        for (const QUuid &id : model->selection()) {
            isSound = isSound && std::any_of(model->sources().begin(), model->sources().end(),
                                             [&id](const SourceFile &source) { return source.id == id; });
        }
    });
    counts->take();
    model->remove({idOf("b.pdf")});
    EXPECT_EQ(model->selection(), QSet<QUuid>{kept});
    EXPECT_EQ(counts->take(), (Counts{{"sources", 1}, {"selection", 1}}));
    undo.undo();
    undo.undo();
    EXPECT_TRUE(model->selection().isEmpty());
    EXPECT_TRUE(isSound);
}

TEST_F(SourceList, SelectingTellsOnceAndRefreshesThePreviews)
{
    addPdfs({"a.pdf", "b.pdf"});
    ASSERT_TRUE(waitUntil([this] { return !model->hasPreviewTask(); }));
    counts->take();
    model->setSelection({idOf("b.pdf")});
    model->setSelection({idOf("b.pdf")});
    EXPECT_EQ(counts->take(), (Counts{{"selection", 1}}));
    EXPECT_TRUE(model->hasPreviewTask());
}

TEST_F(SourceList, MovingARowMakesTheOrderManualForGood)
{
    addPdfs({"c.pdf", "a.pdf", "b.pdf"}); // Numbered as a, b, c.
    model->move({2}, 0);
    EXPECT_EQ(listed(), "c.pdf a.pdf b.pdf");
    EXPECT_EQ(model->settings().stamp.order, FileOrder::manual);
    EXPECT_EQ(anotherModel()->settings().stamp.order, FileOrder::manual);
    EXPECT_EQ(undo.count(), 1); // Of adding.
    model->move({0, 1}, 3);
    EXPECT_EQ(listed(), "b.pdf c.pdf a.pdf");
    model->move({0, 2}, 1);
    EXPECT_EQ(listed(), "b.pdf a.pdf c.pdf");
    model->move({7}, -3);
    EXPECT_EQ(listed(), "b.pdf a.pdf c.pdf");
}

TEST_F(SourceList, WhatIsAddedLaterIsOrderedLikeTheRestUnlessTheOrderIsTheUsers)
{
    const auto numbered = [this] {
        std::string names;
        for (const PlannedFile &file : ProductionPlan(model->sources(), model->settings().stamp).files) {
            names += file.source.name.toStdString() + ' ';
        }
        return names;
    };
    addPdfs({"d.pdf", "10.pdf"});
    addPdfs({"c.pdf", "2.pdf"});
    EXPECT_EQ(numbered(), "2.pdf 10.pdf c.pdf d.pdf ");
    model->move({3}, 0);
    EXPECT_EQ(numbered(), "d.pdf 2.pdf 10.pdf c.pdf ");
    addPdfs({"a.pdf", "1.pdf"});
    EXPECT_EQ(numbered(), "d.pdf 2.pdf 10.pdf c.pdf a.pdf 1.pdf ") << "at the end, where it is looked for";
}

TEST_F(SourceList, WithoutAnUndoStackNothingIsRegistered)
{
    model->setUndoManager(nullptr);
    EXPECT_EQ(counts->take(), (Counts{{"undoManager", 1}}));
    addPdfs({"a.pdf"});
    model->removeAll();
    EXPECT_EQ(undo.count(), 0);
}

TEST_F(SourceList, AStackThatOutlivesTheModelDoesNothing)
{
    addPdfs({"a.pdf"});
    counts.reset();
    model.reset();
    undo.undo();
    undo.redo();
    EXPECT_EQ(undo.count(), 1);
}

} // namespace tallyfold
