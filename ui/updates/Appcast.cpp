#include "ui/updates/Appcast.h"

#include "ui/updates/ReleaseNotes.h"

#include <QXmlStreamReader>

#include <algorithm>
#include <functional>
#include <map>

namespace tallyfold {

namespace {

/// The texts of an item by element name, and by "enclosure " and attribute name.
using Texts = std::map<QString, QString>;

/// The name of an element or attribute, such as "link" or "sparkle:version", regardless of the prefix in the
/// feed.
template <typename Named> QString nameOf(const Named &named)
{
    const QStringView space = named.namespaceUri();
    const bool isSparkle = space == u"http://www.andymatuschak.org/xml-namespaces/sparkle";
    const QString prefix = isSparkle ? QStringLiteral("sparkle:") : space.toString();
    return prefix + named.name().toString();
}

/// Whether `bytes` are XML without a document type and not nested too deeply for recursion.
bool isPlainXml(const QByteArray &bytes)
{
    QXmlStreamReader xml(bytes);
    int depth = 0;
    while (!xml.atEnd() && depth <= maxAppcastDepth) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::DTD) {
            return false;
        }
        depth += int{token == QXmlStreamReader::StartElement} - int{token == QXmlStreamReader::EndElement};
    }
    return xml.atEnd() && !xml.hasError();
}

/// Advances to the next child element `name` of the current element of `xml`; false at its end.
bool readNext(QXmlStreamReader &xml, QStringView name)
{
    while (xml.readNextStartElement() && nameOf(xml) != name) {
        xml.skipCurrentElement();
    }
    return xml.isStartElement();
}

/// Reads the current item of `xml`. The first text with a name counts.
Texts textsOfItem(QXmlStreamReader &xml)
{
    Texts texts;
    while (xml.readNextStartElement()) {
        const QString name = nameOf(xml);
        const QXmlStreamAttributes attributes = xml.attributes();
        const bool isFirst =
            texts.try_emplace(name, xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed())
                .second;
        if (isFirst && name == u"enclosure") {
            for (const QXmlStreamAttribute &attribute : attributes) {
                texts.try_emplace(name + u' ' + nameOf(attribute), attribute.value().trimmed().toString());
            }
        }
    }
    return texts;
}

QUrl webLink(const QString &text)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool isFit = url.isValid() && url.scheme() == QStringLiteral("https") && !url.host().isEmpty() &&
                       url.userInfo().isEmpty();
    return isFit ? url : QUrl();
}

AppcastItem itemOf(Texts texts)
{
    const auto text = [&](const QString &name) {
        return texts[name].isEmpty() ? texts[QStringLiteral("enclosure ") + name] : texts[name];
    };
    const auto version = AppVersion::parse(text(QStringLiteral("sparkle:shortVersionString")));
    const QUrl link = webLink(texts[QStringLiteral("link")]);
    return {version ? version : AppVersion::parse(text(QStringLiteral("sparkle:version"))),
            link.isEmpty() ? webLink(texts[QStringLiteral("enclosure url")]) : link,
            texts[QStringLiteral("description")].left(maxAppcastNotes), text(QStringLiteral("sparkle:os"))};
}

} // namespace

std::optional<std::vector<AppcastItem>> parseAppcast(const QByteArray &bytes)
{
    QXmlStreamReader xml(bytes);
    if (!isPlainXml(bytes) || !readNext(xml, u"rss")) {
        return std::nullopt;
    }
    std::optional<std::vector<AppcastItem>> items;
    while (readNext(xml, u"channel")) {
        items = items.value_or(std::vector<AppcastItem>());
        while (readNext(xml, u"item")) {
            Texts texts = textsOfItem(xml);
            if (items->size() == maxAppcastItems) {
                return std::nullopt;
            }
            if (texts[QStringLiteral("sparkle:channel")].isEmpty()) {
                items->push_back(itemOf(std::move(texts)));
            }
        }
    }
    return items;
}

UpdateOutcome evaluateFeed(const QByteArray &bytes, const AppVersion &current)
{
    const UpdateOutcome badFeed = UpdateCheckFailed{UpdateCheckFailed::Reason::badFeed};
    std::optional<std::vector<AppcastItem>> items = parseAppcast(bytes);
    if (!items) {
        return badFeed;
    }
    std::erase_if(*items, [](const AppcastItem &item) {
        return !item.os.isEmpty() && item.os.compare(u"linux", Qt::CaseInsensitive) != 0;
    });
    const auto newest = std::ranges::max_element(*items, std::less<>(), &AppcastItem::version);
    if (newest != items->end() && !newest->version) {
        return badFeed;
    }
    if (newest == items->end() || *newest->version <= current) {
        return UpToDate{};
    }
    return NewerVersion{newest->version->text(), plainTextOfHtml(newest->notes), newest->link};
}

} // namespace tallyfold
