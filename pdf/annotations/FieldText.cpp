#include "pdf/annotations/FieldText.h"

#include "pdf/text/Graphemes.h"
#include "pdf/text/TextFonts.h"
#include "pdf/text/TextItems.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <utility>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// More text than fits on any page.
constexpr qsizetype maxTextLength = 50'000;

/// Distance of the baseline below the middle of a field, in font sizes: between half the height of capitals
/// and half that of small letters.
constexpr double middleToBaseline = 0.36;

/// Customary names of font resources in forms.
constexpr std::array<std::pair<const char *, const char *>, 13> customaryFonts{{
    {"Helv", "Helvetica"},
    {"HeBo", "Helvetica-Bold"},
    {"HeOb", "Helvetica-Oblique"},
    {"HeBO", "Helvetica-BoldOblique"},
    {"TiRo", "Times-Roman"},
    {"TiBo", "Times-Bold"},
    {"TiIt", "Times-Italic"},
    {"TiBI", "Times-BoldItalic"},
    {"Cour", "Courier"},
    {"CoBo", "Courier-Bold"},
    {"CoOb", "Courier-Oblique"},
    {"CoBO", "Courier-BoldOblique"},
    {"Arial", "ArialMT"},
}};

QString postScriptName(const std::string &name)
{
    return QString::fromStdString(name.starts_with('/') ? name.substr(1) : name);
}

/// Clips to the box and sets its text colour.
void clipTo(ContentStream &content, const TextBox &box)
{
    content.appendRectangle(box.area).setClippingPath().endPath().setColor(Paint::fill, box.color);
}

double startOf(double width, const TextBox &box)
{
    const double room = box.area.width() - 2 * box.padding;
    const double shift = box.quadding == 1 ? (room - width) / 2 : box.quadding == 2 ? room - width : 0;
    return box.area.minX + box.padding + shift;
}

/// The lines of the text that fit the box. A word that is too wide is broken.
std::vector<ShapedLine> wrapped(const QString &text, const TextBox &box, TextFonts &fonts)
{
    const double room = std::max(box.area.width() - 2 * box.padding, box.size);
    const QString name = box.fontName;
    const auto fits = [&](const QString &line) { return fonts.shape(line, name, box.size).width <= room; };
    std::vector<ShapedLine> lines;
    QString normal = text;
    normal.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    for (const QString &paragraph : normal.split(u'\n')) {
        QString line;
        for (QString word : paragraph.split(u' ')) {
            const QString longer = line.isEmpty() ? word : line + u' ' + word;
            if (fits(longer)) {
                line = longer;
                continue;
            }
            if (!line.isEmpty()) {
                lines.push_back(fonts.shape(line, name, box.size));
            }
            while (!fits(word) && word.size() > 1) {
                qsizetype length = 1;
                for (const qsizetype end : graphemeBoundaries(word, 0, word.size())) {
                    if (end > 0 && !fits(word.first(end))) {
                        break;
                    }
                    length = std::max(end, length);
                }
                lines.push_back(fonts.shape(word.first(length), name, box.size));
                word.remove(0, length);
            }
            line = word;
        }
        lines.push_back(fonts.shape(line, name, box.size));
    }
    return lines;
}

} // namespace

QString fieldText(QPDFObjectHandle value)
{
    QString text;
    if (value.isString()) {
        text = QString::fromStdString(value.getUTF8Value());
    } else if (value.isName()) {
        text = QString::fromStdString(value.getName()).sliced(1);
    } else if (value.isStream()) {
        const auto data = value.getStreamData(qpdf_dl_generalized);
        const std::string bytes(reinterpret_cast<const char *>(data->getBuffer()), data->getSize());
        text = QString::fromStdString(QPDFObjectHandle::newString(bytes).getUTF8Value());
    }
    return text.left(maxTextLength);
}

DefaultAppearance parseDefaultAppearance(const std::string &text)
{
    DefaultAppearance appearance;
    std::istringstream words(text);
    std::vector<std::string> operands;
    for (std::string word; words >> word;) {
        const auto number = [&operands](std::size_t fromEnd) {
            return std::strtod(operands[operands.size() - fromEnd].c_str(), nullptr);
        };
        const std::size_t components = word == "g" ? 1 : word == "rg" ? 3 : word == "k" ? 4 : 0;
        if (word == "Tf" && operands.size() >= 2) {
            appearance.fontName = operands[operands.size() - 2];
            appearance.size = number(1);
            if (!std::isfinite(appearance.size) || appearance.size < 0 || appearance.size > 1000) {
                appearance.size = 0;
            }
        } else if (components > 0 && operands.size() >= components) {
            appearance.color = {{}, components};
            for (std::size_t index = 0; index < components; ++index) {
                const double component = number(components - index);
                appearance.color.components[index] =
                    std::isfinite(component) ? std::clamp(component, 0.0, 1.0) : 0;
            }
        } else {
            operands.push_back(word);
            continue;
        }
        operands.clear();
    }
    return appearance;
}

QString fontNamed(const std::string &fontName, QPDFObjectHandle resources)
{
    if (resources.isDictionary()) {
        QPDFObjectHandle fonts = resources.getKey("/Font");
        QPDFObjectHandle font = fonts.isDictionary() ? fonts.getKey(fontName) : QPDFObjectHandle::newNull();
        QPDFObjectHandle base = font.isDictionary() ? font.getKey("/BaseFont") : QPDFObjectHandle::newNull();
        if (base.isName()) {
            QString name = postScriptName(base.getName());
            const qsizetype tagEnd = name.indexOf(u'+');
            name = tagEnd == 6 ? name.sliced(7) : name;
            if (!name.contains(QStringLiteral("Dingbats"))) {
                return name.replace(u',', u'-');
            }
        }
    }
    const QString plain = postScriptName(fontName);
    for (const auto &[customary, name] : customaryFonts) {
        if (plain == QLatin1StringView(customary)) {
            return QString::fromLatin1(name);
        }
    }
    return QStringLiteral("Helvetica");
}

void appendWrappedText(ContentStream &content, const QString &text, const TextBox &box, TextFonts &fonts)
{
    const auto state = content.saveGraphicsState();
    clipTo(content, box);
    double y = box.area.maxY - box.padding;
    for (const ShapedLine &line : wrapped(text, box, fonts)) {
        if (y < box.area.minY) {
            break;
        }
        fonts.show(line, startOf(line.width, box), y - line.ascent, content);
        y -= line.ascent + line.descent;
    }
}

double heightOfWrappedText(const QString &text, const TextBox &box, TextFonts &fonts)
{
    double height = 2 * box.padding;
    for (const ShapedLine &line : wrapped(text, box, fonts)) {
        height += line.ascent + line.descent;
    }
    return height;
}

void appendSingleLine(ContentStream &content, const QString &text, const TextBox &box, TextFonts &fonts)
{
    const auto state = content.saveGraphicsState();
    clipTo(content, box);
    const ShapedLine line = fonts.shape(text, box.fontName, box.size);
    const double baseline = (box.area.minY + box.area.maxY) / 2 - middleToBaseline * box.size;
    fonts.show(line, startOf(line.width, box), baseline, content);
}

void appendComb(ContentStream &content, const QString &text, int cells, const TextBox &box, TextFonts &fonts)
{
    const auto state = content.saveGraphicsState();
    clipTo(content, box);
    const double cell = box.area.width() / cells;
    const double baseline = (box.area.minY + box.area.maxY) / 2 - middleToBaseline * box.size;
    const std::vector<qsizetype> characters = graphemeBoundaries(text, 0, text.size());
    for (std::size_t index = 0; index + 1 < characters.size() && static_cast<int>(index) < cells; ++index) {
        const QString character = text.sliced(characters[index], characters[index + 1] - characters[index]);
        const ShapedLine line = fonts.shape(character, box.fontName, box.size);
        const double x = box.area.minX + cell * static_cast<double>(index) + (cell - line.width) / 2;
        fonts.show(line, x, baseline, content);
    }
}

} // namespace tallyfold::pdf
