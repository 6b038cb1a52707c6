#include "ui/controls/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QLabel>

#include <memory>

namespace tallyfold {

namespace {

constexpr const char *roleProperty = "accessibleRole";

/// The accessible interface of a widget with an assigned role.
class WithRole final : public QAccessibleWidget {
public:
    WithRole(QWidget *widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}

    [[nodiscard]] QString text(QAccessible::Text which) const override
    {
        const QString given = QAccessibleWidget::text(which);
        const auto *label = qobject_cast<const QLabel *>(widget());
        return which == QAccessible::Name && given.isEmpty() && label ? label->text() : given;
    }
};

QAccessibleInterface *withRole(const QString &, QObject *object)
{
    const QVariant role = object ? object->property(roleProperty) : QVariant();
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget || !role.isValid()) {
        return nullptr;
    }
    // QAccessible takes ownership.
    return std::make_unique<WithRole>(widget, static_cast<QAccessible::Role>(role.toInt())).release();
}

} // namespace

void setAccessibleRole(QWidget &widget, QAccessible::Role role)
{
    QAccessible::installFactory(withRole); // Qt ignores repeated installation.
    if (widget.property(roleProperty) == static_cast<int>(role)) {
        return;
    }
    widget.setProperty(roleProperty, static_cast<int>(role));
    // Setting a name or a text may already have created the interface with the role of the class.
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&widget)));
}

void setAnnounced(QWidget &label)
{
    // Qt has announcements since 6.8 only. Screen readers speak widgets with this role when they appear.
    setAccessibleRole(label, QAccessible::Notification);
}

void announceAgain(QWidget &label)
{
    if (label.isVisible()) {
        QAccessibleEvent appeared(&label, QAccessible::ObjectShow);
        QAccessible::updateAccessibility(&appeared);
    }
}

} // namespace tallyfold
