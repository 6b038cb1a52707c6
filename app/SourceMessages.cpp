#include "app/SourceMessages.h"

#include "app/CountText.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace tallyfold {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("AppModel", text);
}

/// The first names, and how many there are besides.
QString namesOf(const std::vector<SourceChange> &changes)
{
    constexpr std::size_t mostNames = 4;
    QStringList names;
    for (std::size_t index = 0; index < std::min(changes.size(), mostNames); ++index) {
        names.append(changes[index].name);
    }
    QString list = names.join(QStringLiteral(", "));
    if (changes.size() > mostNames) {
        list += translated(QT_TRANSLATE_NOOP("AppModel", " and %1 more")).arg(changes.size() - mostNames);
    }
    return list;
}

QString goneMessage(const std::vector<SourceChange> &gone)
{
    if (gone.size() == 1) {
        return translated(QT_TRANSLATE_NOOP("AppModel", "“%1” isn’t there any more and won’t be stamped."))
            .arg(gone.front().name);
    }
    return translated(
               QT_TRANSLATE_NOOP("AppModel", "%1 files aren’t there any more and won’t be stamped: %2."))
        .arg(QString::number(gone.size()), namesOf(gone));
}

QString changedMessage(const SourceChange &change)
{
    if (change.couldBeStamped && change.canBeStamped) {
        return translated(QT_TRANSLATE_NOOP("AppModel",
                                            "“%1” has changed since it was added: it had %2 and has %3 now."))
            .arg(change.name, countText(change.pagesBefore, Counted::pages),
                 countText(change.pages, Counted::pages));
    }
    if (change.canBeStamped) {
        return translated(QT_TRANSLATE_NOOP("AppModel",
                                            "“%1” has changed since it was added and can be stamped now."))
            .arg(change.name);
    }
    if (change.couldBeStamped) {
        return translated(
                   QT_TRANSLATE_NOOP("AppModel",
                                     "“%1” has changed since it was added and can’t be stamped any more."))
            .arg(change.name);
    }
    return translated(QT_TRANSLATE_NOOP("AppModel",
                                        "“%1” has changed since it was added and still can’t be stamped."))
        .arg(change.name);
}

QString changedMessage(const std::vector<SourceChange> &changed)
{
    if (changed.size() == 1) {
        return changedMessage(changed.front());
    }
    return translated(QT_TRANSLATE_NOOP("AppModel", "%1 files have changed since they were added: %2."))
        .arg(QString::number(changed.size()), namesOf(changed));
}

} // namespace

QString changedSourcesMessage(const std::vector<SourceChange> &changes)
{
    std::vector<SourceChange> gone;
    std::vector<SourceChange> changed;
    std::partition_copy(changes.begin(), changes.end(), std::back_inserter(gone), std::back_inserter(changed),
                        [](const SourceChange &change) { return change.isGone; });
    QStringList sentences;
    if (!gone.empty()) {
        sentences.append(goneMessage(gone));
    }
    if (!changed.empty()) {
        sentences.append(changedMessage(changed));
    }
    sentences.append(translated(
        QT_TRANSLATE_NOOP("AppModel", "Nothing was written: look at the list, then stamp again.")));
    return sentences.join(u' ');
}

} // namespace tallyfold
