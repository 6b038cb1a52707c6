#pragma once

#include "ui/theme/Tones.h"

#include <QIconEngine>
#include <QString>

namespace tallyfold {

/// Renders a symbol for every requested size, device pixel ratio and palette.
class SymbolEngine final : public QIconEngine {
public:
    SymbolEngine(const QString &name, Tone tone);

    void paint(QPainter *painter, const QRect &rectangle, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    [[nodiscard]] QIconEngine *clone() const override;
    bool isNull() override;

private:
    QString m_name;
    Tone m_tone;
};

} // namespace tallyfold
