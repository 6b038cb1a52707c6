#include "ui/sheets/Sheets.h"

#include "app/RunMessages.h"
#include "ui/sheets/ResultView.h"
#include "ui/sheets/WelcomeView.h"
#include "ui/text/Messages.h"
#include "ui/text/Words.h"

#include <QApplication>

namespace tallyfold {

Sheets::Sheets(const Environment &environment, QWidget *window)
    : QObject(window), m_environment(environment), m_window(window)
{
    window->installEventFilter(this);
    connect(&environment.model, &AppModel::sheetChanged, this, &Sheets::showSheet);
    connect(&environment.model, &AppModel::problemChanged, this, &Sheets::showProblem);
    connect(&environment.model, &AppModel::confirmingProtectedChanged, this, &Sheets::showConfirmation);
    connect(&environment.model, &AppModel::readingChanged, this, &Sheets::showAll);
}

bool Sheets::eventFilter(QObject *object, QEvent *event)
{
    // A window manager places a window after it has been asked for, and what lies over it has to follow.
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize) {
        for (QDialog *dialog : {static_cast<QDialog *>(m_sheet), static_cast<QDialog *>(m_confirmation),
                                static_cast<QDialog *>(m_problem)}) {
            if (dialog) {
                // Both with their frames, which is what a move is of.
                dialog->move(m_window->frameGeometry().center() -
                             QRect(QPoint(), dialog->frameGeometry().size()).center());
            }
        }
    }
    return QObject::eventFilter(object, event);
}

QDialog *Sheets::current() const
{
    for (QDialog *dialog : {static_cast<QDialog *>(m_problem), static_cast<QDialog *>(m_confirmation),
                            static_cast<QDialog *>(m_sheet)}) {
        if (dialog) {
            return dialog;
        }
    }
    return nullptr;
}

void Sheets::showAll()
{
    showSheet();
    showConfirmation();
    showProblem();
}

QWidget *Sheets::top() const
{
    QDialog *dialog = current();
    return dialog ? dialog : m_window;
}

bool Sheets::isFree() const
{
    return m_window->isVisible() && !m_environment.model.isReading();
}

void Sheets::showSheet()
{
    const std::optional<Sheet> wanted = m_environment.model.sheet();
    if (m_sheet && m_shownSheet == wanted) {
        return;
    }
    if (m_sheet) {
        m_sheet->disconnect(this);
        m_sheet->done(QDialog::Rejected); // Not as its user would close it.
        m_sheet = nullptr;
    }
    m_shownSheet = wanted;
    if (!wanted || !isFree()) {
        return;
    }
    switch (*wanted) {
    case Sheet::welcome:
        m_sheet = new WelcomeView(m_environment, m_window);
        break;
    case Sheet::result:
        m_sheet = new ResultView(m_environment, m_window);
        QApplication::alert(m_window); // A long production ends while its user is elsewhere.
        break;
    }
    connect(m_sheet, &QDialog::finished, this, [this] {
        m_sheet = nullptr;
        m_environment.model.setSheet(std::nullopt);
    });
    m_sheet->open();
}

void Sheets::showProblem()
{
    const std::optional<QString> &problem = m_environment.model.problem();
    if (m_problem && problem != m_shownProblem) { // It is another one, or none any more.
        m_problem->deleteLater();
        m_problem->hide();
        m_problem = nullptr;
    }
    m_shownProblem = problem;
    if (m_problem || !problem || !isFree()) {
        return;
    }
    m_problem = new Alert(words(QT_TRANSLATE_NOOP("Words", "Something went wrong")), *problem,
                          {{words(QT_TRANSLATE_NOOP("Words", "OK")), Alert::Role::prominent,
                            [this, isUnderOutput = *problem == nothingWrittenMessage()] {
                                m_problem = nullptr;
                                m_environment.model.setProblem(std::nullopt);
                                if (isUnderOutput) {
                                    Q_EMIT sectionWanted(QStringLiteral("output"));
                                }
                            }}},
                          top());
    m_problem->setObjectName(QStringLiteral("problemAlert"));
    m_problem->open();
}

void Sheets::showConfirmation()
{
    if (!m_environment.model.isConfirmingProtected()) {
        if (m_confirmation) { // It was answered elsewhere.
            m_confirmation->deleteLater();
            m_confirmation = nullptr;
        }
        return;
    }
    const std::optional<PasswordNotice> notice = (*m_environment.plan).passwordNotice();
    if (m_confirmation || !notice || !isFree()) {
        return;
    }
    const auto answer = [this](const std::function<void()> &go) {
        m_confirmation = nullptr;
        m_environment.model.setConfirmingProtected(false);
        go();
    };
    m_confirmation = new Alert(
        words(QT_TRANSLATE_NOOP("Words", "Some PDFs Won’t Be Stamped")), confirmationOf(*notice),
        {{words(QT_TRANSLATE_NOOP("Words", "Stamp the Other Files")), Alert::Role::prominent,
          [this, answer] { answer([this] { m_environment.model.stampOthers(); }); }},
         {words(QT_TRANSLATE_NOOP("Words", "How to Remove a Password")), Alert::Role::normal,
          [this, answer] { answer([this] { m_environment.openHelp(QStringLiteral("password")); }); }},
         {words(QT_TRANSLATE_NOOP("Words", "Cancel")), Alert::Role::cancel, [answer] { answer([] {}); }}},
        top());
    m_confirmation->setObjectName(QStringLiteral("protectedAlert"));
    m_confirmation->open();
}

} // namespace tallyfold
