#include "ui/updates/Appcast.h"

#include "ui/updates/HtmlText.h"
#include "ui/updates/MarkupGuard.h"
#include "ui/updates/WebLink.h"

#include <QStringDecoder>
#include <QXmlStreamReader>

#include <optional>
#include <utility>

namespace tallyfold {

namespace {

const QString sparkle = QStringLiteral("http://www.andymatuschak.org/xml-namespaces/sparkle");

/// The texts of an item as they stand in the feed.
struct RawItem {
    QString title;
    QString version;
    QString shortVersion;
    QString link;
    QString description;
    QString os;
    QString channel;

    /// The text of the element called `name` in the namespace `space`; null for an element that is not read.
    QString *text(QStringView space, QStringView name)
    {
        if (space.isEmpty()) {
            return name == u"title"         ? &title
                   : name == u"link"        ? &link
                   : name == u"description" ? &description
                                            : nullptr;
        }
        if (space != sparkle) {
            return nullptr;
        }
        return name == u"version"              ? &version
               : name == u"shortVersionString" ? &shortVersion
               : name == u"os"                 ? &os
               : name == u"channel"            ? &channel
                                               : nullptr;
    }
};

RawItem enclosureOf(const QXmlStreamAttributes &attributes)
{
    RawItem item;
    item.version = attributes.value(sparkle, QStringLiteral("version")).toString();
    item.shortVersion = attributes.value(sparkle, QStringLiteral("shortVersionString")).toString();
    item.os = attributes.value(sparkle, QStringLiteral("os")).toString();
    item.link = attributes.value(QStringLiteral("url")).toString();
    return item;
}

QString firstOf(const QString &first, const QString &second)
{
    const QString trimmed = first.trimmed();
    return trimmed.isEmpty() ? second.trimmed() : trimmed;
}

AppcastItem itemOf(const RawItem &item, const RawItem &enclosure)
{
    const QUrl link = webLinkOf(item.link);
    return {item.title.simplified(),
            firstOf(item.version, enclosure.version),
            firstOf(item.shortVersion, enclosure.shortVersion),
            link.isEmpty() ? webLinkOf(enclosure.link) : link,
            plainTextOfHtml(item.description),
            firstOf(item.os, enclosure.os)};
}

/// Reads through a feed once. Elements are told apart by how deep they lie: rss, channel, item, text.
class AppcastReader {
public:
    explicit AppcastReader(const QString &xml) : m_xml(xml) {}

    std::variant<std::vector<AppcastItem>, AppcastFault> read()
    {
        while (!m_fault && !m_xml.atEnd()) {
            take(m_xml.readNext());
        }
        if (!m_fault && m_xml.hasError()) {
            m_fault = AppcastFault::malformed;
        }
        if (!m_fault && !m_hasChannel) {
            m_fault = AppcastFault::notAnAppcast;
        }
        if (m_fault) {
            return *m_fault;
        }
        return std::move(m_items);
    }

private:
    void take(QXmlStreamReader::TokenType token)
    {
        switch (token) {
        case QXmlStreamReader::StartElement:
            ++m_depth;
            begin();
            break;
        case QXmlStreamReader::EndElement:
            end();
            --m_depth;
            break;
        case QXmlStreamReader::Characters:
            addText();
            break;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            m_fault = AppcastFault::doctype;
            break;
        default:
            break;
        }
    }

    void begin()
    {
        const bool isRss = m_xml.namespaceUri().isEmpty();
        if (m_depth > deepestAppcastElement) {
            m_fault = AppcastFault::tooDeep;
        } else if (m_depth == 1 && !(isRss && m_xml.name() == u"rss")) {
            m_fault = AppcastFault::notAnAppcast;
        } else if (m_depth == 2) {
            m_isInChannel = isRss && m_xml.name() == u"channel";
            m_hasChannel = m_hasChannel || m_isInChannel;
        } else if (m_depth == 3) {
            m_isInItem = m_isInChannel && isRss && m_xml.name() == u"item";
            m_item = {};
            m_enclosure.reset();
        } else if (m_depth == 4 && m_isInItem) {
            beginText(isRss);
        }
    }

    void beginText(bool isRss)
    {
        if (isRss && m_xml.name() == u"enclosure" && !m_enclosure) {
            m_enclosure = enclosureOf(m_xml.attributes());
        }
        m_text = m_item.text(m_xml.namespaceUri(), m_xml.name());
        if (m_text != nullptr && !m_text->isEmpty()) {
            m_text = nullptr; // The first of a name counts.
        }
    }

    void addText()
    {
        if (m_text == nullptr) {
            return;
        }
        if (m_text != &m_item.description) {
            *m_text += m_xml.text();
            if (m_text->size() > longestAppcastText) {
                m_fault = AppcastFault::tooLong;
            }
            return;
        }
        *m_text += m_xml.text().left(longestAppcastNotes - m_text->size());
    }

    void end()
    {
        if (m_depth == 4) {
            m_text = nullptr;
        } else if (m_depth == 3 && std::exchange(m_isInItem, false)) {
            endItem();
        }
    }

    void endItem()
    {
        if (m_items.size() >= mostAppcastItems) {
            m_fault = AppcastFault::tooManyItems;
        } else if (m_item.channel.trimmed().isEmpty()) {
            m_items.push_back(itemOf(m_item, m_enclosure.value_or(RawItem())));
        }
    }

    QXmlStreamReader m_xml;
    std::optional<AppcastFault> m_fault;
    std::vector<AppcastItem> m_items;
    int m_depth = 0;
    bool m_hasChannel = false;
    bool m_isInChannel = false;
    bool m_isInItem = false;
    RawItem m_item;
    std::optional<RawItem> m_enclosure;
    QString *m_text = nullptr; ///< Of `m_item`, that is being read.
};

} // namespace

std::variant<std::vector<AppcastItem>, AppcastFault> parseAppcast(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString xml = decoder(bytes);
    if (decoder.hasError()) {
        return AppcastFault::malformed;
    }
    if (const std::optional<AppcastFault> fault = markupFaultOf(xml)) {
        return *fault;
    }
    return AppcastReader(xml).read();
}

} // namespace tallyfold
