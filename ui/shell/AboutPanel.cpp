#include "ui/shell/AboutPanel.h"

#include "app/RunMessages.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/StyledLabel.h"
#include "ui/text/HelpTopics.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QIcon>
#include <QStringList>
#include <QVBoxLayout>

namespace tallyfold {

QStringList AboutPanel::credits()
{
    return {words(QT_TRANSLATE_NOOP("Words",
                                    "Bates numbers, legends and a production index for folders of PDFs")),
            words(QT_TRANSLATE_NOOP("Words",
                                    "PDFs are stamped on this computer and never uploaded. Questions: %1"))
                .arg(ProductLinks::ours().supportAddress)};
}

AboutPanel::AboutPanel(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("about"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(words(QT_TRANSLATE_NOOP("Words", "About %1")).arg(displayedName()));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::sheet * 2, spacing::sheet, spacing::sheet * 2, spacing::sheet);
    layout->setSpacing(spacing::normal);
    auto *icon = new QLabel;
    icon->setPixmap(QApplication::windowIcon().pixmap(QSize(96, 96), devicePixelRatioF()));
    icon->setAlignment(Qt::AlignCenter);
    layout->addWidget(icon);
    const auto addText = [layout](const QString &text, TextStyle style, Tone tone) {
        auto *label = new StyledLabel(text, style, tone);
        label->setAlignment(Qt::AlignCenter);
        label->setSelectable();
        layout->addWidget(label);
    };
    addText(displayedName(), TextStyle::largeTitle, Tone::text);
    addText(words(QT_TRANSLATE_NOOP("Words", "Version %1")).arg(QCoreApplication::applicationVersion()),
            TextStyle::callout, Tone::secondary);
    for (const QString &paragraph : credits()) {
        addText(paragraph, TextStyle::caption, Tone::secondary);
    }
    addText(words(QT_TRANSLATE_NOOP(
                "Words", "Free software under the GNU General Public License, version 3 or later")),
            TextStyle::caption, Tone::secondary);
    auto *close = new ProminentButton(words("OK"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    layout->addSpacing(spacing::normal);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(close, QDialogButtonBox::AcceptRole);
    buttons->setCenterButtons(true);
    layout->addWidget(buttons);
    setFixedWidth(420);
}

} // namespace tallyfold
