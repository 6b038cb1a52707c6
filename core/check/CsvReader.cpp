#include "core/check/CsvReader.h"

#include "core/CSV.h"

#include <QStringDecoder>

#include <utility>

namespace tallyfold::CSV {

namespace {

constexpr QChar quote = u'"';

/// What separates the fields of the first row: what is there most often outside of quotes.
QChar separatorOf(QStringView text)
{
    qsizetype commas = 0;
    qsizetype semicolons = 0;
    qsizetype tabs = 0;
    bool isQuoted = false;
    for (const QChar ch : text) {
        if (ch == quote) {
            isQuoted = !isQuoted;
        } else if (!isQuoted && (ch == u'\n' || ch == u'\r')) {
            break;
        } else if (!isQuoted) {
            commas += ch == u',' ? 1 : 0;
            semicolons += ch == u';' ? 1 : 0;
            tabs += ch == u'\t' ? 1 : 0;
        }
    }
    if (tabs > commas && tabs > semicolons) {
        return u'\t';
    }
    return semicolons > commas ? u';' : u',';
}

} // namespace

std::optional<Reader> Reader::of(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8); // Takes a byte order mark away.
    QString text = decoder(bytes);
    if (decoder.hasError()) {
        return std::nullopt;
    }
    return Reader(std::move(text));
}

Reader::Reader(QString text) : m_text(std::move(text))
{
    const QString announcement = QStringLiteral("sep=");
    if (m_text.startsWith(announcement, Qt::CaseInsensitive) && m_text.size() > announcement.size()) {
        m_separator = m_text[announcement.size()];
        m_place = announcement.size() + 1;
        ++m_row;
        if (!takeRowEnd()) {
            m_place = 0; // A field that begins so.
            m_row = 0;
        }
    }
    if (m_place == 0) {
        m_separator = separatorOf(m_text);
    }
}

std::int64_t Reader::row() const
{
    return m_row;
}

bool Reader::takeRowEnd()
{
    const qsizetype before = m_place;
    if (m_place < m_text.size() && m_text[m_place] == u'\r') {
        ++m_place;
    }
    if (m_place < m_text.size() && m_text[m_place] == u'\n') {
        ++m_place;
    }
    return m_place > before;
}

std::optional<QStringList> Reader::next()
{
    if (m_place >= m_text.size()) {
        return std::nullopt;
    }
    ++m_row;
    QStringList fields;
    while (true) {
        fields.append(withoutGuard(field()));
        if (m_place < m_text.size() && m_text[m_place] == m_separator) {
            ++m_place;
            continue;
        }
        (void)takeRowEnd();
        return fields;
    }
}

QString Reader::field()
{
    const auto isEnd = [this](QChar ch) { return ch == m_separator || ch == u'\r' || ch == u'\n'; };
    QString value;
    bool isQuoted = m_place < m_text.size() && m_text[m_place] == quote;
    m_place += isQuoted ? 1 : 0;
    while (m_place < m_text.size()) {
        const QChar ch = m_text[m_place];
        if (isQuoted && ch == quote) {
            const bool isPair = m_place + 1 < m_text.size() && m_text[m_place + 1] == quote;
            if (isPair) {
                value.append(quote);
            }
            isQuoted = isPair;
            m_place += isPair ? 2 : 1;
        } else if (!isQuoted && isEnd(ch)) {
            break;
        } else {
            value.append(ch); // Also behind a closing quote, where nothing belongs.
            ++m_place;
        }
    }
    return value;
}

QString withoutGuard(const QString &field)
{
    if (!field.startsWith(u'\'')) {
        return field;
    }
    const QString bare = field.mid(1);
    return needsGuard(bare) ? bare : field;
}

} // namespace tallyfold::CSV
