#include "app/CheckModel.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

namespace tallyfold {

namespace fs = std::filesystem;

namespace {

/// As often as an eye can follow.
constexpr std::chrono::milliseconds timeBetweenLooks{100};

/// The folder that `path` is, or is in; without a slash at its end, so that it has a name.
fs::path folderOf(const fs::path &path)
{
    std::error_code unknown;
    fs::path folder = path.lexically_normal();
    if (!folder.has_filename() && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    return fs::is_directory(folder, unknown) || !fs::exists(folder, unknown) ? folder : folder.parent_path();
}

} // namespace

CheckModel::CheckModel(Checker checker, QObject *parent) : QObject(parent), m_checker(std::move(checker))
{
    m_look.setInterval(timeBetweenLooks);
    connect(&m_look, &QTimer::timeout, this, &CheckModel::lookAtProgress);
}

CheckModel::~CheckModel() = default;

const std::vector<fs::path> &CheckModel::folders() const
{
    return m_folders;
}

bool CheckModel::has(const fs::path &folder) const
{
    return std::any_of(m_folders.begin(), m_folders.end(), [&folder](const fs::path &other) {
        std::error_code unknown; // Of one that is gone: then its path tells.
        return other == folder || fs::equivalent(other, folder, unknown);
    });
}

void CheckModel::add(std::span<const fs::path> paths)
{
    const std::size_t before = m_folders.size();
    for (const fs::path &path : paths) {
        const fs::path folder = folderOf(path);
        if (!isRunning() && !has(folder)) {
            m_folders.push_back(folder);
        }
    }
    if (m_folders.size() != before) {
        Q_EMIT foldersChanged();
    }
}

void CheckModel::remove(const std::set<std::size_t> &indexes)
{
    if (isRunning()) {
        return;
    }
    std::vector<fs::path> left;
    for (std::size_t index = 0; index < m_folders.size(); ++index) {
        if (!indexes.contains(index)) {
            left.push_back(m_folders[index]);
        }
    }
    if (left.size() != m_folders.size()) {
        m_folders = std::move(left);
        Q_EMIT foldersChanged();
    }
}

bool CheckModel::isRunning() const
{
    return m_task && m_task->isRunning();
}

bool CheckModel::isStopping() const
{
    return m_isStopping;
}

const check::Progress &CheckModel::progress() const
{
    return m_progress;
}

void CheckModel::start()
{
    if (isRunning() || m_folders.empty()) {
        return;
    }
    m_shared = std::make_shared<SharedProgress>();
    m_progress = {};
    const auto work = [checker = m_checker, folders = m_folders, shared = m_shared,
                       this](const std::stop_token &givenUp) -> LooseTask::Ending {
        auto result = std::make_shared<CheckResult>();
        result->folders = folders;
        result->outcome = checker(
            folders, [&shared](const check::Progress &progress) { shared->set(progress); }, givenUp);
        result->ended = QDateTime::currentDateTime();
        return [this, result] { end(result); }; // Not done any more once the model is gone.
    };
    m_task = std::make_unique<LooseTask>(work);
    m_look.start();
    Q_EMIT runningChanged();
    Q_EMIT progressChanged();
}

void CheckModel::stop()
{
    if (isRunning() && !m_isStopping) {
        m_isStopping = true;
        m_task->giveUp();
        Q_EMIT runningChanged();
    }
}

void CheckModel::lookAtProgress()
{
    const check::Progress progress = m_shared->value();
    if (progress.reading != m_progress.reading || progress.pages != m_progress.pages ||
        progress.plannedPages != m_progress.plannedPages) {
        m_progress = progress;
        Q_EMIT progressChanged();
    }
}

void CheckModel::end(const std::shared_ptr<const CheckResult> &result)
{
    m_look.stop();
    lookAtProgress();
    m_isStopping = false;
    m_result = result;
    Q_EMIT resultChanged();
    Q_EMIT runningChanged();
}

const std::shared_ptr<const CheckResult> &CheckModel::result() const
{
    return m_result;
}

bool CheckModel::isResultOfOthers() const
{
    return m_result && m_result->folders != m_folders;
}

} // namespace tallyfold
