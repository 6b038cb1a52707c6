#include "ui/controls/Warning.h"

#include "ui/controls/Buttons.h"
#include "ui/theme/Spacing.h"

#include <QVBoxLayout>

namespace tallyfold {

Warning::Warning(QWidget *parent)
    : QWidget(parent),
      m_label(new SymbolLabel(QStringLiteral("exclamationmark.triangle.fill"), Tone::warning,
                              TextStyle::callout)),
      m_button(new SmallButton(QString()))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::tight + 2);
    layout->addWidget(m_label);
    layout->addWidget(m_button);
    m_label->setAnnounced();
    m_button->hide();
    connect(m_button, &QPushButton::clicked, this, [this] {
        if (const auto run = m_run) { // A copy, since the action may delete this warning.
            run();
        }
    });
}

void Warning::setText(const QString &text)
{
    m_label->setText(text);
}

void Warning::setAction(const std::optional<Action> &action)
{
    m_run = action ? action->run : nullptr;
    m_button->setVisible(action.has_value());
    m_button->setText(action ? action->title : QString());
}

QString Warning::text() const
{
    return m_label->text();
}

QPushButton *Warning::button() const
{
    return m_button;
}

} // namespace tallyfold
