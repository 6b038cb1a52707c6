#include "app/CopyPages.h"

#include "app/PageImage.h"
#include "core/check/CopyPage.h"

namespace tallyfold {

namespace {

CopyPages::Shown drawn(const CopyPages::Wanted &wanted, const std::stop_token &givenUp)
{
    const std::optional<check::CopyPage> page =
        check::copyPage(wanted.folder, wanted.file, wanted.page, wanted.width, givenUp);
    if (!page) {
        return {wanted, std::nullopt, {}};
    }
    return {wanted, page->pages, page->picture ? imageOf(*page->picture) : QImage()};
}

} // namespace

CopyPages::~CopyPages() = default;

void CopyPages::show(const Wanted &wanted)
{
    if (m_wanted == wanted) {
        return;
    }
    const bool isBusy = m_wanted.has_value();
    m_wanted = wanted;
    if (isBusy) { // Its end begins the next.
        m_isGivenUp = true;
        m_task->giveUp();
    } else {
        begin();
    }
}

bool CopyPages::isDrawing() const
{
    return m_wanted.has_value();
}

void CopyPages::begin()
{
    m_isGivenUp = false;
    m_task = std::make_unique<LooseTask>(
        [this, wanted = *m_wanted](const std::stop_token &givenUp) -> LooseTask::Ending {
            const Shown shown = drawn(wanted, givenUp);
            return [this, shown] { // Not done any more once this is gone. A task is not destroyed in it.
                QMetaObject::invokeMethod(
                    this, [this, shown] { end(shown); }, Qt::QueuedConnection);
            };
        });
}

void CopyPages::end(const Shown &shown)
{
    if (m_isGivenUp) {
        begin();
        return;
    }
    m_wanted.reset();
    Q_EMIT this->shown(shown);
}

} // namespace tallyfold
