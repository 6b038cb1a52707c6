#include "ui/help/HelpView.h"

#include "app/RunMessages.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/StyledLabel.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"
#include "ui/theme/Symbols.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace tallyfold {

namespace {

constexpr int readableWidth = 620;
constexpr int topicsWidth = 230;
constexpr int symbolSize = 18;
/// What is left of a row beside its symbol, the gaps round it and a scroll bar's room.
constexpr int titleWidth = topicsWidth - symbolSize - 2 * spacing::normal;

} // namespace

HelpView::HelpView(HelpRouter &router, Desktop &desktop, QWidget *parent)
    : QWidget(parent),
      m_router(&router),
      m_desktop(&desktop),
      m_topics(new QListWidget),
      m_detail(new QScrollArea)
{
    setObjectName(QStringLiteral("help"));
    setWindowTitle(words("Help")); // The system adds the name of the program.
    m_topics->setObjectName(QStringLiteral("topics"));
    m_topics->setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Topics")));
    m_topics->setFrameShape(QFrame::NoFrame);
    m_topics->setIconSize(QSize(symbolSize, symbolSize));
    m_topics->setWordWrap(true);
    for (const Topic &topic : helpTopics()) {
        auto *item = new QListWidgetItem(symbolIcon(topic.symbol), topic.title, m_topics);
        item->setData(Qt::UserRole, topic.id);
        item->setToolTip(topic.title);
        const QFontMetrics metrics = m_topics->fontMetrics();
        const int lines = metrics.horizontalAdvance(topic.title) > titleWidth ? 2 : 1;
        item->setSizeHint(QSize(0, metrics.height() * lines + 2 * spacing::normal));
    }
    m_detail->setObjectName(QStringLiteral("topicPage"));
    m_detail->setAccessibleName(words(QT_TRANSLATE_NOOP("Words", "Topic")));
    m_detail->setFrameShape(QFrame::NoFrame);
    m_detail->setWidgetResizable(true);

    auto *splitter = new QSplitter;
    splitter->addWidget(m_topics);
    splitter->addWidget(m_detail);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({topicsWidth, 550});
    m_topics->setMinimumWidth(topicsWidth);
    m_detail->setMinimumWidth(300);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    resize(780, 540);

    for (const QKeySequence &keys : {QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::Key_Escape)}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
    }
    connect(m_topics, &QListWidget::currentItemChanged, this, [this](QListWidgetItem *item) {
        if (item) {
            m_router->setTopic(item->data(Qt::UserRole).toString());
        }
    });
    connect(m_router, &HelpRouter::topicChanged, this, &HelpView::showTopic);
    showTopic();
}

void HelpView::showTopic()
{
    const QList<Topic> &topics = helpTopics();
    const auto topic = std::find_if(topics.begin(), topics.end(),
                                    [this](const Topic &other) { return other.id == m_router->topic(); });
    if (topic == topics.end()) {
        return;
    }
    m_topics->setCurrentRow(static_cast<int>(topic - topics.begin()));
    m_detail->setWidget(pageOf(*topic));
    m_detail->verticalScrollBar()->setValue(0);
}

QWidget *HelpView::pageOf(const Topic &topic)
{
    auto *page = new QWidget;
    page->setAutoFillBackground(true);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(spacing::sheet, spacing::sheet, spacing::sheet, spacing::sheet);
    layout->setSpacing(spacing::wide);
    const auto addText = [layout](const QString &text, TextStyle style, const char *name) {
        auto *label = new StyledLabel(text, style);
        label->setObjectName(QLatin1String(name));
        label->setSelectable();
        label->setMaximumWidth(readableWidth);
        layout->addWidget(label);
    };
    addText(topic.title, TextStyle::largeTitle, "topicTitle");
    for (const QString &paragraph : topic.paragraphs) {
        addText(paragraph, TextStyle::body, "paragraph");
    }
    if (topic.id == QStringLiteral("support")) {
        const ProductLinks links = ProductLinks::ours();
        auto *mail = new QPushButton(symbolIcon(QStringLiteral("envelope")),
                                     words(QT_TRANSLATE_NOOP("Words", "Email Support")));
        mail->setObjectName(QStringLiteral("emailSupport"));
        mail->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
        connect(mail, &QPushButton::clicked, this,
                [this, links] { m_desktop->open(QUrl(links.supportMail())); });
        auto *web = new LinkButton(
            words(QT_TRANSLATE_NOOP("Words", "%1 on %2")).arg(displayedName(), QUrl(links.webPage).host()));
        web->setObjectName(QStringLiteral("webPage"));
        connect(web, &QPushButton::clicked, this, [this, links] { m_desktop->open(QUrl(links.webPage)); });
        layout->addWidget(mail);
        layout->addWidget(web);
    }
    layout->addStretch(1);
    return page;
}

} // namespace tallyfold
