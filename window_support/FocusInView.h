#pragma once

#include <QObject>

namespace tallyfold {

/// Scrolls to the control that gets the focus, in every scroll area of the program that it is in. A scroll
/// area does so by itself for steps between its own controls alone, so that a step from outside, or one that
/// an alert takes, may lead to a control that is out of sight. One for the whole program, for as long as it
/// lives.
class FocusInView final : public QObject {
    Q_OBJECT
public:
    explicit FocusInView(QObject *parent = nullptr);
};

} // namespace tallyfold
