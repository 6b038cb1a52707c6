#include "tests/app/FinishedProduction.h"
#include "tests/ui/WindowFixture.h"
#include "ui/controls/PositionGrid.h"
#include "ui/controls/SectionTitle.h"

#include <QAccessible>

namespace tallyfold {

namespace {

/// Things that a user acts on, or has to be told of: each needs a name.
bool needsName(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::Button:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::Graphic:
    case QAccessible::Link:
    case QAccessible::List:
    case QAccessible::ListItem:
    case QAccessible::MenuItem:
    case QAccessible::PageTab:
    case QAccessible::ProgressBar:
    case QAccessible::RadioButton:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::Window:
    case QAccessible::Dialog:
        return true;
    default:
        return false;
    }
}

/// A part of a control that has a name itself, such as the text of a spin box or the list of a combo box.
bool isPartOfNamed(const QAccessibleInterface &item)
{
    const QAccessibleInterface *parent = item.parent();
    return parent && (parent->role() == QAccessible::ComboBox || parent->role() == QAccessible::SpinBox) &&
           !parent->text(QAccessible::Name).isEmpty();
}

std::string described(const QAccessibleInterface &item)
{
    std::string path;
    for (const QObject *object = item.object(); object; object = object->parent()) {
        path = std::string("/") + object->metaObject()->className() + "#" +
               object->objectName().toStdString() + path;
    }
    return "role " + std::to_string(item.role()) + " at " + path;
}

/// Walks the tree under `item`; how many named things were met.
int walk(QAccessibleInterface *item, int depth = 0)
{
    if (!item || depth > 60 || item->state().invisible) {
        return 0;
    }
    int named = 0;
    if (needsName(item->role())) {
        const bool hasName = !item->text(QAccessible::Name).trimmed().isEmpty();
        EXPECT_TRUE(hasName || isPartOfNamed(*item)) << described(*item);
        named = hasName ? 1 : 0;
    }
    // Of the things inside a closed combo box nobody is told.
    for (int child = 0; item->role() != QAccessible::ComboBox && child < item->childCount(); ++child) {
        named += walk(item->child(child), depth + 1);
    }
    return named;
}

class Accessibility : public tests::WindowFixture {
protected:
    static int namesIn(QWidget *window)
    {
        return walk(QAccessible::queryAccessibleInterface(window));
    }
};

} // namespace

TEST_F(Accessibility, EveryControlOfTheEmptyMainWindowHasAName)
{
    EXPECT_GT(namesIn(&app->mainView()), 25);
}

TEST_F(Accessibility, EveryControlOfAFullMainWindowHasAName)
{
    addPdfs({"a.pdf"}, 3);
    addSamples({"Board minutes.pdf", "Sealed letter.pdf", "Term sheet.pdf"});
    edit([](StampSettings &settings) {
        settings.legend = QStringLiteral("SECRET");
        settings.pageOfTotal = true;
        settings.startNumber = 999'999;
        settings.cover = CoverOption::skipNoNumber;
    });
    model().setOutputFolder(folder / "nowhere");
    waitUntil([this] { return !model().hasPreviewTask(); });
    EXPECT_GT(namesIn(&app->mainView()), 45);
}

TEST_F(Accessibility, EveryControlOfTheOtherWindowsHasAName)
{
    model().savePreset(QStringLiteral("One"));
    app->openWindow(WindowId::settings);
    EXPECT_GT(namesIn(app->settings()), 4);
    for (const HelpTopic &topic : helpTopics()) {
        app->environment().openHelp(topic.id);
        EXPECT_GT(namesIn(app->help()), 8); // The window and its topics.
    }
}

TEST_F(Accessibility, EveryControlOfTheCheckHasAName)
{
    app->openWindow(WindowId::check);
    EXPECT_GT(namesIn(app->check()), 1);
    tests::makeProduction(folder / "Production 3", {{"a.pdf", 2}, {"b.pdf", 1}});
    std::filesystem::remove(folder / "Production 3" / "b.pdf");
    app->check()->model().add(std::vector{folder / "Production 3", output});
    app->check()->model().start();
    EXPECT_GT(namesIn(app->check()), 4);
    ASSERT_TRUE(waitUntil([] { return isShown("findings"); }));
    EXPECT_GT(namesIn(app->check()), 7);
    CopyViewer viewer(app->check());
    viewer.showPage(folder / "Production 3", QStringLiteral("a.pdf"), 1, {});
    viewer.show();
    ASSERT_TRUE(waitUntil([&] { return !viewer.isDrawing(); }));
    EXPECT_GT(namesIn(&viewer), 3);
}

TEST_F(Accessibility, EveryControlOfTheSheetsHasAName)
{
    model().setSheet(Sheet::welcome);
    EXPECT_GT(namesIn(app->mainView().sheets().current()), 2);
    addPdfs({"a.pdf"});
    model().setSheet(std::nullopt);
    model().setOutputFolder(output);
    model().stamp();
    waitUntil([this] { return app->mainView().sheets().current() != nullptr; });
    EXPECT_GT(namesIn(app->mainView().sheets().current()), 3);
    model().setProblem(QStringLiteral("x"));
    EXPECT_GT(namesIn(app->mainView().sheets().current()), 1);
    app->mainView().presetMenu().askForName();
    EXPECT_GT(namesIn(find<QWidget>("savePreset")), 2);
}

TEST_F(Accessibility, ARowReadsAsOneSentence)
{
    addSamples({"Board minutes.pdf"});
    QAccessibleInterface *list = QAccessible::queryAccessibleInterface(find<QWidget>("files"));
    ASSERT_EQ(list->childCount(), 1);
    EXPECT_EQ(list->child(0)->text(QAccessible::Name),
              QStringLiteral(
                  "Board minutes.pdf, 3 pages, ABC000001 – ABC000003, Already numbered? “ACME000017” near "
                  "the edge"));
}

TEST_F(Accessibility, SectionsAreHeadingsThatOpenAndClose)
{
    auto *title = find<QWidget>("numbering")->findChild<SectionTitle *>();
    QAccessibleInterface *heading = QAccessible::queryAccessibleInterface(title);
    EXPECT_EQ(heading->role(), QAccessible::Heading);
    EXPECT_EQ(heading->text(QAccessible::Name), QStringLiteral("Numbering"));
    EXPECT_TRUE(heading->state().expandable && heading->state().expanded && !heading->state().collapsed);
    heading->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_FALSE(title->isChecked());
    EXPECT_TRUE(heading->state().collapsed && !heading->state().expanded);
}

TEST_F(Accessibility, PlacesAreRadioButtonsInAGroupOfTheirName)
{
    auto *grid = find<PositionGrid>("batesPosition");
    QAccessibleInterface *group = QAccessible::queryAccessibleInterface(grid);
    EXPECT_EQ(group->role(), QAccessible::Grouping);
    EXPECT_EQ(group->text(QAccessible::Name), QStringLiteral("Bates number"));
    for (const StampPosition position : allStampPositions) {
        QAccessibleInterface *spot = QAccessible::queryAccessibleInterface(grid->spot(position));
        EXPECT_EQ(spot->role(), QAccessible::RadioButton);
        EXPECT_EQ(spot->state().checked, position == StampPosition::bottomRight ? 1U : 0U);
    }
}

TEST_F(Accessibility, PicturesSayWhatTheStampReads)
{
    edit([](StampSettings &settings) {
        settings.legend = QStringLiteral("SECRET");
        settings.legendPosition = StampPosition::topLeft;
        settings.cover = CoverOption::skipKeepNumber;
    });
    addPdfs({"a.pdf"}, 2);
    ASSERT_TRUE(waitUntil([] { return isShown("page2"); }));
    const auto picture = [this](const char *name) {
        return QAccessible::queryAccessibleInterface(find<QWidget>(name));
    };
    for (const char *name : {"closeUp", "page1", "page2"}) {
        EXPECT_EQ(picture(name)->role(), QAccessible::Graphic) << name;
    }
    EXPECT_EQ(picture("page1")->text(QAccessible::Name), QStringLiteral("Page 1, stamped"));
    EXPECT_EQ(picture("page1")->text(QAccessible::Description), QStringLiteral("No stamp on this page"));
    EXPECT_EQ(picture("closeUp")->text(QAccessible::Description), QStringLiteral("No stamp on this page"));
    EXPECT_EQ(picture("page2")->text(QAccessible::Description),
              QStringLiteral("Stamp: SECRET (Top left), ABC000002 (Bottom right)"));
}

TEST_F(Accessibility, TitlesOfPagesAndSheetsAreHeadings)
{
    app->environment().openHelp(QStringLiteral("password"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(find<QWidget>("topicTitle"))->role(),
              QAccessible::Heading);
    addPdfs({"a.pdf"}, 2);
    model().setOutputFolder(output);
    model().stamp();
    ASSERT_TRUE(waitUntil([] { return isShown("resultView"); }));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(find<QWidget>("resultTitle"))->role(),
              QAccessible::Heading);
    EXPECT_EQ(find<QWidget>("resultView")->accessibleDescription(),
              QStringLiteral("Production written: 1 stamped copy (2 pages). Next production starts at "
                             "ABC000003 to continue this series."));
}

TEST_F(Accessibility, TabReachesEveryControlAndComesRound)
{
    addPdfs({"a.pdf"});
    QWidget *first = find<QWidget>("prefix");
    first->setFocus();
    QStringList reached;
    for (int step = 0; step < 80; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        if (QApplication::focusWidget() == first) {
            break;
        }
        reached.append(QApplication::focusWidget()->objectName());
    }
    EXPECT_EQ(QApplication::focusWidget(), first) << reached.join(u' ').toStdString();
    for (const char *name : {"startNumber",
                             "digits",
                             "suffix",
                             "margin",
                             "fontName",
                             "fontSize",
                             "color",
                             "background",
                             "legend",
                             "pageOfTotal",
                             "cover",
                             "fileOrder",
                             "chooseOutputFolder",
                             "naming",
                             "writeIndex",
                             "writePrivilegeLog",
                             "stamp",
                             "files",
                             "toolbarAdd",
                             "presets"}) {
        EXPECT_TRUE(reached.contains(QString::fromLatin1(name))) << name;
    }
    // In reading order: the list, the form from top to bottom, the bar.
    EXPECT_LT(reached.indexOf(QStringLiteral("margin")), reached.indexOf(QStringLiteral("legend")));
    EXPECT_LT(reached.indexOf(QStringLiteral("legend")), reached.indexOf(QStringLiteral("naming")));
    EXPECT_LT(reached.indexOf(QStringLiteral("writePrivilegeLog")), reached.indexOf(QStringLiteral("stamp")));
}

} // namespace tallyfold
