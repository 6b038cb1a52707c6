#pragma once

#include "core/NormalizedSettings.h"
#include "core/ProductionPlan.h"
#include "core/SourceFile.h"
#include "core/StampError.h"
#include "core/StampLine.h"
#include "core/StampSettings.h"
#include "files/ByteSink.h"
#include "pdf/source/Document.h"
#include "pdf/source/PageGeometry.h"
#include "pdf/viewing/Bitmap.h"

#include <QString>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

/// Turns one source and its planned pages into a stamped copy: every page upright, in its visible size, with
/// the stamp lines on top as real text. The source is only read. Stateless. Functions that can fail throw
/// `StampError` and nothing else.
namespace tallyfold::Stamper {

/// Called after each finished page; returning false stops the copy.
using PageDone = std::function<bool()>;

/// The document of the source. Throws `unreadable`, `locked`, or `encrypted` if printing, changing or copying
/// is not permitted.
[[nodiscard]] std::unique_ptr<pdf::Document> open(const SourceFile &source);

/// The size in points at which `page` is displayed: its crop box, width and height swapped if it is rotated
/// by 90 or 270 degrees (PDF 1.7, 7.7.3.3 and 14.11.2). Cannot fail.
[[nodiscard]] pdf::Size displaySize(const pdf::SourcePage &page);

/// The display size of the first page of `source`. Throws as `open`, and `unreadable` if there is no page.
[[nodiscard]] pdf::Size firstPageSize(const SourceFile &source);

/// The lines of the page with the 0-based index `pageIndex` of a file of `total` pages: legend, Bates number,
/// page number, as `settings` and `page` require. None for a page that is not stamped.
[[nodiscard]] std::vector<Line> lines(const PlannedPage &page, const NormalizedSettings &settings,
                                      std::int64_t pageIndex, std::int64_t total);

/// Writes the stamped copy of `file` to a new file at `path`, which must not exist. Throws as `open` before
/// it creates a file; `cannotWrite` with the last component of `path` if it cannot be created; `cannotWrite`
/// with the name of the copy if it cannot be completed; `cancelled` if `pageDone` returns false. The file is
/// then a complete PDF of the pages finished so far. Partial files are not removed.
void write(const PlannedFile &file, const StampSettings &settings, const std::filesystem::path &path,
           const PageDone &pageDone);

/// As above from `source`, the result of `open`, to `sink`, which receives a complete PDF file even if not
/// all pages were written.
void write(const PlannedFile &file, pdf::Document &source, const StampSettings &settings,
           files::ByteSink &sink, const PageDone &pageDone);

/// The first `pages` pages of the stamped copy, as the bytes of a PDF file.
[[nodiscard]] std::vector<char> data(const PlannedFile &file, const StampSettings &settings,
                                     std::int64_t pages);

/// The height in pixels of a picture of a page of this size, `width` pixels wide: at least 1, rounded down,
/// and at most the maximum of `int`, however narrow the page is. 0 if there is no such picture, because the
/// page has no area or a side that is not a number.
[[nodiscard]] int previewHeight(const pdf::Size &page, std::int64_t width);

/// The first `pages` pages of the stamped copy as pictures `width` pixels wide, on white. A stop may be
/// requested on any thread: it takes effect after the page being copied, or at once while a picture is drawn.
/// The function then throws `cancelled` or returns the finished pictures.
[[nodiscard]] std::vector<pdf::Bitmap> previewImages(const PlannedFile &file, const StampSettings &settings,
                                                     std::int64_t pages, std::int64_t width,
                                                     const std::stop_token &givenUp = {});

/// Pictures of a copy.
struct Preview {
    std::vector<pdf::Bitmap> images;
    pdf::Size firstPage; ///< Display size of the first page in points; empty if there is none.
};

/// As above, with the size of the first page. The source is read only once.
[[nodiscard]] Preview preview(const PlannedFile &file, const StampSettings &settings, std::int64_t pages,
                              std::int64_t width, const std::stop_token &givenUp = {});

} // namespace tallyfold::Stamper
