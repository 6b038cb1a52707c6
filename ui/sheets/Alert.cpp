#include "ui/sheets/Alert.h"

#include "ui/controls/Buttons.h"
#include "ui/controls/StyledLabel.h"
#include "ui/theme/Spacing.h"

#include <QDialogButtonBox>

#include <algorithm>

namespace tallyfold {

namespace {

constexpr int alertWidth = 440;

QDialogButtonBox::ButtonRole roleOf(Alert::Role role)
{
    switch (role) {
    case Alert::Role::normal:
        return QDialogButtonBox::ActionRole;
    case Alert::Role::prominent:
        return QDialogButtonBox::AcceptRole;
    case Alert::Role::cancel:
        return QDialogButtonBox::RejectRole;
    }
    Q_UNREACHABLE();
}

} // namespace

Alert::Alert(const QString &title, const QString &text, const QList<Button> &buttons, QWidget *parent)
    : SheetDialog(alertWidth, {spacing::sheet, spacing::sheet, spacing::sheet, spacing::section}, parent),
      m_buttons(buttons),
      m_content(new QVBoxLayout)
{
    setWindowTitle(title);
    auto *heading = new StyledLabel(title, TextStyle::title);
    heading->setObjectName(QStringLiteral("alertTitle"));
    auto *message = new StyledLabel(text, TextStyle::body);
    message->setObjectName(QStringLiteral("alertText"));
    message->setSelectable();
    message->setFocusPolicy(Qt::NoFocus);
    setAccessibleName(title);
    setAccessibleDescription(text);

    auto *row = new QDialogButtonBox;
    QPushButton *prominent = nullptr;
    for (const Button &button : m_buttons) {
        QPushButton *made = button.role == Role::prominent ? new ProminentButton(button.title)
                                                           : new QPushButton(button.title);
        made->setAutoDefault(false);
        made->setDefault(button.role == Role::prominent);
        if (button.role == Role::prominent) {
            prominent = made;
        }
        connect(made, &QPushButton::clicked, this, [this, button] { press(button); });
        row->addButton(made, roleOf(button.role));
    }
    content().setSpacing(spacing::wide);
    content().addWidget(heading);
    content().addWidget(message);
    content().addLayout(m_content);
    content().addSpacing(spacing::tight);
    content().addWidget(row);
    if (prominent) {
        prominent->setFocus(); // Now that it belongs to the alert.
    }
}

void Alert::addContent(QWidget *widget)
{
    m_content->addWidget(widget);
}

void Alert::press(const Button &button)
{
    const auto run = button.run; // A copy: closing the alert destroys it.
    accept();
    run();
}

void Alert::reject()
{
    const auto cancel = std::find_if(m_buttons.begin(), m_buttons.end(),
                                     [](const Button &button) { return button.role == Role::cancel; });
    if (cancel != m_buttons.end()) {
        press(*cancel);
    } else if (m_buttons.size() == 1) {
        press(m_buttons.first());
    }
}

} // namespace tallyfold
