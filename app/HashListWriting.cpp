#include "app/HashListWriting.h"

#include "app/CountText.h"

#include <QCoreApplication>

namespace tallyfold {

namespace {

/// The way to the catalogues.
class Text {
    Q_DECLARE_TR_FUNCTIONS(HashListWriting)
};

} // namespace

HashListWriting::HashListWriting(const std::filesystem::path &folder, QObject *parent)
    : QObject(parent),
      m_progress(std::make_shared<SharedProgress>()),
      m_task([this, folder, progress = m_progress](const std::stop_token &givenUp) -> LooseTask::Ending {
          const check::HashesOutcome outcome = check::writeHashList(
              folder, [&progress](const check::Progress &value) { progress->set(value); }, givenUp);
          return [this, outcome] { // Not done any more once this is gone. A task is not destroyed in it.
              QMetaObject::invokeMethod(
                  this, [this, outcome] { Q_EMIT ended(outcome); }, Qt::QueuedConnection);
          };
      })
{
}

HashListWriting::~HashListWriting()
{
    m_task.giveUp();
    m_task.wait();
}

check::Progress HashListWriting::progress() const
{
    return m_progress->value();
}

void HashListWriting::stop()
{
    m_task.giveUp();
}

QString writtenText(const check::HashesWritten &written)
{
    return Text::tr("Wrote the hashes of %1.").arg(countText(written.files, Counted::files));
}

QString failureText(const check::HashesNotWritten &failure)
{
    if (failure.error == std::errc::operation_canceled) {
        return Text::tr("Stopped: no hash list was written.");
    }
    if (failure.error == std::errc::file_exists) {
        return Text::tr("There is a hash list in the folder already, which was left as it is.");
    }
    return Text::tr("“%1”: %2.").arg(failure.file, QString::fromStdString(failure.error.message()));
}

} // namespace tallyfold
