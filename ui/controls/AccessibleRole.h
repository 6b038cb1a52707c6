#pragma once

#include <QAccessible>
#include <QWidget>

namespace tallyfold {

/// Gives `widget` the role that those who do not see it are told of, in the place of the one that its class
/// has. For a widget that has not been shown yet.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);

/// Makes `label`, which is shown when there is something to be told, be told to those who do not see it.
void setAnnounced(QWidget &label);

/// Tells of a label like that once more, as when it reads something else now. Nothing while it is not seen.
void announceAgain(QWidget &label);

} // namespace tallyfold
