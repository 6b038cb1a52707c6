#include "tests/app/ModelFixture.h"

namespace tallyfold {

using Presets = tests::ModelFixture;
using Counts = std::map<std::string, int>;

namespace {

std::string namesOf(const std::vector<Preset> &presets)
{
    std::string names;
    for (const Preset &preset : presets) {
        names += (names.empty() ? "" : " ") + preset.name.toStdString();
    }
    return names;
}

} // namespace

TEST_F(Presets, ThreeAreBuiltIn)
{
    const auto &presets = AppModel::builtInPresets();
    EXPECT_EQ(presets[0].name, QStringLiteral("Standard (bottom right)"));
    EXPECT_EQ(presets[0].settings, StampSettings());
    EXPECT_EQ(presets[1].name, QStringLiteral("Confidential legend"));
    StampSettings confidential;
    confidential.legend = QStringLiteral("CONFIDENTIAL");
    confidential.color = {0.78, 0.08, 0.10, 1.0};
    EXPECT_EQ(presets[1].settings, confidential);
    EXPECT_EQ(presets[2].name, QStringLiteral("Exhibits (EX-0001, page X of Y)"));
    StampSettings exhibits;
    exhibits.prefix = QStringLiteral("EX-");
    exhibits.digits = 4;
    exhibits.batesPosition = StampPosition::topRight;
    exhibits.pageOfTotal = true;
    exhibits.naming = OutputNaming::batesAndOriginal;
    EXPECT_EQ(presets[2].settings, exhibits);
    EXPECT_EQ(&AppModel::builtInPresets(), &presets);
    EXPECT_NE(presets[0].id, presets[1].id);
}

TEST_F(Presets, ANameIsTrimmedAndAPresetOfThatNameReplacedAtTheEnd)
{
    model->savePreset(QStringLiteral("  Letters \t"));
    model->savePreset(QStringLiteral("Briefs"));
    EXPECT_EQ(namesOf(model->settings().presets), "Letters Briefs");
    const QUuid first = model->settings().presets.front().id;
    StampSettings stamp = model->settings().stamp;
    stamp.prefix = QStringLiteral("L");
    model->setStamp(stamp);
    model->savePreset(QStringLiteral("Letters"));
    EXPECT_EQ(namesOf(model->settings().presets), "Briefs Letters");
    EXPECT_NE(model->settings().presets.back().id, first);
    EXPECT_EQ(model->settings().presets.back().settings.prefix, QStringLiteral("L"));
}

TEST_F(Presets, LetterCaseTellsNamesApart)
{
    model->savePreset(QStringLiteral("Letters"));
    model->savePreset(QStringLiteral("letters"));
    EXPECT_EQ(namesOf(model->settings().presets), "Letters letters");
}

TEST_F(Presets, ANameOfNothingSavesNothing)
{
    model->savePreset(QStringLiteral(" \t "));
    model->savePreset({});
    EXPECT_EQ(counts->take(), Counts());
}

TEST_F(Presets, SavingAndApplyingCannotBeUndone)
{
    model->savePreset(QStringLiteral("Letters"));
    model->applyPreset(AppModel::builtInPresets()[2]);
    EXPECT_EQ(undo.count(), 0);
    EXPECT_EQ(model->settings().stamp, AppModel::builtInPresets()[2].settings);
    EXPECT_TRUE(model->hasPreviewTask());
}

TEST_F(Presets, ADeletedPresetComesBackToItsPlace)
{
    for (const char *name : {"One", "Two", "Three"}) {
        model->savePreset(QString::fromLatin1(name));
    }
    const std::vector<Preset> before = model->settings().presets;
    counts->take();
    model->deletePreset(before[1].id);
    EXPECT_EQ(namesOf(model->settings().presets), "One Three");
    EXPECT_EQ(counts->take(), (Counts{{"settings", 1}}));
    EXPECT_EQ(undo.undoText(), QStringLiteral("Delete Preset"));
    for (int round = 0; round < 3; ++round) {
        undo.undo();
        EXPECT_EQ(model->settings().presets, before);
        EXPECT_EQ(anotherModel()->settings().presets, before);
        EXPECT_EQ(undo.redoText(), QStringLiteral("Delete Preset"));
        undo.redo();
        EXPECT_EQ(namesOf(model->settings().presets), "One Three");
    }
}

TEST_F(Presets, OneThatIsNotSavedCannotBeDeleted)
{
    model->deletePreset(AppModel::builtInPresets()[0].id);
    EXPECT_EQ(counts->take(), Counts());
    EXPECT_EQ(undo.count(), 0);
}

} // namespace tallyfold
