#pragma once

#include <QFont>
#include <QPainter>
#include <QString>
#include <QTextLayout>

namespace tallyfold {

/// Plain text laid out on as many lines as necessary. Words that are wider than a line, such as file names,
/// are broken.
class WrappedText {
public:
    /// Lengths are device-independent pixels.
    WrappedText(const QString &text, const QFont &font, int width, Qt::Alignment alignment = Qt::AlignLeading,
                Qt::LayoutDirection direction = Qt::LayoutDirectionAuto);

    [[nodiscard]] int height() const;
    /// Draws the lines from the top left corner `place` with the pen of `painter`.
    void draw(QPainter &painter, QPoint place) const;

private:
    QTextLayout m_layout;
    double m_height = 0;
};

/// `text` as a tooltip that wraps anywhere if necessary. Markup in it is shown literally.
[[nodiscard]] QString helpTextOf(const QString &text);

} // namespace tallyfold
