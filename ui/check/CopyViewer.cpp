#include "ui/check/CopyViewer.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/controls/EmptyState.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLocale>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace tallyfold {

namespace {

constexpr QSize firstSize(680, 840);
/// What a window manager puts around a window, at most.
constexpr QSize frame(16, 56);
/// By how many pixels a picture grows with its window: it is drawn anew for each step.
constexpr int widthStep = 400;
constexpr int mostWidth = 2400;

} // namespace

CopyViewer::CopyViewer(QWidget *parent)
    : QDialog(parent, Qt::Window),
      m_name(new ElidedLabel(TextStyle::headline)),
      m_page(new StyledLabel(TextStyle::callout, Tone::secondary)),
      m_note(new StyledLabel(TextStyle::callout)),
      m_previous(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Previous Page")))),
      m_next(new QPushButton(words(QT_TRANSLATE_NOOP("Words", "Next Page")))),
      m_stack(new QStackedWidget),
      m_scroll(new QScrollArea),
      m_picture(new PreviewImage),
      m_problem(new StyledLabel(TextStyle::callout, Tone::secondary))
{
    setObjectName(QStringLiteral("copyViewer"));
    m_picture->setObjectName(QStringLiteral("copyPage"));
    setAccessibleRole(*m_picture, QAccessible::Graphic);
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(spacing::section, spacing::section, spacing::section, spacing::section);
    column->addWidget(m_picture);
    column->addStretch(1);
    m_scroll->setObjectName(QStringLiteral("copyScroll"));
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    // The bar keeps its place, or showing it would make the page narrower and so hide it again.
    m_scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::StrongFocus);
    m_scroll->setWidget(content);
    m_scroll->viewport()->installEventFilter(this);
    m_problem->setObjectName(QStringLiteral("copyProblem"));
    setAnnounced(*m_problem);
    m_stack->addWidget(m_scroll);
    m_stack->addWidget(new EmptyState(
        QStringLiteral("doc.richtext"),
        new StyledLabel(words(QT_TRANSLATE_NOOP("Words", "No Picture")), TextStyle::title), m_problem));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, spacing::wide, 0, 0);
    layout->setSpacing(spacing::wide);
    layout->addLayout(makeHeader());
    layout->addWidget(m_stack, 1);
    resize(firstSize.boundedTo(screen()->availableSize() - frame));
    connect(&m_copy, &CopyPages::shown, this, &CopyViewer::take);
    connect(new QShortcut(Qt::CTRL | Qt::Key_W, this), &QShortcut::activated, this, &QWidget::close);
}

QLayout *CopyViewer::makeHeader()
{
    m_name->setObjectName(QStringLiteral("copyName"));
    m_page->setObjectName(QStringLiteral("copyPageNumber"));
    m_page->setTabularDigits();
    m_note->setObjectName(QStringLiteral("copyNote"));
    m_previous->setObjectName(QStringLiteral("previousPage"));
    m_next->setObjectName(QStringLiteral("nextPage"));
    m_previous->setShortcut(Qt::Key_Left);
    m_next->setShortcut(Qt::Key_Right);
    m_previous->setAutoDefault(false);
    m_next->setAutoDefault(false);
    connect(m_previous, &QPushButton::clicked, this, [this] { turnTo(m_wanted.page - 1); });
    connect(m_next, &QPushButton::clicked, this, [this] { turnTo(m_wanted.page + 1); });
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_name);
    texts->addWidget(m_page);
    auto *row = new QHBoxLayout;
    row->setSpacing(spacing::normal);
    row->addLayout(texts, 1);
    row->addWidget(m_previous);
    row->addWidget(m_next);
    auto *header = new QVBoxLayout;
    header->setContentsMargins(spacing::section, 0, spacing::section, 0);
    header->setSpacing(spacing::normal);
    header->addLayout(row);
    header->addWidget(m_note);
    return header;
}

bool CopyViewer::isDrawing() const
{
    return m_copy.isDrawing();
}

void CopyViewer::showPage(const std::filesystem::path &folder, const QString &file, std::int64_t page,
                          const QString &note)
{
    m_wanted.folder = folder;
    m_wanted.file = file;
    m_pages = 0;
    setWindowTitle(file);
    m_name->setText(file);
    m_note->setText(note);
    turnTo(page);
    m_scroll->setFocus();
}

void CopyViewer::turnTo(std::int64_t page)
{
    m_wanted.page = page;
    tellPage();
    m_scroll->verticalScrollBar()->setValue(0);
    draw();
}

void CopyViewer::tellPage()
{
    const std::int64_t page = m_wanted.page;
    m_previous->setEnabled(page > 1);
    m_next->setEnabled(page < m_pages);
    const auto number = [](std::int64_t value) { return QLocale().toString(static_cast<qlonglong>(value)); };
    const QString where =
        m_pages > 0 ? words(QT_TRANSLATE_NOOP("Words", "Page %1 of %2")).arg(number(page), number(m_pages))
                    : words(QT_TRANSLATE_NOOP("Words", "Page %1")).arg(number(page));
    m_page->setText(where);
    m_picture->setAccessibleName(where);
    m_scroll->setAccessibleName(where);
}

std::int64_t CopyViewer::widthWanted() const
{
    const double pixels = m_scroll->viewport()->width() * devicePixelRatioF();
    return std::clamp(static_cast<int>(std::ceil(pixels / widthStep)) * widthStep, widthStep, mostWidth);
}

void CopyViewer::draw()
{
    m_wanted.width = widthWanted();
    m_copy.show(m_wanted);
}

void CopyViewer::take(const CopyPages::Shown &shown)
{
    m_pages = shown.pages.value_or(0);
    m_picture->setImage(shown.picture);
    m_problem->setText(
        shown.pages ? words(QT_TRANSLATE_NOOP("Words", "The copy has no such page, or it can’t be drawn."))
                    : words(QT_TRANSLATE_NOOP("Words", "The copy isn’t there any more, or can’t be read.")));
    m_stack->setCurrentIndex(shown.picture.isNull() ? 1 : 0);
    tellPage();
}

bool CopyViewer::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_scroll->viewport() && event->type() == QEvent::Resize && !m_wanted.file.isEmpty() &&
        widthWanted() != m_wanted.width) {
        draw();
    }
    return QDialog::eventFilter(object, event);
}

} // namespace tallyfold
