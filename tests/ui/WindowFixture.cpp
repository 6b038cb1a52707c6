#include "tests/ui/WindowFixture.h"

#include "tests/support/Sample.h"
#include "tests/support/Waiting.h"
#include "ui/controls/SymbolLabel.h"
#include "ui/controls/Warning.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace tallyfold::tests {

namespace {

QWidget *widgetCalled(const char *name)
{
    const QString key = QString::fromLatin1(name);
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == key) {
            return window;
        }
        if (auto *found = window->findChild<QWidget *>(key)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

WindowFixture::WindowFixture() : output(folder / "output")
{
    std::filesystem::create_directory(output);
    std::filesystem::create_directory(folder / "sources");
    SettingsStore store(QString::fromStdString(folder / "settings.ini"));
    AppSettings settings = AppSettings::defaults();
    settings.onboardingDone = true;
    store.save(settings);
    restart();
}

WindowFixture::~WindowFixture() = default;

void WindowFixture::restart(AppModel::Writer writer)
{
    makeApp(std::move(writer));
    app->launch({});
    EXPECT_TRUE(QTest::qWaitForWindowActive(&app->mainView()));
}

void WindowFixture::makeApp(AppModel::Writer writer)
{
    app.reset();
    auto fakePanels = std::make_unique<FakePanels>();
    auto fakeDesktop = std::make_unique<FakeDesktop>();
    panels = fakePanels.get();
    desktop = fakeDesktop.get();
    TallyfoldApp::Parts parts;
    parts.settings = std::make_unique<SettingsStore>(QString::fromStdString(folder / "settings.ini"));
    parts.windowState = std::make_unique<WindowState>(QString::fromStdString(folder / "window.ini"));
    parts.desktop = std::move(fakeDesktop);
    parts.updater = std::make_unique<Updater>(FeedSettings{});
    parts.panels = std::move(fakePanels);
    parts.writer = std::move(writer);
    parts.reader = reader;
    parts.patience = patience;
    parts.checker = checker;
    parts.askForReport = askForReport;
    app = std::make_unique<TallyfoldApp>(std::move(parts));
}

std::filesystem::path WindowFixture::pdf(const std::string &name, int pages)
{
    return writeSamples(folder / "sources", {name}, pages).front();
}

void WindowFixture::addPdfs(const std::vector<std::string> &names, int pages)
{
    model().add(writeSamples(folder / "sources", names, pages));
}

void WindowFixture::addSamples(const std::vector<std::string> &names)
{
    std::vector<std::filesystem::path> paths;
    for (const std::string &name : names) {
        paths.push_back(std::filesystem::path(TALLYFOLD_SAMPLES) / name);
    }
    model().add(paths);
}

AppModel &WindowFixture::model()
{
    return app->model();
}

const StampSettings &WindowFixture::stamp()
{
    return model().settings().stamp;
}

void WindowFixture::edit(const std::function<void(StampSettings &)> &change)
{
    StampSettings settings = stamp();
    change(settings);
    model().setStamp(settings);
}

std::string WindowFixture::listed()
{
    std::string names;
    for (const SourceFile &source : model().sources()) {
        names += (names.empty() ? "" : " ") + source.name.toStdString();
    }
    return names;
}

bool WindowFixture::isShown(const char *name)
{
    const QWidget *widget = widgetCalled(name);
    return widget && widget->isVisible();
}

std::string WindowFixture::text(const char *name)
{
    auto *widget = find<QWidget>(name);
    if (const auto *label = qobject_cast<QLabel *>(widget)) {
        return label->text().toStdString();
    }
    if (const auto *label = qobject_cast<SymbolLabel *>(widget)) {
        return label->text().toStdString();
    }
    if (const auto *warning = qobject_cast<Warning *>(widget)) {
        return warning->text().toStdString();
    }
    if (const auto *button = qobject_cast<QAbstractButton *>(widget)) {
        return button->text().toStdString();
    }
    if (const auto *field = qobject_cast<QLineEdit *>(widget)) {
        return field->text().toStdString();
    }
    ADD_FAILURE() << name << " has no text";
    return {};
}

void WindowFixture::click(const char *name)
{
    if (auto *button = find<QAbstractButton>(name)) {
        EXPECT_TRUE(button->isVisible()) << name;
        button->click();
    }
}

QStringList WindowFixture::buttonTitles(QWidget *window)
{
    QList<QPushButton *> buttons = window->findChildren<QPushButton *>();
    buttons.removeIf([](const QPushButton *button) { return !button->isVisible(); });
    std::sort(buttons.begin(), buttons.end(), [window](const QPushButton *one, const QPushButton *other) {
        const QPoint first = one->mapTo(window, QPoint());
        const QPoint second = other->mapTo(window, QPoint());
        return std::pair(first.y() / 20, first.x()) < std::pair(second.y() / 20, second.x());
    });
    QStringList titles;
    for (const QPushButton *button : buttons) {
        titles.append(button->text());
    }
    return titles;
}

void WindowFixture::clickTitled(QWidget *window, const QString &title)
{
    for (QPushButton *button : window->findChildren<QPushButton *>()) {
        if (button->text() == title) {
            button->click();
            return;
        }
    }
    ADD_FAILURE() << "there is no button " << title.toStdString();
}

bool WindowFixture::waitUntil(const std::function<bool()> &condition)
{
    return tests::waitUntil(condition);
}

} // namespace tallyfold::tests
