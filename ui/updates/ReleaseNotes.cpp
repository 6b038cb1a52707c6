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

/// Whether `character` changes the direction of text, steers a terminal, or stands for a picture.
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
    // Attributes and styles are what can load files, and what takes Qt's reader minutes: a cell may span
    // 20,480 columns, and selectors are matched anew for each element. Heads and links hide text after them.
    static const QRegularExpression unseen = pattern(QStringLiteral(
        "<!--.*?(?:-->|\\z)|<style.*?(?:</style[^>]*>?|\\z)|<(?:[!?]|/?(?:head|link))[^>]*>?"));
    static const QRegularExpression noTag = pattern(QStringLiteral("<(?!/?[a-z])"));
    static const QRegularExpression tag = pattern(QStringLiteral("<(/?[a-z][a-z0-9]*)[^>]*>?"));
    static const QRegularExpression entry = pattern(QStringLiteral("<li>\\s*(?:<p>)?"));

    html = QString::fromUtf8(html.toUtf8()); // No pattern matches in UTF-16 that is not valid.
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
