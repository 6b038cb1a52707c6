#pragma once

namespace tallyfold::pdf {

/// Width and height in points (72 to the inch).
struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size &) const = default;
};

/// A rectangle in points, origin lower left, y upward, with minX <= maxX and minY <= maxY.
struct Rect {
    double minX = 0;
    double minY = 0;
    double maxX = 0;
    double maxY = 0;
    [[nodiscard]] double width() const
    {
        return maxX - minX;
    }
    [[nodiscard]] double height() const
    {
        return maxY - minY;
    }
    bool operator==(const Rect &) const = default;
};

/// A point in the coordinates of a page or form.
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point &) const = default;
};

/// The six numbers of a PDF transformation matrix (PDF 1.7, 8.3.4):
/// x' = a x + c y + e and y' = b x + d y + f.
struct Matrix {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;
    bool operator==(const Matrix &) const = default;
};

/// The matrix that applies `first`, then `second`.
Matrix concatenate(const Matrix &first, const Matrix &second);

/// `point` transformed by `matrix`.
Point transform(const Matrix &matrix, Point point);

/// The bounding box of `rect` transformed by `matrix`.
Rect boundsOfTransformed(const Matrix &matrix, const Rect &rect);

} // namespace tallyfold::pdf
