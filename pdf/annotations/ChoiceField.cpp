#include "pdf/annotations/ChoiceField.h"

#include "pdf/annotations/AnnotationAppearance.h"
#include "pdf/text/TextFonts.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// More options than fit on a page are ignored.
constexpr int maxOptions = 10'000;

/// The highlight colour of most programs.
constexpr DeviceColor highlight = DeviceColor::rgb(0.6, 0.75686, 0.8549);
constexpr int highlightDecimals = 5;

struct Option {
    QString value;
    QString text;
};

std::vector<Option> optionsOf(QPDFObjectHandle widget)
{
    std::vector<Option> options;
    QPDFObjectHandle list = inheritedFieldValue(widget, "/Opt");
    const int count = list.isArray() ? std::min(list.getArrayNItems(), maxOptions) : 0;
    for (int index = 0; index < count; ++index) {
        QPDFObjectHandle item = list.getArrayItem(index);
        if (item.isArray() && item.getArrayNItems() >= 2) {
            options.push_back({fieldText(item.getArrayItem(0)), fieldText(item.getArrayItem(1))});
        } else {
            const QString text = fieldText(item);
            options.push_back({text, text});
        }
    }
    return options;
}

QStringList valuesOf(QPDFObjectHandle widget)
{
    QPDFObjectHandle value = inheritedFieldValue(widget, "/V");
    if (!value.isArray()) {
        const QString text = fieldText(value);
        return text.isEmpty() ? QStringList() : QStringList(text);
    }
    QStringList values;
    for (int index = 0, count = std::min(value.getArrayNItems(), maxOptions); index < count; ++index) {
        values.append(fieldText(value.getArrayItem(index)));
    }
    return values;
}

/// For each option whether it is selected: by the value of the field, or else by its indices.
std::vector<bool> chosenAmong(const std::vector<Option> &options, QPDFObjectHandle widget)
{
    std::vector<bool> chosen(options.size());
    const QStringList values = valuesOf(widget);
    bool isAny = false;
    for (std::size_t index = 0; index < options.size(); ++index) {
        chosen[index] = values.contains(options[index].value) || values.contains(options[index].text);
        isAny = isAny || chosen[index];
    }
    QPDFObjectHandle indices = inheritedFieldValue(widget, "/I");
    for (int at = 0, count = !isAny && indices.isArray() ? indices.getArrayNItems() : 0; at < count; ++at) {
        QPDFObjectHandle index = indices.getArrayItem(at);
        const long long place = index.isInteger() ? index.getIntValue() : -1;
        if (place >= 0 && place < static_cast<long long>(options.size())) {
            chosen[static_cast<std::size_t>(place)] = true;
        }
    }
    return chosen;
}

} // namespace

QString chosenText(QPDFObjectHandle widget)
{
    const std::vector<Option> options = optionsOf(widget);
    QStringList texts;
    for (const QString &value : valuesOf(widget)) {
        const auto option = std::find_if(options.begin(), options.end(), [&value](const Option &candidate) {
            return candidate.value == value;
        });
        texts.append(option == options.end() ? value : option->text);
    }
    const std::vector<bool> chosen = texts.isEmpty() ? chosenAmong(options, widget) : std::vector<bool>();
    for (std::size_t index = 0; index < chosen.size(); ++index) {
        if (chosen[index]) { // Some writers give the indices alone.
            texts.append(options[index].text);
        }
    }
    return texts.join(QStringLiteral(", "));
}

void appendOptions(ContentStream &content, QPDFObjectHandle widget, const TextBox &box, TextFonts &fonts)
{
    constexpr double usualSize = 12;
    constexpr double leading = 1.15;
    const std::vector<Option> options = optionsOf(widget);
    const std::vector<bool> chosen = chosenAmong(options, widget);
    QPDFObjectHandle top = inheritedFieldValue(widget, "/TI");
    const long long first = top.isInteger() ? std::max(top.getIntValue(), 0LL) : 0;
    TextBox row = box;
    row.size = box.size > 0 ? box.size : usualSize;
    for (auto index = static_cast<std::size_t>(first);
         index < options.size() && row.area.maxY > box.area.minY; ++index) {
        row.area.minY = row.area.maxY - row.size * leading;
        const Rect visible{row.area.minX, std::max(row.area.minY, box.area.minY), row.area.maxX,
                           row.area.maxY};
        if (chosen[index]) {
            const auto state = content.saveGraphicsState();
            content.setColor(Paint::fill, highlight, highlightDecimals).appendRectangle(visible).fill();
        }
        {
            const auto state = content.saveGraphicsState();
            content.appendRectangle(box.area).setClippingPath().endPath();
            appendSingleLine(content, options[index].text, row, fonts);
        }
        row.area.maxY = row.area.minY;
    }
}

} // namespace tallyfold::pdf
