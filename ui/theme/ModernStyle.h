#pragma once

#include <QProxyStyle>

namespace tallyfold {

/// The style for desktops without a platform style: flat, with rounded corners, in the colours of the
/// palette. Based on Fusion, which draws everything else.
class ModernStyle final : public QProxyStyle {
    Q_OBJECT
public:
    ModernStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                       SubControl part, const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                                         const QWidget *widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *returned) const override;
};

} // namespace tallyfold
