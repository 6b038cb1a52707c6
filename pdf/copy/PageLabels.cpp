#include "pdf/copy/PageLabels.h"

#include "pdf/syntax/Syntax.h"

#include <algorithm>

namespace tallyfold::pdf {

namespace {

bool isPrintableAscii(char16_t unit)
{
    return unit >= u' ' && unit <= u'~';
}

/// A literal string where all of `text` is printable ASCII, which every viewer reads in the same way.
void appendPrefix(std::string &out, std::u16string_view text)
{
    if (!std::all_of(text.begin(), text.end(), isPrintableAscii)) {
        appendTextString(out, text);
        return;
    }
    out.push_back('(');
    for (const char16_t unit : text) {
        if (unit == u'(' || unit == u')' || unit == u'\\') {
            out.push_back('\\');
        }
        out.push_back(static_cast<char>(unit));
    }
    out.push_back(')');
}

/// Whether `label` is what a viewer gives the page after `last` when no range begins there.
bool continues(const PageLabel &last, const PageLabel &label)
{
    return label.prefix == last.prefix && label.number.has_value() == last.number.has_value() &&
           (!label.number || *label.number == *last.number + 1);
}

std::string rangeFrom(const PageLabel &label)
{
    std::string syntax;
    { // Closed before the string is returned, which may be a copy.
        DictionaryWriter range(syntax);
        if (!label.prefix.empty()) {
            range.syntax("/P", {});
            appendPrefix(syntax, label.prefix);
        }
        if (label.number) {
            range.name("/S", "/D");
            range.integer("/St", *label.number);
        }
    }
    return syntax;
}

} // namespace

bool PageLabel::isEmpty() const
{
    return prefix.empty() && !number;
}

PageLabels::PageLabels(OutputObjects &objects) : m_ranges(objects) {}

void PageLabels::add(const PageLabel &label)
{
    if (m_pages == 0 || !continues(m_last, label)) {
        m_ranges.add(m_pages, rangeFrom(label));
    }
    m_last = label;
    m_isNeeded = m_isNeeded || !label.isEmpty();
    ++m_pages;
}

void PageLabels::finish(EntryWriter &catalog)
{
    if (m_isNeeded) {
        DictionaryWriter labels = catalog.dictionary("/PageLabels");
        m_ranges.finish(labels);
    }
}

} // namespace tallyfold::pdf
