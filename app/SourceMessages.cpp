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
QString firstOf(const QStringList &names)
{
    constexpr qsizetype mostNames = 4;
    QString list = names.first(std::min(names.size(), mostNames)).join(QStringLiteral(", "));
    if (names.size() > mostNames) {
        list += translated(QT_TRANSLATE_NOOP("AppModel", " and %1 more")).arg(names.size() - mostNames);
    }
    return list;
}

QString namesOf(const std::vector<SourceChange> &changes)
{
    QStringList names;
    for (const SourceChange &change : changes) {
        names.append(change.name);
    }
    return firstOf(names);
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

QString lostFilesMessage(const QStringList &names)
{
    if (names.size() == 1) {
        return translated(
                   QT_TRANSLATE_NOOP(
                       "AppModel",
                       "“%1” can’t be found by the name that the desktop’s dialog gives it, as happens "
                       "with names that aren’t valid text. Add the folder it is in (File › Add "
                       "Folder…), or drop it on the list."))
            .arg(names.front());
    }
    return translated(QT_TRANSLATE_NOOP(
                          "AppModel",
                          "%1 items can’t be found by the names that the desktop’s dialog gives them, as "
                          "happens with names that aren’t valid text: %2. Add the folder they are in (File › "
                          "Add Folder…), or drop them on the list."))
        .arg(QString::number(names.size()), firstOf(names));
}

QString lostFolderMessage(const QString &name)
{
    return translated(
               QT_TRANSLATE_NOOP(
                   "AppModel",
                   "“%1” can’t be found by the name that the desktop’s dialog gives it, as happens with "
                   "names that aren’t valid text. Choose another folder, or give this one another "
                   "name."))
        .arg(name);
}

} // namespace tallyfold
