#pragma once

#include "files/ByteSink.h"
#include "pdf/annotations/VisibleAnnotations.h"
#include "pdf/copy/ObjectCopier.h"
#include "pdf/copy/PageForms.h"
#include "pdf/source/Document.h"
#include "pdf/source/PageGeometry.h"
#include "pdf/source/PageTree.h"
#include "pdf/syntax/ContentStream.h"
#include "pdf/syntax/DictionaryWriter.h"
#include "pdf/syntax/OutputPageTree.h"
#include "pdf/syntax/StreamingOutput.h"
#include "pdf/text/FontCatalog.h"
#include "pdf/text/TextFonts.h"

#include <optional>
#include <string>
#include <string_view>

namespace tallyfold::pdf {

/// Writes a copy of a document page by page: every page upright, of its own visible size, looking as it did,
/// with an overlay on top. What a page needs is written with it, and no page is held once it is ended.
class CopyWriter {
public:
    /// What a step came to.
    enum class Step {
        done,
        noMorePages,      ///< The source has no further page.
        sourceUnreadable, ///< The source cannot be read any further.
        cannotWrite,      ///< The output takes nothing more.
    };

    /// All must outlive this; text is shown with fonts of `catalog`.
    CopyWriter(Document &source, files::ByteSink &sink, FontCatalog &catalog = FontCatalog::installed());

    /// The fonts that overlays show their text with.
    [[nodiscard]] TextFonts &fonts();

    /// Goes to the next page of the source. After `done`, `pageSize` is the page's.
    [[nodiscard]] Step nextPage();

    /// Size in points at which the page is shown.
    [[nodiscard]] Size pageSize() const;

    /// Writes the page reached by `nextPage`. `overlay` is a content stream in points from the lower left
    /// corner of the upright page, which may use `fonts`, the graphics state `overlayState` and the form
    /// `overlayForm`; empty for none.
    [[nodiscard]] Step endPage(std::string_view overlay);

    /// Name of the graphics state, for the operator `gs`, that gives fills the opacity `alpha` (0…1);
    /// one opacity serves the whole copy.
    [[nodiscard]] std::string_view overlayState(double alpha);

    /// Name of the form, for the operator `Do`, that draws `content` inside `box`, both in points as those of
    /// an overlay; `content` may use `fonts`. One form serves the whole copy.
    [[nodiscard]] std::string_view overlayForm(const Rect &box, std::string_view content);

    /// Writes what the pages share and the end of the file; the file is complete after it, however many pages
    /// it has. Not called when the file is given up.
    [[nodiscard]] Step finish();

private:
    Step endPageUnchecked(std::string_view overlay);
    void drawAnnotations(ContentStream &content);
    int writeGenerated(const GeneratedForm &form);
    void writePage(std::string &out, int parent, int content);
    void writeResources(EntryWriter &page);

    Document *m_source;
    StreamingOutput m_output;
    ObjectCopier m_copier;
    PageForms m_forms;
    TextFonts m_fonts;
    OutputPageTree m_tree;
    std::optional<PageTree> m_pages;
    QPDFObjectHandle m_acroForm;
    SourcePage m_page;
    PageGeometry m_geometry;
    std::string m_content;
    std::string m_objects;    ///< Entries of the page's `/XObject`.
    std::string m_properties; ///< Entries of its `/Properties`.
    int m_overlayState = 0;
    int m_overlayForm = 0;
};

} // namespace tallyfold::pdf
