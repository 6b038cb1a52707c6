#include "app/Translations.h"

#include "app/AppSettings.h"
#include "app/CountText.h"
#include "app/Panels.h"
#include "app/RunMessages.h"
#include "app/SourceMessages.h"
#include "tests/app/ModelFixture.h"

#include <QFile>
#include <QTranslator>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace tallyfold {

namespace {

/// A language in which every text has its context before it.
class ContextsShown final : public QTranslator {
public:
    ContextsShown()
    {
        QCoreApplication::installTranslator(this);
    }
    ~ContextsShown() override
    {
        QCoreApplication::removeTranslator(this);
    }
    [[nodiscard]] bool isEmpty() const override
    {
        return false;
    }
    [[nodiscard]] QString translate(const char *context, const char *text, const char * /*disambiguation*/,
                                    int /*count*/) const override
    {
        return u'<' + QString::fromUtf8(context) + u'>' + QString::fromUtf8(text);
    }
};

using Text = std::function<QString()>;

/// What `text` gives in that language.
std::string shown(const Text &text)
{
    const ContextsShown language;
    return text().toStdString();
}

std::string plain(const Text &text)
{
    return text().toStdString();
}

} // namespace

using TranslatedModel = tests::ModelFixture;

TEST(TranslatedTexts, MessagesAreAskedForWholeAndInTheContextOfTheModel)
{
    const ProductionConflict exists{ProductionConflict::Kind::exists, QStringLiteral("a.pdf")};
    const ProductionConflict duplicate{ProductionConflict::Kind::duplicate, QStringLiteral("a.pdf")};
    const std::vector<Text> messages{
        [=] { return *existingFilesMessage({exists}); },
        [=] {
            return *existingFilesMessage({exists, exists});
        },
        nothingWrittenMessage,
        [=] { return conflictsDuringRunMessage({exists}); },
        [=] { return conflictsDuringRunMessage({duplicate}); },
        [] { return failedRunMessage(QStringLiteral("no memory")); },
        noPdfsMessage,
        [] { return unreadableFoldersMessage({"/a"}); },
        [] {
            return unreadableFoldersMessage({"/a", "/b"});
        },
    };
    for (const Text &message : messages) {
        EXPECT_EQ(shown(message), "<AppModel>" + plain(message));
    }
}

TEST(TranslatedTexts, AFailureOfAFileIsTwoTexts)
{
    const FileError error{QStringLiteral("a.csv"), std::make_error_code(std::errc::io_error)};
    EXPECT_EQ(shown([&] { return failedRunMessage(error); }),
              "<AppModel>The production couldn’t be written: <AppModel>“a.csv”: " + error.code.message());
}

TEST(TranslatedTexts, EachSentenceOnChangedSourcesIsOne)
{
    const auto change = [](bool couldBeStamped, bool canBeStamped, bool isGone = false) {
        return SourceChange{QStringLiteral("a"), 2, 3, couldBeStamped, canBeStamped, isGone};
    };
    const std::string end = " <AppModel>Nothing was written: look at the list, then stamp again.";
    const auto sentence = [&](const std::vector<SourceChange> &changes) {
        const std::string whole = shown([&] { return changedSourcesMessage(changes); });
        EXPECT_TRUE(whole.ends_with(end)) << whole;
        return whole.substr(0, whole.size() - end.size());
    };
    const std::string changed = "<AppModel>“a” has changed since it was added";
    EXPECT_EQ(sentence({change(true, true)}),
              changed + ": it had <CountText>2 pages and has <CountText>3 pages now.");
    EXPECT_EQ(sentence({change(false, true)}), changed + " and can be stamped now.");
    EXPECT_EQ(sentence({change(true, false)}), changed + " and can’t be stamped any more.");
    EXPECT_EQ(sentence({change(false, false)}), changed + " and still can’t be stamped.");
    EXPECT_EQ(sentence({change(true, false, true)}),
              "<AppModel>“a” isn’t there any more and won’t be stamped.");
    EXPECT_EQ(
        sentence(std::vector(5, change(true, false, true))),
        "<AppModel>5 files aren’t there any more and won’t be stamped: a, a, a, a<AppModel> and 1 more.");
    EXPECT_EQ(sentence(std::vector(2, change(true, true))),
              "<AppModel>2 files have changed since they were added: a, a.");
}

TEST(TranslatedTexts, CountsHaveAContextOfTheirOwn)
{
    EXPECT_EQ(shown([] { return countText(2, Counted::files); }), "<CountText>2 files");
    EXPECT_EQ(shown([] { return countText(2, Counted::pages); }), "<CountText>2 pages");
    EXPECT_EQ(shown([] { return countText(2, Counted::stampedCopies); }), "<CountText>2 stamped copies");
}

TEST(TranslatedTexts, PanelsHaveAContextOfTheirOwn)
{
    for (const auto panel :
         {OpenPanel::forFiles, OpenPanel::forFolder, OpenPanel::forOutputFolder, OpenPanel::forProduction}) {
        EXPECT_EQ(shown([&] { return panel().title; }), "<Panels>" + plain([&] { return panel().title; }));
        EXPECT_EQ(shown([&] { return panel().message; }),
                  "<Panels>" + plain([&] { return panel().message; }));
        EXPECT_EQ(shown([&] { return panel().prompt; }), "<Panels>" + plain([&] { return panel().prompt; }));
    }
}

TEST(TranslatedTexts, TheFormatOfPageNumbersIsOneFromTheStart)
{
    EXPECT_EQ(shown([] { return AppSettings::defaults().stamp.pageOfTotalFormat; }),
              "<AppSettings>Page {page} of {total}");
}

TEST(TranslatedTextsDeathTest, BuiltInPresetsAreInTheLanguageOfTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // A program in which nobody has asked for them yet.
    const auto askForThem = [] {
        const ContextsShown language;
        const std::array<Preset, 3> &presets = AppModel::builtInPresets();
        for (const Preset &preset : presets) {
            std::fprintf(stderr, "%s\n", preset.name.toUtf8().constData());
        }
        std::fprintf(stderr, "%s\n%s\n", presets[1].settings.legend.toUtf8().constData(),
                     presets[2].settings.pageOfTotalFormat.toUtf8().constData());
        std::_Exit(0);
    };
    EXPECT_EXIT(askForThem(), testing::ExitedWithCode(0),
                "<BuiltInPresets>Standard .bottom right.\n"
                "<BuiltInPresets>Confidential legend\n"
                "<BuiltInPresets>Exhibits .EX-0001, page X of Y.\n"
                "<BuiltInPresets>CONFIDENTIAL\n"
                "<BuiltInPresets>Page .page. of .total.\n");
}

TEST_F(TranslatedModel, StepsAreNamedInItsContext)
{
    const ContextsShown language;
    const auto lastStep = [this] { return undo.text(undo.index() - 1).toStdString(); };
    addPdfs({"a.pdf", "b.pdf", "c.pdf"});
    EXPECT_EQ(lastStep(), "<tallyfold::AppModel>Add Files");
    model->remove({idOf("a.pdf")});
    EXPECT_EQ(lastStep(), "<tallyfold::AppModel>Remove File");
    model->removeAll();
    EXPECT_EQ(lastStep(), "<tallyfold::AppModel>Remove Files");
    model->applyPresetUndoably(AppModel::builtInPresets()[1]);
    EXPECT_EQ(lastStep(), "<tallyfold::AppModel>Apply Preset");
    model->savePreset(QStringLiteral("Mine"));
    model->deletePreset(model->settings().presets.front().id);
    EXPECT_EQ(lastStep(), "<tallyfold::AppModel>Delete Preset");
}

TEST(Translations, WordsOfThisDesktopHoldAsLongAsTheyLive)
{
    const auto advice = [] {
        return QCoreApplication::translate("Words",
                                           "Drop a folder of PDFs (or the PDFs themselves) on the list, or "
                                           "choose File › Add PDFs (⌘O). PDFs in subfolders are added too.");
    };
    {
        const Translations translations;
        EXPECT_TRUE(advice().contains(QStringLiteral("(Ctrl+O)"))) << advice().toStdString();
    }
    EXPECT_TRUE(advice().contains(QStringLiteral("(⌘O)")));
}

TEST(Translations, EachLanguageHasItsCatalogue)
{
    ASSERT_FALSE(Translations::languages().isEmpty());
    EXPECT_EQ(Translations::languages().front(), QStringLiteral("en"));
    for (const QString &language : Translations::languages()) {
        const Translations translations(language); // Brings the catalogues with it.
        EXPECT_TRUE(QFile::exists(QStringLiteral(":/translations/tallyfold_%1.qm").arg(language)))
            << language.toStdString();
    }
}

TEST(Translations, AnUnknownLanguageLeavesTheKeys)
{
    const Translations translations(QStringLiteral("xx"));
    EXPECT_EQ(QCoreApplication::translate("Words", "Check for Updates…"),
              QStringLiteral("Check for Updates…"));
}

} // namespace tallyfold
