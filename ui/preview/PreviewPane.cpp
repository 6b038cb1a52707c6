#include "ui/preview/PreviewPane.h"

#include "ui/controls/EmptyState.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QScrollArea>

namespace tallyfold {

PreviewPane::PreviewPane(const Environment &environment, QWidget *parent)
    : QStackedWidget(parent),
      m_environment(environment),
      m_header(new ElidedLabel(TextStyle::headline, Tone::secondary)),
      m_closeUpBox(new QWidget),
      m_closeUp(new PreviewImage),
      m_column(nullptr)
{
    setObjectName(QStringLiteral("previewPane"));
    addWidget(new EmptyState(
        QStringLiteral("doc.richtext"), words(QT_TRANSLATE_NOOP("Words", "Preview")),
        words(QT_TRANSLATE_NOOP("Words",
                                "Add PDFs to see their first pages stamped. Select a file to preview it."))));
    addWidget(makePages());
    connect(&environment.model, &AppModel::previewsChanged, this, &PreviewPane::showImages);
    connect(&environment.model, &AppModel::closeUpChanged, this, &PreviewPane::showCloseUp);
    connect(&environment.model, &AppModel::previewFileNameChanged, this, &PreviewPane::showName);
    showImages();
    showCloseUp();
    showName();
}

QWidget *PreviewPane::makePages()
{
    m_header->setObjectName(QStringLiteral("previewHeader"));
    m_closeUp->setObjectName(QStringLiteral("closeUp"));
    m_closeUp->setAccessibleName(
        words(QT_TRANSLATE_NOOP("Words", "Close-up of the stamp on the first page")));
    auto *box = new QVBoxLayout(m_closeUpBox);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(spacing::tight);
    box->addWidget(new StyledLabel(words(QT_TRANSLATE_NOOP("Words", "Close-up of the stamp")),
                                   TextStyle::captionStrong, Tone::secondary));
    box->addWidget(m_closeUp);

    auto *content = new QWidget;
    m_column = new QVBoxLayout(content);
    m_column->setContentsMargins(spacing::section, spacing::section, spacing::section, spacing::section);
    m_column->setSpacing(spacing::section);
    m_column->addWidget(m_header);
    m_column->addWidget(m_closeUpBox);
    m_column->addStretch(1);
    auto *scroll = new QScrollArea;
    scroll->setObjectName(QStringLiteral("previewScroll"));
    scroll->setAccessibleName(words("Preview"));
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    // The bar keeps its place, or showing it would make the pages narrower and so hide it again.
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(content);
    return scroll;
}

void PreviewPane::showImages()
{
    const QList<QImage> &images = m_environment.model.previews();
    setCurrentIndex(images.isEmpty() ? 0 : 1);
    // Pages that stay keep their widgets, so that nothing flickers and the scroll bar keeps its place.
    while (m_pages.size() > images.size()) {
        delete m_pages.takeLast();
    }
    while (m_pages.size() < images.size()) {
        auto *page = new PreviewImage;
        const QString number = QString::number(m_pages.size() + 1);
        page->setObjectName(QStringLiteral("page") + number);
        page->setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Page %1, stamped")).arg(number));
        m_column->insertWidget(m_column->count() - 1, page);
        m_pages.append(page);
    }
    for (qsizetype page = 0; page < images.size(); ++page) {
        m_pages[page]->show(images[page]);
    }
}

void PreviewPane::showCloseUp()
{
    const std::optional<QImage> &closeUp = m_environment.model.closeUp();
    m_closeUp->show(closeUp.value_or(QImage()));
    m_closeUpBox->setVisible(closeUp.has_value());
}

void PreviewPane::showName()
{
    m_header->setText(words(QT_TRANSLATE_NOOP("Words", "First pages of “%1”"))
                          .arg(m_environment.model.previewFileName().value_or(QString())));
}

} // namespace tallyfold
