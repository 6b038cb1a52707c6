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

/// The position and the look of the stamp.
class PlacementSection final : public FormSection {
    Q_OBJECT
public:
    explicit PlacementSection(const Environment &environment);

private:
    void addMeasures();
    void addFont();
    void addColor();
};

/// The other lines of the stamp.
class LinesSection final : public FormSection {
    Q_OBJECT
public:
    explicit LinesSection(const Environment &environment);

private:
    void addWording();
};

/// Cover pages and the order of files.
class OrderSection final : public FormSection {
    Q_OBJECT
public:
    explicit OrderSection(const Environment &environment);
};

/// The output folder, the names of copies and the tables.
class OutputSection final : public FormSection {
    Q_OBJECT
public:
    explicit OutputSection(const Environment &environment);

private:
    void addFolder();
    void addProblem();
    /// Moves the focus to the control that resolves the reported problem: naming or the folder.
    void leadTo(QWidget *naming);
    void addOption(const QString &title, const char *name, bool AppSettings::*field);
};

} // namespace tallyfold
