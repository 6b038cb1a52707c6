#pragma once

#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/OutputObjects.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallyfold::pdf {

/// A number tree of a file under construction (PDF 1.7, 7.9.7). Nodes are written as they fill, so that a
/// tree of any length takes little memory.
class OutputNumberTree {
public:
    /// Children or entries of a node.
    static constexpr std::size_t maxInNode = 64;

    /// `objects` must outlive this.
    explicit OutputNumberTree(OutputObjects &objects);

    /// Adds an entry. `key` is greater than the keys before; `value` is PDF syntax.
    void add(std::int64_t key, std::string_view value);

    /// Writes the open nodes, and the entries of the root to `root`: `/Nums`, or `/Kids` where there are more
    /// than `maxInNode` entries. Called once, as the last.
    void finish(EntryWriter &root);

private:
    /// The open node of a level of the tree; the lowest level has the entries.
    struct Node {
        std::string array; ///< What stands between the brackets of `/Nums` or `/Kids`.
        std::size_t count = 0;
        std::int64_t least = 0;
        std::int64_t greatest = 0;
    };

    void append(std::size_t level, std::string_view item, std::int64_t least, std::int64_t greatest);
    void close(std::size_t level);

    OutputObjects *m_objects;
    std::vector<Node> m_levels;
};

} // namespace tallyfold::pdf
