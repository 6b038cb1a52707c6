#include "pdf/syntax/ArrayWriter.h"

#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Syntax.h"

namespace tallyfold::pdf {

ArrayWriter::ArrayWriter(std::string &out) : m_out(&out)
{
    out.push_back('[');
}

ArrayWriter::~ArrayWriter()
{
    m_out->push_back(']');
}

void ArrayWriter::reference(int number)
{
    separate();
    appendReference(*m_out, number);
}

void ArrayWriter::integer(std::int64_t value)
{
    separate();
    appendInteger(*m_out, value);
}

void ArrayWriter::number(double value, int decimals)
{
    separate();
    appendNumber(*m_out, value, decimals);
}

void ArrayWriter::item()
{
    if (m_out->back() != '[') {
        m_out->push_back(' ');
    }
}

std::string &ArrayWriter::out()
{
    return *m_out;
}

void ArrayWriter::separate()
{
    constexpr std::string_view delimiters = "[]>";
    if (delimiters.find(m_out->back()) == std::string_view::npos) {
        m_out->push_back(' ');
    }
}

} // namespace tallyfold::pdf
