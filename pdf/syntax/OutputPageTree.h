#pragma once

#include "pdf/syntax/OutputObjects.h"

#include <vector>

namespace tallyfold::pdf {

/// The page tree of a file under construction (PDF 1.7, 7.7.3.2): a page learns its parent when it is
/// written, the nodes themselves follow at the end. No node has many kids, so that a reader finds a page
/// among thousands quickly.
class OutputPageTree {
public:
    /// `objects` must outlive this.
    explicit OutputPageTree(OutputObjects &objects);

    /// Takes the page `page` as the next one and gives the object number of its `/Parent`.
    [[nodiscard]] int add(int page);

    /// Writes the nodes and gives the object number of the topmost.
    [[nodiscard]] int finish();

private:
    OutputObjects *m_objects;
    std::vector<int> m_pages;
    std::vector<int> m_nodes; ///< Those right above the pages.
};

} // namespace tallyfold::pdf
