#include "ui/panels/WindowPanels.h"

#include "tests/support/TemporaryFolder.h"

#include <QApplication>
#include <QDialog>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSplitter>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <gtest/gtest.h>

#include <functional>

namespace tallyfold {

namespace fs = std::filesystem;

namespace {

/// The panel for the output folder, open on a folder with two others in it, and one more beside it.
class FolderPanelTest : public testing::Test {
protected:
    FolderPanelTest() : m_state(QString::fromStdString((m_folder / "state.ini").native())), m_panels(m_state)
    {
        fs::create_directories(shown() / "inner");
        fs::create_directories(shown() / "other");
        fs::create_directories(sibling());
        m_state.setBytes(QStringLiteral("panel/folder"), QByteArray::fromStdString(shown().native()));
    }

    [[nodiscard]] fs::path shown() const
    {
        return m_folder / "shown";
    }

    [[nodiscard]] fs::path sibling() const
    {
        return m_folder / "shown beside";
    }

    /// What the panel gives when a user does `act` once it lists what it shows.
    std::vector<fs::path> chosenBy(const std::function<void(QDialog &)> &act)
    {
        QTimer::singleShot(0, [&act] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            QTRY_COMPARE(listOf(*dialog)->model()->rowCount(listOf(*dialog)->rootIndex()), 2);
            act(*dialog);
        });
        return m_panels.run(OpenPanel::forOutputFolder()).chosen;
    }

    static QListView *listOf(const QDialog &dialog)
    {
        return dialog.findChild<QListView *>(QStringLiteral("listView"));
    }

    static QLineEdit *fieldOf(const QDialog &dialog)
    {
        return dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    }

    static void write(const QDialog &dialog, const std::string &text)
    {
        QLineEdit *field = fieldOf(dialog);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QString::fromStdString(text));
        QTest::qWait(50); // The dialog looks up what is typed and selects it.
    }

    static void type(const QDialog &dialog, const std::string &text)
    {
        write(dialog, text);
        QTest::keyClick(fieldOf(dialog), Qt::Key_Return);
    }

    static void select(const QDialog &dialog, int row)
    {
        QListView *list = listOf(dialog);
        list->setCurrentIndex(list->model()->index(row, 0, list->rootIndex()));
    }

    tests::TemporaryFolder m_folder;
    WindowState m_state;
    WindowPanels m_panels;
};

} // namespace

TEST_F(FolderPanelTest, ATypedPathIsTheFolder)
{
    for (const fs::path &path : {sibling(), shown(), shown() / "inner", m_folder.path()}) {
        EXPECT_EQ(chosenBy([&](QDialog &dialog) { type(dialog, path.native()); }), std::vector{path}) << path;
    }
}

TEST_F(FolderPanelTest, ATypedPathIsTheFolderWhateverIsSelected)
{
    for (const fs::path &path : {sibling(), shown(), shown() / "inner"}) {
        const auto chosen = chosenBy([&](QDialog &dialog) {
            select(dialog, 1);
            type(dialog, path.native());
        });
        EXPECT_EQ(chosen, std::vector{path}) << path;
    }
}

// The dialog selects in its list what is typed, as far as it is typed, and may keep what it selected on the
// way: a folder above the one that is meant, or anything else.
TEST_F(FolderPanelTest, ATypedPathIsTheFolderAlsoWhereOthersStaySelected)
{
    for (const fs::path &other : {m_folder.path(), shown(), shown() / "other"}) {
        const auto chosen = chosenBy([&](QDialog &dialog) {
            write(dialog, sibling().native());
            QListView *list = listOf(dialog);
            auto *model = qobject_cast<QFileSystemModel *>(list->model());
            ASSERT_NE(model, nullptr);
            list->selectionModel()->clearSelection();
            for (const fs::path &path : {other, sibling()}) {
                list->selectionModel()->select(model->index(QString::fromStdString(path.native())),
                                               QItemSelectionModel::Select | QItemSelectionModel::Rows);
            }
            QTest::keyClick(fieldOf(dialog), Qt::Key_Return);
        });
        EXPECT_EQ(chosen, std::vector{sibling()}) << other;
    }
}

TEST_F(FolderPanelTest, ATypedNameIsOfTheFolderThatIsShown)
{
    EXPECT_EQ(chosenBy([](QDialog &dialog) { type(dialog, "other"); }), std::vector{shown() / "other"});
    EXPECT_EQ(chosenBy([](QDialog &dialog) { type(dialog, "../shown beside"); }), std::vector{sibling()});
}

TEST_F(FolderPanelTest, ASelectedFolderIsTheFolder)
{
    const auto chosen = chosenBy([](QDialog &dialog) {
        select(dialog, 0);
        dialog.accept();
    });
    EXPECT_EQ(chosen, std::vector{shown() / "inner"});
}

TEST_F(FolderPanelTest, WithNothingChosenTheShownFolderIsMeant)
{
    EXPECT_EQ(chosenBy([](QDialog &dialog) { dialog.accept(); }), std::vector{shown()});
}

TEST_F(FolderPanelTest, TheTitleIsShortAndTheSentenceStandsInside)
{
    (void)chosenBy([](QDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Output Folder"));
        const auto *message = dialog.findChild<QLabel *>(QStringLiteral("panelMessage"));
        EXPECT_NE(message, nullptr);
        if (message) {
            EXPECT_TRUE(message->isVisible());
            EXPECT_EQ(message->text(), OpenPanel::forOutputFolder().message);
            EXPECT_LT(message->mapTo(&dialog, QPoint()).y(), listOf(dialog)->mapTo(&dialog, QPoint()).y());
        }
        dialog.reject();
    });
}

TEST_F(FolderPanelTest, NamesAndDatesHaveTheRoomThatTheyNeed)
{
    (void)chosenBy([](QDialog &dialog) {
        const auto *list = dialog.findChild<QTreeView *>(QStringLiteral("treeView"));
        const auto needed = [list](int column) {
            return list->fontMetrics().horizontalAdvance(
                list->model()->index(0, column, list->rootIndex()).data().toString());
        };
        int shown = 0;
        for (int column = 0; column < list->model()->columnCount(); ++column) {
            shown += list->columnWidth(column);
        }
        EXPECT_EQ(shown, list->viewport()->width());
        constexpr int modified = 3;
        EXPECT_GE(list->columnWidth(modified), needed(modified));
        EXPECT_GE(list->columnWidth(0), needed(0));
        EXPECT_GT(list->columnWidth(0), list->viewport()->width() / 2) << "folders have no sizes and types";
        EXPECT_GE(dialog.findChild<QSplitter *>(QStringLiteral("splitter"))->sizes().at(0), 120);
        dialog.reject();
    });
}

TEST_F(FolderPanelTest, EscapeChoosesNothing)
{
    EXPECT_TRUE(chosenBy([](QDialog &dialog) { dialog.reject(); }).empty());
}

} // namespace tallyfold
