#include "ui/controls/Mnemonics.h"

#include <QSet>

#include <optional>

namespace tallyfold {

namespace {

/// The mnemonic in `title`; nothing if there is none.
std::optional<QChar> mnemonicOf(const QString &title)
{
    for (qsizetype at = 0; at + 1 < title.size(); ++at) {
        if (title[at] == u'&') {
            if (title[at + 1] != u'&') {
                return title[at + 1].toLower();
            }
            ++at; // "&&" is a literal ampersand.
        }
    }
    return std::nullopt;
}

/// The index in `title` of a letter that is not in `taken`; -1 if there is none.
qsizetype freeLetter(const QString &title, const QSet<QChar> &taken, bool isFirstOfWord)
{
    for (qsizetype at = 0; at < title.size(); ++at) {
        const bool isFirst = at == 0 || title[at - 1].isSpace();
        if (title[at].isLetterOrNumber() && (isFirst || !isFirstOfWord) &&
            !taken.contains(title[at].toLower())) {
            return at;
        }
    }
    return -1;
}

} // namespace

void giveMnemonics(QMenu &menu)
{
    QSet<QChar> taken;
    for (const QAction *entry : menu.actions()) {
        if (const std::optional<QChar> letter = mnemonicOf(entry->text())) {
            taken.insert(*letter);
        }
    }
    for (QAction *entry : menu.actions()) {
        QString title = entry->text();
        if (entry->isSeparator() || mnemonicOf(title)) {
            continue;
        }
        qsizetype place = freeLetter(title, taken, true);
        if (place < 0) {
            place = freeLetter(title, taken, false);
        }
        if (place >= 0) {
            taken.insert(title[place].toLower());
            entry->setText(title.insert(place, u'&'));
        }
    }
}

} // namespace tallyfold
