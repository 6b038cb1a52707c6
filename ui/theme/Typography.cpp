#include "ui/theme/Typography.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>

namespace tallyfold {

namespace {

struct Scale {
    double size;
    QFont::Weight weight;
};

Scale scaleOf(TextStyle style)
{
    switch (style) {
    case TextStyle::largeTitle:
        return {1.7, QFont::Bold};
    case TextStyle::title:
        return {1.35, QFont::DemiBold};
    case TextStyle::headline:
        return {1.0, QFont::DemiBold};
    case TextStyle::body:
        return {1.0, QFont::Normal};
    case TextStyle::callout:
        return {0.94, QFont::Normal};
    case TextStyle::calloutStrong:
        return {0.94, QFont::DemiBold};
    case TextStyle::caption:
        return {0.9, QFont::Normal};
    case TextStyle::captionStrong:
        return {0.9, QFont::DemiBold};
    }
    return {1.0, QFont::Normal};
}

} // namespace

QFont fontOf(TextStyle style)
{
    const Scale scale = scaleOf(style);
    QFont font = QGuiApplication::font();
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * scale.size);
    } else { // The system font has a pixel size.
        font.setPixelSize(qRound(font.pixelSize() * scale.size));
    }
    font.setWeight(scale.weight);
    return font;
}

QFont withTabularDigits(const QFont &font)
{
    // Qt 6.4 cannot enable tabular figures, which most interface fonts use by default. A font with digits of
    // different widths is replaced by the fixed-width system font.
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance(QLatin1Char('0'));
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (qAbs(metrics.horizontalAdvance(QLatin1Char(digit)) - width) > 0.01) {
            QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
            fixed.setPointSizeF(font.pointSizeF());
            fixed.setWeight(font.weight());
            return fixed;
        }
    }
    return font;
}

} // namespace tallyfold
