#pragma once

#include "tests/support/PdfBuilder.h"
#include "tests/support/Picture.h"
#include "tests/support/TemporaryFolder.h"

#include <string>

namespace tallyfold::tests {

/// A page of 200 by 100 points in a file under construction, and its annotations.
class AnnotatedPage {
public:
    /// A form of `width` by `height` filled with a colour, its lower left corner at the origin.
    int form(const std::string &color, const std::string &entries = {}, int width = 20, int height = 10);

    /// Adds an annotation with these entries; gives its reference.
    std::string annotate(const std::string &entries);

    /// Adds one that is in the file already.
    void list(const std::string &annotation);

    /// The file, with these entries of the page besides its size and annotations.
    [[nodiscard]] std::string file(const std::string &pageEntries = {});

    PdfBuilder &builder();

private:
    PdfBuilder m_builder;
    std::string m_annotations;
};

/// The page of a copy as Poppler and mupdf draw it, where they agree with each other.
class DrawnCopy {
public:
    /// Of `source`, the bytes of a file of one page. Ends the test program when the copy is not sound.
    explicit DrawnCopy(const std::string &source);

    [[nodiscard]] bool is(const Color &color, double x, double y) const;
    [[nodiscard]] bool isPaper(double x, double y) const;
    [[nodiscard]] bool isEmpty() const;

    /// Whether both drew something inside a rectangle of the page.
    [[nodiscard]] bool hasInk(double left, double bottom, double right, double top) const;

private:
    TemporaryFolder m_folder;
    Picture m_poppler;
    Picture m_mupdf;
};

} // namespace tallyfold::tests
