#pragma once

#include "ui/form/FormSection.h"

namespace tallyfold {

/// How pages are numbered.
class NumberingSection final : public FormSection {
    Q_OBJECT
public:
    explicit NumberingSection(const Environment &environment);

private:
    void addStartNumber();
    void addDigits();
    void addFirstNumber();
};

/// Where the stamp stands and what it looks like.
class PlacementSection final : public FormSection {
    Q_OBJECT
public:
    explicit PlacementSection(const Environment &environment);

private:
    void addMeasures();
    void addFont();
    void addColor();
};

/// The further lines of the stamp.
class LinesSection final : public FormSection {
    Q_OBJECT
public:
    explicit LinesSection(const Environment &environment);

private:
    void addWording();
};

/// How covers are treated, and in which order files are numbered.
class OrderSection final : public FormSection {
    Q_OBJECT
public:
    explicit OrderSection(const Environment &environment);
};

/// Where the copies go and what is written beside them.
class OutputSection final : public FormSection {
    Q_OBJECT
public:
    explicit OutputSection(const Environment &environment);

private:
    void addFolder();
    void addProblem();
    /// Gives the section's focus to what mends the problem that is told: `naming`, or the folder.
    void leadTo(QWidget *naming);
    void addOption(const QString &title, const char *name, bool AppSettings::*field);
};

} // namespace tallyfold
