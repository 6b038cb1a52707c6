#include "pdf/syntax/OutputPageTree.h"

#include "pdf/syntax/NumberFormat.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace tallyfold::pdf {

namespace {

constexpr std::size_t kidsOfANode = 64;

/// A page, which counts as one, or a node with the pages below it.
struct Kid {
    int number = 0;
    std::int64_t pages = 1;
};

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
            std::string syntax = "<</Type/Pages";
            if (nodes.size() > 1) {
                if (index % kidsOfANode == 0) {
                    parents.push_back(m_objects->reserve());
                }
                syntax.append("/Parent ");
                appendInteger(syntax, parents.back());
                syntax.append(" 0 R");
            }
            syntax.append("/Kids[");
            std::int64_t pages = 0;
            const std::size_t first = index * kidsOfANode;
            for (std::size_t kid = first; kid < std::min(first + kidsOfANode, kids.size()); ++kid) {
                appendInteger(syntax, kids[kid].number);
                syntax.append(" 0 R ");
                pages += kids[kid].pages;
            }
            syntax.append("]/Count ");
            appendInteger(syntax, pages);
            syntax.append(">>");
            m_objects->writeObject(nodes[index], syntax);
            written.push_back({nodes[index], pages});
        }
        if (nodes.size() == 1) {
            return nodes.front();
        }
        kids = std::move(written);
        nodes = std::move(parents);
    }
}

} // namespace tallyfold::pdf
