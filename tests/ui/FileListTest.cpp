#include "ui/list/FileList.h"

#include "app/UriList.h"
#include "tests/ui/Contrast.h"
#include "tests/ui/WindowFixture.h"
#include "ui/theme/Tones.h"

#include <QAccessible>
#include <QApplication>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>

namespace tallyfold {

namespace {

class FileListTest : public tests::WindowFixture {
protected:
    FileListView *view()
    {
        return find<FileListView>("files");
    }
    QAbstractItemModel *rows()
    {
        return view()->model();
    }

    /// What the row says to those who listen to it: all that it shows.
    std::string row(int place)
    {
        return rows()->index(place, 0).data(Qt::AccessibleTextRole).toString().toStdString();
    }

    void setOrder(FileOrder order)
    {
        StampSettings changed = stamp();
        changed.order = order;
        model().setStamp(changed);
    }

    /// Takes a row with the mouse and pulls it towards another one.
    void drag(int from, int to)
    {
        const QPoint start = view()->visualRect(rows()->index(from, 0)).center();
        const QPoint end = view()->visualRect(rows()->index(to, 0)).center();
        QTest::mousePress(view()->viewport(), Qt::LeftButton, {}, start);
        for (const QPoint point : {(start + end) / 2, end, end + QPoint(0, 2)}) {
            QMouseEvent move(QEvent::MouseMove, point, view()->viewport()->mapToGlobal(point), Qt::NoButton,
                             Qt::LeftButton, {});
            QApplication::sendEvent(view()->viewport(), &move);
        }
        QTest::mouseRelease(view()->viewport(), Qt::LeftButton, {}, end);
    }

    void select(const std::vector<int> &places)
    {
        view()->clearSelection();
        for (const int place : places) {
            view()->selectionModel()->setCurrentIndex(rows()->index(place, 0), QItemSelectionModel::Select);
        }
        view()->setFocus();
    }

    /// The files of the list as they are numbered.
    std::string numbered()
    {
        std::string names;
        for (int place = 0; place < rows()->rowCount(); ++place) {
            names += (place == 0 ? "" : " ") + rows()->index(place, 0).data().toString().toStdString();
        }
        return names;
    }

    void drop(const QByteArray &uriList, const char *target)
    {
        QMimeData data;
        data.setData(QStringLiteral("text/uri-list"), uriList);
        auto *widget = find<QWidget>(target);
        QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &enter);
        EXPECT_TRUE(enter.isAccepted());
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
        EXPECT_TRUE(find<FileList>("fileList")->isDropping());
        QDropEvent dropped(QPointF(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &dropped);
        EXPECT_FALSE(find<FileList>("fileList")->isDropping());
        QCoreApplication::processEvents();
    }
};

} // namespace

TEST_F(FileListTest, AnEmptyListInvitesToDropAndShowsNoHeaderAndNoTotals)
{
    EXPECT_FALSE(isShown("files"));
    EXPECT_FALSE(isShown("productionOrder"));
    EXPECT_FALSE(isShown("totals"));
    click("addPdfs");
    ASSERT_EQ(panels->asked.size(), 1U);
    EXPECT_EQ(panels->asked.front(), OpenPanel::forFiles());
}

TEST_F(FileListTest, RowsStandInProductionOrderUnderTheirHeader)
{
    addPdfs({"10.pdf", "2.pdf"}, 3);
    EXPECT_TRUE(isShown("productionOrder"));
    EXPECT_EQ(text("productionOrder"), "Production order");
    EXPECT_EQ(numbered(), "2.pdf 10.pdf");
    EXPECT_EQ(row(0), "2.pdf, 3 pages, ABC000001 – ABC000003");
    EXPECT_EQ(row(1), "10.pdf, 3 pages, ABC000004 – ABC000006");
}

TEST_F(FileListTest, AFileOfOneNumberedPageShowsOneNumber)
{
    addPdfs({"a.pdf"});
    EXPECT_EQ(row(0), "a.pdf, 1 page, ABC000001");
}

TEST_F(FileListTest, AProtectedFileShowsNeitherPagesNorNumbers)
{
    addSamples({"Sealed letter.pdf"});
    EXPECT_EQ(row(0), "Sealed letter.pdf, Won’t be stamped: Password-protected");
}

TEST_F(FileListTest, TheTotalsCountNumberedPagesAndSkippedFiles)
{
    addPdfs({"a.pdf"}, 2);
    addSamples({"Sealed letter.pdf"});
    EXPECT_EQ(text("totals"), "2 files, 2 pages");
    EXPECT_EQ(text("range"), "ABC000001 – ABC000002");
    EXPECT_EQ(text("skipped"), "1 skipped (listed in the index)");
    model().removeAll();
    addPdfs({"a.pdf"});
    EXPECT_FALSE(isShown("skipped"));
    edit([](StampSettings &settings) { settings.cover = CoverOption::skipNoNumber; });
    EXPECT_FALSE(isShown("range"));
    EXPECT_TRUE(isShown("skipped"));
}

TEST_F(FileListTest, WhatIsChosenIsTheModelsSelectionAndBack)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    select({0, 2});
    EXPECT_EQ(model().selection(), (QSet<QUuid>{model().sources()[0].id, model().sources()[2].id}));
    model().setSelection({model().sources()[1].id});
    EXPECT_EQ(view()->selectedIds(), model().selection());
}

TEST_F(FileListTest, TheSelectionStaysWithItsFilesWhenTheOrderChanges)
{
    addPdfs({"b.pdf", "a.pdf"});
    edit([](StampSettings &settings) { settings.order = FileOrder::manual; });
    select({0}); // b.pdf.
    edit([](StampSettings &settings) { settings.order = FileOrder::name; });
    ASSERT_EQ(view()->selectionModel()->selectedIndexes().size(), 1);
    EXPECT_EQ(view()->selectionModel()->selectedIndexes().first().row(), 1);
}

TEST_F(FileListTest, DeleteRemovesWhatIsChosenInOneStepThatCanBeUndone)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    select({0, 1});
    QTest::keyClick(view(), Qt::Key_Delete);
    EXPECT_EQ(listed(), "c.pdf");
    EXPECT_EQ(app->mainView().undoStack().undoText(), QStringLiteral("Remove Files"));
    QTest::keyClick(view(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(listed(), "a.pdf b.pdf c.pdf");
}

TEST_F(FileListTest, TheMenuOfARowRevealsAndRemovesThatFile)
{
    addPdfs({"a.pdf", "b.pdf"});
    const auto menu = find<FileList>("fileList")->menuOf(rows()->index(1, 0));
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_EQ(menu->actions()[0]->text(), QStringLiteral("&Show Original in File Manager"));
    EXPECT_TRUE(menu->actions()[1]->isSeparator());
    EXPECT_EQ(menu->actions()[2]->text(), QStringLiteral("&Remove from List"));
    menu->actions()[0]->trigger();
    EXPECT_EQ(desktop->revealed, std::vector{folder / "sources" / "b.pdf"});
    menu->actions()[2]->trigger();
    EXPECT_EQ(listed(), "a.pdf");
    app->mainView().undoStack().undo();
    EXPECT_EQ(listed(), "a.pdf b.pdf");
}

TEST_F(FileListTest, FilesAndFoldersCanBeDroppedOnTheEmptyListAndOnRows)
{
    pdf("deep/er/inside.pdf");
    drop(fileUri(folder / "sources" / "deep") + "\r\n", "fileList");
    EXPECT_EQ(listed(), "inside.pdf");
    drop(uriListOf({pdf("b.pdf"), folder / "output"}), "fileList");
    EXPECT_EQ(listed(), "inside.pdf b.pdf");
}

TEST_F(FileListTest, ADropFindsNamesThatAreNotText)
{
    const std::filesystem::path odd = pdf("a\xff\n\".pdf");
    drop(fileUri(odd), "fileList");
    ASSERT_EQ(model().sources().size(), 1U);
    EXPECT_EQ(model().sources().front().url, odd);
}

TEST_F(FileListTest, ADragThatLeavesTakesTheOutlineWithIt)
{
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), "file:///a.pdf");
    auto *list = find<FileList>("fileList");
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(list, &enter);
    EXPECT_TRUE(list->isDropping());
    QDragLeaveEvent leave;
    QApplication::sendEvent(list, &leave);
    EXPECT_FALSE(list->isDropping());
}

TEST_F(FileListTest, TextThatIsDraggedIsNotTaken)
{
    QMimeData data;
    data.setText(QStringLiteral("a.pdf"));
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(find<FileList>("fileList"), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(FileListTest, ARowThatIsDraggedMovesWhereTheOrderIsTheUsers)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    setOrder(FileOrder::manual);
    const std::unique_ptr<QMimeData> data(rows()->mimeData({rows()->index(2, 0)}));
    rows()->dropMimeData(data.get(), Qt::MoveAction, 0, 0, {});
    EXPECT_EQ(numbered(), "c.pdf a.pdf b.pdf");
}

// There is no undo for it, and numbers would go to other files by a slip of the hand.
TEST_F(FileListTest, ADragMovesNothingInAnyOtherOrderAndSaysWhy)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    for (const FileOrder order : {FileOrder::name, FileOrder::modified}) {
        setOrder(order);
        const std::string before = numbered();
        drag(2, 0);
        EXPECT_EQ(view()->selectedIds().size(), 1);
        EXPECT_TRUE(QToolTip::isVisible());
        EXPECT_EQ(QToolTip::text(),
                  QStringLiteral("To move files, choose “As listed (drag to reorder)” under "
                                 "“Cover pages and order”."));
        QToolTip::hideText();
        const std::unique_ptr<QMimeData> data(rows()->mimeData({rows()->index(2, 0)}));
        EXPECT_FALSE(rows()->dropMimeData(data.get(), Qt::MoveAction, 0, 0, {}));
        EXPECT_EQ(numbered(), before);
        EXPECT_EQ(stamp().order, order);
    }
}

TEST_F(FileListTest, AltAndTheArrowsMoveNothingInAnyOtherOrderAndSayWhy)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    select({1});
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
        QTest::keyClick(view(), key, Qt::AltModifier);
        EXPECT_EQ(numbered(), "a.pdf b.pdf c.pdf");
        EXPECT_EQ(stamp().order, FileOrder::name);
        EXPECT_TRUE(QToolTip::isVisible());
        QToolTip::hideText();
    }
}

TEST_F(FileListTest, AltAndTheArrowsMoveTheChosenRows)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    setOrder(FileOrder::manual);
    select({2});
    QTest::keyClick(view(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(numbered(), "a.pdf c.pdf b.pdf");
    QTest::keyClick(view(), Qt::Key_Up, Qt::AltModifier);
    QTest::keyClick(view(), Qt::Key_Up, Qt::AltModifier); // It is the first already.
    EXPECT_EQ(numbered(), "c.pdf a.pdf b.pdf");
    QTest::keyClick(view(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(numbered(), "a.pdf c.pdf b.pdf");
}

TEST_F(FileListTest, AltAndTheArrowsMoveTheCurrentRowWhereOthersOrNoneAreChosen)
{
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    setOrder(FileOrder::manual);
    for (const bool areOthersChosen : {false, true}) {
        view()->clearSelection();
        if (areOthersChosen) {
            select({0});
        }
        view()->setCurrentIndex(rows()->index(0, 0));
        view()->clearSelection();
        if (areOthersChosen) {
            view()->selectionModel()->select(rows()->index(2, 0), QItemSelectionModel::Select);
        }
        const std::string first = rows()->index(0, 0).data().toString().toStdString();
        view()->setFocus();
        QTest::keyClick(view(), Qt::Key_Down, Qt::AltModifier);
        EXPECT_EQ(rows()->index(1, 0).data().toString().toStdString(), first);
        ASSERT_EQ(model().selection().size(), 1) << "what was moved is what is chosen now";
        EXPECT_EQ(view()->selectionModel()->selectedIndexes(), QModelIndexList{rows()->index(1, 0)});
        EXPECT_EQ(view()->currentIndex().row(), 1);
    }
}

TEST_F(FileListTest, TheLinkOfAProtectedRowAnswersToTheMouse)
{
    addSamples({"Sealed letter.pdf"});
    addPdfs({"a.pdf"});
    const QModelIndex index = rows()->index(1, 0);
    const QRect place = view()->visualRect(index);
    const auto *delegate = qobject_cast<FileRowDelegate *>(view()->itemDelegate());
    const QRect link = delegate->rowOf(index, place.width()).link();
    ASSERT_FALSE(link.isNull());
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, link.translated(place.topLeft()).center());
    ASSERT_NE(app->help(), nullptr);
    EXPECT_TRUE(app->help()->isVisible());
    EXPECT_EQ(app->environment().helpRouter.topic(), QStringLiteral("password"));
}

TEST_F(FileListTest, TheLinkOfAChosenRowIsReadable)
{
    addPdfs({"a.pdf"});
    addSamples({"Sealed letter.pdf"});
    const QPalette before = QApplication::palette();
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        select({1});
        view()->setFocus();
        QTest::qWait(0);
        const QRect link = view()->link()->geometry();
        const QImage picture = view()->viewport()->grab(link).toImage();
        const QColor ground = picture.pixelColor(picture.width() - 1, 1);
        double best = 1;
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                best = std::max(best, tests::contrast(picture.pixelColor(x, y), ground));
            }
        }
        EXPECT_GE(best, 4);
        // No ink of another colour beneath or above it.
        const QColor linkInk = palette.color(QPalette::Link);
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                EXPECT_NE(picture.pixelColor(x, y), linkInk) << x << ',' << y;
            }
        }
    }
    QApplication::setPalette(before);
}

TEST_F(FileListTest, AChosenRowIsReadableWhereTheFocusIsElsewhere)
{
    addSamples({"Sealed letter.pdf"});
    const QPalette before = QApplication::palette();
    for (const QPalette &palette :
         {lightPalette(), darkPalette(), lightPalette(Contrast::high), darkPalette(Contrast::high)}) {
        QApplication::setPalette(palette);
        select({0});
        find<QLineEdit>("prefix")->setFocus();
        QTest::qWait(0);
        const QRect row = view()->visualRect(rows()->index(0, 0));
        const QImage picture = view()->viewport()->grab(row).toImage();
        const QColor ground = picture.pixelColor(row.width() / 2, 4);
        EXPECT_NE(ground, palette.color(QPalette::Base)) << "it is seen to be chosen";
        EXPECT_GE(tests::contrast(colorOf(Tone::text, palette), ground), 7);
        EXPECT_GE(tests::contrast(colorOf(Tone::warning, palette), ground), 3.2);
        const QRect link = view()->link()->geometry().translated(-row.topLeft());
        double best = 1;
        for (int x = link.left(); x <= link.right(); ++x) {
            for (int y = link.top(); y <= link.bottom(); ++y) {
                best = std::max(best, tests::contrast(picture.pixelColor(x, y), ground));
            }
        }
        EXPECT_GE(best, 5);
    }
    QApplication::setPalette(before);
}

TEST_F(FileListTest, NamesBeginInOneLineWithAndWithoutASymbol)
{
    addPdfs({"a.pdf"});
    addSamples({"Sealed letter.pdf"});
    const QImage picture = view()->viewport()->grab().toImage();
    const auto firstInk = [&](int place) {
        const QRect row = view()->visualRect(rows()->index(place, 0));
        const QColor ground = picture.pixelColor(row.right() - 2, row.top() + 2);
        const int afterSymbol = row.left() + 32;
        for (int x = afterSymbol; x < row.right(); ++x) {
            for (int y = row.top() + 6; y < row.top() + 22; ++y) {
                if (picture.pixelColor(x, y) != ground) {
                    return x;
                }
            }
        }
        return 0;
    };
    EXPECT_NEAR(firstInk(0), firstInk(1), 2);
}

TEST_F(FileListTest, FilesCanBeDroppedAnywhereOnTheWindow)
{
    drop("file://" + QByteArray::fromStdString(pdf("a.pdf")), "main");
    EXPECT_EQ(listed(), "a.pdf");
}

TEST_F(FileListTest, FilesAreNoTextForAField)
{
    QMimeData files;
    files.setData(QStringLiteral("text/uri-list"), "file:///a.pdf");
    files.setText(QStringLiteral("file:///a.pdf")); // As file managers do.
    QMimeData words;
    words.setText(QStringLiteral("ABC"));
    for (QLineEdit *field : app->mainView().findChildren<QLineEdit *>()) {
        QDragEnterEvent filesEnter(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, {});
        QApplication::sendEvent(field, &filesEnter);
        EXPECT_TRUE(find<FileList>("fileList")->isDropping()) << field->objectName().toStdString();
        QDragLeaveEvent leave;
        QApplication::sendEvent(&app->mainView(), &leave);
    }
    auto *prefix = find<QLineEdit>("prefix");
    QDragEnterEvent wordsEnter(QPoint(5, 5), Qt::CopyAction, &words, Qt::LeftButton, {});
    QApplication::sendEvent(prefix, &wordsEnter);
    EXPECT_TRUE(wordsEnter.isAccepted());
    EXPECT_FALSE(find<FileList>("fileList")->isDropping());
}

TEST_F(FileListTest, TheLinkOfAProtectedRowIsReachedByTab)
{
    addPdfs({"a.pdf"});
    addSamples({"Sealed letter.pdf"});
    select({0});
    EXPECT_FALSE(view()->link()->isVisible());
    select({1});
    ASSERT_TRUE(view()->link()->isVisible());
    view()->setFocus();
    QTest::keyClick(view(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), view()->link());
    QTest::keyClick(view()->link(), Qt::Key_Space);
    ASSERT_NE(app->help(), nullptr);
    EXPECT_TRUE(app->help()->isVisible());
}

TEST_F(FileListTest, CopiedFilesCanBePastedIntoAnotherProduction)
{
    addPdfs({"a.pdf", "b.pdf"});
    view()->selectAll();
    view()->setFocus();
    QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
    model().removeAll();
    view()->paste();
    EXPECT_EQ(listed(), "a.pdf b.pdf");
}

TEST_F(FileListTest, TheNumbersFollowWhatIsTyped)
{
    addPdfs({"a.pdf"}, 2);
    edit([](StampSettings &settings) { settings.prefix = QStringLiteral("X-"); });
    EXPECT_EQ(row(0), "a.pdf, 2 pages, X-000001 – X-000002");
}

TEST_F(FileListTest, NumbersThatNeedMoreRoomGetALineOfTheirOwn)
{
    addPdfs({"a.pdf"}, 2);
    const int before = view()->visualRect(rows()->index(0, 0)).height();
    edit([](StampSettings &settings) { settings.prefix = QString(40, QLatin1Char('W')); });
    QCoreApplication::processEvents();
    EXPECT_GT(view()->visualRect(rows()->index(0, 0)).height(), before);
}

TEST_F(FileListTest, TheReadersPlaceIsKeptWhenFilesAreAdded)
{
    std::vector<std::string> names;
    for (int number = 0; number < 60; ++number) {
        names.push_back("a" + std::to_string(number) + ".pdf");
    }
    addPdfs(names);
    view()->doItemsLayout();
    view()->verticalScrollBar()->setValue(300);
    addPdfs({"z.pdf"});
    EXPECT_EQ(view()->verticalScrollBar()->value(), 300);
}

TEST_F(FileListTest, RowsHaveTheHeightThatTheirTextsNeed)
{
    addPdfs({"a.pdf"});
    addSamples({"Board minutes.pdf", "Sealed letter.pdf"});
    edit([](StampSettings &settings) { settings.cover = CoverOption::skipNoNumber; });
    const auto *delegate = qobject_cast<FileRowDelegate *>(view()->itemDelegate());
    for (int place = 0; place < rows()->rowCount(); ++place) {
        const QModelIndex index = rows()->index(place, 0);
        EXPECT_EQ(view()->visualRect(index).height(),
                  delegate->rowOf(index, view()->viewport()->width()).height());
    }
}

} // namespace tallyfold
