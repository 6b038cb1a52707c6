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

TEST_F(Presets, WhatWasSavedSinceADeletionStaysWhenItIsUndone)
{
    const auto idNamed = [this](const char *name) {
        for (const Preset &preset : model->settings().presets) {
            if (preset.name == QLatin1String(name)) {
                return preset.id;
            }
        }
        return QUuid();
    };
    for (const char *name : {"One", "Two", "Three"}) {
        model->savePreset(QString::fromLatin1(name));
    }
    model->deletePreset(idNamed("Two"));
    model->savePreset(QStringLiteral("Four"));
    undo.undo();
    EXPECT_EQ(namesOf(model->settings().presets), "One Two Three Four");
    model->savePreset(QStringLiteral("One")); // It moves to the end.
    undo.redo();
    EXPECT_EQ(namesOf(model->settings().presets), "Three Four One");
    undo.undo();
    EXPECT_EQ(namesOf(model->settings().presets), "Two Three Four One")
        << "none is left that it stood behind";
    model->deletePreset(idNamed("One"));
    model->deletePreset(idNamed("Four"));
    undo.undo();
    undo.undo();
    EXPECT_EQ(namesOf(model->settings().presets), "Two Three Four One");
    EXPECT_EQ(anotherModel()->settings().presets, model->settings().presets);
}

TEST_F(Presets, ADeletedOneComesBackBehindThoseItStoodBehind)
{
    for (const char *name : {"One", "Two", "Three"}) {
        model->savePreset(QString::fromLatin1(name));
    }
    model->deletePreset(model->settings().presets.back().id);
    model->savePreset(QStringLiteral("One")); // It moves to the end.
    undo.undo();
    EXPECT_EQ(namesOf(model->settings().presets), "Two Three One");
}

TEST_F(Presets, OneThatWasReplacedSinceIsNotDeletedAgain)
{
    model->savePreset(QStringLiteral("One"));
    model->deletePreset(model->settings().presets.front().id);
    undo.undo();
    model->savePreset(QStringLiteral("One"));
    const std::vector<Preset> saved = model->settings().presets;
    undo.redo();
    EXPECT_EQ(model->settings().presets, saved);
    undo.undo();
    EXPECT_EQ(model->settings().presets, saved) << "there is one of the name";
}

TEST_F(Presets, SavingReplacesEveryPresetOfTheName)
{
    AppSettings settings = model->settings();
    for (const char *name : {"Twice", "Other", "Twice"}) {
        settings.presets.push_back(Preset::of(QUuid::createUuid(), QString::fromLatin1(name), {}));
    }
    model->setSettings(settings);
    model->savePreset(QStringLiteral("Twice"));
    EXPECT_EQ(namesOf(model->settings().presets), "Other Twice");
}

TEST_F(Presets, ALongNameIsComparedAsItIsKept)
{
    const QString kept(80, u'x');
    model->savePreset(kept + u'a');
    model->savePreset(kept + u'b');
    ASSERT_EQ(model->settings().presets.size(), 1U);
    EXPECT_EQ(model->settings().presets.front().name, kept);
    model->savePreset(QString(79, u'x'));
    EXPECT_EQ(model->settings().presets.size(), 2U);
    model->savePreset(kept);
    EXPECT_EQ(model->settings().presets.size(), 2U);
    EXPECT_EQ(model->settings().presets.back().name, kept);
}

namespace {

/// Settings in which no field has its default.
StampSettings allOthers()
{
    StampSettings stamp;
    stamp.prefix = QStringLiteral("P");
    stamp.digits = 3;
    stamp.startNumber = 100;
    stamp.suffix = QStringLiteral("-S");
    stamp.batesPosition = StampPosition::topLeft;
    stamp.margin = 30;
    stamp.fontName = QStringLiteral("Courier");
    stamp.fontSize = 8;
    stamp.color = {0, 0, 1, 0.5};
    stamp.background = false;
    stamp.legend = QStringLiteral("L");
    stamp.legendPosition = StampPosition::topRight;
    stamp.pageOfTotal = true;
    stamp.pageOfTotalFormat = QStringLiteral("{page}");
    stamp.pageOfTotalPosition = StampPosition::topCenter;
    stamp.cover = CoverOption::skipNoNumber;
    stamp.order = FileOrder::modified;
    stamp.naming = OutputNaming::batesRange;
    return stamp;
}

Preset presetOf(const StampSettings &stamp)
{
    return Preset::of(QUuid::createUuid(), QStringLiteral("Preset"), stamp);
}

} // namespace

TEST_F(Presets, UndoingOneGivesBackEveryFieldItChanged)
{
    const StampSettings before = model->settings().stamp;
    model->applyPresetUndoably(presetOf(allOthers()));
    EXPECT_EQ(model->settings().stamp, allOthers());
    EXPECT_EQ(undo.undoText(), QStringLiteral("Apply Preset"));
    for (int round = 0; round < 3; ++round) {
        undo.undo();
        EXPECT_EQ(model->settings().stamp, before);
        EXPECT_EQ(anotherModel()->settings().stamp, before);
        undo.redo();
        EXPECT_EQ(model->settings().stamp, allOthers());
    }
}

TEST_F(Presets, UndoingOneLeavesWhatWasChangedBesides)
{
    StampSettings applied = model->settings().stamp;
    applied.prefix = QStringLiteral("P");
    model->applyPresetUndoably(presetOf(applied));
    StampSettings edited = model->settings().stamp;
    edited.legend = QStringLiteral("typed since");
    edited.startNumber = 77;
    model->setStamp(edited);
    undo.undo();
    edited.prefix = QStringLiteral("ABC");
    EXPECT_EQ(model->settings().stamp, edited);
    undo.redo();
    edited.prefix = QStringLiteral("P");
    EXPECT_EQ(model->settings().stamp, edited);
}

TEST_F(Presets, OneTakesTheStartNumberAlongAndUndoingItNeverGoesBackInASeries)
{
    StampSettings applied = model->settings().stamp;
    applied.startNumber = 100;
    model->applyPresetUndoably(presetOf(applied));
    EXPECT_EQ(model->settings().stamp.startNumber, 100);
    undo.undo();
    EXPECT_EQ(model->settings().stamp.startNumber, 1);
    undo.redo();
    StampSettings goneOn = model->settings().stamp;
    goneOn.startNumber = 104;
    model->setStamp(goneOn);
    undo.undo();
    EXPECT_EQ(model->settings().stamp.startNumber, 104);
    undo.redo();
    EXPECT_EQ(model->settings().stamp.startNumber, 104);
}

TEST_F(Presets, OneThatChangesNothingIsNoStep)
{
    model->applyPresetUndoably(presetOf(model->settings().stamp));
    EXPECT_EQ(undo.count(), 0);
    model->setUndoManager(nullptr);
    model->applyPresetUndoably(presetOf(allOthers()));
    EXPECT_EQ(undo.count(), 0);
    EXPECT_EQ(model->settings().stamp, allOthers());
}

TEST_F(Presets, TheStepsOfOnesThatWereAppliedGoAtTheNextProduction)
{
    model->applyPresetUndoably(presetOf(allOthers())); // Below a command that remains.
    addPdfs({"a.pdf"}, 3);
    model->applyPresetUndoably(AppModel::builtInPresets()[2]);
    model->applyPresetUndoably(AppModel::builtInPresets()[1]);
    undo.undo(); // The command to redo is obsolete as well.
    stampAndWait();
    ASSERT_EQ(model->summary()->nextNumber, 4);
    model->startNextProduction();
    const StampSettings stamp = model->settings().stamp;
    EXPECT_EQ(undo.undoText(), QStringLiteral("Add Files"));
    EXPECT_FALSE(undo.canRedo());
    undo.undo();
    EXPECT_FALSE(undo.canUndo()) << undo.undoText().toStdString();
    EXPECT_EQ(undo.redoText(), QStringLiteral("Add Files"));
    undo.redo();
    EXPECT_EQ(listed(), "");
    EXPECT_EQ(model->settings().stamp, stamp);
    EXPECT_EQ(stamp.startNumber, 4);
    model->applyPresetUndoably(presetOf(allOthers()));
    EXPECT_EQ(undo.undoText(), QStringLiteral("Apply Preset")) << "those of the next one are steps again";
}

TEST_F(Presets, OneThatIsUndoneAfterTheModelIsGoneDoesNothing)
{
    model->applyPresetUndoably(presetOf(allOthers()));
    counts.reset();
    model.reset();
    undo.undo();
    undo.redo();
    EXPECT_EQ(anotherModel()->settings().stamp, allOthers());
}

TEST_F(Presets, OneThatIsNotSavedCannotBeDeleted)
{
    model->deletePreset(AppModel::builtInPresets()[0].id);
    EXPECT_EQ(counts->take(), Counts());
    EXPECT_EQ(undo.count(), 0);
}

} // namespace tallyfold
