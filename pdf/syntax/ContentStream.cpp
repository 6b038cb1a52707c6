#include "pdf/syntax/ContentStream.h"

#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Syntax.h"

namespace tallyfold::pdf {

namespace {

constexpr int adjustmentDecimals = 2;

void appendOperator(std::string &out, std::string_view name, Separator after)
{
    out.append(name).push_back(static_cast<char>(after));
}

std::string_view colorOperator(Paint paint, std::size_t components)
{
    const bool isStroke = paint == Paint::stroke;
    switch (components) {
    case 1:
        return isStroke ? "G" : "g";
    case 3:
        return isStroke ? "RG" : "rg";
    default:
        return isStroke ? "K" : "k";
    }
}

} // namespace

ContentStream::Scope::Scope(std::string &out, std::string_view closing, Separator after)
    : m_out(&out), m_closing(closing), m_after(after)
{
}

ContentStream::Scope::~Scope()
{
    appendOperator(*m_out, m_closing, m_after);
}

ContentStream::ContentStream(std::string &out) : m_out(&out) {}

ContentStream &ContentStream::add(std::string_view name)
{
    appendOperator(*m_out, name, Separator::space);
    return *this;
}

ContentStream &ContentStream::number(double value, int decimals)
{
    appendNumber(*m_out, value, decimals);
    m_out->push_back(' ');
    return *this;
}

ContentStream::Scope ContentStream::saveGraphicsState(Separator after)
{
    add("q");
    return {*m_out, "Q", after};
}

ContentStream &ContentStream::concatenateMatrix(const Matrix &matrix)
{
    appendMatrix(*m_out, matrix);
    return add(" cm");
}

ContentStream &ContentStream::setLineWidth(double width)
{
    return number(width).add("w");
}

ContentStream &ContentStream::setLineCap(LineCap cap)
{
    return number(static_cast<int>(cap)).add("J");
}

ContentStream &ContentStream::setLineJoin(LineJoin join)
{
    return number(static_cast<int>(join)).add("j");
}

ContentStream &ContentStream::setLineDash(std::span<const double> lengths)
{
    m_out->push_back('[');
    for (const double length : lengths) {
        number(length);
    }
    return add("] 0 d");
}

ContentStream &ContentStream::setGraphicsState(std::string_view name)
{
    return add(name).add("gs");
}

ContentStream &ContentStream::beginSubpath(Point point)
{
    return number(point.x).number(point.y).add("m");
}

ContentStream &ContentStream::appendLine(Point end)
{
    return number(end.x).number(end.y).add("l");
}

ContentStream &ContentStream::appendCurve(Point firstControl, Point secondControl, Point end)
{
    for (const Point point : {firstControl, secondControl, end}) {
        number(point.x).number(point.y);
    }
    return add("c");
}

ContentStream &ContentStream::closeSubpath()
{
    return add("h");
}

ContentStream &ContentStream::appendRectangle(const Rect &rect)
{
    return number(rect.minX).number(rect.minY).number(rect.width()).number(rect.height()).add("re");
}

ContentStream &ContentStream::stroke()
{
    return add("S");
}

ContentStream &ContentStream::closeAndStroke()
{
    return add("s");
}

ContentStream &ContentStream::fill()
{
    return add("f");
}

ContentStream &ContentStream::fillAndStroke()
{
    return add("B");
}

ContentStream &ContentStream::closeFillAndStroke()
{
    return add("b");
}

ContentStream &ContentStream::endPath()
{
    return add("n");
}

ContentStream &ContentStream::setClippingPath()
{
    return add("W");
}

ContentStream &ContentStream::setColor(Paint paint, const DeviceColor &color, int decimals)
{
    for (std::size_t index = 0; index < color.count; ++index) {
        number(color.components[index], decimals);
    }
    return add(colorOperator(paint, color.count));
}

ContentStream::Scope ContentStream::beginText()
{
    add("BT");
    return {*m_out, "ET", Separator::newLine};
}

ContentStream &ContentStream::setFont(std::string_view name, double size)
{
    return add(name).number(size).add("Tf");
}

ContentStream &ContentStream::setTextRise(double rise)
{
    return number(rise).add("Ts");
}

ContentStream &ContentStream::moveTextPosition(Point offset)
{
    return number(offset.x).number(offset.y).add("Td");
}

ContentStream &ContentStream::invokeXObject(std::string_view name)
{
    return add(name).add("Do");
}

ContentStream::Scope ContentStream::beginMarkedContent(std::string_view tag, std::string_view properties)
{
    add(tag).add(properties).add("BDC");
    return {*m_out, "EMC", Separator::newLine};
}

ContentStream::Scope ContentStream::beginActualText(std::u16string_view text)
{
    m_out->append("/Span");
    DictionaryWriter(*m_out).text("/ActualText", text);
    add("BDC").endLine();
    return {*m_out, "EMC", Separator::newLine};
}

ContentStream &ContentStream::endLine()
{
    m_out->back() = static_cast<char>(Separator::newLine);
    return *this;
}

ContentStream &ContentStream::append(std::string_view operators)
{
    m_out->append(operators);
    return *this;
}

PositionedText::PositionedText(ContentStream &content) : m_out(content.m_out)
{
    m_out->append("[<");
}

PositionedText::~PositionedText()
{
    m_out->append(">]TJ\n");
}

void PositionedText::show(std::uint16_t code)
{
    appendHex(*m_out, code);
}

void PositionedText::adjust(double thousandths)
{
    m_out->push_back('>');
    appendNumber(*m_out, thousandths, adjustmentDecimals);
    m_out->push_back('<');
}

} // namespace tallyfold::pdf
