#include "tests/ui/WindowFixture.h"
#include "ui/controls/ElidedLabel.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/list/FileListView.h"
#include "ui/sheets/Alert.h"

#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QToolTip>

#include <fstream>

namespace tallyfold {

namespace {

/// Names of two hundred letters without a space, in everything that a user can name.
class LongNames : public tests::WindowFixture {
protected:
    LongNames()
    {
        const QString affix(40, QLatin1Char('W'));
        edit([&](StampSettings &settings) {
            settings.prefix = affix;
            settings.suffix = affix;
            settings.legend = QString(200, QLatin1Char('W'));
            settings.pageOfTotal = true;
            settings.pageOfTotalFormat = QString(80, QLatin1Char('W'));
            settings.digits = 1;
            settings.startNumber = 999;
        });
    }

    const std::string name = std::string(200, 'W');

    /// Fails for what stands wider in `window` than what it stands in.
    static void checkWidths(QWidget *window)
    {
        QTest::qWait(0);
        int checked = 0;
        for (const QWidget *widget : window->findChildren<QWidget *>()) {
            const QWidget *around = widget->parentWidget();
            if (!widget->isVisible() || widget->isWindow() || !around || !around->isVisible()) {
                continue;
            }
            EXPECT_LE(widget->x() + widget->width(), around->width())
                << widget->metaObject()->className() << ' ' << widget->objectName().toStdString() << " in "
                << around->metaObject()->className() << ' ' << around->objectName().toStdString();
            ++checked;
        }
        EXPECT_GE(checked, 3);
    }
    /// How wide the window of a help text is that is asked for in the middle of `widget`.
    static int helpWidth(QWidget *widget, QPoint place)
    {
        QHelpEvent asked(QEvent::ToolTip, place, widget->mapToGlobal(place));
        QApplication::sendEvent(widget, &asked);
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->inherits("QTipLabel")) {
                return window->width();
            }
        }
        return 0;
    }
};

constexpr int readableWidth = 800;

} // namespace

TEST_F(LongNames, WidenNoColumn)
{
    addPdfs({name + ".pdf"});
    for (const int columns : {860, 1240}) {
        app->mainView().resize(columns, 700);
        waitUntil([this] { return !model().hasPreviewTask(); });
        checkWidths(&app->mainView());
        EXPECT_EQ(app->mainView().width(), columns);
    }
}

TEST_F(LongNames, WidenNoColumnWhereTheyAreWarnedOf)
{
    addPdfs({name + ".pdf", "b.pdf"});
    pdf("../output/" + name + ".pdf");
    model().setOutputFolder(output);
    ASSERT_TRUE(isShown("folderProblem"));
    ASSERT_TRUE(isShown("digitsWarning"));
    app->mainView().resize(860, 700);
    checkWidths(&app->mainView());
    std::filesystem::create_directory(output / name);
    model().setOutputFolder(output / name);
    checkWidths(&app->mainView());
}

TEST_F(LongNames, OfProtectedFilesWidenNothing)
{
    std::filesystem::copy(std::filesystem::path(TALLYFOLD_SAMPLES) / "Sealed letter.pdf",
                          folder / "sources" / (name + ".pdf"));
    model().add(std::vector{folder / "sources" / (name + ".pdf")});
    ASSERT_TRUE(isShown("passwordNotice"));
    app->mainView().resize(860, 700);
    checkWidths(&app->mainView());
    addPdfs({"a.pdf"});
    model().setConfirmingProtected(true);
    waitUntil([this] { return app->mainView().sheets().current() != nullptr; });
    checkWidths(app->mainView().sheets().current());
    EXPECT_LE(app->mainView().sheets().current()->width(), readableWidth);
}

TEST_F(LongNames, WidenNoResult)
{
    restart([this](const ProductionPlan &plan, const std::filesystem::path &into,
                   const ProductionOptions &options, const Production::OnPage &onPage) {
        std::ofstream(folder / "sources" / (name + ".pdf")) << "no PDF any more";
        return Production::write(plan, into, options, onPage);
    });
    addPdfs({name + ".pdf", "b.pdf"});
    model().setOutputFolder(output);
    model().stamp(true);
    waitUntil([this] { return app->mainView().sheets().current() != nullptr; });
    QDialog *result = app->mainView().sheets().current();
    ASSERT_EQ(result->objectName(), QStringLiteral("resultView"));
    checkWidths(result);
    EXPECT_LE(result->width(), readableWidth);
}

TEST_F(LongNames, WidenNoAlertAndNoSettings)
{
    model().setProblem(QStringLiteral("“%1”: No space left on device").arg(QString::fromStdString(name)));
    waitUntil([this] { return app->mainView().sheets().current() != nullptr; });
    QDialog *alert = app->mainView().sheets().current();
    checkWidths(alert);
    EXPECT_LE(alert->width(), readableWidth);
    const auto *message = alert->findChild<QLabel *>(QStringLiteral("alertText"));
    EXPECT_GE(message->height(), 2 * message->fontMetrics().height()) << "the name goes on on further lines";
    model().setProblem(std::nullopt);
    model().savePreset(QString::fromStdString(name));
    app->openWindow(WindowId::settings);
    checkWidths(app->settings());
}

TEST_F(LongNames, WidenNoMenu)
{
    model().savePreset(QString::fromStdString(name));
    QMenu &menu = app->mainView().presetMenu();
    Q_EMIT menu.aboutToShow();
    EXPECT_LE(menu.sizeHint().width(), 480);
    const QAction *preset = menu.actions().at(menu.actions().size() - 3);
    EXPECT_EQ(preset->toolTip().count(QLatin1Char('W')), 80) << "told whole";
    EXPECT_TRUE(menu.toolTipsVisible());
}

TEST_F(LongNames, WidenNoHelpText)
{
    addPdfs({name + ".pdf"});
    model().setOutputFolder(folder.path() / name / name);
    waitUntil([this] { return !model().hasPreviewTask(); });
    auto *view = find<FileListView>("files");
    const QRect row = view->visualRect(view->model()->index(0, 0));
    for (const auto &[widget, place] : {std::pair<QWidget *, QPoint>(view->viewport(), row.center()),
                                        {find<QWidget>("previewHeader"), QPoint(5, 5)},
                                        {find<QWidget>("outputFolder"), QPoint(5, 5)}}) {
        const int width = helpWidth(widget, place);
        EXPECT_GT(width, 100);
        EXPECT_LE(width, readableWidth);
        QToolTip::hideText();
        QTest::qWait(400); // It fades.
    }
}

TEST_F(LongNames, AreSeenToTheirEndWhereTheyWrap)
{
    addPdfs({"a.pdf"});
    app->mainView().resize(860, 700);
    for (const char *label : {"firstNumber", "range"}) {
        auto *shown = find<QLabel>(label);
        EXPECT_TRUE(waitUntil([&] { return shown->height() >= shown->heightForWidth(shown->width()); }))
            << label;
        EXPECT_GE(shown->height(), 3 * shown->fontMetrics().height()) << label;
        // The last line bears ink.
        const QImage picture = shown->grab().toImage();
        const QColor ground = picture.pixelColor(0, 0);
        int inked = 0;
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = picture.height() - shown->fontMetrics().height(); y < picture.height(); ++y) {
                inked += picture.pixelColor(x, y) != ground ? 1 : 0;
            }
        }
        EXPECT_GT(inked, 20) << label;
    }
}

} // namespace tallyfold
