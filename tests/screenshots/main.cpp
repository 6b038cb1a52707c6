// Writes pictures of every window in every state, for people to look at.
// Usage: tallyfold_screenshots FOLDER [light|dark|light-contrast|dark-contrast] [WIDTH HEIGHT];
// QT_SCALE_FACTOR sets the scale.

#include "app/LooseTask.h"
#include "app/Translations.h"
#include "tests/app/FakePanels.h"
#include "tests/app/Gate.h"
#include "tests/screenshots/CheckPictures.h"
#include "tests/support/Sample.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Waiting.h"
#include "ui/controls/CollapsibleSection.h"
#include "ui/controls/ColorWell.h"
#include "ui/desktop/ColorScheme.h"
#include "ui/panels/WindowPanels.h"
#include "ui/sheets/ReadingView.h"
#include "ui/shell/TallyfoldApp.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QMenuBar>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QTreeView>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <thread>

namespace {

using namespace tallyfold;
namespace fs = std::filesystem;

class NoDesktop final : public Desktop {
public:
    void reveal(const fs::path &) override {}
    void open(const QUrl &) override {}
};

/// The application with a settings file of its own.
class Stage {
public:
    Stage(const QString &folder, const QString &suffix, QSize size)
        : m_folder(folder), m_suffix(suffix), m_size(size)
    {
        fs::create_directory(m_temporary / "Production 3");
        TallyfoldApp::Parts parts;
        parts.settings =
            std::make_unique<SettingsStore>(QString::fromStdString(m_temporary / "settings.ini"));
        parts.windowState = std::make_unique<WindowState>(QString::fromStdString(m_temporary / "window.ini"));
        parts.desktop = std::make_unique<NoDesktop>();
        parts.updater = std::make_unique<Updater>(FeedSettings{});
        parts.panels = std::make_unique<tests::FakePanels>();
        parts.writer = [this](const ProductionPlan &plan, const fs::path &into,
                              const ProductionOptions &options, const Production::OnPage &onPage) {
            return Production::write(plan, into, options, [&](std::int64_t page) {
                const bool goesOn = onPage(page);
                while (m_isHeld && page >= 10 && goesOn && onPage(page)) {
                    std::this_thread::yield();
                }
                return goesOn;
            });
        };
        m_app = std::make_unique<TallyfoldApp>(std::move(parts));
        AppSettings settings = model().settings();
        settings.onboardingDone = true;
        model().setSettings(settings);
        m_app->launch({});
        window().resize(m_size);
    }

    AppModel &model()
    {
        return m_app->model();
    }
    TallyfoldApp &app()
    {
        return *m_app;
    }
    QWidget &window()
    {
        return m_app->mainView();
    }
    [[nodiscard]] fs::path folder() const
    {
        return m_temporary.path();
    }
    [[nodiscard]] fs::path output() const
    {
        return m_temporary / "Production 3";
    }

    void edit(const std::function<void(StampSettings &)> &change)
    {
        StampSettings settings = model().settings().stamp;
        change(settings);
        model().setStamp(settings);
    }

    fs::path pdf(const std::string &name, int pages)
    {
        return tests::writeSamples(m_temporary / "sources", {name}, pages).front();
    }

    void waitUntil(const std::function<bool()> &condition)
    {
        if (!tests::waitUntil(condition)) {
            std::cerr << "The window does not get where a picture is wanted.\n";
            std::exit(1);
        }
    }
    void settle()
    {
        waitUntil([this] { return !model().hasPreviewTask(); });
        for (int round = 0; round < 20; ++round) {
            QCoreApplication::processEvents();
        }
    }
    void hold(bool isHeld)
    {
        m_isHeld = isHeld;
    }

    /// Scrolls the form so far down, from 0 to 1.
    void scrollForm(double share)
    {
        QScrollBar *bar = window().findChild<QScrollArea *>(QStringLiteral("stampForm"))->verticalScrollBar();
        settle();
        bar->setValue(static_cast<int>(bar->maximum() * share));
    }

    void shoot(QWidget &widget, const char *name)
    {
        settle();
        const QString path = QStringLiteral("%1/%2%3.png").arg(m_folder, QLatin1String(name), m_suffix);
        if (!widget.grab().save(path)) {
            std::cerr << "cannot write " << path.toStdString() << '\n';
            std::exit(1);
        }
    }
    /// The main window with the sheet that lies over it.
    void shootWithSheet(const char *name)
    {
        shootUnder(app().mainView().sheets().current(), name);
    }
    /// The main window with `sheet` over it; null for none.
    void shootUnder(QWidget *sheet, const char *name)
    {
        settle();
        QPixmap picture = window().grab();
        if (sheet) {
            QPainter painter(&picture);
            painter.fillRect(picture.rect(), QColor(0, 0, 0, 60));
            const QPixmap over = sheet->grab();
            painter.drawPixmap((window().width() - sheet->width()) / 2,
                               (window().height() - sheet->height()) / 2, over);
        }
        const QString path = QStringLiteral("%1/%2%3.png").arg(m_folder, QLatin1String(name), m_suffix);
        if (!picture.save(path)) {
            std::cerr << "cannot write " << path.toStdString() << '\n';
            std::exit(1);
        }
    }

private:
    QString m_folder;
    QString m_suffix;
    QSize m_size;
    tests::TemporaryFolder m_temporary;
    std::atomic<bool> m_isHeld = false;
    std::unique_ptr<TallyfoldApp> m_app;
};

fs::path sample(const char *name)
{
    return fs::path(TALLYFOLD_SAMPLES) / name;
}

void shootList(Stage &stage)
{
    stage.shoot(stage.window(), "empty");
    stage.model().add(std::vector<fs::path>{sample("Exhibit A - Lease.pdf"), sample("Deposition excerpt.pdf"),
                                            sample("Intake form.pdf")});
    stage.edit([](StampSettings &settings) { settings.legend = QStringLiteral("CONFIDENTIAL"); });
    stage.model().setOutputFolder(stage.output());
    stage.shoot(stage.window(), "files");
    stage.scrollForm(0.45);
    stage.shoot(stage.window(), "files-middle");
    stage.scrollForm(1);
    stage.shoot(stage.window(), "files-bottom");
    stage.scrollForm(0);
}

void shootRun(Stage &stage)
{
    stage.model().removeAll();
    stage.model().add(
        std::vector<fs::path>{stage.pdf("Correspondence.pdf", 40), stage.pdf("Exhibits.pdf", 22)});
    stage.hold(true);
    stage.model().stamp();
    stage.waitUntil([&] { return stage.model().progressPages() >= 10; });
    stage.shoot(stage.window(), "running");
    stage.model().cancelRun();
    stage.waitUntil([&] { return stage.model().sheet().has_value(); });
    stage.shootWithSheet("stopped");
    stage.model().setSheet(std::nullopt);
    stage.hold(false);
    stage.model().stamp();
    stage.waitUntil([&] { return stage.model().sheet().has_value(); });
    stage.shootWithSheet("result");
    stage.model().setSheet(std::nullopt);
    stage.scrollForm(1);
    stage.shoot(stage.window(), "folder-problem");
    stage.scrollForm(0);
}

void shootWarnings(Stage &stage)
{
    stage.model().removeAll();
    const std::string longName = std::string(190, 'W') + " of 2026.pdf";
    stage.model().add(std::vector<fs::path>{sample("Board minutes.pdf"), sample("Sealed letter.pdf"),
                                            sample("Term sheet.pdf"), stage.pdf(longName, 1),
                                            stage.pdf("Cover letter.pdf", 1)});
    std::ofstream(stage.pdf("Broken scan.pdf", 1), std::ios::trunc) << "not a PDF";
    stage.model().add(std::vector<fs::path>{stage.output() / ".." / "sources" / "Broken scan.pdf"});
    stage.edit([](StampSettings &settings) {
        settings.startNumber = 999'998;
        settings.cover = CoverOption::skipNoNumber;
        settings.pageOfTotal = true;
        settings.legend = QStringLiteral("CONFIDENTIAL — ATTORNEYS’ EYES ONLY");
    });
    stage.shoot(stage.window(), "warnings");
    stage.scrollForm(0.5);
    stage.shoot(stage.window(), "warnings-middle");
    stage.edit([](StampSettings &settings) { settings.cover = CoverOption::skipKeepNumber; });
    stage.scrollForm(1);
    stage.shoot(stage.window(), "warnings-bottom");
    stage.scrollForm(0);
    stage.model().setOutputFolder(stage.output() / ".." / "sources");
    stage.model().setConfirmingProtected(true);
    stage.shootWithSheet("protected");
    stage.model().setConfirmingProtected(false);
    stage.model().setProblem(QStringLiteral("Nothing was written: fix the items under Output first."));
    stage.shootWithSheet("problem");
    stage.model().setProblem(std::nullopt);
}

/// Takes a picture of the panel that `choose` opens, and closes it.
void shootPanel(Stage &stage, const OpenPanel &panel, const fs::path &folder, const char *name)
{
    tests::TemporaryFolder temporary;
    WindowState state(QString::fromStdString(temporary / "window.ini"));
    for (const char *key : {"panel/files", "panel/folder"}) {
        state.setBytes(QLatin1String(key), QByteArray::fromStdString(folder.lexically_normal().native()));
    }
    WindowPanels panels(state);
    panels.setWindow(&stage.window());
    QTimer::singleShot(500, [&] { // Qt's own dialog lists its folder on a thread.
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (auto *list = dialog->findChild<QTreeView *>(QStringLiteral("contents"))) {
            list->setCurrentIndex(list->model()->index(1, 0));
        }
        stage.shoot(*dialog, name);
        dialog->reject();
    });
    (void)panels.run(panel);
}

void shootDialogs(Stage &stage)
{
    stage.model().removeAll();
    stage.model().add(std::vector<fs::path>{stage.pdf("Correspondence.pdf", 40)});
    stage.edit([](StampSettings &settings) { settings = StampSettings(); });
    stage.model().setOutputFolder(stage.output());
    stage.app().setReachable(false); // Or closing the window would only hide it.
    stage.pdf("Minutes of the board, " + std::string(190, 'n') + " 2026.pdf", 1);
    stage.window().close();
    auto *question = stage.window().findChild<QDialog *>(QStringLiteral("closeAlert"));
    stage.shootUnder(question, "close-question");
    question->reject();
    stage.hold(true);
    fs::remove_all(stage.output());
    fs::create_directory(stage.output());
    stage.model().stamp();
    stage.waitUntil([&] { return stage.model().progressPages() >= 10; });
    stage.shoot(stage.window(), "progress");
    stage.window().close();
    question = nullptr;
    for (auto *dialog : stage.window().findChildren<QDialog *>(QStringLiteral("closeAlert"))) {
        question = dialog->isVisible() ? dialog : question;
    }
    stage.shootUnder(question, "close-question-running");
    question->close();
    question->hide();
    stage.model().cancelRun();
    stage.waitUntil([&] { return stage.model().sheet().has_value(); });
    stage.model().setSheet(std::nullopt);
    stage.hold(false);
    stage.app().setReachable(true);
    auto *well = stage.window().findChild<ColorWell *>();
    well->click();
    stage.shoot(*well->panel(), "colour");
    well->panel()->reject();
    shootPanel(stage, OpenPanel::forFiles(), stage.output().parent_path() / "sources", "file-panel");
    shootPanel(stage, OpenPanel::forOutputFolder(), stage.output().parent_path(), "folder-dialog");
}

void shootOthers(Stage &stage)
{
    stage.model().removeAll();
    stage.model().setSheet(Sheet::welcome);
    stage.shootWithSheet("welcome");
    stage.model().setSheet(std::nullopt);
    stage.app().openWindow(WindowId::settings);
    stage.shoot(*stage.app().settings(), "settings-none");
    for (const char *name : {"Smith v. Jones", "Exhibits with a rather long name that wraps"}) {
        stage.model().savePreset(QString::fromUtf8(name));
    }
    stage.shoot(*stage.app().settings(), "settings");
    for (const char *topic : {"start", "password", "support"}) {
        stage.app().environment().openHelp(QString::fromLatin1(topic));
        stage.shoot(*stage.app().help(), (std::string("help-") + topic).c_str());
    }
    stage.app().mainView().presetMenu().popup(QPoint(0, 0));
    stage.shoot(stage.app().mainView().presetMenu(), "presets");
    stage.app().mainView().presetMenu().hide();
}

void shootUnshown(Stage &stage)
{
    stage.model().removeAll();
    const fs::path broken = stage.pdf("A scan that cannot be read.pdf", 1);
    std::ofstream(broken, std::ios::trunc) << "not a PDF";
    stage.model().add(
        std::vector<fs::path>{broken, sample("Sealed letter.pdf"), sample("Board minutes.pdf")});
    for (const char *section : {"placement", "lines", "output"}) {
        stage.window().findChild<CollapsibleSection *>(QLatin1String(section))->setExpanded(false);
    }
    stage.model().setSelection({stage.model().sources()[1].id});
    stage.window().findChild<QWidget *>(QStringLiteral("files"))->setFocus();
    stage.model().setOutputFolder(stage.output() / "gone");
    stage.shoot(stage.window(), "unshown-and-closed");
    for (const char *section : {"placement", "lines", "output"}) {
        stage.window().findChild<CollapsibleSection *>(QLatin1String(section))->setExpanded(true);
    }
    stage.edit([](StampSettings &settings) {
        settings.prefix = QString(40, QLatin1Char('W'));
        settings.suffix = QString(40, QLatin1Char('M'));
    });
    stage.shoot(stage.window(), "long-names");
    stage.edit([](StampSettings &settings) { settings = StampSettings::exhibits(); });
    stage.model().setSelection({stage.model().sources()[2].id});
    stage.shoot(stage.window(), "close-up-ends");
    auto *bar = stage.app().mainView().menuBar();
    bar->setActiveAction(bar->actions()[2]);
    stage.settle();
    stage.shoot(*bar->actions()[2]->menu(), "menu");
    bar->actions()[2]->menu()->hide();
}

void shootMany(Stage &stage)
{
    stage.model().removeAll();
    std::vector<fs::path> files;
    for (int number = 1; number <= 200; ++number) {
        files.push_back(stage.pdf("Document " + std::to_string(number) + ".pdf", 1 + number % 7));
    }
    stage.model().add(files);
    stage.model().setSelection({stage.model().sources()[1].id, stage.model().sources()[2].id});
    stage.shoot(stage.window(), "many");
}

void shootReading(Stage &stage)
{
    stage.model().removeAll();
    tests::Gate folder;
    tests::Gate file;
    {
        SourceReading reading(
            [&folder](const std::stop_token &) {
                folder.pass();
                return std::vector<fs::path>(20'000);
            },
            [&file, read = 0](const fs::path &) mutable {
                if (++read == 1234) {
                    file.pass();
                }
                return KnownSources::Reading();
            },
            1);
        ReadingView view(reading, &stage.window());
        view.show();
        folder.awaitArrival();
        stage.shootUnder(&view, "looking");
        folder.open();
        file.awaitArrival();
        const auto *bar = view.findChild<QProgressBar *>(QStringLiteral("readingProgress"));
        stage.waitUntil([bar] { return bar->value() == 1233; });
        stage.shootUnder(&view, "reading");
    }
    file.open();
    stage.waitUntil([] { return !LooseTask::isAnyLeft(); });
}

} // namespace

int main(int count, char **values)
{
    if (count < 2) {
        std::cerr << "usage: tallyfold_screenshots FOLDER [light|dark|light-contrast|dark-contrast] [WIDTH "
                     "HEIGHT]\n";
        return 64;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, values);
    QApplication::setApplicationDisplayName(QStringLiteral("Tallyfold"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/symbols/tallyfold.svg")));
    const Translations translations;
    const ColorScheme scheme;
    const QString look = count > 2 ? QString::fromLocal8Bit(values[2]) : QStringLiteral("light");
    ColorScheme::apply(look.startsWith(QStringLiteral("dark")) ? ColorScheme::Preference::dark
                                                               : ColorScheme::Preference::light,
                       look.endsWith(QStringLiteral("contrast")) ? Contrast::high : Contrast::normal);
    const QSize size = count > 4 ? QSize(std::atoi(values[3]), std::atoi(values[4])) : QSize(1240, 800);
    fs::create_directories(values[1]);
    Stage stage(QFileInfo(QString::fromLocal8Bit(values[1])).absoluteFilePath(), QStringLiteral("-") + look,
                size);
    shootList(stage);
    shootRun(stage);
    shootWarnings(stage);
    shootDialogs(stage);
    shootOthers(stage);
    shootUnshown(stage);
    shootMany(stage);
    shootReading(stage);
    tests::shootCheck(stage.folder(), size,
                      [&stage](QWidget &window, const char *name) { stage.shoot(window, name); });
    return 0;
}
