#include "ui/updates/MarkupGuard.h"

#include <algorithm>

namespace tallyfold {

namespace {

// The parser compares every attribute of a tag with every other one, and every prefix with every namespace.
constexpr qsizetype longestTag = 3'000;
constexpr qsizetype longestReference = 32;
constexpr qsizetype mostNamespaces = 100;

/// Where the tag that begins at `start` ends, or -1.
qsizetype endOfTag(QStringView xml, qsizetype start)
{
    QChar quote;
    const qsizetype limit = std::min(xml.size(), start + longestTag);
    for (qsizetype position = start; position < limit; ++position) {
        const QChar character = xml[position];
        if (!quote.isNull()) {
            quote = character == quote ? QChar() : quote;
        } else if (character == u'"' || character == u'\'') {
            quote = character;
        } else if (character == u'>') {
            return position + 1;
        }
    }
    return -1;
}

/// Where what begins at `start` and ends with `end` is over; the end of `xml` where it never is.
qsizetype behind(QStringView xml, QStringView end, qsizetype start)
{
    const qsizetype found = xml.indexOf(end, start);
    return found < 0 ? xml.size() : found + end.size();
}

/// Whether each ampersand of `text` soon has its semicolon.
bool hasShortReferences(QStringView text)
{
    qsizetype ampersand = text.indexOf(u'&');
    while (ampersand >= 0) {
        const qsizetype end = text.sliced(ampersand).left(longestReference).indexOf(u';');
        if (end < 0) {
            return false;
        }
        ampersand = text.indexOf(u'&', ampersand + end);
    }
    return true;
}

} // namespace

std::optional<AppcastFault> markupFaultOf(QStringView xml)
{
    if (xml.count(u"xmlns") > mostNamespaces) {
        return AppcastFault::tooLong;
    }
    qsizetype position = 0;
    while (position < xml.size()) {
        const QStringView rest = xml.sliced(position);
        if (rest.startsWith(u"<!--")) {
            position = behind(xml, u"-->", position + 4);
        } else if (rest.startsWith(u"<![CDATA[")) {
            position = behind(xml, u"]]>", position + 9);
        } else if (rest.startsWith(u"<!")) {
            return AppcastFault::doctype;
        } else if (rest.startsWith(u"<?")) {
            const qsizetype end = behind(xml, u"?>", position + 2);
            if (end - position > longestTag) {
                return AppcastFault::tooLong;
            }
            position = end;
        } else {
            const bool isTag = rest.startsWith(u'<');
            const qsizetype next = xml.indexOf(u'<', position);
            const qsizetype end = isTag ? endOfTag(xml, position) : (next < 0 ? xml.size() : next);
            if (end < 0) {
                return rest.size() < longestTag ? AppcastFault::malformed : AppcastFault::tooLong;
            }
            if (!hasShortReferences(xml.sliced(position, end - position))) {
                return AppcastFault::malformed;
            }
            position = end;
        }
    }
    return std::nullopt;
}

} // namespace tallyfold
