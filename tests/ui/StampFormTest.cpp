#include "ui/form/StampForm.h"

#include "tests/ui/WindowFixture.h"
#include "ui/controls/CollapsibleSection.h"
#include "ui/controls/ColorWell.h"
#include "ui/controls/Picker.h"
#include "ui/controls/PositionGrid.h"
#include "ui/controls/Stepper.h"
#include "ui/controls/Warning.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include <tuple>

namespace tallyfold {

namespace {

class StampFormTest : public tests::WindowFixture {
protected:
    void type(const char *field, const char *typed)
    {
        auto *edit = find<QLineEdit>(field);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QString::fromUtf8(typed));
    }

    void pick(const char *picker, int row)
    {
        auto *box = find<Picker>(picker);
        box->setCurrentIndex(row);
        Q_EMIT box->activated(row);
    }

    QStringList titlesOf(const char *picker)
    {
        QStringList titles;
        const auto *box = find<Picker>(picker);
        for (int row = 0; row < box->count(); ++row) {
            titles.append(box->itemText(row));
        }
        return titles;
    }

    std::string spinText(const char *stepper)
    {
        return find<Stepper>(stepper)->text().toStdString();
    }
};

} // namespace

TEST_F(StampFormTest, FiveNumberedSectionsStandInTheirOrder)
{
    const QList<CollapsibleSection *> sections =
        find<StampForm>("stampForm")->findChildren<CollapsibleSection *>();
    QStringList titles;
    for (const CollapsibleSection *section : sections) {
        const auto *title = section->findChild<SectionTitle *>();
        titles.append(QString::number(title->number()) + u' ' + title->title());
        EXPECT_EQ(title->accessibleName(), title->title());
    }
    EXPECT_EQ(titles, QStringList({QStringLiteral("1 Numbering"), QStringLiteral("2 Placement and look"),
                                   QStringLiteral("3 Legend and page numbers"),
                                   QStringLiteral("4 Cover pages and order"), QStringLiteral("5 Output")}));
}

TEST_F(StampFormTest, AClosedSectionHidesItsControlsKeepsItsSettingsAndStaysClosed)
{
    auto *section = find<CollapsibleSection>("numbering");
    auto *title = section->findChild<SectionTitle *>();
    title->setFocus();
    QTest::keyClick(title, Qt::Key_Space);
    EXPECT_FALSE(isShown("prefix"));
    EXPECT_EQ(stamp().prefix, QStringLiteral("ABC"));
    restart();
    EXPECT_FALSE(find<CollapsibleSection>("numbering")->isExpanded());
    EXPECT_TRUE(find<CollapsibleSection>("output")->isExpanded());
}

TEST_F(StampFormTest, TextsGoStraightIntoTheSettings)
{
    type("prefix", "ACME ");
    type("suffix", "-x");
    type("legend", "CONFIDENTIAL");
    EXPECT_EQ(stamp().prefix, QStringLiteral("ACME "));
    EXPECT_EQ(stamp().suffix, QStringLiteral("-x"));
    EXPECT_EQ(stamp().legend, QStringLiteral("CONFIDENTIAL"));
}

TEST_F(StampFormTest, TypingKeepsTheCursorWhereItIs)
{
    auto *field = find<QLineEdit>("prefix");
    field->setFocus();
    field->setCursorPosition(1);
    QTest::keyClicks(field, QStringLiteral("xy"));
    EXPECT_EQ(stamp().prefix, QStringLiteral("AxyBC"));
    EXPECT_EQ(field->cursorPosition(), 3);
}

TEST_F(StampFormTest, TypingKeepsTheFocusThatTheListHadBefore)
{
    addPdfs({"a.pdf"});
    find<QWidget>("files")->setFocus();
    auto *field = find<QLineEdit>("prefix");
    field->setFocus();
    field->clear();
    for (const char letter : {'A', 'C', 'M', 'E'}) { // To whatever has the focus, as keys go.
        QTest::keyClick(QApplication::focusWidget(), letter);
    }
    EXPECT_EQ(stamp().prefix, QStringLiteral("ACME"));
}

TEST_F(StampFormTest, AFieldKeepsItsSelectionWhenSomethingElseChanges)
{
    auto *field = find<QLineEdit>("prefix");
    field->setSelection(1, 2);
    edit([](StampSettings &settings) { settings.digits = 8; });
    addPdfs({"a.pdf"});
    EXPECT_EQ(field->selectedText(), QStringLiteral("BC"));
}

TEST_F(StampFormTest, ControlsFollowTheModel)
{
    model().applyPreset(AppModel::builtInPresets()[2]);
    EXPECT_EQ(text("prefix"), "EX-");
    EXPECT_EQ(spinText("digits"), "4");
    EXPECT_EQ(find<PositionGrid>("batesPosition")->selection(), StampPosition::topRight);
    EXPECT_TRUE(find<QCheckBox>("pageOfTotal")->isChecked());
    EXPECT_EQ(find<Picker>("naming")->currentText(), QStringLiteral("First Bates number + original name"));
    EXPECT_EQ(text("firstNumber"), "EX-0001");
}

TEST_F(StampFormTest, OnlyWholeNumbersAreTakenAsStartNumber)
{
    type("startNumber", "120");
    EXPECT_EQ(stamp().startNumber, 120);
    EXPECT_EQ(text("firstNumber"), "ABC000120");
    type("startNumber", "12x");
    EXPECT_EQ(stamp().startNumber, 12); // "12x" is no number.
    QTest::keyClick(find<QLineEdit>("startNumber"), Qt::Key_Return);
    EXPECT_EQ(text("startNumber"), "12");
}

TEST_F(StampFormTest, AStartNumberBeyondItsLimitIsCorrectedWhereItIsUsed)
{
    type("startNumber", "9999999999");
    EXPECT_EQ(text("firstNumber"), "ABC999999999");
}

TEST_F(StampFormTest, AFieldThatIsLeftShowsWhatIsUsed)
{
    for (const auto &[field, typed, used] :
         {std::tuple("startNumber", std::string("12345678901"), std::string("999999999")),
          std::tuple("startNumber", std::string("-5"), std::string("0")),
          std::tuple("startNumber", std::string("007"), std::string("7")),
          std::tuple("startNumber", std::string("12x"), std::string("12")),
          std::tuple("prefix", std::string(60, 'p'), std::string(40, 'p')),
          std::tuple("suffix", std::string(60, 's'), std::string(40, 's')),
          std::tuple("legend", std::string(220, 'l'), std::string(200, 'l'))}) {
        type(field, typed.c_str());
        EXPECT_EQ(text(field), typed) << "while it is typed";
        find<QWidget>("margin")->setFocus();
        EXPECT_EQ(text(field), used);
    }
    edit([](StampSettings &settings) { settings.startNumber = -7; });
    EXPECT_EQ(text("startNumber"), "0") << "whatever it came from";
}

TEST_F(StampFormTest, AClosedSectionBearsTheSignOfItsWarning)
{
    const auto signOf = [this](const char *section) {
        return find<CollapsibleSection>(section)->findChild<SectionTitle *>()->accessibleDescription();
    };
    addSamples({"Board minutes.pdf"});
    EXPECT_TRUE(isShown("earlierNumberWarning"));
    EXPECT_EQ(signOf("placement"), QString()) << "it is in sight";
    auto *title = find<CollapsibleSection>("placement")->findChild<SectionTitle *>();
    const QImage before = title->grab().toImage();
    title->click();
    EXPECT_EQ(signOf("placement"), QString::fromStdString(text("earlierNumberWarning")));
    EXPECT_EQ(signOf("numbering"), QString());
    edit([](StampSettings &settings) { settings.background = false; });
    EXPECT_EQ(signOf("placement"), QString());
    pdf("../output/Board minutes.pdf");
    model().setOutputFolder(output);
    find<CollapsibleSection>("output")->setExpanded(false);
    EXPECT_EQ(signOf("output"), QString::fromStdString(text("folderProblem")));
}

TEST_F(StampFormTest, WhatTheBarTellsIsNotToldInTheSameWordsUnderOutput)
{
    addPdfs({"a.pdf"});
    model().setOutputFolder(folder / "sources");
    EXPECT_TRUE(isShown("blockingProblem"));
    EXPECT_EQ(text("blockingProblem"),
              "“a.pdf” would replace an original. Choose a different output folder.");
    EXPECT_FALSE(isShown("folderProblem"));
}

TEST_F(StampFormTest, AnAlertThatNamesTheOutputLeadsThere)
{
    addPdfs({"a.pdf"});
    model().setOutputFolder(folder / "sources");
    auto *section = find<CollapsibleSection>("output");
    const auto answer = [this] {
        model().stamp();
        waitUntil([this] { return app->mainView().sheets().current() != nullptr; });
        clickTitled(app->mainView().sheets().current(), QStringLiteral("OK"));
    };
    const auto hasFocus = [this](const char *name) {
        return waitUntil([&] { return app->mainView().focusWidget() == find<QWidget>(name); });
    };
    section->setExpanded(false);
    find<QScrollArea>("stampForm")->verticalScrollBar()->setValue(0);
    answer();
    EXPECT_TRUE(hasFocus("chooseOutputFolder"));
    EXPECT_TRUE(section->isExpanded());
    const auto *view = find<QScrollArea>("stampForm")->viewport();
    const auto *button = find<QWidget>("chooseOutputFolder");
    EXPECT_TRUE(view->rect().contains(QRect(button->mapTo(view, QPoint()), button->size())));

    model().setOutputFolder(output);
    std::filesystem::create_directory(folder / "sources" / "more");
    model().add(std::vector{pdf("more/a.pdf")});
    ASSERT_TRUE(waitUntil([this] { return isShown("blockingProblem"); }));
    answer();
    EXPECT_TRUE(hasFocus("naming"));
}

TEST_F(StampFormTest, DigitsStepFromOneToTwelve)
{
    auto *digits = find<Stepper>("digits");
    EXPECT_EQ(digits->minimum(), 1);
    EXPECT_EQ(digits->maximum(), 12);
    digits->stepUp();
    EXPECT_EQ(stamp().digits, 7);
    digits->stepBy(100);
    EXPECT_EQ(stamp().digits, 12);
}

TEST_F(StampFormTest, TheMarginStepsByThreePointsAndShowsInches)
{
    auto *margin = find<Stepper>("margin");
    EXPECT_EQ(spinText("margin"), "18 pt (0.25 in)");
    margin->stepUp();
    EXPECT_EQ(stamp().margin, 21);
    margin->stepBy(1000);
    EXPECT_EQ(stamp().margin, 144);
    EXPECT_EQ(spinText("margin"), "144 pt (2.00 in)");
    margin->stepBy(-1000);
    EXPECT_EQ(stamp().margin, 0);
    EXPECT_EQ(spinText("margin"), "0 pt (0.00 in)");
}

TEST_F(StampFormTest, AMarginCanBeTypedWithAndWithoutItsUnit)
{
    auto *margin = find<Stepper>("margin");
    margin->setFocus();
    margin->selectAll();
    QTest::keyClicks(margin, QStringLiteral("36"));
    QTest::keyClick(margin, Qt::Key_Return);
    EXPECT_EQ(stamp().margin, 36);
    EXPECT_EQ(spinText("margin"), "36 pt (0.50 in)");
    margin->selectAll();
    QTest::keyClicks(margin, QStringLiteral("500 pt"));
    QTest::keyClick(margin, Qt::Key_Return);
    EXPECT_EQ(stamp().margin, 144);
}

TEST_F(StampFormTest, AStoredFractionStaysUntilItIsChanged)
{
    edit([](StampSettings &settings) { settings.fontSize = 10.5; });
    auto *size = find<Stepper>("fontSize");
    size->setFocus();
    QTest::keyClick(size, Qt::Key_Return);
    EXPECT_EQ(stamp().fontSize, 10.5);
    size->stepUp();
    EXPECT_EQ(stamp().fontSize, 11.5);
}

TEST_F(StampFormTest, TheFontIsOneOfEightByItsPostScriptName)
{
    EXPECT_EQ(titlesOf("fontName").size(), 8);
    pick("fontName", 5);
    EXPECT_EQ(stamp().fontName, QStringLiteral("TimesNewRomanPS-BoldMT"));
    edit([](StampSettings &settings) { settings.fontName = QStringLiteral("Unknown"); });
    EXPECT_EQ(find<Picker>("fontName")->currentIndex(), -1);
}

TEST_F(StampFormTest, PickersShowTheTitlesOfAllCases)
{
    EXPECT_EQ(titlesOf("cover").join(u'|'),
              QStringLiteral("Stamp every page|Leave the first page blank, but count it|Leave the first page "
                             "blank and don’t count it"));
    EXPECT_EQ(titlesOf("fileOrder").join(u'|'),
              QStringLiteral("By name|Oldest first|As listed (drag to reorder)"));
    EXPECT_EQ(
        titlesOf("naming").join(u'|'),
        QStringLiteral("Original name|First Bates number|Bates range|First Bates number + original name"));
    pick("cover", 1);
    pick("fileOrder", 2);
    pick("naming", 3);
    EXPECT_EQ(stamp().cover, CoverOption::skipKeepNumber);
    EXPECT_EQ(stamp().order, FileOrder::manual);
    EXPECT_EQ(stamp().naming, OutputNaming::batesAndOriginal);
}

TEST_F(StampFormTest, TheColourIsChosenAtOnceAndWithoutOpacity)
{
    edit([](StampSettings &settings) { settings.color = StampColor::of(0, 0, 0, 0.5); });
    auto *well = find<ColorWell>("color");
    well->click();
    ASSERT_NE(well->panel(), nullptr);
    EXPECT_FALSE(well->panel()->testOption(QColorDialog::ShowAlphaChannel));
    well->panel()->setCurrentColor(QColor(255, 0, 0));
    EXPECT_EQ(stamp().color, StampColor::of(1, 0, 0, 0.5));
}

TEST_F(StampFormTest, AColourIsSelectedOrTakenBack)
{
    edit([](StampSettings &settings) { settings.color = StampColor::of(0, 0, 1, 0.5); });
    auto *well = find<ColorWell>("color");
    const auto choose = [&](QDialogButtonBox::StandardButton answer) {
        well->click();
        ASSERT_NE(well->panel(), nullptr);
        const auto *buttons = well->panel()->findChild<QDialogButtonBox *>();
        ASSERT_NE(buttons, nullptr);
        EXPECT_EQ(buttons->button(QDialogButtonBox::Ok)->text(), QStringLiteral("Select"));
        well->panel()->setCurrentColor(QColor(255, 0, 0));
        EXPECT_EQ(stamp().color, StampColor::of(1, 0, 0, 0.5));
        buttons->button(answer)->click();
        EXPECT_TRUE(waitUntil([well] { return !well->panel(); }));
    };
    choose(QDialogButtonBox::Cancel);
    EXPECT_EQ(stamp().color, StampColor::of(0, 0, 1, 0.5));
    choose(QDialogButtonBox::Ok);
    EXPECT_EQ(stamp().color, StampColor::of(1, 0, 0, 0.5));
}

TEST_F(StampFormTest, ASpotIsChosenWithTheMouseAndTheArrowKeys)
{
    auto *grid = find<PositionGrid>("batesPosition");
    QTest::mouseClick(grid->spot(StampPosition::topLeft), Qt::LeftButton);
    EXPECT_EQ(stamp().batesPosition, StampPosition::topLeft);
    QTest::keyClick(grid->spot(StampPosition::topLeft), Qt::Key_Right);
    EXPECT_EQ(stamp().batesPosition, StampPosition::topCenter);
    QTest::keyClick(grid->spot(StampPosition::topCenter), Qt::Key_Down);
    EXPECT_EQ(stamp().batesPosition, StampPosition::bottomCenter);
    EXPECT_EQ(QApplication::focusWidget(), grid->spot(StampPosition::bottomCenter));
    QTest::keyClick(grid->spot(StampPosition::bottomCenter), Qt::Key_Left);
    QTest::keyClick(grid->spot(StampPosition::bottomLeft), Qt::Key_Left); // It is the last already.
    EXPECT_EQ(stamp().batesPosition, StampPosition::bottomLeft);
    EXPECT_TRUE(grid->spot(StampPosition::bottomLeft)->isChecked());
    EXPECT_EQ(grid->spot(StampPosition::bottomLeft)->accessibleName(), QStringLiteral("Bottom left"));
    EXPECT_EQ(grid->spot(StampPosition::bottomLeft)->toolTip(), QStringLiteral("Bottom left"));
}

TEST_F(StampFormTest, ALegendOfSpacesHasNoPosition)
{
    EXPECT_FALSE(isShown("legendPosition"));
    type("legend", "   ");
    EXPECT_FALSE(isShown("legendPosition"));
    type("legend", "SECRET");
    EXPECT_TRUE(isShown("legendPosition"));
}

TEST_F(StampFormTest, ThePageLineHasItsWordingAndPositionOnlyWhileItIsOn)
{
    EXPECT_FALSE(isShown("pageOfTotalFormat"));
    EXPECT_FALSE(isShown("pageOfTotalPosition"));
    click("pageOfTotal");
    EXPECT_TRUE(stamp().pageOfTotal);
    EXPECT_TRUE(isShown("pageOfTotalFormat"));
    EXPECT_TRUE(isShown("pageOfTotalPosition"));
    type("pageOfTotalFormat", "{page}/{total}");
    EXPECT_EQ(stamp().pageOfTotalFormat, QStringLiteral("{page}/{total}"));
}

TEST_F(StampFormTest, NumbersThatOutgrowTheirDigitsAreWarnedOf)
{
    EXPECT_FALSE(isShown("digitsWarning"));
    edit([](StampSettings &settings) { settings.startNumber = 999'995; });
    EXPECT_FALSE(isShown("digitsWarning")); // Nothing is numbered yet.
    addPdfs({"a.pdf"}, 10);
    ASSERT_TRUE(isShown("digitsWarning"));
    EXPECT_EQ(text("digitsWarning"),
              "Numbers reach ABC1000004, longer than 6 digits, so copies named by Bates "
              "number won’t sort in order in the file manager.");
    auto *button = find<Warning>("digitsWarning")->button();
    EXPECT_EQ(button->text(), QStringLiteral("Use 7 Digits"));
    button->click();
    EXPECT_EQ(stamp().digits, 7);
    EXPECT_FALSE(isShown("digitsWarning"));
}

TEST_F(StampFormTest, EarlierNumbersUnderTheWhiteBoxAreWarnedOf)
{
    addSamples({"Board minutes.pdf"});
    ASSERT_TRUE(isShown("earlierNumberWarning"));
    EXPECT_EQ(text("earlierNumberWarning"),
              "One file already seems to carry a Bates number (ACME000017). The white box would cover it.");
    auto *button = find<Warning>("earlierNumberWarning")->button();
    EXPECT_EQ(button->text(), QStringLiteral("Turn Off the White Box"));
    button->click();
    EXPECT_FALSE(stamp().background);
    EXPECT_FALSE(find<QCheckBox>("background")->isChecked());
    EXPECT_FALSE(isShown("earlierNumberWarning"));
}

TEST_F(StampFormTest, FilesThatAreOnlyACoverAreWarnedOf)
{
    addPdfs({"a.pdf"});
    EXPECT_FALSE(isShown("singlePageWarning"));
    pick("cover", 1);
    EXPECT_EQ(
        text("singlePageWarning"),
        "One file has a single page: it keeps its number but its copy shows no stamp (the index says so).");
    pick("cover", 2);
    EXPECT_EQ(text("singlePageWarning"),
              "One file has a single page: as an uncounted cover it would get no number "
              "and no stamp, so it’s left out (listed as skipped in the index).");
    auto *button = find<Warning>("singlePageWarning")->button();
    EXPECT_EQ(button->text(), QStringLiteral("Stamp Every Page"));
    button->click();
    EXPECT_EQ(stamp().cover, CoverOption::stampAll);
    EXPECT_FALSE(isShown("singlePageWarning"));
}

TEST_F(StampFormTest, TheOutputFolderIsShownByItsNameAndItsWholePath)
{
    EXPECT_TRUE(isShown("noOutputFolder"));
    EXPECT_EQ(text("noOutputFolder"), "Not chosen");
    panels->answer = {output};
    click("chooseOutputFolder");
    EXPECT_EQ(panels->asked.back(), OpenPanel::forOutputFolder());
    EXPECT_FALSE(isShown("noOutputFolder"));
    EXPECT_EQ(text("outputFolder"), "output");
    EXPECT_EQ(find<QLabel>("outputFolder")->toolTip().toStdString(), output.native());
    EXPECT_EQ(text("outputFolderPlace"), output.parent_path().native());
}

TEST_F(StampFormTest, TheTopmostFolderLiesNowhere)
{
    model().setOutputFolder("/");
    EXPECT_EQ(text("outputFolder"), "/");
    EXPECT_FALSE(isShown("outputFolderPlace"));
}

TEST_F(StampFormTest, NoOutputFolderWidensTheForm)
{
    const auto *form = find<QScrollArea>("stampForm");
    const int width = form->widget()->minimumSizeHint().width();
    model().setOutputFolder(folder.path() / std::string(200, 'n') / std::string(200, 'm'));
    QTest::qWait(0);
    EXPECT_EQ(form->widget()->minimumSizeHint().width(), width);
}

TEST_F(StampFormTest, WhatStandsInTheWayOfTheFolderIsToldUnderOutput)
{
    addPdfs({"a.pdf"});
    pdf("../output/a.pdf");
    EXPECT_FALSE(isShown("folderProblem"));
    model().setOutputFolder(output);
    EXPECT_EQ(text("folderProblem"),
              "“a.pdf” is already in the output folder. Tallyfold never replaces files: choose "
              "an empty folder.");
    std::filesystem::remove_all(output);
    edit([](StampSettings &settings) { settings.prefix = QStringLiteral("X"); });
    EXPECT_TRUE(waitUntil([this] {
        return text("blockingProblem") == "The output folder isn’t there any more. Choose it again.";
    }));
    EXPECT_FALSE(isShown("folderProblem"));
    model().setOutputFolder(folder / "sources");
    model().removeAll();
    EXPECT_TRUE(waitUntil([this] { return text("folderProblem") == "Add PDFs to number."; }));
}

TEST_F(StampFormTest, TheOptionsOfTheOutputAreTheModels)
{
    EXPECT_TRUE(find<QCheckBox>("writeIndex")->isChecked());
    EXPECT_FALSE(find<QCheckBox>("writePrivilegeLog")->isChecked());
    click("writeIndex");
    click("writePrivilegeLog");
    EXPECT_FALSE(model().settings().writeIndex);
    EXPECT_TRUE(model().settings().writePrivilegeLog);
}

TEST_F(StampFormTest, ProtectedFilesAreNamedAndRemovedTogether)
{
    EXPECT_FALSE(isShown("passwordNotice"));
    addPdfs({"a.pdf"});
    addSamples({"Sealed letter.pdf"});
    EXPECT_TRUE(isShown("passwordNotice"));
    EXPECT_EQ(text("removeProtected"), "Remove It from the List");
    addSamples({"Term sheet.pdf"});
    EXPECT_EQ(text("removeProtected"), "Remove Them from the List");
    click("removeProtected");
    EXPECT_EQ(listed(), "a.pdf");
    EXPECT_FALSE(isShown("passwordNotice"));
    app->mainView().undoStack().undo();
    EXPECT_EQ(model().sources().size(), 3U);
    click("passwordHelp");
    EXPECT_EQ(app->environment().helpRouter.topic(), QStringLiteral("password"));
}

TEST_F(StampFormTest, TheWheelScrollsTheFormAndChangesNothing)
{
    auto *margin = find<Stepper>("margin");
    QWheelEvent wheel(QPointF(5, 5), margin->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, 120), Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(margin, &wheel);
    EXPECT_EQ(stamp().margin, 18);
    EXPECT_FALSE(wheel.isAccepted());
}

} // namespace tallyfold
