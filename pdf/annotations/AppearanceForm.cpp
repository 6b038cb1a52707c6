#include "pdf/annotations/AppearanceForm.h"

#include <array>
#include <cmath>
#include <vector>

namespace tallyfold::pdf {

namespace {

/// A box that clips nothing: no page is larger (PDF 1.7, annex C).
QPDFObjectHandle boundlessBox()
{
    constexpr int maxPageSize = 14'400;
    std::vector<QPDFObjectHandle> sides;
    for (const int side : {-maxPageSize, -maxPageSize, maxPageSize, maxPageSize}) {
        sides.push_back(QPDFObjectHandle::newInteger(side));
    }
    return QPDFObjectHandle::newArray(sides);
}

/// Whether `group` is isolated (`/I`) or a knockout group (`/K`; PDF 1.7, 11.6.6).
bool says(QPDFObjectHandle group, const char *key)
{
    QPDFObjectHandle value = group.isDictionary() ? group.getKey(key) : QPDFObjectHandle::newNull();
    return value.isBool() && value.getBoolValue();
}

} // namespace

std::optional<Matrix> matrixFrom(QPDFObjectHandle array)
{
    if (!array.isArray() || array.getArrayNItems() < 6) {
        return std::nullopt;
    }
    std::array<double, 6> values{};
    for (int index = 0; index < 6; ++index) {
        QPDFObjectHandle item = array.getArrayItem(index);
        const double value = item.isNumber() ? item.getNumericValue() : NAN;
        if (!std::isfinite(value)) {
            return std::nullopt;
        }
        values[static_cast<std::size_t>(index)] = value;
    }
    return Matrix{values[0], values[1], values[2], values[3], values[4], values[5]};
}

QPDFObjectHandle entriesAsForm(QPDFObjectHandle stream)
{
    QPDFObjectHandle entries = stream.getDict().shallowCopy();
    entries.removeKey("/OC");
    if (!says(entries.getKey("/Group"), "/K")) {
        entries.removeKey("/Group");
    }
    if (!entries.getKey("/Subtype").isName()) {
        entries.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
    }
    if (!matrixFrom(entries.getKey("/Matrix"))) {
        entries.removeKey("/Matrix");
    }
    if (entries.getKey("/BBox").isNull()) {
        entries.replaceKey("/BBox", boundlessBox());
    }
    return entries;
}

bool paintsPlainly(QPDFObjectHandle stream)
{
    QPDFObjectHandle resources = stream.getDict().getKey("/Resources");
    return resources.isDictionary() && resources.getKey("/XObject").isDictionary() &&
           resources.getKey("/ExtGState").isNull();
}

QPDFObjectHandle entriesPaintedPlainly(QPDFObjectHandle stream)
{
    QPDFObjectHandle entries = stream.getDict();
    QPDFObjectHandle group = entries.getKey("/Group");
    if (group.isNull() || says(group, "/I") || says(group, "/K")) {
        return entries;
    }
    entries = entries.shallowCopy();
    entries.removeKey("/Group");
    return entries;
}

} // namespace tallyfold::pdf
