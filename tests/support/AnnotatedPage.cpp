#include "tests/support/AnnotatedPage.h"

#include "tests/support/FlatCopy.h"
#include "tests/support/Sample.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace tallyfold::tests {

int AnnotatedPage::form(const std::string &color, const std::string &entries, int width, int height)
{
    const std::string box = std::to_string(width) + ' ' + std::to_string(height);
    return m_builder.addStream("/Type/XObject/Subtype/Form/BBox[0 0 " + box + "]" + entries,
                               color + " rg 0 0 " + box + " re f");
}

std::string AnnotatedPage::annotate(const std::string &entries)
{
    const std::string annotation = reference(m_builder.add("<</Type/Annot" + entries + ">>"));
    list(annotation);
    return annotation;
}

void AnnotatedPage::list(const std::string &annotation)
{
    m_annotations += annotation + ' ';
}

std::string AnnotatedPage::file(const std::string &pageEntries)
{
    m_builder.addPage("/MediaBox[0 0 200 100]/Annots[" + m_annotations + "]" + pageEntries);
    return m_builder.file();
}

PdfBuilder &AnnotatedPage::builder()
{
    return m_builder;
}

DrawnCopy::DrawnCopy(const std::string &source)
{
    const std::filesystem::path copy = flatCopy(m_folder.path(), source);
    if (soundPages(copy) != 1) {
        std::cerr << "The copy is not sound.\n";
        std::abort();
    }
    m_poppler = Picture::of(copy, Picture::Tool::poppler);
    m_mupdf = Picture::of(copy, Picture::Tool::mupdf);
}

bool DrawnCopy::is(const Color &color, double x, double y) const
{
    return m_poppler.at(x, y).isNear(color) && m_mupdf.at(x, y).isNear(color);
}

bool DrawnCopy::isPaper(double x, double y) const
{
    return m_poppler.at(x, y).isPaper() && m_mupdf.at(x, y).isPaper();
}

bool DrawnCopy::isEmpty() const
{
    return !m_poppler.hasInk(0, 0, m_poppler.width(), m_poppler.height()) &&
           !m_mupdf.hasInk(0, 0, m_mupdf.width(), m_mupdf.height());
}

bool DrawnCopy::hasInk(double left, double bottom, double right, double top) const
{
    return m_poppler.hasInk(left, bottom, right, top) && m_mupdf.hasInk(left, bottom, right, top);
}

} // namespace tallyfold::tests
