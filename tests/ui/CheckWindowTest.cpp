#include "ui/check/CheckWindow.h"

#include "app/UriList.h"
#include "tests/app/FinishedProduction.h"
#include "tests/ui/WindowFixture.h"
#include "ui/sheets/Alert.h"

#include <QAccessible>
#include <QMenuBar>
#include <QMimeData>
#include <QSignalSpy>

#include <atomic>
#include <fstream>
#include <thread>

namespace tallyfold {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace {

class CheckWindowTest : public tests::WindowFixture {
protected:
    CheckWindowTest()
    {
        QLocale::setDefault(QLocale(QStringLiteral("en_US")));
        tests::makeProduction(production, {{"a.pdf", 3}, {"b.pdf", 2}});
    }
    ~CheckWindowTest() override
    {
        QLocale::setDefault(m_usual);
    }

    CheckWindow &open()
    {
        app->openWindow(WindowId::check);
        EXPECT_TRUE(QTest::qWaitForWindowActive(app->check()));
        return *app->check();
    }
    /// Opens the window with the production's folder, and lets it be checked to its end.
    CheckWindow &check()
    {
        CheckWindow &window = open();
        panels->answer = {production};
        click("addFirstFolder");
        click("startCheck");
        EXPECT_TRUE(waitUntil([&] { return isShown("verdict"); }));
        return window;
    }
    /// The rows of the table, cells separated by bars; columns that are hidden are left out.
    QStringList rows()
    {
        const auto *view = find<QTreeView>("findings");
        QStringList all;
        for (int row = 0; row < view->model()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < view->model()->columnCount(); ++column) {
                if (!view->isColumnHidden(column)) {
                    cells.append(view->model()->index(row, column).data().toString());
                }
            }
            all.append(cells.join(u'|'));
        }
        return all;
    }
    void truncate(const char *name)
    {
        fs::resize_file(production / name, 200);
    }
    /// Damages the production in four ways.
    void damage()
    {
        fs::remove(production / "b.pdf");
        truncate("a.pdf");
        std::ofstream(production / "c.pdf") << "no PDF";
        std::ofstream(production / "Production Index.csv", std::ios::app) << "what,is,this\r\n";
    }
    /// Restarts the program with a check that finds `outcome`.
    void restartWith(const check::Outcome &outcome)
    {
        restartWith([outcome](auto, const auto &, const auto &) { return outcome; });
    }
    void restartWith(CheckModel::Checker withChecker)
    {
        checker = std::move(withChecker);
        restart();
    }

    const fs::path production = folder / "Production 3";
    const QLocale m_usual;
};

/// Lets a check go on for as long as nobody stops it.
CheckModel::Checker endless()
{
    return [](std::span<const fs::path>, const check::ShowProgress &show, const std::stop_token &givenUp) {
        show({u"a.pdf"_s, 1200, 40'212});
        while (!givenUp.stop_requested()) {
            std::this_thread::yield();
        }
        check::Outcome outcome;
        outcome.copies = 1;
        outcome.isStopped = true;
        return outcome;
    };
}

} // namespace

TEST_F(CheckWindowTest, IsOpenedFromTheMenuOnce)
{
    auto *command = app->mainView().menuBar()->findChild<QAction *>(QStringLiteral("checkProduction"));
    for (QAction *top : app->mainView().menuBar()->actions()) {
        for (QAction *entry : top->menu()->actions()) {
            command = entry->objectName() == u"checkProduction" ? entry : command;
        }
    }
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->text().remove(u'&'), u"Check a Production…"_s);
    command->trigger();
    CheckWindow *first = app->check();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(waitUntil([&] { return first->isActiveWindow(); }));
    app->mainView().activateWindow();
    EXPECT_TRUE(waitUntil([&] { return app->mainView().isActiveWindow(); }));
    command->trigger();
    EXPECT_EQ(app->check(), first);
    EXPECT_TRUE(waitUntil([&] { return first->isActiveWindow(); }));
    EXPECT_FALSE(first->isModal());
}

TEST_F(CheckWindowTest, SaysOfAWholeProductionThatEverythingIsThere)
{
    CheckWindow &window = check();
    EXPECT_EQ(text("verdict"),
              "Everything is there: 2 copies, 5 pages, ABC000001 – ABC000005, no gap, no number twice.");
    EXPECT_EQ(find<SymbolLabel>("verdict")->symbol(), u"checkmark.circle.fill"_s);
    EXPECT_FALSE(isShown("findings"));
    EXPECT_TRUE(text("checked").ends_with(": Production 3")) << text("checked");
    EXPECT_EQ(panels->asked.back(), OpenPanel::forProduction());
    EXPECT_EQ(window.windowTitle(), u"Check a Production"_s);
    EXPECT_EQ(window.focusWidget(), find<QWidget>("saveReport"));
}

TEST_F(CheckWindowTest, ListsWhatIsWrong)
{
    damage();
    check();
    EXPECT_TRUE(text("verdict").starts_with("Not whole: 4 findings.")) << text("verdict");
    EXPECT_EQ(text("indexed"), "The index names 2 copies, 5 pages, ABC000001 – ABC000005.");
    EXPECT_EQ(
        rows(),
        QStringList({u"Production Index.csv||Row 4 isn’t understood; what it names wasn’t looked at."_s,
                     u"c.pdf||The index doesn’t name this file."_s, u"a.pdf||It can’t be read as a PDF."_s,
                     u"b.pdf||The index names it, and it isn’t in the folder."_s}));
    EXPECT_EQ(find<QWidget>("check")->focusWidget(), find<QWidget>("findings"));
}

TEST_F(CheckWindowTest, SeveralFoldersHaveAColumnOfTheirOwn)
{
    StampSettings next;
    next.startNumber = 9;
    const fs::path second = folder / "Production 4";
    tests::makeProduction(second, {{"a.pdf", 1}}, next);
    CheckWindow &window = open();
    window.model().add(std::vector{production, second});
    QTest::keyClick(&window, Qt::Key_Return); // Check is the default.
    ASSERT_TRUE(waitUntil([&] { return isShown("verdict"); }));
    EXPECT_EQ(rows(),
              QStringList(u"Production 4|a.pdf||Before this copy, ABC000006 – ABC000008 are missing."_s));
}

TEST_F(CheckWindowTest, FindingsCanBeCutDownToOneKind)
{
    damage();
    check();
    auto *kinds = find<Picker>("findingKinds");
    QStringList titles;
    for (int row = 0; row < kinds->count(); ++row) {
        titles.append(kinds->itemText(row));
    }
    EXPECT_EQ(titles,
              QStringList({u"All findings (4)"_s, u"Missing copies (1)"_s, u"Unreadable copies (1)"_s,
                           u"Files not in the index (1)"_s, u"Rows of the index not understood (1)"_s}));
    kinds->setFocus();
    QTest::keyClick(kinds, Qt::Key_Down);
    EXPECT_EQ(rows(), QStringList(u"b.pdf||The index names it, and it isn’t in the folder."_s));
    QTest::keyClick(kinds, Qt::Key_Up);
    EXPECT_EQ(rows().size(), 4);
}

TEST_F(CheckWindowTest, ColumnsSortByWhatTheyAre)
{
    check::Outcome outcome;
    outcome.copies = 2;
    for (const std::int64_t page : {10, 9, 100}) {
        outcome.findings.push_back({0, u"a.pdf"_s, page, check::NumberMissing{u"A"_s}});
    }
    outcome.findings.push_back({0, u"b.pdf"_s, std::nullopt, check::CopyMissing{}});
    restartWith(outcome);
    check();
    auto *view = find<QTreeView>("findings");
    const auto pages = [&] {
        QStringList all;
        for (const QString &row : rows()) {
            all.append(row.section(u'|', 1, 1));
        }
        return all.join(u' ');
    };
    EXPECT_EQ(pages(), u"10 9 100 "_s);
    view->sortByColumn(FindingsModel::pageColumn, Qt::AscendingOrder);
    EXPECT_EQ(pages(), u" 9 10 100"_s);
    view->sortByColumn(FindingsModel::whatColumn, Qt::AscendingOrder);
    EXPECT_EQ(pages(), u" 9 10 100"_s) << "findings of one kind stay as they were sorted before";
    view->sortByColumn(FindingsModel::fileColumn, Qt::DescendingOrder);
    EXPECT_EQ(pages(), u" 100 9 10"_s);
}

TEST_F(CheckWindowTest, EscapeStopsACheckAndThenCloses)
{
    restartWith(endless());
    CheckWindow &window = open();
    window.model().add(std::vector{production});
    click("startCheck");
    EXPECT_TRUE(waitUntil([&] { return text("checkPages") == "1,200 of 40,212 pages"; }));
    EXPECT_EQ(text("checkReading"), "Reading “a.pdf”");
    EXPECT_EQ(window.focusWidget(), find<QWidget>("stopCheck"));
    EXPECT_FALSE(find<QWidget>("startCheck")->isEnabled());
    EXPECT_FALSE(find<QWidget>("addCheckFolder")->isEnabled());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    ASSERT_TRUE(waitUntil([&] { return isShown("verdict"); }));
    EXPECT_EQ(text("verdict"), "Stopped: not everything was checked. Nothing wrong was found until then.");
    EXPECT_EQ(find<SymbolLabel>("verdict")->symbol(), u"stop.circle"_s);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(CheckWindowTest, ClosingStopsACheckAndKeepsWhatItFound)
{
    restartWith(endless());
    CheckWindow &window = open();
    window.model().add(std::vector{production});
    click("startCheck");
    window.close();
    EXPECT_TRUE(window.model().isStopping());
    EXPECT_TRUE(waitUntil([&] { return !window.model().isRunning(); }));
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(&open(), &window);
    EXPECT_TRUE(isShown("verdict"));
}

TEST_F(CheckWindowTest, QuittingWhileACheckRunsWaitsForNothing)
{
    restartWith(endless());
    open().model().add(std::vector{production});
    click("startCheck");
    app.reset();
    EXPECT_TRUE(waitUntil([] { return !LooseTask::isAnyLeft(); }));
}

TEST_F(CheckWindowTest, FoldersAreAddedAndRemoved)
{
    CheckWindow &window = open();
    EXPECT_TRUE(isShown("addFirstFolder"));
    EXPECT_FALSE(isShown("startCheck"));
    panels->answer = {};
    click("addFirstFolder"); // Cancelled.
    EXPECT_TRUE(isShown("addFirstFolder"));
    panels->answer = {production};
    click("addFirstFolder");
    EXPECT_TRUE(isShown("startCheck"));
    panels->answer = {output};
    click("addCheckFolder");
    auto *list = find<QListWidget>("checkFolders");
    EXPECT_EQ(list->count(), 2);
    EXPECT_FALSE(find<QWidget>("removeCheckFolder")->isEnabled());
    list->setCurrentRow(0);
    click("removeCheckFolder");
    EXPECT_EQ(window.model().folders(), std::vector{output});
    list->setFocus();
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_TRUE(window.model().folders().empty());
    EXPECT_TRUE(isShown("addFirstFolder"));
}

TEST_F(CheckWindowTest, AFolderThatCannotBeFoundIsToldOf)
{
    CheckWindow &window = open();
    panels->lost = QStringList(u"caf\ufffd"_s);
    click("addFirstFolder");
    EXPECT_TRUE(window.model().folders().empty());
    ASSERT_TRUE(isShown("checkAlert"));
    EXPECT_NE(text("alertText").find("caf\ufffd"), std::string::npos);
}

TEST_F(CheckWindowTest, TakesFoldersThatAreDroppedOnIt)
{
    CheckWindow &window = open();
    QMimeData data;
    data.setData(u"text/uri-list"_s, uriListOf({production, output}));
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                          Qt::ShiftModifier);
    QApplication::sendEvent(&window, &enter);
    EXPECT_TRUE(enter.isAccepted());
    EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
    QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(&window, &drop);
    EXPECT_EQ(window.model().folders(), (std::vector{production, output}));
}

TEST_F(CheckWindowTest, AVerdictOnOtherFoldersSaysSo)
{
    CheckWindow &window = check();
    EXPECT_FALSE(isShown("otherFolders"));
    window.model().add(std::vector{output});
    EXPECT_TRUE(isShown("otherFolders"));
    EXPECT_TRUE(text("checked").ends_with(": Production 3"));
    window.model().remove({0, 1});
    EXPECT_TRUE(isShown("verdict")) << "what was found is not lost with the list";
    EXPECT_TRUE(isShown("otherFolders"));
}

TEST_F(CheckWindowTest, ReturnAndDoubleClickShowThePage)
{
    check::Outcome outcome;
    outcome.copies = 2;
    outcome.findings = {{0, u"a.pdf"_s, 2, check::NumberMissing{u"ABC000002"_s}},
                        {0, u"b.pdf"_s, std::nullopt, check::PageCountDiffers{3, 2}},
                        {0, u"gone.pdf"_s, std::nullopt, check::CopyMissing{}}};
    restartWith(outcome);
    CheckWindow &window = check();
    auto *view = find<QTreeView>("findings");
    const QSignalSpy running(&window.model(), &CheckModel::runningChanged);
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_EQ(running.count(), 0) << "the key is not the window's";
    CopyViewer *viewer = window.viewer();
    ASSERT_NE(viewer, nullptr);
    ASSERT_TRUE(waitUntil([&] { return !viewer->isDrawing(); }));
    EXPECT_TRUE(viewer->isVisible());
    EXPECT_EQ(text("copyPageNumber"), "Page 2 of 3");
    EXPECT_EQ(text("copyName"), "a.pdf");
    EXPECT_EQ(text("copyNote"), "ABC000002 isn’t on the page.");
    EXPECT_FALSE(find<PreviewImage>("copyPage")->image().isNull());

    const QModelIndex second = view->model()->index(1, FindingsModel::fileColumn);
    view->setCurrentIndex(second);
    const QPoint place = view->visualRect(second).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(waitUntil([&] { return !viewer->isDrawing(); }));
    EXPECT_EQ(window.viewer(), viewer);
    EXPECT_EQ(text("copyPageNumber"), "Page 1 of 2");
    view->setCurrentIndex(view->model()->index(2, FindingsModel::fileColumn));
    EXPECT_FALSE(find<QWidget>("showPage")->isEnabled());
    QTest::keyClick(viewer, Qt::Key_Escape);
    EXPECT_FALSE(viewer->isVisible());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(CheckWindowTest, PagesAreTurned)
{
    CheckWindow &window = open();
    CopyViewer viewer(&window);
    viewer.showPage(production, u"a.pdf"_s, 1, {});
    viewer.show();
    const auto wait = [&] { return waitUntil([&] { return !viewer.isDrawing(); }); };
    ASSERT_TRUE(wait());
    EXPECT_FALSE(find<QWidget>("previousPage")->isEnabled());
    click("nextPage");
    EXPECT_EQ(text("copyPageNumber"), "Page 2 of 3");
    click("nextPage");
    ASSERT_TRUE(wait());
    EXPECT_EQ(text("copyPageNumber"), "Page 3 of 3");
    EXPECT_FALSE(find<QWidget>("nextPage")->isEnabled());
    EXPECT_EQ(find<QWidget>("copyPage")->accessibleName(), u"Page 3 of 3"_s);
    click("previousPage");
    ASSERT_TRUE(wait());
    fs::remove(production / "a.pdf");
    click("previousPage");
    ASSERT_TRUE(wait());
    EXPECT_EQ(text("copyProblem"), "The copy isn’t there any more, or can’t be read.");
    EXPECT_FALSE(find<QWidget>("nextPage")->isEnabled());
}

TEST_F(CheckWindowTest, AReportIsSavedWhereTheUserSays)
{
    damage();
    fs::path asked;
    QString name;
    askForReport = [&](const fs::path &in, const QString &suggested, QWidget *) {
        asked = in;
        name = suggested;
        return std::optional(folder / "report.csv");
    };
    restart();
    check();
    click("saveReport");
    ASSERT_TRUE(waitUntil([&] { return !text("reportSaved").empty(); }));
    EXPECT_EQ(text("reportSaved"), "Saved “report.csv”.");
    EXPECT_EQ(asked, folder.path());
    EXPECT_TRUE(name.startsWith(u"Production Check 20"_s));
    EXPECT_TRUE(fs::exists(folder / "report.csv"));
    click("revealReport");
    EXPECT_EQ(desktop->revealed, std::vector{folder / "report.csv"});
}

TEST_F(CheckWindowTest, ACancelledReportWritesNothing)
{
    askForReport = [](const fs::path &, const QString &, QWidget *) { return std::nullopt; };
    restart();
    check();
    click("saveReport");
    EXPECT_EQ(text("reportSaved"), "");
    EXPECT_FALSE(isShown("revealReport"));
}

TEST_F(CheckWindowTest, AReportThatCannotBeSavedSaysWhy)
{
    fs::path answer = folder / "nowhere" / "r.pdf";
    askForReport = [&](const fs::path &, const QString &, QWidget *) { return std::optional(answer); };
    restart();
    check();
    click("saveReport");
    ASSERT_TRUE(waitUntil([&] { return isShown("checkAlert"); }));
    EXPECT_EQ(
        text("alertText"),
        "The report couldn’t be written: No such file or directory. What was there before is as it was.");
    find<Alert>("checkAlert")->close();
    ASSERT_TRUE(waitUntil([&] { return !isShown("checkAlert"); }));
    answer = production / "r.pdf";
    click("saveReport");
    ASSERT_TRUE(waitUntil([&] { return isShown("checkAlert"); }));
    EXPECT_EQ(text("alertText"),
              "Nothing is written into a folder that was checked. Choose another place for the report.");
    EXPECT_FALSE(fs::exists(answer));
}

TEST_F(CheckWindowTest, AHashListIsWrittenOnlyWhenItIsWanted)
{
    const fs::path list = production / "Production Hashes.sha256";
    check();
    click("writeHashes");
    clickTitled(find<Alert>("hashesAlert"), u"Cancel"_s);
    EXPECT_FALSE(fs::exists(list));
    click("writeHashes");
    clickTitled(find<Alert>("hashesAlert"), u"Write"_s);
    ASSERT_TRUE(waitUntil([&] { return !text("reportSaved").empty(); }));
    EXPECT_EQ(text("reportSaved"), "Wrote the hashes of 3 files.");
    EXPECT_TRUE(fs::exists(list));
    click("revealReport");
    EXPECT_EQ(desktop->revealed, std::vector{list});
    ASSERT_TRUE(waitUntil([] { return !isShown("hashListView"); }));
    click("writeHashes");
    clickTitled(find<Alert>("hashesAlert"), u"Write"_s);
    ASSERT_TRUE(waitUntil([&] { return isShown("checkAlert"); }));
    EXPECT_EQ(find<Alert>("checkAlert")->findChild<QLabel *>(u"alertText"_s)->text(),
              u"There is a hash list in the folder already, which was left as it is."_s);
}

TEST_F(CheckWindowTest, AHashListIsOfferedForWholeProductionsAlone)
{
    damage();
    check();
    EXPECT_FALSE(isShown("writeHashes"));
    restartWith(check::Outcome()); // Of no copy.
    check();
    EXPECT_FALSE(isShown("writeHashes"));
}

TEST_F(CheckWindowTest, AHundredThousandFindingsAreShownWithoutDelay)
{
    check::Outcome outcome;
    outcome.copies = 1000;
    for (int number = 0; number < 100'000; ++number) {
        const QString name = u"copy %1.pdf"_s.arg(number / 100);
        if (number % 2 == 0) {
            outcome.findings.push_back({0, name, number % 100 + 1, check::NumberMissing{u"A"_s}});
        } else {
            outcome.findings.push_back({0, name, number % 100 + 1, check::OtherNumber{u"A"_s, u"B"_s}});
        }
    }
    restartWith(outcome);
    QElapsedTimer timer;
    CheckWindow &window = check();
    auto *view = find<QTreeView>("findings");
    ASSERT_EQ(view->model()->rowCount(), 100'000);
    timer.start();
    view->sortByColumn(FindingsModel::whatColumn, Qt::DescendingOrder);
    view->sortByColumn(FindingsModel::pageColumn, Qt::AscendingOrder);
    window.grab();
    EXPECT_LT(timer.elapsed(), 4000);
    timer.restart();
    auto *kinds = find<Picker>("findingKinds");
    Q_EMIT kinds->picked(kinds->itemData(1));
    window.grab();
    EXPECT_EQ(view->model()->rowCount(), 50'000);
    EXPECT_LT(timer.elapsed(), 2000);
}

TEST_F(CheckWindowTest, TheVerdictIsToldToThoseWhoDoNotSeeIt)
{
    check();
    QAccessibleInterface *verdict =
        QAccessible::queryAccessibleInterface(find<SymbolLabel>("verdict")->findChild<QLabel *>());
    ASSERT_NE(verdict, nullptr);
    EXPECT_EQ(verdict->role(), QAccessible::Notification);
    EXPECT_EQ(verdict->text(QAccessible::Name).left(19), u"Everything is there"_s);
}

TEST_F(CheckWindowTest, TabReachesEveryControl)
{
    damage();
    CheckWindow &window = check();
    find<QTreeView>("findings")
        ->setCurrentIndex(find<QTreeView>("findings")->model()->index(1, FindingsModel::fileColumn));
    find<QListWidget>("checkFolders")->setCurrentRow(0);
    QStringList reached;
    for (int step = 0; step < 20; ++step) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        reached.append(window.focusWidget()->objectName());
    }
    for (const char *name : {"checkFolders", "addCheckFolder", "removeCheckFolder", "startCheck",
                             "findingKinds", "findings", "showPage", "saveReport"}) {
        EXPECT_TRUE(reached.contains(QLatin1String(name))) << name;
    }
}

TEST_F(CheckWindowTest, LongNamesWidenNothing)
{
    check::Outcome outcome;
    outcome.copies = 1;
    outcome.numbers = {{QString(60, u'W') + u"1"_s, QString(60, u'W') + u"9"_s, 9}};
    outcome.findings = {{0, QString(200, u'W') + u".pdf"_s, 1, check::NumberMissing{QString(80, u'W')}}};
    restartWith(outcome);
    CheckWindow &window = check();
    EXPECT_LE(window.minimumSizeHint().width(), 520);
    window.resize(520, 440);
    EXPECT_EQ(window.width(), 520);
}

} // namespace tallyfold
