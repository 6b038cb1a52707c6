#include "pdf/text/FontRequest.h"

#include <array>
#include <fontconfig/fontconfig.h>

namespace tallyfold::pdf {

namespace {

struct WeightWord {
    const char16_t *word;
    int weight;
};

/// The first word found decides: "SemiBold" comes before "Bold".
constexpr std::array<WeightWord, 9> weightWords{{
    {u"SemiBold", FC_WEIGHT_DEMIBOLD},
    {u"Demi", FC_WEIGHT_DEMIBOLD},
    {u"ExtraBold", FC_WEIGHT_EXTRABOLD},
    {u"Bold", FC_WEIGHT_BOLD},
    {u"Black", FC_WEIGHT_BLACK},
    {u"Heavy", FC_WEIGHT_BLACK},
    {u"Medium", FC_WEIGHT_MEDIUM},
    {u"Thin", FC_WEIGHT_THIN},
    {u"Light", FC_WEIGHT_LIGHT},
}};

/// "TimesNewRoman" as words.
QString inWords(const QString &name)
{
    QString words;
    for (qsizetype index = 0; index < name.size(); ++index) {
        if (index > 0 && name[index].isUpper() && name[index - 1].isLower()) {
            words.append(u' ');
        }
        words.append(name[index]);
    }
    return words;
}

} // namespace

FontRequest FontRequest::of(const QString &postScriptName)
{
    FontRequest request;
    const QString style = postScriptName.section(u'-', 1);
    QString family = postScriptName.section(u'-', 0, 0);
    request.families.append(family);
    for (const QStringView mark : {QStringView(u"MT"), QStringView(u"PS")}) { // As in "TimesNewRomanPSMT".
        if (family.endsWith(mark)) {
            family.chop(mark.size());
        }
    }
    for (const QString &name : {family, inWords(family)}) {
        if (!name.isEmpty() && !request.families.contains(name)) {
            request.families.append(name);
        }
    }
    request.weight = FC_WEIGHT_REGULAR;
    for (const WeightWord &entry : weightWords) {
        if (style.contains(QStringView(entry.word), Qt::CaseInsensitive)) {
            request.weight = entry.weight;
            break;
        }
    }
    request.isItalic = style.contains(QStringView(u"Italic"), Qt::CaseInsensitive) ||
                       style.contains(QStringView(u"Oblique"), Qt::CaseInsensitive);
    return request;
}

} // namespace tallyfold::pdf
