#include "pdf/annotations/FieldAppearance.h"

#include "pdf/annotations/AnnotationAppearance.h"
#include "pdf/annotations/ButtonAppearance.h"
#include "pdf/annotations/ChoiceField.h"
#include "pdf/annotations/FieldBox.h"
#include "pdf/annotations/FieldText.h"
#include "pdf/source/PageGeometry.h"
#include "pdf/text/TextFonts.h"

#include <algorithm>

namespace tallyfold::pdf {

namespace {

/// Bits of a field's `/Ff` (PDF 1.7, tables 228 and 230).
constexpr long long multilineFlag = 1LL << 12;
constexpr long long passwordFlag = 1LL << 13;
constexpr long long combFlag = 1LL << 24;
constexpr long long comboFlag = 1LL << 17;

constexpr double smallestFont = 4;
constexpr double textPadding = 2;

/// The value of a field, inherited or from the form if need be.
QPDFObjectHandle valueOf(QPDFObjectHandle widget, QPDFObjectHandle acroForm, const char *key)
{
    QPDFObjectHandle value = inheritedFieldValue(widget, key);
    return value.isNull() && acroForm.isDictionary() ? acroForm.getKey(key) : value;
}

long long integerOf(QPDFObjectHandle widget, const char *key)
{
    QPDFObjectHandle value = inheritedFieldValue(widget, key);
    return value.isInteger() ? value.getIntValue() : 0;
}

std::string typeOf(QPDFObjectHandle widget)
{
    QPDFObjectHandle type = inheritedFieldValue(widget, "/FT");
    return type.isName() ? type.getName() : std::string();
}

TextBox textBoxOf(QPDFObjectHandle widget, QPDFObjectHandle acroForm, const FieldBox &field)
{
    QPDFObjectHandle given = valueOf(widget, acroForm, "/DA");
    const DefaultAppearance style =
        parseDefaultAppearance(given.isString() ? given.getStringValue() : std::string());
    TextBox box;
    box.area = field.inside();
    box.padding = std::max(field.border.width, textPadding);
    box.size = style.size;
    box.color = style.color;
    box.fontName = fontNamed(style.fontName, acroForm.isDictionary() ? acroForm.getKey("/DR") : acroForm);
    QPDFObjectHandle quadding = valueOf(widget, acroForm, "/Q");
    box.quadding = quadding.isInteger() ? static_cast<int>(std::clamp(quadding.getIntValue(), 0LL, 2LL)) : 0;
    return box;
}

/// The font size at which one line fills the height of the box; smaller where it would be too wide.
double sizeOfSingleLine(const QString &text, const TextBox &box, TextFonts &fonts)
{
    constexpr double partOfHeight = 0.67;
    const double size = std::max(partOfHeight * box.area.height(), smallestFont);
    const double width = fonts.shape(text, box.fontName, size).width;
    const double room = box.area.width() - 2 * box.padding;
    return width > room && room > 0 ? std::max(size * room / width, smallestFont) : size;
}

/// The largest font size, up to the usual one, at which all lines fit the box.
double sizeOfLines(const QString &text, TextBox box, TextFonts &fonts)
{
    constexpr double usual = 12;
    constexpr double step = 0.5;
    for (box.size = usual; box.size > smallestFont; box.size -= step) {
        if (heightOfWrappedText(text, box, fonts) <= box.area.height()) {
            break;
        }
    }
    return box.size;
}

void appendText(ContentStream &content, const QString &text, TextBox box, long long flags,
                long long maxCharacters, TextFonts &fonts)
{
    const bool isComb = (flags & (combFlag | multilineFlag | passwordFlag)) == combFlag && maxCharacters > 0;
    if ((flags & multilineFlag) != 0) {
        box.size = box.size > 0 ? box.size : sizeOfLines(text, box, fonts);
        appendWrappedText(content, text, box, fonts);
    } else if (isComb) {
        constexpr long long maxCells = 1000;
        box.size = box.size > 0 ? box.size : sizeOfSingleLine(QString(), box, fonts);
        appendComb(content, text, static_cast<int>(std::min(maxCharacters, maxCells)), box, fonts);
    } else {
        box.size = box.size > 0 ? box.size : sizeOfSingleLine(text, box, fonts);
        appendSingleLine(content, text, box, fonts);
    }
}

/// The displayed text of a text field or combo box; empty for other fields.
QString shownText(QPDFObjectHandle widget, const std::string &type)
{
    if (type == "/Ch") {
        return chosenText(widget);
    }
    const QString text = fieldText(inheritedFieldValue(widget, "/V"));
    return (integerOf(widget, "/Ff") & passwordFlag) != 0 ? QString(text.size(), u'*') : text;
}

bool hasArea(const std::optional<Rect> &rect)
{
    return rect && rect->width() > 0 && rect->height() > 0;
}

} // namespace

bool needsFieldAppearance(QPDFObjectHandle widget, QPDFObjectHandle acroForm)
{
    const std::string type = typeOf(widget);
    if (type != "/Tx" && type != "/Ch" && type != "/Btn") {
        return false;
    }
    QPDFObjectHandle own = normalAppearance(widget);
    if (!own.isStream()) {
        return true;
    }
    QPDFObjectHandle isOutdated = acroForm.isDictionary() ? acroForm.getKey("/NeedAppearances") : acroForm;
    if (!isOutdated.isBool() || !isOutdated.getBoolValue()) {
        return false;
    }
    // The appearance of a button depends on its state alone and stays valid.
    return type != "/Btn" || !hasArea(rectFrom(own.getDict().getKey("/BBox")));
}

std::optional<GeneratedForm> fieldAppearance(QPDFObjectHandle widget, QPDFObjectHandle acroForm,
                                             TextFonts &fonts)
{
    const std::string type = typeOf(widget);
    const std::optional<Rect> rect = rectFrom(widget.getKey("/Rect"));
    if (!rect || (type != "/Tx" && type != "/Ch" && type != "/Btn")) {
        return std::nullopt;
    }
    const long long flags = integerOf(widget, "/Ff");
    const bool isRound = type == "/Btn" && isRadioButton(flags) && buttonMark(widget) == ButtonMark::disc;
    const FieldBox field =
        fieldBoxOf(widget, *rect, isRound ? FieldOutline::circle : FieldOutline::rectangle);
    std::string operators = field.decoration;
    ContentStream content(operators);
    TextBox box = textBoxOf(widget, acroForm, field);
    if (type == "/Btn") {
        if (!isPushButton(flags)) {
            appendButtonMark(content, widget, box);
        } else if (const QString caption = buttonCaption(widget); !caption.isEmpty()) {
            box.quadding = 1;
            appendText(content, caption, box, 0, 0, fonts);
        }
    } else if (type == "/Ch" && (flags & comboFlag) == 0) {
        appendOptions(content, widget, box, fonts);
    } else if (const QString text = shownText(widget, type); !text.isEmpty()) {
        appendText(content, text, box, type == "/Tx" ? flags : 0, integerOf(widget, "/MaxLen"), fonts);
    }
    return GeneratedForm{operators,
                         {0, 0, field.size.width, field.size.height},
                         field.matrix,
                         QPDFObjectHandle::newDictionary(),
                         true};
}

} // namespace tallyfold::pdf
