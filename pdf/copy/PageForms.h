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

/// Writes source pages as form XObjects (PDF 1.7, 8.10) of an output: a form confines what the page's
/// content does to the graphics state, balanced or not. A single content stream is copied encoded; several
/// are joined.
class PageForms {
public:
    PageForms(Document &source, ObjectCopier &copier, StreamingOutput &output);

    /// The object number of the form that shows `page` upright with the lower left corner of its visible box
    /// at the origin. Pages with equal content and geometry share a form.
    [[nodiscard]] int formFor(const SourcePage &page, const PageGeometry &geometry);

private:
    void writeResources(EntryWriter &entries, const QPDFObjectHandle &resources);

    Document *m_source;
    ObjectCopier *m_copier;
    StreamingOutput *m_output;
    std::unordered_map<std::string, int> m_resources; ///< Direct resource dictionaries, by their syntax.
    std::unordered_map<std::size_t, int> m_forms;     ///< Forms, by a hash of their identity.
};

} // namespace tallyfold::pdf
