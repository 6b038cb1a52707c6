#include "app/AppModel.h"

#include "app/SourceMessages.h"

#include <QGuiApplication>

#include <utility>

namespace tallyfold {

AppModel::AppModel(std::unique_ptr<SettingsStore> store, Panels &panels, Writer writer,
                   SourceReading::Read reader)
    : m_store(std::move(store)),
      m_panels(&panels),
      m_writer(std::move(writer)),
      m_reader(std::move(reader)),
      m_settings(m_store->load()),
      m_previews([this] { return previewRequest(); })
{
    connect(&m_previews, &Previews::refreshed, this, &AppModel::showPreviews);
    if (auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        connect(application, &QGuiApplication::applicationStateChanged, this,
                [this](Qt::ApplicationState state) {
                    if (state == Qt::ApplicationActive) {
                        checkFolderAgain();
                        lookAtSources();
                    }
                });
        connect(application, &QCoreApplication::aboutToQuit, this, &AppModel::cancelRun);
    }
}

AppModel::~AppModel()
{
    cancelRun();
}

const std::optional<QString> &AppModel::problem() const
{
    return m_problem;
}

void AppModel::setProblem(const std::optional<QString> &problem)
{
    assign(m_problem, problem, &AppModel::problemChanged);
}

std::optional<Sheet> AppModel::sheet() const
{
    return m_sheet;
}

void AppModel::setSheet(std::optional<Sheet> sheet)
{
    assign(m_sheet, sheet, &AppModel::sheetChanged);
}

const std::optional<std::filesystem::path> &AppModel::outputFolder() const
{
    return m_outputFolder;
}

void AppModel::setOutputFolder(const std::optional<std::filesystem::path> &folder)
{
    assign(m_outputFolder, folder, &AppModel::outputFolderChanged);
}

void AppModel::chooseOutputFolder()
{
    const PanelAnswer answer = m_panels->run(OpenPanel::forOutputFolder());
    if (!answer.chosen.empty()) {
        setOutputFolder(answer.chosen.front());
        checkFolderAgain();
    } else if (!answer.lost.isEmpty()) {
        setProblem(lostFolderMessage(answer.lost.front()));
    }
}

std::int64_t AppModel::folderCheck() const
{
    return m_folderCheck;
}

void AppModel::checkFolderAgain()
{
    assign(m_folderCheck, m_folderCheck + 1, &AppModel::folderCheckChanged);
}

QUndoStack *AppModel::undoManager() const
{
    return m_undoManager;
}

void AppModel::setUndoManager(QUndoStack *undoManager)
{
    if (m_undoManager != undoManager) {
        if (m_undoManager) {
            m_undoManager->disconnect(this);
        }
        m_undoManager = undoManager;
        if (m_undoManager) {
            connect(m_undoManager, &QUndoStack::indexChanged, this, &AppModel::forgetStepsOfEarlierSeries);
        }
        Q_EMIT undoManagerChanged();
    }
}

} // namespace tallyfold
