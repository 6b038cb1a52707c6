#include "ui/preview/PreviewPane.h"

#include "core/NormalizedSettings.h"
#include "ui/controls/EmptyState.h"
#include "ui/text/Messages.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QEvent>

#include <algorithm>
#include <cmath>

namespace tallyfold {

namespace {

// Indices in the stack.
constexpr int nothing = 0;
constexpr int pages = 1;
constexpr int unshown = 2;

/// Minimum scale of the close-up relative to the pages.
constexpr double closeUpScale = 1.5;
/// Its full width while the pages are small, in device-independent pixels: half its width in pixels.
constexpr double closeUpWidth = static_cast<double>(PreviewImages::pageWidth) / 2;
/// Step in pixels by which pictures grow with their column; each step draws them again.
constexpr int widthStep = 400;

} // namespace

PreviewPane::PreviewPane(const Environment &environment, QWidget *parent)
    : QStackedWidget(parent),
      m_environment(environment),
      m_header(new ElidedLabel(TextStyle::headline, Tone::secondary)),
      m_unshownFile(new ElidedLabel(TextStyle::title)),
      m_unshownReason(new StyledLabel(TextStyle::callout, Tone::secondary)),
      m_closeUpBox(new QWidget),
      m_closeUp(new CloseUp),
      m_scroll(new QScrollArea),
      m_column(nullptr)
{
    setObjectName(QStringLiteral("previewPane"));
    addWidget(new EmptyState(
        QStringLiteral("doc.richtext"), words(QT_TRANSLATE_NOOP("Words", "Preview")),
        words(QT_TRANSLATE_NOOP("Words",
                                "Add PDFs to see their first pages stamped. Select a file to preview it."))));
    addWidget(makePages());
    addWidget(makeUnshown());
    connect(&environment.model, &AppModel::previewsChanged, this, &PreviewPane::showImages);
    connect(&environment.model, &AppModel::closeUpChanged, this, &PreviewPane::showCloseUp);
    connect(&environment.model, &AppModel::previewFileNameChanged, this, &PreviewPane::showName);
    showImages();
    showCloseUp();
    connect(&environment.plan, &CurrentPlan::changed, this, &PreviewPane::showPage);
    showName();
}

QWidget *PreviewPane::makeUnshown()
{
    m_unshownFile->setObjectName(QStringLiteral("unshownFile"));
    m_unshownReason->setObjectName(QStringLiteral("unshownReason"));
    return new EmptyState(QStringLiteral("doc.richtext"), m_unshownFile, m_unshownReason);
}

void PreviewPane::showPage()
{
    const AppModel &model = m_environment.model;
    const std::optional<QString> &name = model.previewFileName();
    if (!model.previews().isEmpty() || !name) {
        setCurrentIndex(model.previews().isEmpty() ? nothing : pages);
        return;
    }
    const ProductionPlan &plan = *m_environment.plan;
    const auto isShown = [&](const PlannedFile &file) {
        return file.source.name == *name &&
               (model.selection().isEmpty() || model.selection().contains(file.source.id));
    };
    const auto file = std::find_if(plan.files.begin(), plan.files.end(), isShown);
    m_unshownFile->setText(*name);
    m_unshownReason->setText(
        file != plan.files.end() && file->source.problem
            ? messageOf(*file->source.problem)
            : words(QT_TRANSLATE_NOOP("Words", "The first pages of this file can’t be shown.")));
    setCurrentIndex(plan.files.empty() ? nothing : unshown);
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
    m_scroll->setObjectName(QStringLiteral("previewScroll"));
    m_scroll->setAccessibleName(words("Preview"));
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    // Space for the scroll bar is reserved: showing it would otherwise shrink the pages and hide it again.
    m_scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setWidget(content);
    m_scroll->viewport()->installEventFilter(this);
    return m_scroll;
}

void PreviewPane::fitColumn()
{
    const int column = m_scroll->viewport()->width();
    const double scale = devicePixelRatioF();
    // Not wider than the pixels of the image allow; the same for the close-up.
    const auto most = static_cast<int>(PreviewImages::mostPageWidth / (scale * closeUpScale));
    const int page = std::clamp(column - 2 * spacing::section, 1, most);
    const int margin = (column - page) / 2;
    m_column->setContentsMargins(margin, spacing::section, column - page - margin, spacing::section);
    const double whole = std::max(closeUpWidth, page * closeUpScale);
    m_closeUp->setWholeWidth(whole);
    m_environment.model.setPreviewWidth(static_cast<std::int64_t>(std::ceil(whole * scale / widthStep)) *
                                        widthStep);
}

bool PreviewPane::event(QEvent *event)
{
    if (event->type() == QEvent::ScreenChangeInternal) {
        fitColumn();
    }
    return QStackedWidget::event(event);
}

bool PreviewPane::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Resize) {
        fitColumn();
    }
    return QStackedWidget::eventFilter(object, event);
}

void PreviewPane::showImages()
{
    const QList<QImage> &images = m_environment.model.previews();
    showPage();
    // Existing widgets are reused, so that nothing flickers and the scroll position is kept.
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
        m_pages[page]->setImage(images[page]);
    }
}

void PreviewPane::showCloseUp()
{
    const std::optional<QImage> &closeUp = m_environment.model.closeUp();
    // Pictures of outdated settings are not shown.
    m_closeUp->setImage(closeUp.value_or(QImage()),
                        stampedEnds(m_environment.model.settings().stamp.normalized()));
    m_closeUpBox->setVisible(closeUp.has_value());
}

void PreviewPane::showName()
{
    m_header->setText(words(QT_TRANSLATE_NOOP("Words", "First pages of “%1”"))
                          .arg(m_environment.model.previewFileName().value_or(QString())));
    showPage();
}

} // namespace tallyfold
