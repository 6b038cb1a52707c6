#include "tests/screenshots/CheckPictures.h"

#include "core/Production.h"
#include "core/SourceClassifier.h"
#include "tests/app/FakePanels.h"
#include "tests/app/Gate.h"
#include "tests/support/Sample.h"
#include "tests/support/Waiting.h"
#include "ui/check/CheckWindow.h"

#include <QTreeView>

#include <cstdlib>
#include <fstream>
#include <iostream>

namespace tallyfold::tests {

namespace fs = std::filesystem;

namespace {

class NoDesktop final : public Desktop {
public:
    void reveal(const fs::path &) override {}
    void open(const QUrl &) override {}
};

/// A production of the project's samples and two longer files.
void produce(const fs::path &folder, std::int64_t start)
{
    StampSettings settings;
    settings.startNumber = start;
    settings.legend = QStringLiteral("CONFIDENTIAL");
    std::vector<SourceFile> sources;
    for (const char *name : {"Exhibit A - Lease.pdf", "Deposition excerpt.pdf", "Intake form.pdf"}) {
        sources.push_back(classify(fs::path(TALLYFOLD_SAMPLES) / name));
    }
    for (const auto &[name, pages] :
         {std::pair{"Correspondence, spring.pdf", 2}, std::pair{"Ledger 2026.pdf", 12}}) {
        sources.push_back(classify(writeSamples(folder.parent_path() / "originals", {name}, pages).front()));
    }
    fs::create_directories(folder);
    (void)Production::write(ProductionPlan(sources, settings), folder, {}, [](std::int64_t) { return true; });
}

void waitFor(const std::function<bool()> &condition)
{
    if (!waitUntil(condition)) {
        std::cerr << "The check does not get where a picture is wanted.\n";
        std::exit(1);
    }
}

/// Harms a production in every way that has a row of its own.
void damage(const fs::path &folder)
{
    fs::remove(folder / "Deposition excerpt.pdf");
    fs::remove(folder / "Correspondence, spring.pdf");
    writeSample(folder / "Correspondence, spring.pdf", 2);
    std::ofstream(folder / "Intake form.pdf", std::ios::trunc) << "no PDF any more";
    writeSample(folder / "Draft of the letter, not to be produced.pdf", 1);
    std::ofstream(folder / "Production Index.csv", std::ios::app) << "a row,that,nobody,understands\r\n";
}

} // namespace

void shootCheck(const fs::path &folder, QSize size, const Shoot &shoot)
{
    fs::current_path(folder); // So that no picture shows where it was made.
    const fs::path third = fs::path("Smith v. Jones") / "Production 3";
    const fs::path fourth = fs::path("Smith v. Jones") / "Production 4";
    produce(third, 1);
    produce(fourth, 120);
    WindowState state(QString::fromStdString(folder / "check.ini"));
    NoDesktop desktop;
    FakePanels panels;
    Gate gate;
    bool isHeld = true;
    CheckWindow window({panels, state, desktop, askForReport,
                        [&](std::span<const fs::path> folders, const check::ShowProgress &show,
                            const std::stop_token &givenUp) {
                            if (isHeld) {
                                show({QStringLiteral("Correspondence, spring.pdf"), 15'480, 40'212});
                                gate.pass();
                            }
                            return check::checkProductions(folders, show, givenUp);
                        }});
    window.resize(window.size().boundedTo(size));
    window.show();
    CheckModel &model = window.model();
    const auto checkAgain = [&] {
        model.start();
        waitFor([&] { return !model.isRunning(); });
    };
    shoot(window, "check-empty");
    model.add(std::vector{third});
    shoot(window, "check-ready");
    model.start();
    gate.awaitArrival();
    waitFor([&] { return model.progress().pages > 0; });
    shoot(window, "check-running");
    gate.open();
    waitFor([&] { return !model.isRunning(); });
    isHeld = false;
    shoot(window, "check-whole");
    model.add(std::vector{fourth});
    shoot(window, "check-other-folders");
    damage(third);
    checkAgain();
    shoot(window, "check-findings");
    auto *findings = window.findChild<QTreeView *>(QStringLiteral("findings"));
    findings->setCurrentIndex(findings->model()->index(2, FindingsModel::fileColumn));
    Q_EMIT findings->activated(findings->currentIndex());
    waitFor([&] { return !window.viewer()->isDrawing(); });
    shoot(*window.viewer(), "check-page");
    window.resize(window.minimumSize());
    shoot(window, "check-narrow");
}

} // namespace tallyfold::tests
