#include "app/PreviewImages.h"
#include "app/SettingsStore.h"
#include "app/Translations.h"
#include "tests/support/HeardLog.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyfold {

using tests::heard;

namespace {

const QString asked = QStringLiteral("tallyfold.app=true");

void saveNowhere()
{
    SettingsStore(QStringLiteral("/dev/null/settings.conf")).save(AppSettings::defaults());
}

} // namespace

TEST(AppLog, IsQuietUnlessAsked)
{
    EXPECT_EQ(heard(tests::nothingAsked, saveNowhere), QStringList());
}

TEST(AppLog, TellsOfSettingsThatCannotBeWritten)
{
    EXPECT_EQ(heard(asked, saveNowhere),
              QStringList(QStringLiteral(
                  "tallyfold.app: the settings file cannot be read or written: QSettings::AccessError")));
}

TEST(AppLog, TellsOfStoredSettingsThatAreNone)
{
    const tests::TemporaryFolder folder;
    const QString path = QString::fromStdString(folder / "settings.conf");
    UserSettings(path).setValue(QStringLiteral("settings"), QByteArrayLiteral("{"));
    const QStringList told =
        heard(asked, [&] { EXPECT_EQ(SettingsStore(path).load(), AppSettings::defaults()); });
    EXPECT_EQ(told, QStringList(QStringLiteral(
                        "tallyfold.app: the stored settings are no settings; the defaults are used")));
    EXPECT_EQ(heard(asked, [&] { (void)SettingsStore(path + QStringLiteral(".new")).load(); }), QStringList())
        << "a first start has none";
}

TEST(AppLog, TellsWhyThereIsNoPreview)
{
    SourceFile source;
    source.url = "/nowhere/secret.pdf";
    source.name = QStringLiteral("secret.pdf");
    const ProductionPlan plan({source}, {});
    const QStringList told = heard(asked, [&] { (void)PreviewImages::of(plan.files.front(), {}); });
    EXPECT_EQ(told, QStringList(QStringLiteral("tallyfold.app: no preview: unreadable, opening the source: "
                                               "No such file or directory")));
}

TEST(AppLog, TellsOfALanguageWithoutCatalogue)
{
    EXPECT_EQ(heard(asked, [] { const Translations none(QStringLiteral("tlh")); }),
              QStringList(QStringLiteral("tallyfold.app: there is no catalogue of the language \"tlh\"")));
}

} // namespace tallyfold
