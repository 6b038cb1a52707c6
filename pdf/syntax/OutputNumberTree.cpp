#include "pdf/syntax/OutputNumberTree.h"

#include "pdf/syntax/NumberFormat.h"
#include "pdf/syntax/Syntax.h"

#include <utility>

namespace tallyfold::pdf {

namespace {

constexpr std::size_t lowest = 0;

void writeArray(EntryWriter &node, std::size_t level, std::string_view items)
{
    node.array(level == lowest ? "/Nums" : "/Kids").out().append(items);
}

} // namespace

OutputNumberTree::OutputNumberTree(OutputObjects &objects) : m_objects(&objects) {}

void OutputNumberTree::add(std::int64_t key, std::string_view value)
{
    std::string item;
    appendInteger(item, key);
    item.push_back(' ');
    item.append(value);
    append(lowest, item, key, key);
}

void OutputNumberTree::append(std::size_t level, std::string_view item, std::int64_t least,
                              std::int64_t greatest)
{
    if (level == m_levels.size()) {
        m_levels.emplace_back();
    }
    // Only now, and not when it became full: the last node of a level may be the root.
    if (m_levels[level].count == maxInNode) {
        close(level);
    }
    Node &node = m_levels[level];
    if (node.count == 0) {
        node.least = least;
    } else {
        node.array.push_back(' ');
    }
    node.array.append(item);
    node.greatest = greatest;
    ++node.count;
}

void OutputNumberTree::close(std::size_t level)
{
    const Node node = std::exchange(m_levels[level], {});
    const int number = m_objects->reserve();
    std::string syntax;
    {
        DictionaryWriter dictionary(syntax);
        {
            ArrayWriter limits = dictionary.array("/Limits");
            limits.integer(node.least);
            limits.integer(node.greatest);
        }
        writeArray(dictionary, level, node.array);
    }
    m_objects->writeObject(number, syntax);
    std::string reference;
    appendReference(reference, number);
    append(level + 1, reference, node.least, node.greatest);
}

void OutputNumberTree::finish(EntryWriter &root)
{
    std::size_t level = lowest;
    while (level + 1 < m_levels.size()) {
        close(level); // May open a level above the last.
        ++level;
    }
    writeArray(root, level, m_levels.empty() ? std::string_view() : m_levels[level].array);
}

} // namespace tallyfold::pdf
