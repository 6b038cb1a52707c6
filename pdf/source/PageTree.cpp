#include "pdf/source/PageTree.h"

#include "pdf/source/Document.h"

#include <utility>

namespace tallyfold::pdf {

namespace {

/// `inherited`, replaced by what `dictionary` has itself.
SourcePage withOwnAttributes(const QPDFObjectHandle &dictionary, SourcePage inherited)
{
    QPDFObjectHandle source = dictionary;
    const auto take = [&source](const char *key, QPDFObjectHandle &attribute) {
        QPDFObjectHandle own = source.getKey(key);
        if (!own.isNull()) {
            attribute = own;
        }
    };
    take("/Resources", inherited.resources);
    take("/MediaBox", inherited.mediaBox);
    take("/CropBox", inherited.cropBox);
    take("/Rotate", inherited.rotate);
    inherited.dictionary = dictionary;
    return inherited;
}

/// The root of the tree of `node`: some catalogs name the first page, or another node.
QPDFObjectHandle topmost(QPDFObjectHandle node)
{
    std::set<QPDFObjGen> visited;
    while (node.isDictionary() && node.getKey("/Parent").isDictionary() &&
           visited.insert(node.getObjGen()).second) {
        node = node.getKey("/Parent");
    }
    return node;
}

} // namespace

PageTree::PageTree(Document &document) : m_document(&document)
{
    QPDFObjectHandle root = document.parsed().getRoot();
    const QPDFObjectHandle null = QPDFObjectHandle::newNull();
    const SourcePage nothing{null, null, null, null, null};
    QPDFObjectHandle pages = topmost(root.getKey("/Pages"));
    if (!pages.isDictionary()) {
        return;
    }
    if (pages.getKey("/Kids").isArray()) {
        // `/Count` is not trusted, but viewers show no page of a tree without it.
        if (pages.getKey("/Count").isNumber()) {
            enter(pages, nothing);
        }
    } else if (pages.isDictionaryOfType("/Page")) { // Some catalogs name their only page.
        m_onlyPage = withOwnAttributes(pages, nothing);
    }
}

void PageTree::enter(const QPDFObjectHandle &node, const SourcePage &inherited)
{
    if (QPDFObjectHandle(node).isIndirect() && !m_visited.insert(node.getObjGen()).second) {
        return;
    }
    QPDFObjectHandle kids = QPDFObjectHandle(node).getKey("/Kids");
    m_path.push_back({kids, kids.getArrayNItems(), 0, withOwnAttributes(node, inherited)});
}

std::optional<SourcePage> PageTree::next()
{
    if (m_onlyPage) {
        return std::exchange(m_onlyPage, std::nullopt);
    }
    while (!m_path.empty() && m_pages < maximumPages) {
        Node &node = m_path.back();
        if (node.index == node.count) {
            m_path.pop_back();
            continue;
        }
        QPDFObjectHandle kid = m_document->fetch(node.kids.getArrayItem(node.index++));
        if (!kid.isDictionary()) { // Viewers count a page that is missing, so its place is kept.
            kid = QPDFObjectHandle::newDictionary();
        }
        if (kid.getKey("/Kids").isArray()) {
            const SourcePage inherited = node.inherited;
            enter(kid, inherited);
            continue;
        }
        ++m_pages;
        return withOwnAttributes(kid, node.inherited);
    }
    return std::nullopt;
}

} // namespace tallyfold::pdf
