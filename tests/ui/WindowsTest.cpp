#include "tests/ui/WindowFixture.h"
#include "ui/preview/PreviewPane.h"
#include "ui/sheets/Alert.h"
#include "ui/shell/AboutPanel.h"

#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace tallyfold {

namespace {

class Windows : public tests::WindowFixture {
protected:
    /// The titles of the entries of the menu called `title`, "-" for lines.
    QStringList entriesOf(const QString &title)
    {
        QStringList entries;
        for (const QAction *entry : menu(title)->actions()) {
            entries.append(entry->isSeparator() ? QStringLiteral("-") : entry->text());
        }
        return entries;
    }
    QMenu *menu(const QString &title)
    {
        for (const QAction *top : app->mainView().menuBar()->actions()) {
            if (top->text() == title) {
                return top->menu();
            }
        }
        return nullptr;
    }
    QAction *entry(const QString &menuTitle, const QString &title)
    {
        for (QAction *action : menu(menuTitle)->actions()) {
            if (action->text() == title) {
                return action;
            }
        }
        ADD_FAILURE() << "there is no " << title.toStdString();
        return nullptr;
    }
    QStringList presets()
    {
        QStringList titles;
        for (const QAction *action : app->mainView().presetMenu().actions()) {
            titles.append(action->isSeparator() ? u'-' + action->text() : action->text());
        }
        return titles;
    }
};

const QString file = QStringLiteral("&File");
const QString editMenu = QStringLiteral("&Edit");
const QString production = QStringLiteral("&Production");
const QString help = QStringLiteral("&Help");

} // namespace

TEST_F(Windows, TheMenusHaveTheirCommandsInOrder)
{
    EXPECT_EQ(entriesOf(file).join(u'|'),
              QStringLiteral("Add PDFs…|Add Folder…|-|Close Window|Quit Tallyfold"));
    EXPECT_EQ(entriesOf(editMenu).join(u'|'),
              QStringLiteral("Undo|Redo|-|Cut|Copy|Paste|Delete|Select All|-|Settings…"));
    EXPECT_EQ(entriesOf(production).join(u'|'),
              QStringLiteral("Stamp|Choose Output Folder…|Start Next Production|-|Check a "
                             "Production…|-|Remove Selected Files|Remove All Files"));
    EXPECT_EQ(entriesOf(help).join(u'|'),
              QStringLiteral("Tallyfold Help|About Tallyfold|Check for Updates…"));
}

TEST_F(Windows, CommandsOfTheEditMenuAreForWhatHadTheFocusBeforeTheMenu)
{
    addPdfs({"a.pdf", "b.pdf"});
    find<QWidget>("files")->setFocus();
    app->mainView().menuBar()->setFocus(Qt::MenuBarFocusReason); // As the key Alt does it.
    ASSERT_EQ(QApplication::focusWidget(), app->mainView().menuBar());
    EXPECT_TRUE(entry(editMenu, QStringLiteral("Select All"))->isEnabled());
    EXPECT_TRUE(entry(editMenu, QStringLiteral("Delete"))->isEnabled());
    entry(editMenu, QStringLiteral("Select All"))->trigger();
    entry(editMenu, QStringLiteral("Delete"))->trigger();
    EXPECT_EQ(listed(), "");
}

TEST_F(Windows, TheFirstSizeHasRoomOnTheScreen)
{
    EXPECT_EQ(MainView::firstSizeOn({3840, 2160}), QSize(1240, 800));
    EXPECT_EQ(MainView::firstSizeOn({1366, 768}).width(), 1240);
    EXPECT_LE(MainView::firstSizeOn({1366, 768}).height(), 768 - 40) << "a title bar has to have room";
    EXPECT_LT(MainView::firstSizeOn({1024, 768}).width(), 1024);
    EXPECT_EQ(MainView::firstSizeOn({640, 480}), app->mainView().minimumSize());
}

TEST_F(Windows, WhatHasTheFocusIsInSightWhereverAStepLeads)
{
    addPdfs({"a.pdf"});
    edit([](StampSettings &settings) { settings.legend = QStringLiteral("SECRET"); });
    app->mainView().activateWindow();
    const auto *form = find<QScrollArea>("stampForm");
    form->verticalScrollBar()->setValue(form->verticalScrollBar()->maximum());
    find<QWidget>("files")->setFocus();
    int steps = 0;
    for (int step = 0; step < 60; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const QWidget *focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        if (form->widget()->isAncestorOf(focus)) {
            const QRect place(focus->mapTo(form->viewport(), QPoint(0, 0)), focus->size());
            EXPECT_TRUE(form->viewport()->rect().contains(place)) << focus->objectName().toStdString();
            ++steps;
        }
    }
    EXPECT_GT(steps, 10);
}

TEST_F(Windows, ThereAreThreeColumnsAndNothingBesideThem)
{
    EXPECT_EQ(find<QSplitter>("columns")->count(), 3);
}

TEST_F(Windows, OnALargeScreenTheFormStaysAsWideAsItIsRead)
{
    app->mainView().resize(3840, 2160);
    QTest::qWait(0);
    const QList<int> columns = find<QSplitter>("columns")->sizes();
    EXPECT_LE(columns[1], 640);
    EXPECT_GE(columns[1], 560);
}

TEST_F(Windows, TheHelpIsTitledByWhatItIs)
{
    app->openWindow(WindowId::help);
    EXPECT_EQ(app->help()->windowTitle(), QStringLiteral("Help")); // The system adds the program's name.
}

TEST_F(Windows, EveryEntryOfAMenuHasALetterOfItsOwn)
{
    addPdfs({"a.pdf"});
    for (const QString &title : {file, editMenu, production, help}) {
        QSet<QChar> letters;
        for (int opened = 0; opened < 2; ++opened) {
            Q_EMIT menu(title)->aboutToShow();
            letters.clear();
            for (const QAction *action : menu(title)->actions()) {
                if (action->isSeparator()) {
                    continue;
                }
                const QString text = action->text();
                ASSERT_EQ(text.count(u'&'), 1) << text.toStdString();
                const QChar letter = text[text.indexOf(u'&') + 1].toLower();
                EXPECT_FALSE(letters.contains(letter)) << text.toStdString();
                letters.insert(letter);
            }
        }
        EXPECT_GE(letters.size(), 3);
    }
}

TEST_F(Windows, EveryPresetHasALetterOfItsOwnAndItsNameStaysAsItIs)
{
    model().savePreset(QStringLiteral("Smith & Jones"));
    Q_EMIT app->mainView().presetMenu().aboutToShow();
    QSet<QChar> letters;
    for (const QAction *action : app->mainView().presetMenu().actions()) {
        if (action->isSeparator()) {
            continue;
        }
        QString text = action->text();
        text.replace(QStringLiteral("&&"), QStringLiteral("+"));
        ASSERT_EQ(text.count(u'&'), 1) << text.toStdString();
        letters.insert(text[text.indexOf(u'&') + 1].toLower());
    }
    EXPECT_EQ(letters.size(), 5) << "three to start with, one saved, and the entry that saves";
    EXPECT_EQ(app->mainView().presetMenu().actions()[5]->text().remove(u'&'), QStringLiteral("Smith  Jones"));
}

TEST_F(Windows, CommandsAnswerToTheirKeys)
{
    const auto keys = [&](const QString &where, const char *title) {
        return entry(where, QString::fromUtf8(title))->shortcut().toString(QKeySequence::PortableText);
    };
    EXPECT_EQ(keys(file, "Add PDFs…"), QStringLiteral("Ctrl+O"));
    EXPECT_EQ(keys(file, "Close Window"), QStringLiteral("Ctrl+W"));
    EXPECT_EQ(keys(production, "Stamp"), QStringLiteral("Ctrl+Return"));
    EXPECT_EQ(keys(production, "Choose Output Folder…"), QStringLiteral("Ctrl+Shift+O"));
    EXPECT_EQ(keys(help, "Tallyfold Help"), QStringLiteral("Ctrl+?"));
    QTest::keyClick(&app->mainView(), Qt::Key_O, Qt::ControlModifier);
    QTest::keyClick(&app->mainView(), Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(panels->asked.size(), 2U);
    EXPECT_EQ(panels->asked[0], OpenPanel::forFiles());
    EXPECT_EQ(panels->asked[1], OpenPanel::forOutputFolder());
}

TEST_F(Windows, AFolderIsAddedFromMenuToolbarAndTheEmptyList)
{
    entry(file, QStringLiteral("Add Folder…"))->trigger();
    click("toolbarAddFolder");
    click("addFolder");
    ASSERT_EQ(panels->asked.size(), 3U);
    EXPECT_EQ(panels->asked, std::vector(3, OpenPanel::forFolder()));
    EXPECT_EQ(text("addFolder"), "Add Folder…");
    EXPECT_EQ(text("toolbarAddFolder"), "Add Folder");
}

TEST_F(Windows, CommandsAreThereOnlyWhenTheyCanDoSomething)
{
    EXPECT_FALSE(entry(production, QStringLiteral("Stamp"))->isEnabled());
    EXPECT_FALSE(entry(production, QStringLiteral("Remove All Files"))->isEnabled());
    addPdfs({"a.pdf"});
    EXPECT_TRUE(entry(production, QStringLiteral("Stamp"))->isEnabled());
    EXPECT_TRUE(entry(production, QStringLiteral("Remove All Files"))->isEnabled());
    EXPECT_FALSE(entry(production, QStringLiteral("Remove Selected Files"))->isEnabled());
    model().setSelection({model().sources().front().id});
    EXPECT_TRUE(entry(production, QStringLiteral("Remove Selected Files"))->isEnabled());
}

TEST_F(Windows, CtrlReturnStamps)
{
    addPdfs({"a.pdf"});
    model().setOutputFolder(output);
    QTest::keyClick(&app->mainView(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(waitUntil([this] { return model().sheet() == Sheet::result; }));
    EXPECT_TRUE(std::filesystem::exists(output / "a.pdf"));
}

TEST_F(Windows, UndoNamesWhatItTakesBack)
{
    addPdfs({"a.pdf"});
    Q_EMIT menu(editMenu)->aboutToShow();
    EXPECT_EQ(entriesOf(editMenu).first(), QStringLiteral("&Undo Add Files"));
    menu(editMenu)->actions().first()->trigger();
    EXPECT_TRUE(model().sources().empty());
    EXPECT_EQ(entriesOf(editMenu)[1], QStringLiteral("Redo Add Files"));
}

TEST_F(Windows, UndoTakesBackTypingBeforeFiles)
{
    addPdfs({"a.pdf"});
    auto *prefix = find<QLineEdit>("prefix");
    prefix->setFocus();
    QTest::keyClicks(prefix, QStringLiteral("X"));
    QTest::keyClick(prefix, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(stamp().prefix, QStringLiteral("ABC"));
    EXPECT_EQ(listed(), "a.pdf");
    QTest::keyClick(prefix, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(listed(), "");
}

TEST_F(Windows, TheFirstPagesOfTheChosenFileAreShown)
{
    auto *pane = find<PreviewPane>("previewPane");
    EXPECT_EQ(pane->currentIndex(), 0);
    addPdfs({"a.pdf"}, 5);
    EXPECT_TRUE(waitUntil([&] { return pane->currentIndex() == 1; }));
    EXPECT_EQ(text("previewHeader"), "First pages of “a.pdf”");
    EXPECT_TRUE(isShown("closeUp"));
    EXPECT_EQ(find<QWidget>("page3")->accessibleName(), QStringLiteral("Page 3, stamped"));
    EXPECT_EQ(pane->findChild<QWidget *>(QStringLiteral("page4")), nullptr);
    EXPECT_EQ(find<QWidget>("closeUp")->accessibleName(),
              QStringLiteral("Close-up of the stamp on the first page"));
    const auto *first = find<PreviewImage>("page1");
    const double shape = static_cast<double>(first->image().height()) / first->image().width();
    EXPECT_NEAR(first->height(), first->width() * shape, 3);
    edit([](StampSettings &settings) { settings.prefix = QStringLiteral("X"); });
    EXPECT_TRUE(waitUntil([this] { return !model().hasPreviewTask(); }));
    EXPECT_EQ(find<PreviewImage>("page1"), first); // The page stays where it is; only its picture changes.
    model().removeAll();
    EXPECT_TRUE(waitUntil([&] { return pane->currentIndex() == 0; }));
}

TEST_F(Windows, NoNameOfAFileWidensThePreview)
{
    auto *pane = find<PreviewPane>("previewPane");
    addPdfs({std::string(200, 'n') + ".pdf"});
    EXPECT_TRUE(waitUntil([&] { return pane->currentIndex() == 1; }));
    const auto *scroll = find<QScrollArea>("previewScroll");
    EXPECT_TRUE(waitUntil([&] { return scroll->widget()->width() <= scroll->viewport()->width(); }));
    EXPECT_EQ(find<QLabel>("previewHeader")->text().size(),
              200 + QStringLiteral("First pages of “.pdf”").size());
    EXPECT_TRUE(
        waitUntil([&] { return find<PreviewImage>("page1")->width() <= scroll->viewport()->width(); }));
}

TEST_F(Windows, PresetsAreOfferedInSections)
{
    EXPECT_EQ(
        presets(),
        QStringList({QStringLiteral("-Starting points"), QStringLiteral("Standard (bottom right)"),
                     QStringLiteral("Confidential legend"), QStringLiteral("Exhibits (EX-0001, page X of Y)"),
                     QStringLiteral("-"), QStringLiteral("Save Current Settings as Preset…")}));
    model().savePreset(QStringLiteral("Smith & Jones"));
    EXPECT_EQ(presets()[4], QStringLiteral("-Your presets"));
    EXPECT_EQ(presets()[5], QStringLiteral("Smith && Jones")); // Not a key to press.
}

TEST_F(Windows, APresetThatWasAppliedCanBeTakenBack)
{
    edit([](StampSettings &settings) { settings.prefix = QStringLiteral("MINE"); });
    app->mainView().presetMenu().actions()[3]->trigger();
    EXPECT_EQ(stamp().prefix, QStringLiteral("EX-"));
    EXPECT_EQ(app->mainView().undoStack().undoText(), QStringLiteral("Apply Preset"));
    app->mainView().undoStack().undo();
    EXPECT_EQ(stamp().prefix, QStringLiteral("MINE"));
    app->mainView().undoStack().redo();
    EXPECT_EQ(stamp().prefix, QStringLiteral("EX-"));
}

TEST_F(Windows, SavingUnderANameThatIsThereReplacesThePreset)
{
    for (const char *prefix : {"ONE", "TWO"}) {
        edit([&](StampSettings &settings) { settings.prefix = QString::fromLatin1(prefix); });
        app->mainView().presetMenu().actions().last()->trigger();
        Alert *prompt = app->mainView().presetMenu().prompt();
        ASSERT_NE(prompt, nullptr);
        EXPECT_EQ(prompt->windowTitle(), QStringLiteral("Save Preset"));
        EXPECT_EQ(text("presetName"), "");
        QTest::keyClicks(find<QLineEdit>("presetName"), QStringLiteral(" Case 12 "));
        QTest::keyClick(prompt, Qt::Key_Return);
        waitUntil([this] { return app->mainView().presetMenu().prompt() == nullptr; });
    }
    ASSERT_EQ(model().settings().presets.size(), 1U);
    EXPECT_EQ(model().settings().presets.front().name, QStringLiteral("Case 12"));
    EXPECT_EQ(model().settings().presets.front().settings.prefix, QStringLiteral("TWO"));
}

TEST_F(Windows, ANameTakesEightyCharactersAndNoMore)
{
    app->mainView().presetMenu().askForName();
    auto *field = find<QLineEdit>("presetName");
    const QString family =
        QStringLiteral("👨‍👩‍👧"); // One character to whoever reads it, eight to a computer.
    field->insert(family.repeated(79));
    field->insert(QStringLiteral("xyz"));
    EXPECT_EQ(field->text(), family.repeated(79) + u'x');
    field->home(false);
    QTest::keyClicks(field, QStringLiteral("y"));
    EXPECT_EQ(field->text(), family.repeated(79) + u'x') << "what stands behind the cursor stays";
    EXPECT_EQ(field->cursorPosition(), 0);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, QStringLiteral("yz"));
    EXPECT_EQ(field->text(), u'y' + family.repeated(78) + u'x');
    EXPECT_EQ(field->cursorPosition(), 1);
    QTest::keyClick(app->mainView().presetMenu().prompt(), Qt::Key_Return);
    ASSERT_EQ(model().settings().presets.size(), 1U);
    EXPECT_EQ(model().settings().presets.front().name, u'y' + family.repeated(78) + u'x');
}

TEST_F(Windows, ThePromptForANameCanBeCancelled)
{
    app->mainView().presetMenu().askForName();
    Alert *prompt = app->mainView().presetMenu().prompt();
    EXPECT_EQ(buttonTitles(prompt), QStringList({QStringLiteral("Save"), QStringLiteral("Cancel")}));
    QTest::keyClicks(find<QLineEdit>("presetName"), QStringLiteral("x"));
    QTest::keyClick(prompt, Qt::Key_Escape);
    EXPECT_TRUE(model().settings().presets.empty());
}

TEST_F(Windows, SettingsListThePresetsUntilTheLastIsGone)
{
    model().savePreset(QStringLiteral("One"));
    app->openWindow(WindowId::settings);
    ASSERT_NE(app->settings(), nullptr);
    EXPECT_FALSE(isShown("noPresets"));
    EXPECT_EQ(text("presetName"), "One");
    edit([](StampSettings &settings) { settings.prefix = QStringLiteral("OTHER"); });
    click("applyPreset");
    EXPECT_TRUE(waitUntil([this] { return stamp().prefix == QStringLiteral("ABC"); }));
    click("deletePreset");
    EXPECT_TRUE(waitUntil([] { return isShown("noPresets"); }));
    EXPECT_TRUE(model().settings().presets.empty());
    EXPECT_EQ(app->mainView().undoStack().undoText(), QStringLiteral("Delete Preset"));
}

TEST_F(Windows, TheWelcomeCanBeSeenAgainFromTheSettings)
{
    app->mainView().close();
    app->openWindow(WindowId::settings);
    click("showWelcome");
    EXPECT_FALSE(model().settings().onboardingDone);
    EXPECT_TRUE(app->mainView().isVisible());
    EXPECT_TRUE(waitUntil([this] { return app->mainView().sheets().current() != nullptr; }));
    EXPECT_EQ(app->mainView().sheets().current()->objectName(), QStringLiteral("welcomeView"));
}

TEST_F(Windows, HelpIsOneWindowThatTurnsToItsTopic)
{
    app->openWindow(WindowId::help);
    HelpView *first = app->help();
    auto *topics = find<QListWidget>("topics");
    EXPECT_EQ(topics->count(), 8);
    EXPECT_EQ(text("topicTitle"), "Getting started");
    app->environment().openHelp(QStringLiteral("password"));
    EXPECT_EQ(app->help(), first);
    EXPECT_EQ(topics->currentRow(), 5);
    EXPECT_EQ(text("topicTitle"), "Password-protected PDFs");
    topics->setCurrentRow(1);
    EXPECT_EQ(app->environment().helpRouter.topic(), QStringLiteral("numbers"));
    EXPECT_EQ(first->findChildren<QLabel *>(QStringLiteral("paragraph")).size(), 3);
    first->close();
    app->openWindow(WindowId::help);
    EXPECT_EQ(text("topicTitle"), "Numbering and order");
}

TEST_F(Windows, SupportBeginsAMessageOrOpensThePage)
{
    app->environment().openHelp(QStringLiteral("support"));
    click("emailSupport");
    click("webPage");
    ASSERT_EQ(desktop->opened.size(), 2U);
    EXPECT_EQ(desktop->opened[0].scheme(), QStringLiteral("mailto"));
    EXPECT_TRUE(desktop->opened[0].toEncoded().endsWith("?subject=Tallyfold%20support"));
    EXPECT_EQ(desktop->opened[1].scheme(), QStringLiteral("https"));
}

TEST_F(Windows, HelpTextCanBeSelected)
{
    app->openWindow(WindowId::help);
    const auto *paragraph = app->help()->findChild<QLabel *>(QStringLiteral("paragraph"));
    EXPECT_TRUE(paragraph->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    EXPECT_TRUE(paragraph->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
}

TEST_F(Windows, FilesGivenAtTheStartAreReadOnceTheWindowIsThere)
{
    app->mainView().close();
    app->launch({pdf("a.pdf")});
    EXPECT_EQ(listed(), "");
    EXPECT_TRUE(waitUntil([this] { return listed() == "a.pdf"; }));
}

TEST_F(Windows, FilesHandedOverOpenTheWindowAndJoinTheList)
{
    app->mainView().close();
    EXPECT_FALSE(app->mainView().isVisible());
    app->reopen({pdf("a.pdf"), pdf("b.pdf"), pdf("c.pdf")});
    EXPECT_TRUE(app->mainView().isVisible());
    EXPECT_EQ(listed(), "a.pdf b.pdf c.pdf");
}

TEST_F(Windows, AHandOverLeavesTheFocusInWhatLiesOverTheWindow)
{
    const auto hasFocus = [this](const QWidget *over) {
        for (const std::vector<std::filesystem::path> &files :
             {std::vector<std::filesystem::path>{}, {pdf("a.pdf")}}) {
            app->reopen(files);
            waitUntil([&] { return QApplication::activeWindow() == over; });
            EXPECT_EQ(QApplication::activeWindow(), over);
            EXPECT_NE(QApplication::focusWidget(), nullptr);
        }
    };
    model().setSheet(Sheet::welcome);
    ASSERT_NE(app->mainView().sheets().current(), nullptr);
    hasFocus(app->mainView().sheets().current());
    model().setProblem(QStringLiteral("It did not work.")); // Over the sheet.
    hasFocus(app->mainView().sheets().current());
    model().setProblem(std::nullopt);
    hasFocus(app->mainView().sheets().current());
    model().setSheet(std::nullopt);
    app->mainView().presetMenu().askForName();
    hasFocus(app->mainView().presetMenu().prompt());
    QTest::keyClick(app->mainView().presetMenu().prompt(), Qt::Key_Escape);
    app->reopen({});
    EXPECT_TRUE(waitUntil([this] { return QApplication::activeWindow() == &app->mainView(); }));
}

TEST_F(Windows, AWindowThatComesBackHasTheSameListAndUndo)
{
    addPdfs({"a.pdf"});
    app->mainView().close();
    app->reopen({});
    EXPECT_TRUE(app->mainView().isVisible());
    EXPECT_EQ(listed(), "a.pdf");
    app->mainView().undoStack().undo();
    EXPECT_EQ(listed(), "");
}

TEST_F(Windows, FilesThatAreNoPdfsAreToldOf)
{
    app->reopen({folder / "settings.ini"});
    EXPECT_TRUE(model().problem());
    EXPECT_TRUE(waitUntil([this] { return app->mainView().sheets().current() != nullptr; }));
}

TEST_F(Windows, TheColumnsRememberTheirPlace)
{
    auto *columns = find<QSplitter>("columns");
    columns->setSizes({300, 500, 440});
    const QList<int> sizes = columns->sizes();
    app->mainView().close();
    restart();
    EXPECT_EQ(find<QSplitter>("columns")->sizes(), sizes);
}

TEST_F(Windows, AProgramThatCannotBeReopenedAsksBeforeItStopsAProduction)
{
    restart([](const ProductionPlan &, const std::filesystem::path &, const ProductionOptions &,
               const Production::OnPage &onPage) -> ProductionResult {
        while (onPage(1)) {
        }
        throw ProductionError{ProductionError::Cancelled{}};
    });
    app->setReachable(false);
    addPdfs({"a.pdf"});
    model().setOutputFolder(output);
    model().stamp();
    app->mainView().close();
    EXPECT_TRUE(app->mainView().isVisible());
    auto *alert = find<Alert>("closeAlert");
    ASSERT_NE(alert, nullptr);
    clickTitled(alert, QStringLiteral("Keep Writing"));
    EXPECT_TRUE(model().isRunning());
    model().cancelRun();
    EXPECT_TRUE(waitUntil([this] { return !model().isRunning(); }));
    app->setReachable(true);
}

TEST_F(Windows, AProgramThatCannotBeReopenedAsksBeforeItLosesAList)
{
    app->setReachable(false);
    addPdfs({"a.pdf"});
    app->mainView().activateWindow();
    QTest::keyClick(&app->mainView(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(app->mainView().isVisible());
    auto *alert = find<Alert>("closeAlert");
    ASSERT_NE(alert, nullptr);
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_TRUE(app->mainView().isVisible());
    EXPECT_EQ(listed(), "a.pdf");

    model().removeAll();
    app->mainView().close();
    EXPECT_FALSE(app->mainView().isVisible()) << "there is nothing to lose";
    app->reopen({});
    addPdfs({"a.pdf"});
    app->mainView().close();
    clickTitled(find<Alert>("closeAlert"), QStringLiteral("Quit Tallyfold"));
    EXPECT_FALSE(app->mainView().isVisible());
    app->setReachable(true);
}

TEST_F(Windows, AboutSaysWhatTheProgramIsAndWhomToAsk)
{
    entry(help, QStringLiteral("About Tallyfold"))->trigger();
    EXPECT_TRUE(isShown("about"));
    ASSERT_EQ(AboutPanel::credits().size(), 2);
    EXPECT_EQ(AboutPanel::credits()[0],
              QStringLiteral("Bates numbers, legends and a production index for folders of PDFs"));
    EXPECT_TRUE(AboutPanel::credits()[1].contains(QStringLiteral("never uploaded. Questions: support@")));
    find<QDialog>("about")->close();
}

TEST_F(Windows, ThereIsOneAboutPanel)
{
    const auto shownCount = [] {
        int count = 0;
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            count += window->isVisible() && qobject_cast<const AboutPanel *>(window) ? 1 : 0;
        }
        return count;
    };
    QAction *about = entry(help, QStringLiteral("About Tallyfold"));
    about->trigger();
    auto *first = find<AboutPanel>("about");
    app->mainView().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&app->mainView()));
    about->trigger();
    EXPECT_EQ(shownCount(), 1);
    EXPECT_TRUE(waitUntil([&] { return QApplication::activeWindow() == first; }));
    first->close();
    about->trigger(); // Before the closed one is gone.
    EXPECT_EQ(shownCount(), 1);
    EXPECT_TRUE(waitUntil([&] { return isShown("about"); }));
    find<AboutPanel>("about")->close();
}

TEST_F(Windows, ACheckForUpdatesIsAnsweredInTheWindow)
{
    entry(help, QStringLiteral("Check for Updates…"))->trigger();
    EXPECT_TRUE(waitUntil([] { return isShown("updateAlert"); }));
    EXPECT_EQ(text("alertTitle"), "Couldn’t check for updates"); // No address is built in.
    clickTitled(find<Alert>("updateAlert"), QStringLiteral("OK"));
}

} // namespace tallyfold
