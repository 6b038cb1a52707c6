#pragma once

#include "pdf/syntax/DeviceColor.h"
#include "pdf/syntax/Geometry.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// White space after an operator.
enum class Separator : char { space = ' ', newLine = '\n' };

/// The shapes of the ends and corners of lines, by their numbers (PDF 1.7, tables 54 and 55).
enum class LineCap : std::uint8_t { butt, round, square };
enum class LineJoin : std::uint8_t { miter, round, bevel };

/// Appends content operators (PDF 1.7, annex A) with their operands to a string, which must outlive this.
/// Each operator is followed by a space, which `endLine` replaces by the end of a line. Names begin with
/// their slash and are written unchanged; numbers have at most four decimals.
///
///     ContentStream content(out);
///     const auto state = content.saveGraphicsState();
///     content.setColor(Paint::fill, DeviceColor::gray(1)).appendRectangle(box).fill().endLine();
///
/// Scopes close themselves: "Q", "ET" and "EMC" are written when the result of `saveGraphicsState`,
/// `beginText` or a function for marked content is destroyed. Whether an operator is allowed in its place is
/// not checked.
class ContentStream {
public:
    /// Writes the closing operator of a pair when it is destroyed.
    class [[nodiscard]] Scope {
    public:
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        friend class ContentStream;
        Scope(std::string &out, std::string_view closing, Separator after);

        std::string *m_out;
        std::string_view m_closing;
        Separator m_after;
    };

    explicit ContentStream(std::string &out);

    /// Graphics state (PDF 1.7, table 57): "q" and "Q", "cm", "w", "J", "j", "d", "gs".
    Scope saveGraphicsState(Separator after = Separator::newLine);
    ContentStream &concatenateMatrix(const Matrix &matrix);
    ContentStream &setLineWidth(double width);
    ContentStream &setLineCap(LineCap cap);
    ContentStream &setLineJoin(LineJoin join);
    /// `lengths` of dashes and gaps in turn, from phase 0.
    ContentStream &setLineDash(std::span<const double> lengths);
    ContentStream &setGraphicsState(std::string_view name);

    /// Path construction (PDF 1.7, table 59): "m", "l", "c", "h", "re".
    ContentStream &beginSubpath(Point point);
    ContentStream &appendLine(Point end);
    ContentStream &appendCurve(Point firstControl, Point secondControl, Point end);
    ContentStream &closeSubpath();
    ContentStream &appendRectangle(const Rect &rect);

    /// Path painting and clipping (PDF 1.7, tables 60 and 61), by the nonzero winding number rule: "S", "s",
    /// "f", "B", "b", "n", "W".
    ContentStream &stroke();
    ContentStream &closeAndStroke();
    ContentStream &fill();
    ContentStream &fillAndStroke();
    ContentStream &closeFillAndStroke();
    ContentStream &endPath();
    ContentStream &setClippingPath();

    /// Colour (PDF 1.7, table 74): "G", "RG", "K" for lines, "g", "rg", "k" for areas.
    ContentStream &setColor(Paint paint, const DeviceColor &color, int decimals = 4);

    /// Text (PDF 1.7, tables 105 to 109): "BT" and "ET", "Tf", "Ts", "Td"; `PositionedText` shows it.
    Scope beginText();
    ContentStream &setFont(std::string_view name, double size);
    ContentStream &setTextRise(double rise);
    ContentStream &moveTextPosition(Point offset);

    /// External objects (PDF 1.7, table 87): "Do".
    ContentStream &invokeXObject(std::string_view name);

    /// Marked-content sequences (PDF 1.7, table 320): "BDC" and "EMC". `properties` is the name of a property
    /// list among the resources.
    Scope beginMarkedContent(std::string_view tag, std::string_view properties);
    /// A sequence "Span" with `text` as its actual text (PDF 1.7, 14.9.4), on a line of its own.
    Scope beginActualText(std::u16string_view text);

    /// Ends the line after the last operator.
    ContentStream &endLine();
    /// Appends operators with their white space, unchanged.
    ContentStream &append(std::string_view operators);

private:
    friend class PositionedText;
    ContentStream &add(std::string_view name);
    ContentStream &number(double value, int decimals = 4);

    std::string *m_out;
};

/// The operand of "TJ" (PDF 1.7, table 109): codes of two bytes with adjustments between them. The
/// destructor writes the operator and ends the line.
class PositionedText {
public:
    explicit PositionedText(ContentStream &content);
    ~PositionedText();
    PositionedText(const PositionedText &) = delete;
    PositionedText &operator=(const PositionedText &) = delete;

    void show(std::uint16_t code);
    /// Moves the following text left by `thousandths` of the font size, written with two decimals.
    void adjust(double thousandths);

private:
    std::string *m_out;
};

} // namespace tallyfold::pdf
