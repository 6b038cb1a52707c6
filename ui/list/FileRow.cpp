#include "ui/list/FileRow.h"

#include "app/CountText.h"
#include "ui/controls/WrappedText.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/Typography.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>

namespace tallyfold {

namespace {

constexpr int symbolSize = 18;
constexpr int smallSymbolSize = 15;
/// Where the texts of every row begin, those without a symbol as well.
constexpr int textLeft = spacing::wide + symbolSize + spacing::normal;

bool isAlert(RowLine::Kind kind)
{
    return kind != RowLine::Kind::pages && kind != RowLine::Kind::range;
}

QString symbolOf(RowSymbol symbol)
{
    switch (symbol) {
    case RowSymbol::none:
        return {};
    case RowSymbol::locked:
        return QStringLiteral("lock.fill");
    case RowSymbol::problem:
        return QStringLiteral("exclamationmark.triangle.fill");
    }
    return {};
}

} // namespace

QString FileRow::linkTitle()
{
    return words(QT_TRANSLATE_NOOP("Words", "How to Remove a Password"));
}

FileRow::FileRow(const PlannedFile &file, const StampSettings &settings, int width,
                 const RangeRoom &rangeRoom)
    : m_text(rowTextOf(file, settings)), m_width(width), m_rangeRoom(rangeRoom)
{
    const QFont nameFont = fontOf(TextStyle::headline);
    int top = spacing::normal;
    const int nameHeight = QFontMetrics(nameFont).height();
    m_pieces.append({QRect(textLeft, top, m_width - textLeft - spacing::wide, nameHeight),
                     m_text.name,
                     m_text.name,
                     nameFont,
                     RowLine::Kind::pages,
                     true,
                     {}});
    top += nameHeight + 2;
    for (const RowLine &line : m_text.lines) {
        top = addLine(line, top);
    }
    if (m_text.hasPasswordHelp) {
        const QFontMetrics metrics(fontOf(TextStyle::callout));
        const int linkWidth = metrics.horizontalAdvance(linkTitle()) + 4;
        m_link =
            QRect(textLeft, top, qMin(linkWidth, m_width - textLeft - spacing::wide), metrics.height() + 2);
        top += m_link.height();
    }
    m_height = top + spacing::normal;
}

FileRow::RangeRoom FileRow::rangeRoomFor(const ProductionPlan &plan, int width)
{
    if (!plan.lastNumber()) {
        return {};
    }
    std::int64_t mostPages = 0;
    for (const PlannedFile &file : plan.files) {
        mostPages = std::max(mostPages, file.source.pageCount);
    }
    const QString number = plan.settings->bates(*plan.lastNumber());
    const QString longest = number + QStringLiteral(" – ") + number;
    const QFont font = fontOf(TextStyle::callout);
    const QFont digits = withTabularDigits(font);
    const int room = width - textLeft - spacing::wide;
    const int texts = QFontMetrics(digits).horizontalAdvance(longest) + spacing::wide +
                      QFontMetrics(font).horizontalAdvance(countText(mostPages, Counted::pages));
    return {texts <= room ? RangePlace::beside : RangePlace::below,
            WrappedText(longest, digits, room).height()};
}

int FileRow::addLine(const RowLine &line, int top)
{
    const QFont font = line.kind == RowLine::Kind::range ? withTabularDigits(fontOf(TextStyle::callout))
                                                         : fontOf(TextStyle::callout);
    const QFontMetrics metrics(font);
    QRect room(textLeft, top, m_width - textLeft - spacing::wide, metrics.height());
    QString symbol;
    if (line.kind == RowLine::Kind::earlierNumber) {
        symbol = QStringLiteral("number.circle");
    }
    if (line.kind == RowLine::Kind::range && m_rangeRoom.place == RangePlace::beside) {
        Piece &pages = m_pieces.last();
        room.moveTop(pages.place.top());
        room.setLeft(room.right() - metrics.horizontalAdvance(line.text) - 1);
        pages.place.setRight(room.left() - 1);
        m_pieces.append({room, line.text, line.help, font, line.kind, false, {}});
        return top;
    }
    room.setHeight(line.kind == RowLine::Kind::range ? m_rangeRoom.height
                                                     : WrappedText(line.text, font, room.width()).height());
    m_pieces.append({room, line.text, line.help, font, line.kind, false, symbol});
    return room.bottom() + 3;
}

int FileRow::height() const
{
    return m_height;
}

QRect FileRow::link() const
{
    return m_link;
}

QString FileRow::helpAt(QPoint point) const
{
    for (const Piece &piece : m_pieces) {
        if (point.y() >= piece.place.top() && point.y() <= piece.place.bottom() && !piece.help.isEmpty()) {
            return piece.help;
        }
    }
    return m_text.name;
}

void FileRow::paint(QPainter &painter, QPoint origin, const Look &look) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(look.direction);
    const QRect row(origin, QSize(m_width, m_height));
    const bool isOnAccent = look.isSelected && look.isActive;
    if (look.isSelected) {
        QColor ground = colorOf(Tone::accent, look.palette);
        if (!look.isActive) {
            ground = colorOf(Tone::text, look.palette);
            ground.setAlphaF(0.16F); // Every ink of a row is read upon it.
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        painter.drawRoundedRect(QRectF(row).adjusted(4, 1, -4, -1), 6, 6);
    }
    const auto mirrored = [&](const QRect &place) {
        return QStyle::visualRect(look.direction, row, place.translated(origin));
    };
    const auto ink = [&](Tone tone) { return colorOf(isOnAccent ? Tone::onAccent : tone, look.palette); };
    const double scale = painter.device()->devicePixelRatio();

    if (m_text.symbol != RowSymbol::none) {
        const QRect place = mirrored(QRect(spacing::wide, spacing::normal, symbolSize, symbolSize));
        painter.drawPixmap(place,
                           symbolPixmap(symbolOf(m_text.symbol), symbolSize, ink(Tone::warning), scale));
    }
    for (const Piece &piece : m_pieces) {
        const QRect place = mirrored(piece.place);
        painter.setFont(piece.font);
        painter.setPen(ink(piece.isName                         ? Tone::text
                           : isAlert(piece.kind)                ? Tone::warning
                           : piece.kind == RowLine::Kind::range ? Tone::text
                                                                : Tone::secondary));
        if (!piece.symbol.isEmpty()) {
            const QRect symbol = mirrored(QRect(spacing::wide + (symbolSize - smallSymbolSize) / 2,
                                                piece.place.top() + 1, smallSymbolSize, smallSymbolSize));
            painter.drawPixmap(symbol,
                               symbolPixmap(piece.symbol, smallSymbolSize, ink(Tone::warning), scale));
        }
        if (piece.isName) {
            painter.drawText(place, Qt::AlignLeading | Qt::AlignVCenter,
                             painter.fontMetrics().elidedText(piece.text, Qt::ElideMiddle, place.width()));
        } else {
            WrappedText(piece.text, piece.font, place.width(), Qt::AlignLeading, look.direction)
                .draw(painter, place.topLeft());
        }
    }
    if (!m_link.isNull()) {
        QFont font = fontOf(TextStyle::callout);
        font.setUnderline(true);
        painter.setFont(font);
        painter.setPen(look.isSelected ? ink(Tone::text) : look.palette.color(QPalette::Link));
        const QRect place = mirrored(m_link);
        painter.drawText(place, Qt::AlignLeading | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(linkTitle(), Qt::ElideRight, place.width()));
    }
    painter.restore();
}

} // namespace tallyfold
