#include "ui/form/PasswordNoticeView.h"

#include "ui/controls/Buttons.h"
#include "ui/text/Messages.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QPainter>
#include <QVBoxLayout>

namespace tallyfold {

PasswordNoticeView::PasswordNoticeView(const Environment &environment, QWidget *parent)
    : QWidget(parent),
      m_environment(environment),
      m_label(new SymbolLabel(QStringLiteral("lock.fill"), Tone::warning, TextStyle::callout)),
      m_help(new SmallButton(words(QT_TRANSLATE_NOOP("Words", "How to Remove a Password")))),
      m_remove(new SmallButton(QString()))
{
    setObjectName(QStringLiteral("passwordNotice"));
    m_label->setAnnounced();
    m_help->setObjectName(QStringLiteral("passwordHelp"));
    m_remove->setObjectName(QStringLiteral("removeProtected"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::wide, spacing::wide, spacing::wide, spacing::wide);
    layout->setSpacing(spacing::normal);
    layout->addWidget(m_label);
    layout->addWidget(m_help);
    layout->addWidget(m_remove);
    connect(m_help, &QPushButton::clicked, this,
            [this] { m_environment.openHelp(QStringLiteral("password")); });
    connect(m_remove, &QPushButton::clicked, this, &PasswordNoticeView::removeProtected);
    connect(&environment.plan, &CurrentPlan::changed, this, &PasswordNoticeView::showNotice);
    showNotice();
}

void PasswordNoticeView::showNotice()
{
    const std::optional<PasswordNotice> notice = (*m_environment.plan).passwordNotice();
    setVisible(notice.has_value());
    if (notice) {
        m_label->setText(messageOf(*notice));
        m_remove->setText(removalTitleOf(*notice));
    }
}

void PasswordNoticeView::removeProtected()
{
    QSet<QUuid> ids;
    for (const PlannedFile *file : (*m_environment.plan).passwordProtectedFiles()) {
        ids.insert(file->source.id);
    }
    m_environment.model.remove(ids);
}

void PasswordNoticeView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor warning = colorOf(Tone::warning, palette());
    QColor ground = warning;
    ground.setAlphaF(0.10F);
    QColor edge = warning;
    edge.setAlphaF(0.35F);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
}

} // namespace tallyfold
