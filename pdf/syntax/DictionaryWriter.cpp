#include "pdf/syntax/DictionaryWriter.h"

#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Spelling.h"
#include "pdf/syntax/Syntax.h"

namespace tallyfold::pdf {

EntryWriter::EntryWriter(std::string &out) : m_out(&out) {}

void EntryWriter::name(std::string_view key, std::string_view value)
{
    m_out->append(key).append(value);
}

void EntryWriter::reference(std::string_view key, int number)
{
    m_out->append(key).push_back(' ');
    appendReference(*m_out, number);
}

void EntryWriter::integer(std::string_view key, std::int64_t value)
{
    m_out->append(key).push_back(' ');
    appendInteger(*m_out, value);
}

void EntryWriter::number(std::string_view key, double value, int decimals)
{
    m_out->append(key).push_back(' ');
    appendNumber(*m_out, value, decimals);
}

void EntryWriter::rect(std::string_view key, const Rect &value)
{
    m_out->append(key);
    appendRect(*m_out, value);
}

void EntryWriter::matrix(std::string_view key, const Matrix &value)
{
    const ArrayWriter items = array(key);
    appendMatrix(*m_out, value);
}

void EntryWriter::text(std::string_view key, std::u16string_view value)
{
    m_out->append(key);
    appendTextString(*m_out, value);
}

void EntryWriter::syntax(std::string_view key, std::string_view value)
{
    m_out->append(key).append(value);
}

DictionaryWriter EntryWriter::dictionary(std::string_view key)
{
    m_out->append(key);
    return DictionaryWriter(*m_out);
}

ArrayWriter EntryWriter::array(std::string_view key)
{
    m_out->append(key);
    return ArrayWriter(*m_out);
}

void EntryWriter::key(std::string_view name)
{
    appendName(*m_out, name);
    m_out->push_back(' ');
}

std::string &EntryWriter::out()
{
    return *m_out;
}

DictionaryWriter::DictionaryWriter(std::string &out) : EntryWriter(out)
{
    out.append(spelling::dictionaryStart);
}

DictionaryWriter::~DictionaryWriter()
{
    out().append(spelling::dictionaryEnd);
}

} // namespace tallyfold::pdf
