#include "tests/app/ModelFixture.h"

#include "tests/support/PdfBuilder.h"

#include <QSettings>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace tallyfold {

using Settings = tests::ModelFixture;
using Counts = std::map<std::string, int>;

namespace {

/// The bytes stored in the settings file at `path`.
QByteArray stored(const std::filesystem::path &path)
{
    return QSettings(QString::fromStdString(path), QSettings::IniFormat)
        .value(QStringLiteral("settings"))
        .toByteArray();
}

void store(const std::filesystem::path &path, const QByteArray &bytes)
{
    QSettings(QString::fromStdString(path), QSettings::IniFormat).setValue(QStringLiteral("settings"), bytes);
}

} // namespace

TEST_F(Settings, AnEmptyStoreGivesTheDefaultsAndIsNotWrittenTo)
{
    EXPECT_EQ(model->settings(), AppSettings::defaults());
    EXPECT_TRUE(stored(folder / "settings.ini").isEmpty());
}

TEST_F(Settings, EveryEffectiveChangeIsStoredAtOnce)
{
    AppSettings settings = model->settings();
    settings.stamp.prefix = QStringLiteral("SMITH");
    settings.stamp.startNumber = 41;
    model->setSettings(settings);
    EXPECT_EQ(decodeAppSettings(stored(folder / "settings.ini")), settings);
    EXPECT_EQ(anotherModel()->settings(), settings);
}

TEST_F(Settings, AnEqualValueChangesNothing)
{
    store(folder / "settings.ini", "untouched");
    model->setSettings(model->settings());
    EXPECT_EQ(counts->take(), Counts());
    EXPECT_FALSE(model->hasPreviewTask());
    EXPECT_EQ(stored(folder / "settings.ini"), "untouched");
}

TEST_F(Settings, OnlyTheStampSettingsRefreshThePreviews)
{
    AppSettings settings = model->settings();
    settings.writePrivilegeLog = true;
    model->setSettings(settings);
    EXPECT_EQ(counts->take(), (Counts{{"settings", 1}}));
    EXPECT_FALSE(model->hasPreviewTask());
    EXPECT_EQ(decodeAppSettings(stored(folder / "settings.ini")), settings);
    settings.stamp.digits = 8;
    model->setSettings(settings);
    EXPECT_TRUE(model->hasPreviewTask());
}

TEST_F(Settings, AnUnreadableValueGivesTheDefaultsAndStaysUntilTheNextChange)
{
    store(folder / "settings.ini", "{\"onboardingDone\":true,\"writeIndex\":\"yes\"}");
    const std::unique_ptr<AppModel> other = anotherModel();
    EXPECT_EQ(other->settings(), AppSettings::defaults());
    EXPECT_EQ(stored(folder / "settings.ini"), "{\"onboardingDone\":true,\"writeIndex\":\"yes\"}");
    AppSettings settings = other->settings();
    settings.onboardingDone = true;
    other->setSettings(settings);
    EXPECT_EQ(decodeAppSettings(stored(folder / "settings.ini")), settings);
}

TEST_F(Settings, ATruncatedFileGivesTheDefaults)
{
    AppSettings settings = model->settings();
    settings.onboardingDone = true;
    model->setSettings(settings);
    model.reset();
    const std::string whole = tests::readFile(folder / "settings.ini");
    ASSERT_GT(whole.size(), 100U);
    for (const std::size_t size : {whole.size() / 2, std::size_t{1}, std::size_t{0}}) {
        tests::writeFile(folder / "settings.ini", whole.substr(0, size));
        EXPECT_EQ(anotherModel()->settings(), AppSettings::defaults()) << size;
    }
}

TEST_F(Settings, AFileThatCannotBeWrittenStopsNothing)
{
    // A folder in its place prevents reading and writing, even for root.
    std::filesystem::create_directory(folder / "settings.ini");
    const std::unique_ptr<AppModel> other = anotherModel();
    AppSettings settings = other->settings();
    settings.onboardingDone = true;
    other->setSettings(settings);
    EXPECT_EQ(other->settings(), settings);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "settings.ini"));
}

TEST_F(Settings, AFullDiskKeepsTheSettingsAsTheyWere)
{
    const auto change = [this](const QString &prefix) {
        AppSettings settings = model->settings();
        settings.stamp.prefix = prefix;
        model->setSettings(settings);
        QSettings(QString::fromStdString(folder / "settings.ini"), QSettings::IniFormat).sync();
        EXPECT_EQ(model->settings(), settings);
        return tests::readFile(folder / "settings.ini");
    };
    const std::string kept = change(QStringLiteral("KEPT"));
    EXPECT_NE(kept.find("KEPT"), std::string::npos);
    // A limit of the file size has the effect of a full disk.
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit full{16, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    const std::string onFullDisk = change(QStringLiteral("LOST"));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    (void)std::signal(SIGXFSZ, handler);
    EXPECT_EQ(onFullDisk, kept);
    EXPECT_NE(change(QStringLiteral("THERE")).find("THERE"), std::string::npos);
}

TEST_F(Settings, IntegersSurviveAsIntegers)
{
    StampSettings stamp = model->settings().stamp;
    stamp.startNumber = 123'456'789;
    model->setStamp(stamp);
    EXPECT_TRUE(stored(folder / "settings.ini").contains("\"startNumber\":123456789,"));
    EXPECT_EQ(anotherModel()->settings().stamp.startNumber, 123'456'789);
}

} // namespace tallyfold
