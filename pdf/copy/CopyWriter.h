#pragma once

#include "files/ByteSink.h"
#include "pdf/annotations/VisibleAnnotations.h"
#include "pdf/copy/ObjectCopier.h"
#include "pdf/copy/PageForms.h"
#include "pdf/copy/PageLabels.h"
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

/// Writes a copy of a document page by page: every page upright and of its visible size, with an overlay on
/// top. Objects of a page are written with it; finished pages are not kept.
class CopyWriter {
public:
    /// The result of a step.
    enum class Step {
        done,
        noMorePages,      ///< The source has no further page.
        sourceUnreadable, ///< The source cannot be read any further.
        cannotWrite,      ///< The output cannot be written.
    };

    /// All must outlive this; text is shown with fonts of `catalog`.
    CopyWriter(Document &source, files::ByteSink &sink, FontCatalog &catalog = FontCatalog::installed());

    /// The fonts for the text of overlays.
    [[nodiscard]] TextFonts &fonts();

    /// Goes to the next page of the source. After `done`, `pageSize` is valid.
    [[nodiscard]] Step nextPage();

    /// The displayed size of the page in points.
    [[nodiscard]] Size pageSize() const;

    /// Writes the page that `nextPage` has reached. `overlay` is a content stream in points from the lower
    /// left corner of the upright page, which may use `fonts`, the graphics state `overlayState` and the
    /// form `overlayForm`; empty for none. Viewers show `label` as the page's number.
    [[nodiscard]] Step endPage(std::string_view overlay, const PageLabel &label = {});

    /// The name of a graphics state with the opacity `alpha` (0…1) for nonstroking operations; the first
    /// call decides for the whole copy.
    [[nodiscard]] std::string_view overlayState(double alpha);

    /// The name of a form XObject with the box `box` and the content `content`, in points as an overlay;
    /// `content` may use `fonts`. The first call decides for the whole copy.
    [[nodiscard]] std::string_view overlayForm(const Rect &box, std::string_view content);

    /// Writes the shared objects and the end of the file, which is valid then, however many pages it has.
    /// Not called for a copy that is given up.
    [[nodiscard]] Step finish();

private:
    Step endPageUnchecked(std::string_view overlay, const PageLabel &label);
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
    PageLabels m_labels;
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
