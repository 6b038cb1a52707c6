#include "tests/ui/WindowFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTranslator>

namespace tallyfold {

namespace {

/// A language whose words are longer than English ones by half, as German ones are.
class LongLanguage final : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override
    {
        return false;
    }
    [[nodiscard]] QString translate(const char *context, const char *text, const char *, int) const override
    {
        if (qstrcmp(context, "Words") != 0) {
            return {};
        }
        const QString english = QString::fromUtf8(text);
        QString longer = english;
        for (qsizetype added = 0; added < (english.size() + 1) / 2; added += 8) {
            longer += QStringLiteral(" längerx").left(english.size() > 12 ? 8 : 4);
        }
        return longer;
    }
};

class LongTexts : public tests::WindowFixture {
protected:
    LongTexts()
    {
        QCoreApplication::installTranslator(&m_language);
        restart();
    }
    ~LongTexts() override
    {
        app.reset();
        QCoreApplication::removeTranslator(&m_language);
    }

    /// Fails for every text in `window` that has less room than it needs.
    static int checkRoom(QWidget *window)
    {
        int checked = 0;
        for (QLabel *label : window->findChildren<QLabel *>()) {
            if (label->isVisible() && label->wordWrap()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width()))
                    << label->text().toStdString();
                ++checked;
            }
        }
        for (QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
            const bool hasText = qobject_cast<QPushButton *>(button) || qobject_cast<QCheckBox *>(button);
            if (button->isVisible() && hasText) {
                EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()))
                    << button->text().toStdString();
                // Nothing lies outside of what can be scrolled to.
                EXPECT_LE(button->x() + button->width(), button->parentWidget()->width())
                    << button->text().toStdString();
                ++checked;
            }
        }
        return checked;
    }

private:
    LongLanguage m_language;
};

} // namespace

TEST_F(LongTexts, HaveRoomInTheMainWindowAtItsUsualAndAtASmallSize)
{
    addPdfs({"a.pdf", std::string(200, 'n') + ".pdf"});
    addSamples({"Board minutes.pdf", "Sealed letter.pdf", "Term sheet.pdf"});
    edit([](StampSettings &settings) {
        settings.legend = QStringLiteral("SECRET");
        settings.pageOfTotal = true;
        settings.startNumber = 999'999;
        settings.cover = CoverOption::skipKeepNumber;
    });
    for (const QSize size : {QSize(1240, 800), QSize(1024, 700)}) {
        app->mainView().resize(size);
        QTest::qWait(0);
        EXPECT_GT(checkRoom(&app->mainView()), 40);
        EXPECT_EQ(app->mainView().size(), size);
        const auto *form = find<QScrollArea>("stampForm");
        EXPECT_LE(form->widget()->width(), form->viewport()->width());
    }
}

TEST_F(LongTexts, HaveRoomInSheetsAndTheOtherWindows)
{
    model().setSheet(Sheet::welcome);
    waitUntil([this] { return app->mainView().sheets().current() != nullptr; });
    EXPECT_GT(checkRoom(app->mainView().sheets().current()), 8);
    model().setSheet(std::nullopt);
    addPdfs({"a.pdf"});
    model().setOutputFolder(output);
    model().stamp();
    waitUntil([this] { return app->mainView().sheets().current() != nullptr; });
    EXPECT_GT(checkRoom(app->mainView().sheets().current()), 6);
    model().setSheet(std::nullopt);
    model().savePreset(QString(80, QLatin1Char('p')));
    app->openWindow(WindowId::settings);
    QTest::qWait(0);
    EXPECT_GT(checkRoom(app->settings()), 6);
    app->environment().openHelp(QStringLiteral("support"));
    QTest::qWait(0);
    EXPECT_GT(checkRoom(app->help()), 2);
}

} // namespace tallyfold
