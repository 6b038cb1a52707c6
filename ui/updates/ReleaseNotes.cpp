#include "ui/updates/ReleaseNotes.h"

#include <QRegularExpression>
#include <QTextDocumentFragment>

namespace tallyfold {

namespace {

QRegularExpression pattern(const QString &text)
{
    return QRegularExpression(text, QRegularExpression::CaseInsensitiveOption |
                                        QRegularExpression::DotMatchesEverythingOption);
}

/// Whether `character` is a bidirectional control, another control character, or an object replacement.
bool isUnwanted(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) ||
           (character.category() == QChar::Other_Control && code != u'\n') ||
           code == QChar::ObjectReplacementCharacter;
}

} // namespace

QString plainTextOfHtml(QString html)
{
    // Attributes and styles may load files, or keep Qt's HTML reader busy for minutes: a cell may span 20,480
    // columns, and selectors are matched for each element. Heads and links would hide the text after them.
    static const QRegularExpression unseen = pattern(QStringLiteral(
        "<!--.*?(?:-->|\\z)|<style.*?(?:</style[^>]*>?|\\z)|<(?:[!?]|/?(?:head|link))[^>]*>?"));
    static const QRegularExpression noTag = pattern(QStringLiteral("<(?!/?[a-z])"));
    static const QRegularExpression tag = pattern(QStringLiteral("<(/?[a-z][a-z0-9]*)[^>]*>?"));
    static const QRegularExpression entry = pattern(QStringLiteral("<li>\\s*(?:<p>)?"));

    html = QString::fromUtf8(html.toUtf8()); // Regular expressions do not match in invalid UTF-16.
    html.replace(unseen, QStringLiteral(" "));
    html.replace(noTag, QStringLiteral("&lt;"));
    if (!html.contains(tag)) {
        html.replace(u'\n', QStringLiteral("<br>"));
    }
    html.replace(tag, QStringLiteral("<\\1>"));
    html.replace(entry, QStringLiteral("<li>\u2022 "));
    QString text = QTextDocumentFragment::fromHtml(html).toPlainText();
    text.removeIf(isUnwanted);
    return text.trimmed();
}

} // namespace tallyfold
