#pragma once

#include "ui/Environment.h"
#include "ui/sheets/SheetDialog.h"

namespace tallyfold {

/// Greets a first launch.
class WelcomeView final : public SheetDialog {
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
