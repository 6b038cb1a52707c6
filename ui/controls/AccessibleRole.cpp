#include "ui/controls/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QLabel>

#include <memory>

namespace tallyfold {

namespace {

constexpr const char *roleProperty = "accessibleRole";

/// A widget with the role that it was given.
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
    // The registry of accessible objects takes it over.
    return std::make_unique<WithRole>(widget, static_cast<QAccessible::Role>(role.toInt())).release();
}

} // namespace

void setAccessibleRole(QWidget &widget, QAccessible::Role role)
{
    QAccessible::installFactory(withRole); // Once, however often it is asked to.
    if (widget.property(roleProperty) == static_cast<int>(role)) {
        return;
    }
    widget.setProperty(roleProperty, static_cast<int>(role));
    // Naming a widget, or writing into it, is enough to have it known by the role of its class.
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&widget)));
}

void setAnnounced(QWidget &label)
{
    // Announcements as such came with Qt 6.8. What has this role is read out when it appears.
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
