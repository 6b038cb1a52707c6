#pragma once

#include "app/Translations.h"
#include "tests/app/FakePanels.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/shell/TallyfoldApp.h"

#include <QAbstractButton>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tallyfold::tests {

/// A desktop that notes what it was asked to show.
class FakeDesktop final : public Desktop {
public:
    std::vector<std::filesystem::path> revealed;
    std::vector<QUrl> opened;

    void reveal(const std::filesystem::path &item) override
    {
        revealed.push_back(item);
    }
    void open(const QUrl &url) override
    {
        opened.push_back(url);
    }
};

/// The whole application in its windows, with a settings file, panels and a desktop of its own. The welcome
/// sheet has been seen before.
class WindowFixture : public testing::Test {
protected:
    WindowFixture();
    ~WindowFixture() override;

    /// Starts the application anew on the same settings.
    void restart(AppModel::Writer writer = AppModel::systemWriter());
    /// The same without launching it.
    void makeApp(AppModel::Writer writer = AppModel::systemWriter());

    /// A new PDF of `pages` pages called `name`; its path.
    std::filesystem::path pdf(const std::string &name, int pages = 1);
    /// Adds such PDFs to the list.
    void addPdfs(const std::vector<std::string> &names, int pages = 1);
    /// Adds files of the project's samples.
    void addSamples(const std::vector<std::string> &names);

    [[nodiscard]] AppModel &model();
    [[nodiscard]] const StampSettings &stamp();
    /// Changes the stamp settings.
    void edit(const std::function<void(StampSettings &)> &change);
    [[nodiscard]] std::string listed();

    /// The widget called `name` in any window; fails the test when there is none.
    template <typename Widget> Widget *find(const char *name)
    {
        const QString key = QString::fromLatin1(name);
        for (QWidget *window : QApplication::topLevelWidgets()) {
            auto *self = window->objectName() == key ? qobject_cast<Widget *>(window) : nullptr;
            if (Widget *found = self ? self : window->findChild<Widget *>(key)) {
                return found;
            }
        }
        ADD_FAILURE() << "there is no " << name;
        return nullptr;
    }
    /// Whether there is such a widget, and it can be seen.
    [[nodiscard]] static bool isShown(const char *name);
    /// What the label, button, field, or warning called `name` reads.
    [[nodiscard]] std::string text(const char *name);

    void click(const char *name);
    /// Clicks the button titled `title` in `window`.
    static void clickTitled(QWidget *window, const QString &title);
    /// The titles of the buttons of `window` that can be seen, in reading order.
    [[nodiscard]] static QStringList buttonTitles(QWidget *window);

    /// Lets events happen until `condition` holds; false when it does not come to hold.
    static bool waitUntil(const std::function<bool()> &condition);

    TemporaryFolder folder;
    std::filesystem::path output;
    FakePanels *panels = nullptr;
    FakeDesktop *desktop = nullptr;
    Translations translations;
    /// What the next application reads files by, and how long before it shows that.
    SourceReading::Read reader = KnownSources::read;
    std::chrono::milliseconds patience = WindowReadingPanel::usualPatience;
    /// What it checks productions by, and how it asks for the place of a report.
    CheckModel::Checker checker = check::checkProductions;
    AskForReport askForReport = tallyfold::askForReport;
    std::unique_ptr<TallyfoldApp> app;
};

} // namespace tallyfold::tests
