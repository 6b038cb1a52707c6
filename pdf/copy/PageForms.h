#pragma once

#include "pdf/copy/ObjectCopier.h"
#include "pdf/source/PageGeometry.h"
#include "pdf/source/PageTree.h"
#include "pdf/syntax/DictionaryWriter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tallyfold::pdf {

/// Source pages as form XObjects (PDF 1.7, 8.10) of an output: a page's content in a box of its own, so that
/// whatever it does to the graphics state, balanced or not, ends with it. Content in one stream is copied
/// as it is, still compressed; several streams are joined.
class PageForms {
public:
    PageForms(Document &source, ObjectCopier &copier, StreamingOutput &output);

    /// The object number of the form that shows `page` upright with its visible lower left corner at the
    /// origin. A page met again with the same content and geometry gives the same form.
    [[nodiscard]] int formFor(const SourcePage &page, const PageGeometry &geometry);

private:
    void writeResources(EntryWriter &entries, const QPDFObjectHandle &resources);

    Document *m_source;
    ObjectCopier *m_copier;
    StreamingOutput *m_output;
    std::unordered_map<std::string, int> m_resources; ///< Direct resource dictionaries, by their syntax.
    std::unordered_map<std::size_t, int> m_forms;     ///< Forms, by what tells them apart.
};

} // namespace tallyfold::pdf
