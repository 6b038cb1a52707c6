#include "ui/theme/Tones.h"

namespace tallyfold {

namespace {

QColor mixed(const QColor &first, const QColor &second, double share)
{
    const auto part = [share](int one, int other) { return qRound(one * share + other * (1 - share)); };
    return {part(first.red(), second.red()), part(first.green(), second.green()),
            part(first.blue(), second.blue())};
}

/// The colours that a scheme is made of.
struct Scheme {
    QColor window;
    QColor base;
    QColor alternate;
    QColor text;
    QColor placeholder;
    QColor button;
    QColor accent;
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
    palette.setColor(QPalette::HighlightedText, Qt::white);
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

QColor colorOf(Tone tone, const QPalette &palette)
{
    const bool dark = isDark(palette);
    const QColor text = palette.color(QPalette::WindowText);
    const QColor window = palette.color(QPalette::Window);
    switch (tone) {
    case Tone::text:
        return text;
    case Tone::secondary:
        return mixed(text, window, dark ? 0.68 : 0.64);
    case Tone::accent:
        return palette.color(QPalette::Highlight);
    case Tone::onAccent:
        return palette.color(QPalette::HighlightedText);
    case Tone::warning:
        return dark ? QColor(0xff, 0xb3, 0x4d) : QColor(0xa8, 0x57, 0x00);
    case Tone::blocking:
        return dark ? QColor(0xff, 0x7b, 0x72) : QColor(0xc0, 0x1c, 0x28);
    case Tone::success:
        return dark ? QColor(0x57, 0xcf, 0x7d) : QColor(0x1b, 0x7f, 0x3f);
    case Tone::card:
        return palette.color(QPalette::Base);
    case Tone::border:
        return mixed(text, window, dark ? 0.18 : 0.14);
    }
    return text;
}

QPalette lightPalette()
{
    return paletteOf({.window = QColor(0xf5, 0xf5, 0xf7),
                      .base = QColor(0xff, 0xff, 0xff),
                      .alternate = QColor(0xf0, 0xf1, 0xf3),
                      .text = QColor(0x1d, 0x1f, 0x23),
                      .placeholder = QColor(0x76, 0x7a, 0x82),
                      .button = QColor(0xfb, 0xfb, 0xfc),
                      .accent = QColor(0x1f, 0x6f, 0xeb),
                      .link = QColor(0x0b, 0x57, 0xd0),
                      .tip = QColor(0xff, 0xff, 0xff)});
}

QPalette darkPalette()
{
    return paletteOf({.window = QColor(0x24, 0x25, 0x28),
                      .base = QColor(0x2d, 0x2e, 0x32),
                      .alternate = QColor(0x33, 0x34, 0x39),
                      .text = QColor(0xee, 0xee, 0xf0),
                      .placeholder = QColor(0x96, 0x99, 0xa1),
                      .button = QColor(0x3a, 0x3b, 0x40),
                      .accent = QColor(0x2f, 0x7b, 0xf0),
                      .link = QColor(0x7a, 0xb0, 0xff),
                      .tip = QColor(0x3a, 0x3b, 0x40)});
}

} // namespace tallyfold
