#pragma once

#include <QFont>
#include <QPainter>
#include <QString>
#include <QTextLayout>

namespace tallyfold {

/// A plain text laid out on as many lines as it takes. A word that is wider than a line, as names of files
/// may be, goes on on the next one.
class WrappedText {
public:
    /// Lengths are device-independent pixels.
    WrappedText(const QString &text, const QFont &font, int width, Qt::Alignment alignment = Qt::AlignLeading,
                Qt::LayoutDirection direction = Qt::LayoutDirectionAuto);

    [[nodiscard]] int height() const;
    /// Draws it with the top left corner of its lines at `place`, in the pen of `painter`.
    void draw(QPainter &painter, QPoint place) const;

private:
    QTextLayout m_layout;
    double m_height = 0;
};

/// `text` as a help text that wraps, wherever it has to; what looks like markup in it is shown as it is.
[[nodiscard]] QString helpTextOf(const QString &text);

} // namespace tallyfold
