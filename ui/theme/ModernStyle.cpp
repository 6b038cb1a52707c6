#include "ui/theme/ModernStyle.h"

#include "ui/theme/Boxes.h"
#include "ui/theme/MenuLook.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/Tones.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>
#include <QWidget>

#include <algorithm>

namespace tallyfold {

namespace {

constexpr double radius = 6;
constexpr int arrowWidth = 22; ///< Of the arrows of a combo box and a spin box.
constexpr int menuArrowWidth = 16;
constexpr int barWidth = 12; ///< Of a scroll bar.

QColor edgeOf(const QStyleOption &option)
{
    return colorOf(Tone::edge, option.palette);
}

bool has(const QStyleOption &option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

/// The background of buttons and controls that act like buttons.
void drawButton(QPainter &painter, const QStyleOption &option)
{
    QColor ground = option.palette.color(QPalette::Button);
    const QColor ink = option.palette.color(QPalette::WindowText);
    if (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On)) {
        ground = isDark(option.palette) ? ground.darker(120) : ground.darker(110);
    } else if (has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled)) {
        ground = isDark(option.palette) ? ground.lighter(115) : ground.darker(103);
    }
    const bool isFocused =
        has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange);
    const QPen edge = isFocused
                          ? QPen(colorOf(Tone::accent, option.palette), 2)
                          : QPen(has(option, QStyle::State_Enabled) ? edgeOf(option) : faded(ink, 0.1F), 1);
    drawBox(painter, option.rect, ground, edge, radius);
}

/// The background of text fields.
void drawField(QPainter &painter, const QStyleOption &option)
{
    const QPen edge = has(option, QStyle::State_HasFocus) ? QPen(colorOf(Tone::accent, option.palette), 2)
                                                          : QPen(edgeOf(option), 1);
    drawBox(painter, option.rect, option.palette.color(QPalette::Base), edge, radius);
}

void drawArrow(QPainter &painter, const QStyleOption &option, const QRect &place, Qt::ArrowType direction)
{
    const QPalette::ColorGroup group =
        has(option, QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
    drawChevron(painter, place, direction, faded(option.palette.color(group, QPalette::WindowText), 0.75F));
}

void drawCheckBox(QPainter &painter, const QStyleOption &option)
{
    const bool isOn = has(option, QStyle::State_On);
    const QColor accent = colorOf(Tone::accent, option.palette);
    const bool isFocused =
        has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange);
    drawBox(painter, option.rect, isOn ? accent : option.palette.color(QPalette::Base),
            isOn        ? QPen(accent, 1)
            : isFocused ? QPen(accent, 2)
                        : QPen(edgeOf(option), 1),
            4);
    if (!isOn) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(colorOf(Tone::onAccent, option.palette), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QRectF box(option.rect);
    const auto at = [&box](double x, double y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter.drawPolyline(QPolygonF{at(0.25, 0.52), at(0.43, 0.70), at(0.76, 0.32)});
    painter.restore();
}

/// The option of a tool button with a popup menu; null for any other control.
const QStyleOptionToolButton *menuButton(const QStyleOption *option)
{
    const auto *button = qstyleoption_cast<const QStyleOptionToolButton *>(option);
    return button && button->features.testFlag(QStyleOptionToolButton::HasMenu) &&
                   !button->features.testFlag(QStyleOptionToolButton::MenuButtonPopup)
               ? button
               : nullptr;
}

/// The part `filled` of a bar that is `groove`, at one of its ends. It is round where it ends, and as long as
/// it is shorter than that the groove cuts it off.
void drawFilled(QPainter &painter, const QRectF &groove, const QRectF &filled, const QColor &ink)
{
    const double round = groove.height() / 2;
    QRectF part = filled;
    const double missing = std::max(0.0, groove.height() - filled.width());
    part.adjust(filled.left() > groove.left() ? 0 : -missing, 0, filled.left() > groove.left() ? missing : 0,
                0);
    QPainterPath whole;
    whole.addRoundedRect(groove, round, round);
    QPainterPath drawn;
    drawn.addRoundedRect(part, round, round);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(whole.intersected(drawn), ink);
    painter.restore();
}

} // namespace

ModernStyle::ModernStyle() : QProxyStyle(QStringLiteral("fusion")) {}

void ModernStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        drawButton(*painter, *option);
        break;
    case PE_PanelButtonTool:
        if (has(*option, State_MouseOver) || has(*option, State_Sunken) || has(*option, State_HasFocus)) {
            drawBox(*painter, option->rect,
                    faded(option->palette.color(QPalette::WindowText),
                          has(*option, State_Sunken) ? 0.16F : 0.08F),
                    has(*option, State_HasFocus) ? QPen(colorOf(Tone::accent, option->palette), 2)
                                                 : QPen(Qt::NoPen),
                    radius);
        }
        break;
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            !frame || frame->lineWidth > 0) {
            drawField(*painter, *option);
        }
        break;
    case PE_IndicatorCheckBox:
        drawCheckBox(*painter, *option);
        break;
    case PE_FrameDefaultButton:
    case PE_FrameMenu: // The panel draws the border.
    case PE_FrameTabBarBase:
        break;
    case PE_PanelMenu:
        drawMenuPanel(*painter, *option);
        break;
    case PE_PanelTipLabel:
        drawHelpPanel(*painter, *option);
        break;
    case PE_FrameTabWidget:
        drawTabFrame(*painter, *option);
        break;
    case PE_IndicatorArrowUp:
        drawArrow(*painter, *option, option->rect, Qt::UpArrow);
        break;
    case PE_IndicatorArrowDown:
        drawArrow(*painter, *option, option->rect, Qt::DownArrow);
        break;
    case PE_IndicatorArrowLeft:
        drawArrow(*painter, *option, option->rect, Qt::LeftArrow);
        break;
    case PE_IndicatorArrowRight:
        drawArrow(*painter, *option, option->rect, Qt::RightArrow);
        break;
    case PE_FrameFocusRect:
        if (has(*option, State_KeyboardFocusChange)) {
            drawBox(*painter, option->rect, Qt::transparent,
                    QPen(colorOf(Tone::accent, option->palette), 1.5), 5);
        }
        break;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ModernStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const
{
    switch (element) {
    case CE_ProgressBarGroove:
        drawBox(*painter, option->rect, faded(option->palette.color(QPalette::WindowText), 0.12F),
                QPen(Qt::NoPen), option->rect.height() / 2.0);
        break;
    case CE_ProgressBarContents:
        if (const auto *bar = qstyleoption_cast<const QStyleOptionProgressBar *>(option);
            bar && bar->maximum > bar->minimum) {
            QRectF filled(bar->rect);
            filled.setWidth(filled.width() * (bar->progress - bar->minimum) / (bar->maximum - bar->minimum));
            if (bar->direction == Qt::RightToLeft) {
                filled.moveRight(bar->rect.right() + 1);
            }
            drawFilled(*painter, bar->rect, filled, colorOf(Tone::accent, bar->palette));
        }
        break;
    case CE_ToolBar:
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        painter->fillRect(QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                          colorOf(Tone::border, option->palette));
        break;
    case CE_MenuItem:
        if (const auto *entry = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
            const QStyleOptionMenuItem plain = drawMenuGround(*painter, *entry);
            QProxyStyle::drawControl(element, &plain, painter, widget);
        }
        break;
    case CE_MenuBarItem:
        if (const auto *title = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
            QProxyStyle::drawControl(CE_MenuBarEmptyArea, title, painter, widget);
            drawMenuTitleGround(*painter, *title);
            const bool hidesKeys = styleHint(SH_UnderlineShortcut, title, widget, nullptr) == 0;
            drawItemText(painter, title->rect,
                         Qt::AlignCenter | Qt::TextSingleLine |
                             (hidesKeys ? Qt::TextHideMnemonic : Qt::TextShowMnemonic),
                         title->palette, has(*title, State_Enabled), title->text, QPalette::WindowText);
        }
        break;
    case CE_TabBarTabShape:
        if (const auto *tab = qstyleoption_cast<const QStyleOptionTab *>(option)) {
            drawTab(*painter, *tab);
        }
        break;
    case CE_Splitter:
        painter->fillRect(option->rect, colorOf(Tone::border, option->palette));
        break;
    default:
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void ModernStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                     QPainter *painter, const QWidget *widget) const
{
    switch (control) {
    case CC_ComboBox:
        drawButton(*painter, *option);
        drawArrow(*painter, *option, subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget),
                  Qt::DownArrow);
        break;
    case CC_SpinBox:
        drawField(*painter, *option);
        drawArrow(*painter, *option, subControlRect(CC_SpinBox, option, SC_SpinBoxUp, widget), Qt::UpArrow);
        drawArrow(*painter, *option, subControlRect(CC_SpinBox, option, SC_SpinBoxDown, widget),
                  Qt::DownArrow);
        break;
    case CC_ToolButton:
        if (const QStyleOptionToolButton *button = menuButton(option)) {
            drawPrimitive(PE_PanelButtonTool, button, painter, widget);
            QStyleOptionToolButton label(*button);
            label.rect =
                visualRect(button->direction, button->rect, button->rect.adjusted(0, 0, -menuArrowWidth, 0));
            drawControl(CE_ToolButtonLabel, &label, painter, widget);
            QRect arrow = button->rect;
            arrow.setLeft(arrow.right() + 1 - menuArrowWidth);
            arrow.translate(-3, 0);
            drawArrow(*painter, *button, visualRect(button->direction, button->rect, arrow), Qt::DownArrow);
        } else {
            QProxyStyle::drawComplexControl(control, option, painter, widget);
        }
        break;
    case CC_ScrollBar: {
        const QRect handle = subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget);
        const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
        if (slider && slider->maximum > slider->minimum) {
            const bool isHeld = has(*option, State_Sunken) || has(*option, State_MouseOver);
            drawBox(*painter, QRectF(handle).adjusted(3, 3, -3, -3),
                    faded(option->palette.color(QPalette::WindowText), isHeld ? 0.45F : 0.25F),
                    QPen(Qt::NoPen), (barWidth - 6) / 2.0);
        }
        break;
    }
    default:
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

QRect ModernStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                  const QWidget *widget) const
{
    const QRect whole = option->rect;
    const auto placed = [&](const QRect &rectangle) {
        return visualRect(option->direction, whole, rectangle);
    };
    if (control == CC_SpinBox) {
        const int half = whole.height() / 2;
        const int left = whole.right() + 1 - arrowWidth;
        switch (part) {
        case SC_SpinBoxUp:
            return placed(QRect(left, whole.top() + 2, arrowWidth - 2, half - 2));
        case SC_SpinBoxDown:
            return placed(QRect(left, whole.top() + half, arrowWidth - 2, half - 2));
        case SC_SpinBoxEditField:
            return placed(whole.adjusted(6, 3, -arrowWidth, -3));
        default:
            break;
        }
    }
    if (control == CC_ScrollBar) {
        // No arrow buttons; wheel and keys suffice.
        const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
        switch (part) {
        case SC_ScrollBarAddLine:
        case SC_ScrollBarSubLine:
            return {};
        case SC_ScrollBarGroove:
            return whole;
        case SC_ScrollBarSlider:
        case SC_ScrollBarAddPage:
        case SC_ScrollBarSubPage:
            if (slider) {
                const bool isAcross = slider->orientation == Qt::Horizontal;
                const int length = isAcross ? whole.width() : whole.height();
                const qint64 range = slider->maximum - slider->minimum;
                const int handle = range <= 0 ? length
                                              : qMax(30, static_cast<int>(qint64(slider->pageStep) * length /
                                                                          (range + slider->pageStep)));
                const int start =
                    sliderPositionFromValue(slider->minimum, slider->maximum, slider->sliderPosition,
                                            length - handle, slider->upsideDown);
                const int from = part == SC_ScrollBarAddPage   ? start + handle
                                 : part == SC_ScrollBarSubPage ? 0
                                                               : start;
                const int size = part == SC_ScrollBarAddPage   ? length - start - handle
                                 : part == SC_ScrollBarSubPage ? start
                                                               : handle;
                return isAcross ? QRect(whole.left() + from, whole.top(), size, whole.height())
                                : QRect(whole.left(), whole.top() + from, whole.width(), size);
            }
            break;
        default:
            break;
        }
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize ModernStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                                    const QWidget *widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_PushButton:
        size.setWidth(contents.width() + 24);
        size.setHeight(qMax(size.height(), 28));
        break;
    case CT_ToolButton:
        size.rwidth() += menuButton(option) ? menuArrowWidth : 0;
        break;
    case CT_SpinBox:
        size.rwidth() += arrowWidth - 8; // The arrows are wider than those of the base style.
        size.setHeight(qMax(size.height(), 28));
        break;
    case CT_MenuItem:
        if (const auto *entry = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
            entry && entry->menuItemType != QStyleOptionMenuItem::Separator) {
            size.setHeight(qMax(size.height(), 28));
        }
        break;
    case CT_LineEdit:
    case CT_ComboBox:
        size.setHeight(qMax(size.height(), 28));
        break;
    default:
        break;
    }
    return size;
}

int ModernStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return barWidth;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return 17;
    case PM_CheckBoxLabelSpacing:
        return 8;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return 4;
    case PM_ToolTipLabelFrameWidth:
        return 5;
    case PM_SplitterWidth:
        return 1;
    case PM_ToolBarItemSpacing:
        return 6;
    case PM_ToolBarItemMargin:
        return 5;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ModernStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                           QStyleHintReturn *returned) const
{
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ScrollBar_Transient:
    case SH_ComboBox_Popup:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

} // namespace tallyfold
