#include "app/BuiltInPresets.h"

#include <QCoreApplication>

namespace tallyfold {

namespace {

QString translated(const char *text)
{
    return QCoreApplication::translate("BuiltInPresets", text);
}

Preset preset(const char *name, const StampSettings &settings)
{
    return Preset::of(QUuid::createUuid(), translated(name), settings);
}

StampSettings exhibits()
{
    StampSettings settings = StampSettings::exhibits();
    settings.pageOfTotalFormat = translated(QT_TRANSLATE_NOOP("BuiltInPresets", "Page {page} of {total}"));
    return settings;
}

} // namespace

const std::array<Preset, 3> &builtInPresets()
{
    static const std::array<Preset, 3> presets{
        preset(QT_TRANSLATE_NOOP("BuiltInPresets", "Standard (bottom right)"), StampSettings::standard()),
        preset(QT_TRANSLATE_NOOP("BuiltInPresets", "Confidential legend"),
               StampSettings::confidential(translated(QT_TRANSLATE_NOOP("BuiltInPresets", "CONFIDENTIAL")))),
        preset(QT_TRANSLATE_NOOP("BuiltInPresets", "Exhibits (EX-0001, page X of Y)"), exhibits())};
    return presets;
}

} // namespace tallyfold
