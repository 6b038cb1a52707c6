#pragma once

#include "pdf/syntax/Geometry.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace tallyfold::pdf {

class Document;

/// One page of a source with its inheritable attributes (PDF 1.7, 7.7.3.4), null where it has none.
struct SourcePage {
    QPDFObjectHandle dictionary;
    QPDFObjectHandle resources;
    QPDFObjectHandle mediaBox;
    QPDFObjectHandle cropBox;
    QPDFObjectHandle rotate;
};

/// Iterates over a page tree from the first page to the last, once, resolving a page only when it is
/// reached. A node is visited once, so loops end; a page is given as often as it is listed. A tree ends
/// after `maximumPages` pages.
class PageTree {
public:
    explicit PageTree(Document &document);

    /// The next page, or nothing after the last. May throw what the parser throws.
    [[nodiscard]] std::optional<SourcePage> next();

    /// More pages than any production has, so that trees without an end are refused.
    static constexpr int maximumPages = 5'000'000;

private:
    struct Node {
        QPDFObjectHandle kids;
        int count = 0;
        int index = 0;
        SourcePage inherited;
    };

    void enter(const QPDFObjectHandle &node, const SourcePage &inherited);

    Document *m_document;
    std::vector<Node> m_path;
    std::set<QPDFObjGen> m_visited;
    int m_pages = 0;
    std::optional<SourcePage> m_onlyPage;
};

} // namespace tallyfold::pdf
