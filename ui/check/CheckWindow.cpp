#include "ui/check/CheckWindow.h"

#include "app/FindingText.h"
#include "app/UriList.h"
#include "ui/controls/Buttons.h"
#include "ui/controls/EmptyState.h"
#include "ui/sheets/Alert.h"
#include "ui/text/Words.h"
#include "ui/theme/Spacing.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace tallyfold {

namespace {

const QString geometryKey = QStringLiteral("check/geometry");
const QString uriList = QStringLiteral("text/uri-list");

constexpr QSize firstSize(820, 640);
constexpr QSize leastSize(520, 440);
/// What a window manager puts around a window, at most.
constexpr QSize frame(16, 56);

} // namespace

CheckWindow::CheckWindow(Parts parts, QWidget *parent)
    : QDialog(parent, Qt::Window),
      m_parts(std::move(parts)),
      m_model(m_parts.checker),
      m_pages(new QStackedWidget),
      m_folders(new CheckFolders(m_model)),
      m_states(new QStackedWidget),
      m_progress(new CheckProgress(m_model)),
      m_results(new CheckResults(m_model, m_parts.desktop, m_parts.askForReport))
{
    setObjectName(QStringLiteral("check"));
    setWindowTitle(words(QT_TRANSLATE_NOOP("Words", "Check a Production")));
    setAcceptDrops(true);
    setMinimumSize(leastSize);
    m_pages->addWidget(makeEmptyState());
    m_pages->addWidget(makeCheck());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    connect(&m_model, &CheckModel::foldersChanged, this, &CheckWindow::showFolders);
    connect(&m_model, &CheckModel::runningChanged, this, &CheckWindow::showState);
    connect(m_folders, &CheckFolders::moreWanted, this, &CheckWindow::chooseFolder);
    connect(m_results, &CheckResults::pageWanted, this, &CheckWindow::showPage);
    connect(new QShortcut(Qt::CTRL | Qt::Key_W, this), &QShortcut::activated, this, &QWidget::close);
    if (!restoreGeometry(m_parts.windowState.bytes(geometryKey))) {
        resize(firstSize.boundedTo(screen()->availableSize() - frame).expandedTo(leastSize));
    }
    showFolders();
}

QWidget *CheckWindow::makeEmptyState()
{
    auto *button = new ProminentButton(words("Add Folder…"));
    button->setObjectName(QStringLiteral("addFirstFolder"));
    connect(button, &QPushButton::clicked, this, &CheckWindow::chooseFolder);
    return new EmptyState(
        QStringLiteral("lock.shield"), words(QT_TRANSLATE_NOOP("Words", "Drop a Finished Production Here")),
        words(QT_TRANSLATE_NOOP("Words",
                                "Every copy in its folder is held against its index, page by page. Drop "
                                "several folders to check that their numbers follow each other. Nothing is "
                                "written, and nothing is changed.")),
        button);
}

QWidget *CheckWindow::makeCheck()
{
    auto *hint = new StyledLabel(
        words(QT_TRANSLATE_NOOP("Words", "Checking reads every page, which takes a while for many.")),
        TextStyle::callout, Tone::secondary);
    hint->setAlignment(Qt::AlignTop);
    m_states->addWidget(hint);
    m_states->addWidget(m_progress);
    m_states->addWidget(m_results);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(spacing::section, spacing::wide, spacing::section, spacing::section);
    layout->setSpacing(spacing::wide);
    layout->addWidget(m_folders);
    layout->addWidget(m_states, 1);
    return page;
}

CheckModel &CheckWindow::model()
{
    return m_model;
}

CopyViewer *CheckWindow::viewer() const
{
    return m_viewer;
}

void CheckWindow::chooseFolder()
{
    const PanelAnswer answer = m_parts.panels.run(OpenPanel::forProduction());
    m_model.add(answer.chosen);
    if (!answer.lost.isEmpty()) {
        const QString text =
            words(QT_TRANSLATE_NOOP("Words",
                                    "“%1” can’t be found by the name that the desktop’s dialog gives "
                                    "it, as happens with names that aren’t valid text. Drop the "
                                    "folder on this window instead."))
                .arg(answer.lost.join(QStringLiteral("”, “")));
        auto *alert = new Alert(words(QT_TRANSLATE_NOOP("Words", "The folder was not added")), text,
                                {{words("OK"), Alert::Role::prominent}}, this);
        alert->setObjectName(QStringLiteral("checkAlert"));
        alert->open();
    }
}

void CheckWindow::showFolders()
{
    const bool isAny = !m_model.folders().empty() || m_model.result();
    m_pages->setCurrentIndex(isAny ? 1 : 0);
    QWidget *next = m_folders->checkButton();
    if (isAny && next->isEnabled()) {
        next->setFocus();
    }
}

void CheckWindow::showState()
{
    const bool hadFocus = isAncestorOf(QApplication::focusWidget()) || QApplication::focusWidget() == nullptr;
    if (m_model.isRunning()) {
        m_states->setCurrentWidget(m_progress);
    } else if (m_model.result()) {
        m_states->setCurrentWidget(m_results);
    }
    if (hadFocus) { // What had it is gone; the next thing to act on takes its place.
        (m_model.isRunning() ? m_progress->stopButton() : m_results->first())->setFocus();
    }
}

void CheckWindow::showPage(const check::Finding &finding)
{
    const CheckResult &result = *m_model.result();
    if (m_viewer == nullptr) {
        m_viewer = new CopyViewer(this);
    }
    m_viewer->showPage(result.folders[finding.folder], finding.file, finding.page.value_or(1),
                       findingText(finding, result.folders));
    m_viewer->show();
    m_viewer->raise();
    m_viewer->activateWindow();
}

void CheckWindow::reject()
{
    if (m_model.isRunning()) {
        m_model.stop();
    } else {
        close();
    }
}

void CheckWindow::closeEvent(QCloseEvent *event)
{
    m_model.stop(); // What it has found is there when the window is opened again.
    if (m_viewer != nullptr) {
        m_viewer->close();
    }
    m_parts.windowState.setBytes(geometryKey, saveGeometry());
    event->accept();
}

void CheckWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasFormat(uriList) && !m_model.isRunning()) {
        event->setDropAction(Qt::CopyAction); // A file manager must not take the originals away.
        event->accept();
    } else {
        event->ignore();
    }
}

void CheckWindow::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_model.add(localPathsIn(event->mimeData()->data(uriList)));
}

} // namespace tallyfold
