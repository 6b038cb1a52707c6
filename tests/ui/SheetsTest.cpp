#include "ui/sheets/Sheets.h"

#include "tests/app/Gate.h"
#include "tests/ui/WindowFixture.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/sheets/ResultView.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProxyStyle>

#include <cerrno>
#include <fstream>

namespace tallyfold {

using namespace Qt::StringLiterals;

namespace {

/// A style of a desktop with an order of buttons of its own.
class OrderStyle final : public QProxyStyle {
public:
    explicit OrderStyle(QDialogButtonBox::ButtonLayout layout) : m_layout(layout) {}

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_DialogButtonLayout ? m_layout : QProxyStyle::styleHint(hint, option, widget, data);
    }

private:
    QDialogButtonBox::ButtonLayout m_layout;
};

class SheetsTest : public tests::WindowFixture {
protected:
    QDialog *current()
    {
        waitUntil([this] { return app->mainView().sheets().current() != nullptr; });
        return app->mainView().sheets().current();
    }
    bool isFree()
    {
        return waitUntil([this] { return app->mainView().sheets().current() == nullptr; });
    }

    /// The titles of the buttons of `dialog` from left to right, where the desktop orders them by `layout`.
    QString ordered(QDialog *dialog, QDialogButtonBox::ButtonLayout layout)
    {
        OrderStyle style(layout);
        auto *box = dialog->findChild<QDialogButtonBox *>();
        if (!box) {
            return QStringLiteral("no order");
        }
        box->setStyle(&style);
        box->layout()->activate();
        const QString titles = buttonTitles(dialog).join(u'|');
        box->setStyle(nullptr);
        return titles;
    }

    /// Runs a production of what is listed, and waits for its sheet.
    QDialog *produce()
    {
        model().setOutputFolder(output);
        model().stamp(true);
        return current();
    }
};

} // namespace

TEST_F(SheetsTest, AProblemIsToldUntilItIsSeen)
{
    model().setProblem(QStringLiteral("It did not work."));
    QDialog *alert = current();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(text("alertTitle"), "Something went wrong");
    EXPECT_EQ(text("alertText"), "It did not work.");
    EXPECT_EQ(buttonTitles(alert), QStringList(QStringLiteral("OK")));
    QTest::keyClick(alert, Qt::Key_Return);
    EXPECT_FALSE(model().problem());
    EXPECT_TRUE(isFree());
}

TEST_F(SheetsTest, EscapeDismissesAProblem)
{
    model().setProblem(QStringLiteral("It did not work."));
    QTest::keyClick(current(), Qt::Key_Escape);
    EXPECT_FALSE(model().problem());
}

TEST_F(SheetsTest, ProtectedFilesAreAskedAboutInTheOrderOfTheButtons)
{
    addPdfs({"a.pdf"});
    addSamples({"Sealed letter.pdf"});
    model().setOutputFolder(output);
    model().stamp();
    QDialog *alert = current();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(text("alertTitle"), "Some PDFs Won’t Be Stamped");
    EXPECT_TRUE(
        text("alertText").ends_with("The production index will list them as “skipped: password-protected”."));
    EXPECT_EQ(buttonTitles(alert),
              QStringList({QStringLiteral("Stamp the Other Files"),
                           QStringLiteral("How to Remove a Password"), QStringLiteral("Cancel")}));
}

TEST_F(SheetsTest, ButtonsStandInTheOrderOfTheDesktop)
{
    addPdfs({"a.pdf"});
    addSamples({"Sealed letter.pdf"});
    model().setConfirmingProtected(true);
    EXPECT_EQ(ordered(current(), QDialogButtonBox::GnomeLayout),
              QStringLiteral("How to Remove a Password|Cancel|Stamp the Other Files"));
    EXPECT_EQ(ordered(current(), QDialogButtonBox::KdeLayout),
              QStringLiteral("How to Remove a Password|Stamp the Other Files|Cancel"));
    model().setConfirmingProtected(false);
    model().setSheet(Sheet::welcome);
    EXPECT_EQ(ordered(current(), QDialogButtonBox::GnomeLayout), QStringLiteral("Help|Get Started"));
    EXPECT_EQ(ordered(current(), QDialogButtonBox::KdeLayout), QStringLiteral("Help|Get Started"));
    EXPECT_EQ(ordered(current(), QDialogButtonBox::WinLayout), QStringLiteral("Get Started|Help"));
    model().setSheet(std::nullopt);
    QDialog *result = produce();
    for (const auto layout :
         {QDialogButtonBox::GnomeLayout, QDialogButtonBox::KdeLayout, QDialogButtonBox::WinLayout}) {
        EXPECT_EQ(ordered(result, layout), QStringLiteral("Show in File Manager|Start Next Production|Done"));
    }
}

TEST_F(SheetsTest, ASheetIsAsTallAsWhatIsInIt)
{
    const auto rest = [](const QDialog *sheet) {
        return sheet->height() - sheet->layout()->totalHeightForWidth(sheet->width());
    };
    const QString sentences = QStringLiteral("It did not work, and this is told in some more words. ");
    for (const int count : {1, 2, 8, 40}) {
        model().setProblem(sentences.repeated(count).trimmed());
        EXPECT_EQ(rest(current()), 0) << count;
        EXPECT_GE(current()->width(), 440) << count;
        model().setProblem(std::nullopt);
    }
    model().setSheet(Sheet::welcome);
    EXPECT_EQ(rest(current()), 0);
    model().setSheet(std::nullopt);
    addPdfs({"a.pdf"});
    EXPECT_EQ(rest(produce()), 0);
}

TEST_F(SheetsTest, ReturnStampsTheOtherFiles)
{
    addPdfs({"a.pdf"});
    addSamples({"Sealed letter.pdf"});
    model().setOutputFolder(output);
    model().stamp();
    QTest::keyClick(current(), Qt::Key_Return);
    EXPECT_FALSE(model().isConfirmingProtected());
    EXPECT_TRUE(waitUntil([this] { return model().sheet() == Sheet::result; }));
    EXPECT_EQ(model().summary()->files, 1);
}

TEST_F(SheetsTest, EscapeAbandonsTheStartAndHelpExplains)
{
    addPdfs({"a.pdf"});
    addSamples({"Sealed letter.pdf"});
    model().setOutputFolder(output);
    model().stamp();
    QTest::keyClick(current(), Qt::Key_Escape);
    EXPECT_FALSE(model().isConfirmingProtected());
    EXPECT_FALSE(model().isRunning());
    model().stamp();
    clickTitled(current(), QStringLiteral("How to Remove a Password"));
    EXPECT_FALSE(model().isConfirmingProtected());
    EXPECT_FALSE(model().isRunning());
    ASSERT_NE(app->help(), nullptr);
    EXPECT_EQ(app->environment().helpRouter.topic(), QStringLiteral("password"));
}

TEST_F(SheetsTest, AProductionThatWasWrittenIsToldWithItsRangeAndFiles)
{
    addPdfs({"a.pdf", "b.pdf"}, 2);
    AppSettings settings = model().settings();
    settings.writePrivilegeLog = true;
    model().setSettings(settings);
    QDialog *result = produce();
    EXPECT_EQ(text("resultTitle"), "Production written");
    EXPECT_EQ(text("resultCounts"), "2 stamped copies · 4 pages");
    EXPECT_EQ(text("resultRange"), "ABC000001 – ABC000004");
    EXPECT_EQ(find<QLabel>("resultCounts")->toolTip().toStdString(), output);
    EXPECT_EQ(find<QLabel>("resultIndex")->toolTip().toStdString(), output / "Production Index.csv");
    EXPECT_EQ(find<QLabel>("resultIndex")->accessibleDescription().toStdString(),
              output / "Production Index.csv");
    EXPECT_EQ(text("resultIndex"), "Production Index.csv");
    EXPECT_EQ(text("resultPrivilegeLog"), "Privilege Log.csv");
    EXPECT_EQ(text("resultNext"), "Next production starts at ABC000005 to continue this series.");
    EXPECT_EQ(buttonTitles(result),
              QStringList({QStringLiteral("Show in File Manager"), QStringLiteral("Start Next Production"),
                           QStringLiteral("Done")}));
    EXPECT_EQ(find<QPushButton>("startNext")->toolTip(),
              QStringLiteral("Clears the list and sets the start number to ABC000005."));
    EXPECT_EQ(result->focusWidget(), find<QPushButton>("done"));
    click("showInFinder");
    EXPECT_EQ(desktop->revealed, std::vector{output});
    QTest::keyClick(result, Qt::Key_Return);
    EXPECT_FALSE(model().sheet());
    EXPECT_TRUE(model().summary());
}

TEST_F(SheetsTest, WithoutTheOptionsTheirRowsAreNotThere)
{
    addPdfs({"a.pdf"});
    AppSettings settings = model().settings();
    settings.writeIndex = false;
    model().setSettings(settings);
    produce();
    EXPECT_FALSE(isShown("resultIndex"));
    EXPECT_FALSE(isShown("resultPrivilegeLog"));
}

TEST_F(SheetsTest, TheNextProductionClearsTheListAndGoesOnWithTheNumbers)
{
    addPdfs({"a.pdf"}, 3);
    produce();
    click("startNext");
    EXPECT_TRUE(model().sources().empty());
    EXPECT_EQ(stamp().startNumber, 4);
    EXPECT_FALSE(model().sheet());
    EXPECT_TRUE(isFree());
}

TEST_F(SheetsTest, AFullSeriesIsNotPromisedToGoOn)
{
    edit([](StampSettings &settings) { settings.startNumber = StampSettings::maxStart; });
    addPdfs({"a.pdf"});
    produce();
    EXPECT_EQ(text("resultRange"), "ABC999999999 – ABC999999999");
    EXPECT_EQ(text("resultNext"), "This series is full: no production can start at ABC1000000000. Choose "
                                  "another prefix or suffix for the next one.");
    EXPECT_EQ(find<QPushButton>("startNext")->toolTip(),
              QStringLiteral("Clears the list and leaves the start number as it is."));
    click("startNext");
    EXPECT_TRUE(model().sources().empty());
    EXPECT_EQ(stamp().startNumber, StampSettings::maxStart);
}

TEST_F(SheetsTest, ARunStoppedBeforeItsFirstCopySaysSo)
{
    restart([](const ProductionPlan &, const std::filesystem::path &, const ProductionOptions &,
               const Production::OnPage &) -> ProductionResult {
        throw ProductionError{ProductionError::Cancelled{}};
    });
    addPdfs({"a.pdf"});
    QDialog *result = produce();
    EXPECT_EQ(text("resultTitle"), "Stopped");
    EXPECT_EQ(text("resultNext"),
              "0 stamped copies were finished before you stopped; the one in progress was removed "
              "and no index was written.");
    EXPECT_FALSE(isShown("resultIndex"));
    EXPECT_FALSE(isShown("resultRange"));
    EXPECT_EQ(buttonTitles(result),
              QStringList({QStringLiteral("Show in File Manager"), QStringLiteral("Done")}));
}

TEST_F(SheetsTest, FailuresAreListedInTheirOrder)
{
    restart([this](const ProductionPlan &plan, const std::filesystem::path &into,
                   const ProductionOptions &options, const Production::OnPage &onPage) {
        std::ofstream(folder / "sources" / "b.pdf") << "no PDF any more";
        std::ofstream(folder / "sources" / "a.pdf") << "no PDF any more";
        return Production::write(plan, into, options, onPage);
    });
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    QDialog *result = produce();
    QStringList lines;
    for (const SymbolLabel *line : result->findChildren<SymbolLabel *>(QStringLiteral("failure"))) {
        lines.append(line->text());
    }
    EXPECT_EQ(lines,
              QStringList({QStringLiteral("“a.pdf” couldn’t be stamped (marked “failed” in the index)."),
                           QStringLiteral("“b.pdf” couldn’t be stamped (marked “failed” in the index).")}));
    EXPECT_EQ(text("failureReason"),
              "2 files: The original is damaged, or no PDF any more. Print it to a new "
              "PDF, and stamp that.");
}

TEST_F(SheetsTest, TheCommonestReasonsOfFailuresAreToldFirst)
{
    restart([](const ProductionPlan &, const std::filesystem::path &, const ProductionOptions &,
               const Production::OnPage &) {
        const auto cause = [](int error) {
            return FailureCause{FailureCause::During::writingCopy,
                                std::error_code(error, std::generic_category())};
        };
        ProductionResult result;
        result.failures = {{u"a.pdf"_s, StampError::locked(u"a.pdf"_s)},
                           {u"b.pdf"_s, StampError::cannotWrite(u"b.pdf"_s, cause(ENOSPC))},
                           {u"c.pdf"_s, StampError::cannotWrite(u"c.pdf"_s, cause(ENOSPC))},
                           {u"d.pdf"_s, StampError::cannotWrite(u"d.pdf"_s)},
                           {u"e.pdf"_s, StampError::cannotWrite(u"e.pdf"_s, cause(EACCES))},
                           {u"f.pdf"_s, StampError::encrypted(u"f.pdf"_s)}};
        return result;
    });
    addPdfs({"a.pdf", "b.pdf", "c.pdf", "d.pdf", "e.pdf", "f.pdf"});
    QDialog *result = produce();
    QStringList lines;
    for (const QLabel *line : result->findChildren<QLabel *>(QStringLiteral("failureReason"))) {
        lines.append(line->text());
    }
    ASSERT_EQ(lines.size(), 3) << lines.join(u'\n').toStdString();
    EXPECT_TRUE(lines[0].startsWith(u"2 files: No space left on the disk."_s));
    EXPECT_TRUE(lines[1].startsWith(u"1 file: The original needs a password by now."_s));
    EXPECT_TRUE(lines[2].startsWith(u"1 file: Permission denied in the output folder."_s));
}

TEST_F(SheetsTest, TheReasonOfAFailureThatIsAloneHasNoCount)
{
    restart([](const ProductionPlan &, const std::filesystem::path &, const ProductionOptions &,
               const Production::OnPage &) {
        ProductionResult result;
        result.failures.insert(u"a.pdf"_s, StampError::locked(u"a.pdf"_s));
        return result;
    });
    addPdfs({"a.pdf", "b.pdf"});
    (void)produce();
    EXPECT_EQ(text("failureReason"),
              "The original needs a password by now. Save it without one, and add that.");
}

TEST_F(SheetsTest, WhatLiesOverAWindowStaysInTheMiddleOfIt)
{
    model().setSheet(Sheet::welcome);
    const QDialog *welcome = current();
    ASSERT_NE(welcome, nullptr);
    const auto isInTheMiddle = [&](const QDialog *over) {
        const QPoint apart = over->frameGeometry().center() - app->mainView().frameGeometry().center();
        return apart.manhattanLength() <= 2;
    };
    // As a window manager does it, after the window was asked for.
    app->mainView().move(170, 130);
    EXPECT_TRUE(waitUntil([&] { return isInTheMiddle(welcome); }));
    app->mainView().resize(900, 640);
    EXPECT_TRUE(waitUntil([&] { return isInTheMiddle(welcome); }));
    model().setProblem(QStringLiteral("It did not work."));
    const QDialog *problem = current();
    app->mainView().move(120, 90);
    EXPECT_TRUE(waitUntil([&] { return isInTheMiddle(problem) && isInTheMiddle(welcome); }));
}

TEST_F(SheetsTest, TheSymbolOfAFailureStandsBesideItsText)
{
    SymbolLabel line(QStringLiteral("exclamationmark.triangle.fill"), Tone::warning, TextStyle::callout);
    line.setText(QStringLiteral("MMMMM"));
    line.resize(300, 3 * line.sizeHint().height());
    line.show();
    const QImage picture = line.grab().toImage();
    const QColor ground = picture.pixelColor(299, 0);
    const auto middle = [&](int from, int to) {
        int top = picture.height();
        int bottom = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = from; x < to; ++x) {
                if (picture.pixelColor(x, y) != ground) {
                    top = qMin(top, y);
                    bottom = qMax(bottom, y);
                }
            }
        }
        return (top + bottom) / 2;
    };
    const int symbol = line.findChild<QLabel *>()->x() - 2;
    EXPECT_NEAR(middle(0, symbol), middle(symbol, 300), 3);
}

TEST_F(SheetsTest, AFileThatChangedIsToldOfBeforeItIsStamped)
{
    addPdfs({"a.pdf"}, 2);
    model().setOutputFolder(output);
    model().setSelection({model().sources().front().id});
    (void)pdf("a.pdf", 3);
    QTest::keyClick(&app->mainView(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_NE(current(), nullptr);
    EXPECT_EQ(text("alertText"),
              "“a.pdf” has changed since it was added: it had 2 pages and has 3 pages now. "
              "Nothing was written: look at the list, then stamp again.");
    EXPECT_EQ(model().selection().size(), 1);
    QTest::keyClick(current(), Qt::Key_Return);
    EXPECT_TRUE(isFree());
    EXPECT_FALSE(model().isRunning());
    EXPECT_TRUE(std::filesystem::is_empty(output));
    QTest::keyClick(&app->mainView(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(waitUntil([this] { return model().sheet() == Sheet::result; }));
    EXPECT_EQ(model().summary()->pages, 3);
}

TEST_F(SheetsTest, AResultWaitsForAWindowThatWasClosed)
{
    addPdfs({"a.pdf"});
    model().setOutputFolder(output);
    app->mainView().close();
    model().stamp();
    EXPECT_TRUE(waitUntil([this] { return model().sheet() == Sheet::result; }));
    EXPECT_EQ(app->mainView().sheets().current(), nullptr);
    app->reopen({});
    EXPECT_NE(current(), nullptr);
}

TEST_F(SheetsTest, TheWelcomeIsShownUntilItIsAnswered)
{
    AppSettings settings = model().settings();
    settings.onboardingDone = false;
    model().setSettings(settings);
    restart();
    QDialog *welcome = current();
    ASSERT_NE(welcome, nullptr);
    EXPECT_EQ(welcome->objectName(), QStringLiteral("welcomeView"));
    EXPECT_EQ(buttonTitles(welcome), QStringList({QStringLiteral("Get Started"), QStringLiteral("Help")}));
    click("welcomeHelp");
    ASSERT_NE(app->help(), nullptr);
    QTest::keyClick(welcome, Qt::Key_Escape);
    EXPECT_TRUE(model().settings().onboardingDone); // Who closes it has seen it.
    EXPECT_FALSE(model().sheet());
    app->openWindow(WindowId::settings);
    click("showWelcome");
    restart();
    QTest::keyClick(current(), Qt::Key_Return);
    EXPECT_TRUE(model().settings().onboardingDone);
    EXPECT_FALSE(model().sheet());
}

} // namespace tallyfold
