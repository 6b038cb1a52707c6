#include "ui/theme/Tones.h"

namespace tallyfold {

namespace {

QColor mixed(const QColor &first, const QColor &second, double share)
{
    const auto part = [share](int one, int other) { return qRound(one * share + other * (1 - share)); };
    return {part(first.red(), second.red()), part(first.green(), second.green()),
            part(first.blue(), second.blue())};
}

/// The colours of a scheme.
struct Scheme {
    QColor window;
    QColor base;
    QColor alternate;
    QColor text;
    QColor placeholder;
    QColor button;
    QColor accent;
    QColor onAccent;
    QColor link;
    QColor tip;
};

QPalette paletteOf(const Scheme &scheme)
{
    QPalette palette(scheme.button, scheme.window);
    palette.setColor(QPalette::Window, scheme.window);
    palette.setColor(QPalette::WindowText, scheme.text);
    palette.setColor(QPalette::Base, scheme.base);
    palette.setColor(QPalette::AlternateBase, scheme.alternate);
    palette.setColor(QPalette::Text, scheme.text);
    palette.setColor(QPalette::PlaceholderText, scheme.placeholder);
    palette.setColor(QPalette::Button, scheme.button);
    palette.setColor(QPalette::ButtonText, scheme.text);
    palette.setColor(QPalette::ToolTipBase, scheme.tip);
    palette.setColor(QPalette::ToolTipText, scheme.text);
    palette.setColor(QPalette::Highlight, scheme.accent);
    palette.setColor(QPalette::HighlightedText, scheme.onAccent);
    palette.setColor(QPalette::Link, scheme.link);
    palette.setColor(QPalette::LinkVisited, scheme.link);
    palette.setColor(QPalette::BrightText, Qt::white);
    const QColor faint = mixed(scheme.text, scheme.window, 0.4);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, faint);
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, mixed(scheme.accent, scheme.window, 0.35));
    return palette;
}

} // namespace

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

Contrast contrastOf(const QPalette &palette)
{
    const QRgb text = palette.color(QPalette::Active, QPalette::WindowText).rgb();
    const QRgb window = palette.color(QPalette::Active, QPalette::Window).rgb();
    const QRgb black = QColor(Qt::black).rgb();
    const QRgb white = QColor(Qt::white).rgb();
    const bool isHigh = (text == black && window == white) || (text == white && window == black);
    return isHigh ? Contrast::high : Contrast::normal;
}

QColor colorOf(Tone tone, const QPalette &palette)
{
    const bool dark = isDark(palette);
    const bool high = contrastOf(palette) == Contrast::high;
    const QColor text = palette.color(QPalette::WindowText);
    const QColor window = palette.color(QPalette::Window);
    switch (tone) {
    case Tone::text:
        return text;
    case Tone::secondary:
        return mixed(text, window, high ? 0.85 : dark ? 0.68 : 0.64);
    case Tone::accent:
        return palette.color(QPalette::Highlight);
    case Tone::onAccent:
        return palette.color(QPalette::HighlightedText);
    case Tone::warning:
        return dark ? QColor(0xff, 0xb3, 0x4d) : high ? QColor(0x7a, 0x3c, 0x00) : QColor(0xa8, 0x57, 0x00);
    case Tone::blocking:
        return dark   ? high ? QColor(0xff, 0xa0, 0x99) : QColor(0xff, 0x7b, 0x72)
                 : high ? QColor(0x92, 0x0e, 0x1a)
                      : QColor(0xc0, 0x1c, 0x28);
    case Tone::success:
        return dark ? QColor(0x57, 0xcf, 0x7d) : high ? QColor(0x0d, 0x55, 0x27) : QColor(0x1b, 0x7f, 0x3f);
    case Tone::card:
        return palette.color(QPalette::Base);
    case Tone::border:
        return mixed(text, window, high ? 0.6 : dark ? 0.18 : 0.14);
    case Tone::edge:
        return high ? text : mixed(text, window, dark ? 0.5 : 0.52);
    }
    return text;
}

QPalette lightPalette(Contrast contrast)
{
    if (contrast == Contrast::high) {
        return paletteOf({.window = Qt::white,
                          .base = Qt::white,
                          .alternate = QColor(0xf0, 0xf0, 0xf0),
                          .text = Qt::black,
                          .placeholder = QColor(0x50, 0x50, 0x50),
                          .button = Qt::white,
                          .accent = QColor(0x0a, 0x3f, 0xa8),
                          .onAccent = Qt::white,
                          .link = QColor(0x06, 0x30, 0x90),
                          .tip = Qt::white});
    }
    return paletteOf({.window = QColor(0xf5, 0xf5, 0xf7),
                      .base = QColor(0xff, 0xff, 0xff),
                      .alternate = QColor(0xf0, 0xf1, 0xf3),
                      .text = QColor(0x1d, 0x1f, 0x23),
                      .placeholder = QColor(0x76, 0x7a, 0x82),
                      .button = QColor(0xfb, 0xfb, 0xfc),
                      .accent = QColor(0x1f, 0x6f, 0xeb),
                      .onAccent = Qt::white,
                      .link = QColor(0x0b, 0x57, 0xd0),
                      .tip = QColor(0xff, 0xff, 0xff)});
}

QPalette darkPalette(Contrast contrast)
{
    if (contrast == Contrast::high) {
        return paletteOf({.window = Qt::black,
                          .base = Qt::black,
                          .alternate = QColor(0x18, 0x18, 0x18),
                          .text = Qt::white,
                          .placeholder = QColor(0xb8, 0xb8, 0xb8),
                          .button = Qt::black,
                          .accent = QColor(0x8a, 0xc0, 0xff),
                          .onAccent = Qt::black,
                          .link = QColor(0x9c, 0xca, 0xff),
                          .tip = Qt::black});
    }
    return paletteOf({.window = QColor(0x24, 0x25, 0x28),
                      .base = QColor(0x2d, 0x2e, 0x32),
                      .alternate = QColor(0x33, 0x34, 0x39),
                      .text = QColor(0xee, 0xee, 0xf0),
                      .placeholder = QColor(0x96, 0x99, 0xa1),
                      .button = QColor(0x3a, 0x3b, 0x40),
                      .accent = QColor(0x2f, 0x7b, 0xf0),
                      .onAccent = Qt::white,
                      .link = QColor(0x7a, 0xb0, 0xff),
                      .tip = QColor(0x3a, 0x3b, 0x40)});
}

} // namespace tallyfold
