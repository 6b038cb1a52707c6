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

GeneratedForm markupForm(QPDFObjectHandle annotation, const std::string &content, const Rect &bounds,
                         Blending blending)
{
    std::string syntax;
    {
        DictionaryWriter resources(syntax);
        DictionaryWriter states = resources.dictionary("/ExtGState");
        DictionaryWriter state = states.dictionary("/S");
        const double opacity = opacityOf(annotation);
        state.number("/CA", opacity);
        state.number("/ca", opacity);
        if (blending == Blending::multiply) {
            state.name("/BM", "/Multiply");
        }
    }
    return {"/S gs " + content, bounds, {}, QPDFObjectHandle::parse(syntax), false};
}

std::string colorOr(QPDFObjectHandle annotation, const char *key, Paint paint, const char *otherwise)
{
    const std::string color = colorOperators(annotation.getKey(key), paint);
    return color.empty() ? otherwise : color;
}

} // namespace tallyfold::pdf
