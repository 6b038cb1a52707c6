#pragma once

#include "core/ProductionPlan.h"
#include "ui/text/RowText.h"

#include <QFont>
#include <QList>
#include <QPalette>
#include <QRect>
#include <QString>

class QPainter;

namespace tallyfold {

/// The row of one file: its texts, laid out in a width, and painted. Coordinates are device-independent
/// pixels.
class FileRow {
public:
    /// How a row is painted.
    struct Look {
        QPalette palette;
        bool isSelected = false;
        bool isActive = true; ///< The list has the focus, or its window is active.
        Qt::LayoutDirection direction = Qt::LeftToRight;
    };

    /// Where the numbers stand. All rows of a list do it alike.
    enum class RangePlace {
        beside, ///< At the end of the line of the page count.
        below,  ///< On a line of their own.
    };

    /// The same for all rows of a list: so how tall a row is does not depend on its numbers.
    struct RangeRoom {
        RangePlace place = RangePlace::beside;
        int height = 0; ///< Of the lines that the longest numbers take below.

        bool operator==(const RangeRoom &) const = default;
    };

    /// `settings` are those of the plan, normalised. `width` is the whole row's.
    FileRow(const PlannedFile &file, const StampSettings &settings, int width, const RangeRoom &rangeRoom);

    /// `beside` where page count and numbers of every file of `plan` have room on one line of `width`.
    [[nodiscard]] static RangeRoom rangeRoomFor(const ProductionPlan &plan, int width);

    [[nodiscard]] int height() const;
    /// Where the link "How to Remove a Password" stands in the row; null when it has none.
    [[nodiscard]] QRect link() const;
    /// What is to be said at `point` of the row: more about the line there, or the whole name.
    [[nodiscard]] QString helpAt(QPoint point) const;

    /// Paints the row with its top left corner at `origin`.
    void paint(QPainter &painter, QPoint origin, const Look &look) const;

    /// The title of the link.
    [[nodiscard]] static QString linkTitle();

private:
    /// A piece of text and where it stands.
    struct Piece {
        QRect place;
        QString text;
        QString help;
        QFont font;
        RowLine::Kind kind = RowLine::Kind::pages;
        bool isName = false;
        QString symbol;
    };

    int addLine(const RowLine &line, int top);

    RowText m_text;
    int m_width;
    RangeRoom m_rangeRoom;
    int m_height = 0;
    QList<Piece> m_pieces;
    QRect m_link;
};

} // namespace tallyfold
