#include "ui/updates/HtmlText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace tallyfold {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isAsciiLetter(QChar character)
{
    const char16_t lower = character.toLower().unicode();
    return lower >= u'a' && lower <= u'z';
}

bool isDirectionControl(char32_t character)
{
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

template <std::size_t Count> bool isAmong(const std::array<QStringView, Count> &names, QStringView name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The character that the reference called `name`, without its ampersand and semicolon, stands for.
std::optional<char32_t> characterOf(QStringView name)
{
    static constexpr std::array<std::pair<QStringView, char32_t>, 19> named{{
        {u"amp", U'&'},      {u"lt", U'<'},      {u"gt", U'>'},      {u"quot", U'"'},    {u"apos", U'\''},
        {u"nbsp", 0x00A0},   {u"copy", 0x00A9},  {u"reg", 0x00AE},   {u"ndash", 0x2013}, {u"mdash", 0x2014},
        {u"lsquo", 0x2018},  {u"rsquo", 0x2019}, {u"ldquo", 0x201C}, {u"rdquo", 0x201D}, {u"bull", 0x2022},
        {u"hellip", 0x2026}, {u"trade", 0x2122}, {u"rarr", 0x2192},  {u"times", 0x00D7},
    }};
    if (name.startsWith(u'#')) {
        const bool isHex = name.sliced(1).startsWith(u'x', Qt::CaseInsensitive);
        bool isNumber = false;
        const char32_t code = name.sliced(isHex ? 2 : 1).toUInt(&isNumber, isHex ? 16 : 10);
        if (!isNumber) {
            return std::nullopt;
        }
        const bool isCharacter = code != 0 && code <= 0x10FFFF && !QChar::isSurrogate(code);
        return isCharacter ? code : replacement;
    }
    const auto *found =
        std::find_if(named.begin(), named.end(), [&](const auto &entry) { return entry.first == name; });
    return found == named.end() ? std::nullopt : std::optional(found->second);
}

/// Collects text; space and breaks only count between characters.
class Lines {
public:
    void put(char32_t character)
    {
        if (character != 0x00A0 && QChar::isSpace(character)) {
            m_hasSpace = true;
            return;
        }
        if (isDirectionControl(character) || QChar::category(character) == QChar::Other_Control) {
            return;
        }
        if (!m_text.isEmpty() && m_breaks > 0 && !m_isAfterBullet) {
            m_text += QString(std::min(m_breaks, 2), u'\n');
        } else if (!m_text.isEmpty() && m_hasSpace) {
            m_text += u' ';
        }
        m_breaks = 0;
        m_hasSpace = false;
        m_isAfterBullet = false;
        m_text += QStringView(QChar::fromUcs4(character));
    }

    void putBullet()
    {
        ensureBreaks(1);
        put(0x2022);
        m_hasSpace = true;
        m_isAfterBullet = true;
    }

    void addBreak()
    {
        ++m_breaks;
    }

    void ensureBreaks(int count)
    {
        m_breaks = std::max(m_breaks, count);
    }

    [[nodiscard]] const QString &text() const
    {
        return m_text;
    }

private:
    QString m_text;
    int m_breaks = 0;
    bool m_hasSpace = false;
    bool m_isAfterBullet = false; ///< An entry begins beside its bullet, even with a paragraph.
};

class HtmlReader {
public:
    explicit HtmlReader(QStringView html) : m_html(html)
    {
        for (qsizetype position = 0; position < m_html.size() && !m_hasTags; ++position) {
            m_hasTags = isTagAt(position);
        }
    }

    QString read()
    {
        while (m_position < m_html.size()) {
            if (isTagAt(m_position)) {
                takeTag();
            } else if (m_html[m_position] == u'&') {
                takeReference();
            } else {
                takeCharacter();
            }
        }
        return m_lines.text();
    }

private:
    [[nodiscard]] QChar at(qsizetype position) const
    {
        return position < m_html.size() ? m_html[position] : QChar();
    }

    [[nodiscard]] bool isTagAt(qsizetype position) const
    {
        const QChar next = at(position + 1);
        return m_html[position] == u'<' &&
               (isAsciiLetter(next) || next == u'/' || next == u'!' || next == u'?');
    }

    /// Goes on behind `end`, or to the end of everything where there is none.
    void skipBehind(QStringView end)
    {
        const qsizetype found = m_html.indexOf(end, m_position, Qt::CaseInsensitive);
        m_position = found < 0 ? m_html.size() : found + end.size();
    }

    void skipRestOfTag()
    {
        QChar quote;
        for (; m_position < m_html.size(); ++m_position) {
            const QChar character = m_html[m_position];
            if (!quote.isNull()) {
                quote = character == quote ? QChar() : quote;
            } else if (character == u'"' || character == u'\'') {
                quote = character;
            } else if (character == u'>') {
                ++m_position;
                return;
            }
        }
    }

    void takeTag()
    {
        if (m_html.sliced(m_position).startsWith(u"<!--")) {
            m_position += 4;
            skipBehind(u"-->");
            return;
        }
        ++m_position;
        const bool isEnd = at(m_position) == u'/';
        if (isEnd) {
            ++m_position;
        }
        const qsizetype start = m_position;
        while (at(m_position).isLetterOrNumber()) {
            ++m_position;
        }
        const QString name = m_html.sliced(start, m_position - start).toString().toLower();
        skipRestOfTag();
        if (!isEnd && isAmong(std::array<QStringView, 3>{u"script", u"style", u"head"}, name)) {
            skipBehind(QString(QStringLiteral("</") + name));
            skipRestOfTag();
            return;
        }
        layOut(name, isEnd);
    }

    void layOut(QStringView name, bool isEnd)
    {
        static constexpr std::array<QStringView, 13> paragraphs{u"p",   u"h1",         u"h2", u"h3", u"h4",
                                                                u"h5",  u"h6",         u"ul", u"ol", u"table",
                                                                u"pre", u"blockquote", u"hr"};
        static constexpr std::array<QStringView, 7> lines{u"div", u"tr", u"section", u"dt",
                                                          u"dd",  u"li", u"body"};
        if (name == u"br") {
            m_lines.addBreak();
        } else if (name == u"li" && !isEnd) {
            m_lines.putBullet();
        } else if (isAmong(paragraphs, name)) {
            m_lines.ensureBreaks(2);
        } else if (isAmong(lines, name)) {
            m_lines.ensureBreaks(1);
        } else if (name == u"td" || name == u"th") {
            m_lines.put(U' ');
        }
    }

    void takeReference()
    {
        constexpr qsizetype longest = 10;
        const QStringView ahead = m_html.sliced(m_position + 1).left(longest);
        const qsizetype end = ahead.indexOf(u';');
        const std::optional<char32_t> character = end < 0 ? std::nullopt : characterOf(ahead.first(end));
        m_lines.put(character.value_or(U'&'));
        m_position += character ? end + 2 : 1;
    }

    void takeCharacter()
    {
        const QChar first = m_html[m_position++];
        if (first == u'\n' && !m_hasTags) {
            m_lines.addBreak();
        } else if (first.isHighSurrogate() && at(m_position).isLowSurrogate()) {
            m_lines.put(QChar::surrogateToUcs4(first, m_html[m_position++]));
        } else {
            m_lines.put(first.isSurrogate() ? replacement : first.unicode());
        }
    }

    QStringView m_html;
    qsizetype m_position = 0;
    bool m_hasTags = false;
    Lines m_lines;
};

} // namespace

QString plainTextOfHtml(QStringView html)
{
    return HtmlReader(html).read();
}

} // namespace tallyfold
