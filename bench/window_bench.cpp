/// What users feel of the window: how much of the processor's time passes until it is first seen, and how
/// much a keystroke and a turn of the wheel take with thousands of files in the list.
///
/// Usage: window_bench WORKLOADS, the folder that make_workloads.py made; its "small" folder is the list.

#include "app/Translations.h"
#include "ui/desktop/ColorScheme.h"
#include "ui/list/FileListView.h"
#include "ui/shell/TallyfoldApp.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProcess>
#include <QScrollBar>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <vector>

#include <time.h>

namespace {

using namespace tallyfold;
namespace fs = std::filesystem;

/// Milliseconds of processor time that `clock` has counted.
double processorTime(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

class NoDesktop final : public Desktop {
public:
    void reveal(const fs::path &) override {}
    void open(const QUrl &) override {}
};

TallyfoldApp::Parts partsIn(const QString &folder)
{
    TallyfoldApp::Parts parts;
    parts.settings = std::make_unique<SettingsStore>(folder + QStringLiteral("/settings.ini"));
    parts.windowState = std::make_unique<WindowState>(folder + QStringLiteral("/window.ini"));
    parts.desktop = std::make_unique<NoDesktop>();
    parts.updater = std::make_unique<Updater>(FeedSettings{});
    return parts;
}

/// Ends the process when `window` has been painted, and before anything that waits for that begins.
class PaintClock final : public QObject {
public:
    explicit PaintClock(QWidget &window) : QObject(&window)
    {
        window.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            QCoreApplication::postEvent(this, std::make_unique<QEvent>(QEvent::User).release(),
                                        Qt::HighEventPriority);
        }
        return QObject::eventFilter(object, event);
    }
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        std::printf("%.2f\n", processorTime(CLOCK_PROCESS_CPUTIME_ID));
        std::fflush(stdout);
        std::_Exit(0);
    }
};

/// Starts with the files of `folder`, if any, and prints the processor time of the whole process, linking
/// included, until the window is painted.
int start(int count, char **values)
{
    QApplication application(count, values);
    const QTemporaryDir state;
    const Translations translations;
    const ColorScheme scheme;
    TallyfoldApp app(partsIn(state.path()));
    new PaintClock(app.mainView());
    std::vector<fs::path> files;
    for (int place = 2; place < count; ++place) {
        files.emplace_back(values[place]);
    }
    app.launch(files);
    return QApplication::exec();
}

double bestStart(const QString &program, const QStringList &files)
{
    double best = std::numeric_limits<double>::max();
    for (int round = 0; round < 5; ++round) {
        QProcess process;
        process.start(program, QStringList(QStringLiteral("--start")) + files);
        process.waitForFinished(-1);
        bool isNumber = false;
        const double time = process.readAllStandardOutput().trimmed().toDouble(&isNumber);
        if (!isNumber) {
            std::fputs("the start could not be measured\n", stderr);
            std::exit(1);
        }
        best = std::min(best, time);
    }
    return best;
}

/// Processor time of the main thread for a letter typed into the prefix, until nothing is left to be done:
/// the median of many letters.
double keystroke(const fs::path &folder)
{
    const QTemporaryDir state;
    TallyfoldApp app(partsIn(state.path()));
    app.launch({});
    app.model().add(std::vector{folder});
    auto *prefix = app.mainView().findChild<QLineEdit *>(QStringLiteral("prefix"));
    prefix->setFocus();
    const auto settle = [] {
        for (int round = 0; round < 5; ++round) {
            QCoreApplication::processEvents();
        }
    };
    settle();
    std::vector<double> times;
    for (int letter = 0; letter < 40; ++letter) {
        const double before = processorTime(CLOCK_THREAD_CPUTIME_ID);
        const bool isDeleting = letter % 2 == 1;
        QKeyEvent press(QEvent::KeyPress, isDeleting ? Qt::Key_Backspace : Qt::Key_X, {},
                        isDeleting ? QString() : QStringLiteral("x"));
        QApplication::sendEvent(prefix, &press);
        settle();
        times.push_back(processorTime(CLOCK_THREAD_CPUTIME_ID) - before);
    }
    std::printf("%zu files in the list.\n\n", app.model().sources().size());
    std::nth_element(times.begin(), times.begin() + 20, times.end());
    return times[20];
}

/// A plan of so many files, every fourth of which has something to say. There is nothing on the disk.
std::shared_ptr<const ProductionPlan> planOf(int count)
{
    std::vector<SourceFile> sources;
    for (int number = 1; number <= count; ++number) {
        const QString name = QStringLiteral("Correspondence with counsel, part %1.pdf").arg(number);
        SourceFile source{
            QUuid::createUuid(), name.toStdString(), name, number % 40 + 1, distantPast(), {}, {}};
        if (number % 8 == 0) {
            source.problem = SourceProblem::locked;
        } else if (number % 4 == 0) {
            source.existingBates = QStringLiteral("ACME%1").arg(number);
        }
        sources.push_back(source);
    }
    return std::make_shared<const ProductionPlan>(sources, StampSettings());
}

/// Processor time of the main thread for a turn of the wheel over a list of `count` files, drawn anew: the
/// slowest of many turns and of a jump to the end.
double scrolling(int count)
{
    FileListModel model([](const std::set<std::int64_t> &, std::int64_t) {});
    FileListView view(model);
    model.setPlan(planOf(count));
    view.resize(320, 700);
    view.show();
    QCoreApplication::processEvents();
    double slowest = 0;
    const auto scrollTo = [&](int place) {
        const double before = processorTime(CLOCK_THREAD_CPUTIME_ID);
        view.verticalScrollBar()->setValue(place);
        QCoreApplication::processEvents();
        slowest = std::max(slowest, processorTime(CLOCK_THREAD_CPUTIME_ID) - before);
    };
    scrollTo(view.verticalScrollBar()->maximum());
    for (int turn = 0; turn < 200; ++turn) {
        scrollTo(turn * view.verticalScrollBar()->singleStep() * QApplication::wheelScrollLines());
    }
    return slowest;
}

void print(const char *what, double milliseconds, double target)
{
    std::printf("| %s | %.1f ms | %g ms | %s |\n", what, milliseconds, target,
                milliseconds <= target ? "reached" : "missed");
}

} // namespace

int main(int count, char **values)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (count >= 2 && qstrcmp(values[1], "--start") == 0) {
        return start(count, values);
    }
    if (count != 2) {
        std::fputs("usage: window_bench WORKLOADS\n", stderr);
        return 64;
    }
    const fs::path small = fs::path(values[1]) / "small";
    QStringList files;
    for (const auto &entry : fs::directory_iterator(small)) {
        files.append(QString::fromStdString(entry.path()));
    }
    QApplication application(count, values);
    const Translations translations;
    const ColorScheme scheme;
    const QString program = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    const double typing = keystroke(small);
    std::printf("| what | processor time | at most | |\n| --- | --- | --- | --- |\n");
    print("start to first paint, empty list", bestStart(program, {}), 300);
    print("start to first paint, given these files", bestStart(program, files), 300);
    print("a turn of the wheel over 20,000 files, the slowest of 200", scrolling(20'000), 16);
    print("a letter in the prefix, main thread", typing, 16);
    return 0;
}
