#include "pdf/syntax/Geometry.h"

#include <algorithm>

namespace tallyfold::pdf {

Matrix concatenate(const Matrix &first, const Matrix &second)
{
    return {first.a * second.a + first.b * second.c,
            first.a * second.b + first.b * second.d,
            first.c * second.a + first.d * second.c,
            first.c * second.b + first.d * second.d,
            first.e * second.a + first.f * second.c + second.e,
            first.e * second.b + first.f * second.d + second.f};
}

Point transform(const Matrix &matrix, Point point)
{
    return {matrix.a * point.x + matrix.c * point.y + matrix.e,
            matrix.b * point.x + matrix.d * point.y + matrix.f};
}

Rect boundsOfTransformed(const Matrix &matrix, const Rect &rect)
{
    const Point first = transform(matrix, {rect.minX, rect.minY});
    Rect bounds{first.x, first.y, first.x, first.y};
    for (const Point corner :
         {Point{rect.maxX, rect.minY}, Point{rect.minX, rect.maxY}, Point{rect.maxX, rect.maxY}}) {
        const Point moved = transform(matrix, corner);
        bounds.minX = std::min(bounds.minX, moved.x);
        bounds.minY = std::min(bounds.minY, moved.y);
        bounds.maxX = std::max(bounds.maxX, moved.x);
        bounds.maxY = std::max(bounds.maxY, moved.y);
    }
    return bounds;
}

} // namespace tallyfold::pdf
