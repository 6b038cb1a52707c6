#include "ui/theme/SymbolEngine.h"

#include "ui/theme/Symbols.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmapCache>

#include <memory>

namespace tallyfold {

namespace {

QColor colorFor(Tone tone, QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    if (mode == QIcon::Disabled) {
        return palette.color(QPalette::Disabled, QPalette::ButtonText);
    }
    if (mode == QIcon::Selected && tone == Tone::text) {
        return palette.color(QPalette::HighlightedText);
    }
    return colorOf(tone, palette);
}

} // namespace

SymbolEngine::SymbolEngine(const QString &name, Tone tone) : m_name(name), m_tone(tone) {}

void SymbolEngine::paint(QPainter *painter, const QRect &rectangle, QIcon::Mode mode, QIcon::State state)
{
    const double scale = painter->device()->devicePixelRatio();
    painter->drawPixmap(rectangle, scaledPixmap(rectangle.size() * scale, mode, state, scale));
}

QPixmap SymbolEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return scaledPixmap(size, mode, state, 1.0);
}

QPixmap SymbolEngine::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal scale)
{
    const QColor color = colorFor(m_tone, mode);
    const int side = qMin(size.width(), size.height());
    const QString key =
        QStringLiteral("symbol/%1/%2/%3/%4").arg(m_name, color.name(QColor::HexArgb)).arg(side).arg(scale);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = symbolPixmap(m_name, side, color, 1.0); // `size` is in device pixels already.
        pixmap.setDevicePixelRatio(scale);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

QIconEngine *SymbolEngine::clone() const
{
    return std::make_unique<SymbolEngine>(*this).release(); // The caller takes ownership.
}

bool SymbolEngine::isNull()
{
    return false;
}

} // namespace tallyfold
