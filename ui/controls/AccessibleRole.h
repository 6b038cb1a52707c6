#pragma once

#include <QAccessible>
#include <QWidget>

namespace tallyfold {

/// Gives `widget` an accessible role other than that of its class. Must be called before the widget is shown.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);

/// Lets screen readers speak the text of `label` whenever it is shown.
void setAnnounced(QWidget &label);

/// Lets screen readers speak the text of such a label again, after a change. No effect while it is hidden.
void announceAgain(QWidget &label);

} // namespace tallyfold
