#include "pdf/annotations/MarkupForm.h"

#include "pdf/syntax/DictionaryWriter.h"

#include <algorithm>

namespace tallyfold::pdf {

void Extent::add(double x, double y)
{
    m_bounds = m_isEmpty ? Rect{x, y, x, y}
                         : Rect{std::min(m_bounds.minX, x), std::min(m_bounds.minY, y),
                                std::max(m_bounds.maxX, x), std::max(m_bounds.maxY, y)};
    m_isEmpty = false;
}

Rect Extent::with(double room) const
{
    return {m_bounds.minX - room, m_bounds.minY - room, m_bounds.maxX + room, m_bounds.maxY + room};
}

namespace {

constexpr std::string_view stateName = "/S";

} // namespace

GeneratedForm markupForm(QPDFObjectHandle annotation, const std::string &content, const Rect &bounds,
                         Blending blending)
{
    std::string syntax;
    {
        DictionaryWriter resources(syntax);
        DictionaryWriter states = resources.dictionary("/ExtGState");
        DictionaryWriter state = states.dictionary(stateName);
        const double opacity = opacityOf(annotation);
        state.number("/CA", opacity);
        state.number("/ca", opacity);
        if (blending == Blending::multiply) {
            state.name("/BM", "/Multiply");
        }
    }
    std::string operators;
    ContentStream(operators).setGraphicsState(stateName).append(content);
    return {operators, bounds, {}, QPDFObjectHandle::parse(syntax), false};
}

DeviceColor colorOr(QPDFObjectHandle annotation, const char *key, const DeviceColor &otherwise)
{
    return colorFrom(annotation.getKey(key)).value_or(otherwise);
}

} // namespace tallyfold::pdf
