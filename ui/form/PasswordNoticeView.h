#pragma once

#include "core/PasswordNotice.h"
#include "ui/Environment.h"
#include "ui/controls/SymbolLabel.h"

#include <QPushButton>
#include <QWidget>

namespace tallyfold {

/// The notice about password-protected files; hidden while there are none.
class PasswordNoticeView final : public QWidget {
    Q_OBJECT
public:
    explicit PasswordNoticeView(const Environment &environment, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void showNotice();
    void removeProtected();

    Environment m_environment;
    SymbolLabel *m_label;
    QPushButton *m_help;
    QPushButton *m_remove;
};

} // namespace tallyfold
