#include "ui/panels/FilePanel.h"

#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/panels/FolderContents.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QTextDocument>

#include <gtest/gtest.h>

#include <fstream>

namespace tallyfold {

namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

class FilePanelTest : public testing::Test {
protected:
    FilePanelTest()
    {
        fs::create_directories(folder / "case 10");
        fs::create_directories(folder / "case 2");
        fs::create_directories(folder / ".hidden");
        for (const char *name :
             {"b.pdf", "a.PDF", "notes.txt", ".c.pdf", "case 2/inside.pdf", "odd\xff.pdf"}) {
            std::ofstream(folder / name) << "x";
        }
    }

    std::unique_ptr<FilePanel> open()
    {
        auto panel = std::make_unique<FilePanel>(OpenPanel::forFiles(), folder / ".");
        panel->show();
        return panel;
    }

    static QTreeView *list(const FilePanel &panel)
    {
        return panel.findChild<QTreeView *>(QStringLiteral("contents"));
    }

    static void select(const FilePanel &panel, const std::vector<int> &rows)
    {
        for (const int row : rows) {
            list(panel)->selectionModel()->select(list(panel)->model()->index(row, 0),
                                                  QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
    }

    static Paths names(const Paths &paths)
    {
        Paths last;
        for (const fs::path &path : paths) {
            last.push_back(path.filename());
        }
        return last;
    }

    static void typePath(const FilePanel &panel, const std::string &path)
    {
        auto *field = panel.findChild<QLineEdit *>(QStringLiteral("path"));
        field->setFocus();
        field->setText(QString::fromStdString(path));
        QTest::keyClick(field, Qt::Key_Return);
    }

    tests::TemporaryFolder folder;
};

} // namespace

TEST_F(FilePanelTest, FoldersStandBeforePdfsInNaturalOrderAndNothingElseIsThere)
{
    FolderContents contents;
    ASSERT_TRUE(contents.open(folder / "."));
    Paths listed;
    for (int row = 0; row < contents.rowCount(); ++row) {
        listed.push_back(contents.pathOf(contents.index(row, 0)).filename());
    }
    EXPECT_EQ(listed, (Paths{"case 2", "case 10", "a.PDF", "b.pdf", "odd\xff.pdf"}));
}

TEST_F(FilePanelTest, AFolderThatCannotBeReadLeavesTheListAsItIs)
{
    FolderContents contents;
    ASSERT_TRUE(contents.open(folder / "."));
    const int rows = contents.rowCount();
    EXPECT_FALSE(contents.open(folder / "nowhere"));
    EXPECT_EQ(contents.rowCount(), rows);
}

TEST_F(FilePanelTest, FilesAndFoldersAreChosenTogetherWithNamesThatAreNoText)
{
    const auto panel = open();
    select(*panel, {0, 2, 4});
    QTest::mouseClick(panel->findChild<QPushButton *>(QStringLiteral("add")), Qt::LeftButton);
    EXPECT_EQ(panel->result(), QDialog::Accepted);
    EXPECT_EQ(names(panel->chosen()), (Paths{"case 2", "a.PDF", "odd\xff.pdf"}));
}

TEST_F(FilePanelTest, WithNothingChosenThereIsNothingToAdd)
{
    const auto panel = open();
    auto *add = panel->findChild<QPushButton *>(QStringLiteral("add"));
    EXPECT_FALSE(add->isEnabled());
    select(*panel, {1});
    EXPECT_TRUE(add->isEnabled());
    list(*panel)->clearSelection();
    EXPECT_FALSE(add->isEnabled());
    panel->findChild<QLineEdit *>(QStringLiteral("path"))->setText(QStringLiteral("a.PDF"));
    EXPECT_TRUE(add->isEnabled()) << "a path is chosen as well";
    select(*panel, {0});
    Q_EMIT list(*panel)->activated(list(*panel)->model()->index(0, 0));
    EXPECT_EQ(panel->folder(), folder / "." / "case 2");
    EXPECT_FALSE(add->isEnabled()) << "in the next folder nothing is chosen yet";
}

TEST_F(FilePanelTest, ThePathOfTheShownFolderIsThatFolder)
{
    const auto panel = open();
    QTest::keyClick(panel->findChild<QLineEdit *>(QStringLiteral("path")), Qt::Key_Return);
    EXPECT_EQ(panel->result(), QDialog::Accepted);
    EXPECT_EQ(panel->chosen(), Paths{folder / "."});
}

TEST_F(FilePanelTest, OpeningAFolderGoesThereAndOpeningAFileTakesIt)
{
    const auto panel = open();
    Q_EMIT list(*panel)->activated(list(*panel)->model()->index(0, 0));
    EXPECT_EQ(panel->folder(), folder / "." / "case 2");
    Q_EMIT list(*panel)->activated(list(*panel)->model()->index(0, 0));
    EXPECT_EQ(panel->result(), QDialog::Accepted);
    EXPECT_EQ(names(panel->chosen()), Paths{"inside.pdf"});
}

TEST_F(FilePanelTest, APathCanBeTyped)
{
    const auto panel = open();
    typePath(*panel, (folder / "case 2").native());
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->folder(), folder / "case 2");
    typePath(*panel, "inside.pdf");
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(panel->chosen(), Paths{folder / "case 2" / "inside.pdf"});
}

TEST_F(FilePanelTest, APathThatLeadsNowhereStaysToBeMended)
{
    const auto panel = open();
    typePath(*panel, "no such file");
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(panel->findChild<QLineEdit *>(QStringLiteral("path"))->selectedText(),
              QStringLiteral("no such file"));
}

TEST_F(FilePanelTest, ALongNameIsCutInItsMiddleAndWidensNothing)
{
    const std::string name = std::string(195, 'W') + " <b>2.pdf";
    for (int number = 0; number < 60; ++number) { // Enough for a scroll bar as well.
        std::ofstream(folder / ("file " + std::to_string(number) + ".pdf")) << "x";
    }
    const auto before = open();
    const int width = list(*before)->columnWidth(FolderContents::nameColumn);
    const QSize size = before->size();
    std::ofstream(folder / name) << "x";
    const auto panel = open();
    EXPECT_EQ(panel->size(), size);
    EXPECT_EQ(list(*panel)->columnWidth(FolderContents::nameColumn), width);
    EXPECT_FALSE(list(*panel)->horizontalScrollBar()->isVisible());
    EXPECT_EQ(list(*panel)->textElideMode(), Qt::ElideMiddle);
    const QAbstractItemModel *model = list(*panel)->model();
    const QModelIndex index = model->match(model->index(0, 0), Qt::DisplayRole, QStringLiteral("WWW")).at(0);
    QTextDocument help;
    help.setHtml(index.data(Qt::ToolTipRole).toString());
    EXPECT_EQ(help.toPlainText().remove(QChar(0x200b)).toStdString(), name);
}

TEST_F(FilePanelTest, TypingGoesToTheNameThatBeginsSo)
{
    const auto panel = open();
    QTest::keyClicks(list(*panel), QStringLiteral("b"));
    EXPECT_EQ(list(*panel)->currentIndex().data().toString(), QStringLiteral("b.pdf"));
    QTest::qWait(QApplication::keyboardInputInterval() + 100);
    QTest::keyClicks(list(*panel), QStringLiteral("case 1"));
    EXPECT_EQ(list(*panel)->currentIndex().data().toString(), QStringLiteral("case 10"));
    QTest::keyClick(list(*panel), Qt::Key_Return);
    EXPECT_EQ(panel->folder(), folder / "." / "case 10") << "and Return opens it";
}

TEST_F(FilePanelTest, EscapeChoosesNothing)
{
    const auto panel = open();
    QTest::keyClick(panel.get(), Qt::Key_Escape);
    EXPECT_EQ(panel->result(), QDialog::Rejected);
}

} // namespace tallyfold
