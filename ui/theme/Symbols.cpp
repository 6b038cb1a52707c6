#include "ui/theme/Symbols.h"

#include "ui/theme/SymbolEngine.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <memory>

/// Resources of a static library must be initialized. The macro requires the global namespace.
static void initSymbols()
{
    Q_INIT_RESOURCE(tallyfold_symbols);
}

namespace tallyfold {

namespace {

/// The name of a symbol and its file in the bundled icon family.
struct Symbol {
    const char *name;
    const char *drawing;
};

constexpr std::array<Symbol, 25> symbols{{
    {"checkmark.circle.fill", "check-circle-fill"},
    {"chevron.down", "caret-down"},
    {"chevron.right", "caret-right"},
    {"doc.on.doc", "files"},
    {"doc.plaintext", "file-text"},
    {"doc.richtext", "file-pdf"},
    {"envelope", "envelope-simple"},
    {"exclamationmark.octagon.fill", "warning-octagon-fill"},
    {"exclamationmark.triangle", "warning"},
    {"exclamationmark.triangle.fill", "warning-fill"},
    {"eye", "eye"},
    {"folder", "folder-open"},
    {"gearshape", "gear-six"},
    {"lock", "lock"},
    {"lock.fill", "lock-fill"},
    {"lock.shield", "shield-check"},
    {"number", "hash"},
    {"number.circle", "number-circle-one"},
    {"number.square.fill", "number-square-one-fill"},
    {"play.circle", "play-circle"},
    {"plus", "plus"},
    {"slider.horizontal.3", "sliders-horizontal"},
    {"stop.circle", "stop-circle"},
    {"tablecells", "table"},
    {"textformat", "text-aa"},
}};

const Symbol *find(const QString &name)
{
    const auto found = std::find_if(symbols.begin(), symbols.end(), [&name](const Symbol &symbol) {
        return name == QLatin1String(symbol.name);
    });
    return found == symbols.end() ? nullptr : found;
}

} // namespace

QIcon symbolIcon(const QString &name, Tone tone)
{
    if (!find(name)) {
        return {};
    }
    return QIcon(std::make_unique<SymbolEngine>(name, tone).release()); // The icon owns its engine.
}

QPixmap symbolPixmap(const QString &name, int size, const QColor &color, double pixelRatio)
{
    initSymbols();
    QPixmap pixmap(QSize(size, size) * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    const Symbol *symbol = find(name);
    if (!symbol) {
        return pixmap;
    }
    QSvgRenderer drawing(QStringLiteral(":/symbols/%1.svg").arg(QLatin1String(symbol->drawing)));
    QPainter painter(&pixmap);
    const QRectF place(0, 0, size, size);
    drawing.render(&painter, place);
    painter.setCompositionMode(
        QPainter::CompositionMode_SourceIn); // The shape of the drawing in the given colour.
    painter.fillRect(place, color);
    return pixmap;
}

QStringList symbolNames()
{
    QStringList names;
    for (const Symbol &symbol : symbols) {
        names.append(QLatin1String(symbol.name));
    }
    return names;
}

} // namespace tallyfold
