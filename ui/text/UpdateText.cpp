#include "ui/text/UpdateText.h"

#include "app/RunMessages.h"
#include "ui/text/Words.h"

namespace tallyfold {

namespace {

QString textOf(UpdateCheckFailed::Reason reason)
{
    using Reason = UpdateCheckFailed::Reason;
    switch (reason) {
    case Reason::noFeed:
        return words(QT_TRANSLATE_NOOP("Words", "This copy of %1 doesn’t know where to look for updates."))
            .arg(displayedName());
    case Reason::noConnection:
        return words(QT_TRANSLATE_NOOP(
            "Words", "The server can’t be reached. Check your internet connection and try again."));
    case Reason::refusedRedirect:
        return words(
            QT_TRANSLATE_NOOP("Words", "The server points to an address that isn’t safe to follow."));
    case Reason::tooLarge:
        return words(QT_TRANSLATE_NOOP("Words", "The server’s answer is too large."));
    case Reason::tooSlow:
        return words(QT_TRANSLATE_NOOP("Words", "The server took too long to answer. Try again later."));
    case Reason::badFeed:
        return words(QT_TRANSLATE_NOOP("Words", "The server’s answer can’t be read. Try again later."));
    case Reason::serverError:
        break;
    }
    return words(QT_TRANSLATE_NOOP("Words", "The server reports a problem. Try again later."));
}

UpdateMessage messageOf(const NewerVersion &newer)
{
    return {words(QT_TRANSLATE_NOOP("Words", "%1 %2 is available")).arg(displayedName(), newer.version),
            newer.notes.isEmpty()
                ? words(QT_TRANSLATE_NOOP("Words", "There is a newer version of %1.")).arg(displayedName())
                : newer.notes,
            newer.link,
            newer.link.isEmpty() ? QString() : words(QT_TRANSLATE_NOOP("Words", "Get the New Version"))};
}

} // namespace

UpdateMessage updateMessageOf(const UpdateOutcome &outcome)
{
    if (const auto *newer = std::get_if<NewerVersion>(&outcome)) {
        return messageOf(*newer);
    }
    if (const auto *failure = std::get_if<UpdateCheckFailed>(&outcome)) {
        return {
            words(QT_TRANSLATE_NOOP("Words", "Couldn’t check for updates")), textOf(failure->reason), {}, {}};
    }
    return {words(QT_TRANSLATE_NOOP("Words", "You’re up to date")),
            words(QT_TRANSLATE_NOOP("Words", "You have the newest version of %1.")).arg(displayedName()),
            {},
            {}};
}

} // namespace tallyfold
