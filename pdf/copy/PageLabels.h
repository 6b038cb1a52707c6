#pragma once

#include "pdf/copy/PageLabel.h"
#include "pdf/syntax/OutputNumberTree.h"

#include <cstdint>

namespace tallyfold::pdf {

/// The labels of a file's pages (PDF 1.7, 12.4.2), as ranges whose numbers go up by one. Ranges are written
/// as they come, so that a long file takes little memory.
class PageLabels {
public:
    /// `objects` must outlive this.
    explicit PageLabels(OutputObjects &objects);

    /// Labels the next page.
    void add(const PageLabel &label);

    /// Writes `/PageLabels` to `catalog`, or nothing if no page has a label that is not empty.
    void finish(EntryWriter &catalog);

private:
    OutputNumberTree m_ranges;
    PageLabel m_last; ///< Of the page before.
    std::int64_t m_pages = 0;
    bool m_isNeeded = false;
};

} // namespace tallyfold::pdf
