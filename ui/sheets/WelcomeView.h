#pragma once

#include "ui/Environment.h"

#include <QDialog>

namespace tallyfold {

/// Greets a first launch.
class WelcomeView final : public QDialog {
    Q_OBJECT
public:
    explicit WelcomeView(const Environment &environment, QWidget *parent = nullptr);

    /// Closed by its user, it has been seen.
    void reject() override;

private:
    void rememberSeen();

    Environment m_environment;
};

} // namespace tallyfold
