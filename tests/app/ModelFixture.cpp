#include "tests/app/ModelFixture.h"

#include "tests/support/Sample.h"
#include "tests/support/Waiting.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <utility>

namespace tallyfold::tests {

namespace {

using Signal = void (AppModel::*)();

constexpr std::array<std::pair<const char *, Signal>, 15> allSignals{
    {{"settings", &AppModel::settingsChanged},
     {"sources", &AppModel::sourcesChanged},
     {"selection", &AppModel::selectionChanged},
     {"outputFolder", &AppModel::outputFolderChanged},
     {"problem", &AppModel::problemChanged},
     {"folderCheck", &AppModel::folderCheckChanged},
     {"undoManager", &AppModel::undoManagerChanged},
     {"running", &AppModel::runningChanged},
     {"confirmingProtected", &AppModel::confirmingProtectedChanged},
     {"progressPages", &AppModel::progressPagesChanged},
     {"summary", &AppModel::summaryChanged},
     {"sheet", &AppModel::sheetChanged},
     {"previews", &AppModel::previewsChanged},
     {"closeUp", &AppModel::closeUpChanged},
     {"previewFileName", &AppModel::previewFileNameChanged}}};

} // namespace

SignalCounts::SignalCounts(AppModel &model)
{
    for (const auto &[name, signal] : allSignals) {
        m_spies.emplace(name, std::make_unique<QSignalSpy>(&model, signal));
    }
}

std::map<std::string, int> SignalCounts::take()
{
    std::map<std::string, int> counts;
    for (const auto &[name, spy] : m_spies) {
        if (!spy->isEmpty()) {
            counts.emplace(name, static_cast<int>(spy->size()));
            spy->clear();
        }
    }
    return counts;
}

ModelFixture::ModelFixture() : output(folder / "output"), model(anotherModel())
{
    std::filesystem::create_directory(output);
    std::filesystem::create_directory(folder / "sources");
    model->setUndoManager(&undo);
    counts = std::make_unique<SignalCounts>(*model);
}

std::unique_ptr<AppModel> ModelFixture::anotherModel()
{
    return std::make_unique<AppModel>(
        std::make_unique<SettingsStore>(QString::fromStdString(folder / "settings.ini")), panels);
}

std::filesystem::path ModelFixture::pdf(const std::string &name, int pages)
{
    return writeSamples(folder / "sources", {name}, pages).front();
}

void ModelFixture::addPdfs(const std::vector<std::string> &names, int pages)
{
    model->add(writeSamples(folder / "sources", names, pages));
}

std::string ModelFixture::listed() const
{
    std::string names;
    for (const SourceFile &source : model->sources()) {
        names += (names.empty() ? "" : " ") + source.name.toStdString();
    }
    return names;
}

QUuid ModelFixture::idOf(const std::string &name) const
{
    for (const SourceFile &source : model->sources()) {
        if (source.name.toStdString() == name) {
            return source.id;
        }
    }
    return {};
}

bool ModelFixture::waitUntil(const std::function<bool()> &condition)
{
    return tests::waitUntil(condition);
}

void ModelFixture::stampAndWait(bool confirmed)
{
    model->setOutputFolder(output);
    model->stamp(confirmed);
    EXPECT_TRUE(waitUntil([this] { return !model->isRunning(); }));
}

std::vector<std::string> ModelFixture::written() const
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(output)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace tallyfold::tests
