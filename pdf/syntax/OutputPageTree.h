#pragma once

#include "pdf/syntax/OutputObjects.h"

#include <vector>

namespace tallyfold::pdf {

/// The page tree of a file under construction (PDF 1.7, 7.7.3.2). A page gets its parent's number when it is
/// written; the nodes are written at the end. Nodes have few kids, so that viewers find a page among
/// thousands quickly.
class OutputPageTree {
public:
    /// `objects` must outlive this.
    explicit OutputPageTree(OutputObjects &objects);

    /// Adds the page with the object number `page` and gives the object number of its `/Parent`.
    [[nodiscard]] int add(int page);

    /// Writes the nodes and gives the object number of the root.
    [[nodiscard]] int finish();

private:
    OutputObjects *m_objects;
    std::vector<int> m_pages;
    std::vector<int> m_nodes; ///< The parents of pages.
};

} // namespace tallyfold::pdf
