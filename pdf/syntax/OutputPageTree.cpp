#include "pdf/syntax/OutputPageTree.h"

#include "pdf/syntax/DictionaryWriter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tallyfold::pdf {

namespace {

constexpr std::size_t kidsOfANode = 64;

/// A page, or a node with the count of pages below it.
struct Kid {
    int number = 0;
    std::int64_t pages = 1;
};

/// Writes the node `number` of `kids`, below `parent` unless that is 0.
Kid writeNode(OutputObjects &objects, int number, int parent, std::span<const Kid> kids)
{
    std::string syntax;
    std::int64_t pages = 0;
    {
        DictionaryWriter node(syntax);
        node.name("/Type", "/Pages");
        if (parent != 0) {
            node.reference("/Parent", parent);
        }
        {
            ArrayWriter items = node.array("/Kids");
            for (const Kid &kid : kids) {
                items.reference(kid.number);
                pages += kid.pages;
            }
        }
        node.integer("/Count", pages);
    }
    objects.writeObject(number, syntax);
    return {number, pages};
}

} // namespace

OutputPageTree::OutputPageTree(OutputObjects &objects) : m_objects(&objects) {}

int OutputPageTree::add(int page)
{
    if (m_pages.size() % kidsOfANode == 0) {
        m_nodes.push_back(m_objects->reserve());
    }
    m_pages.push_back(page);
    return m_nodes.back();
}

int OutputPageTree::finish()
{
    std::vector<Kid> kids;
    kids.reserve(m_pages.size());
    for (const int page : m_pages) {
        kids.push_back({page, 1});
    }
    std::vector<int> nodes = m_nodes;
    if (nodes.empty()) {
        nodes.push_back(m_objects->reserve());
    }
    while (true) {
        std::vector<int> parents;
        std::vector<Kid> written;
        for (std::size_t index = 0; index < nodes.size(); ++index) {
            if (nodes.size() > 1 && index % kidsOfANode == 0) {
                parents.push_back(m_objects->reserve());
            }
            const std::size_t first = index * kidsOfANode;
            written.push_back(
                writeNode(*m_objects, nodes[index], parents.empty() ? 0 : parents.back(),
                          std::span(kids).subspan(first, std::min(kidsOfANode, kids.size() - first))));
        }
        if (nodes.size() == 1) {
            return nodes.front();
        }
        kids = std::move(written);
        nodes = std::move(parents);
    }
}

} // namespace tallyfold::pdf
