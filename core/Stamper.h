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

/// Turns one source and its planned pages into a stamped copy: every page of its own visible size, upright,
/// with the stamp lines on top as real text. The source is only read. Nothing is kept between calls.
/// Every function here that can fail throws `StampError`, and nothing else.
namespace tallyfold::Stamper {

/// Called after each finished page; false stops the copy.
using PageDone = std::function<bool()>;

/// The source's document. Throws `unreadable`, `locked`, or `encrypted` when the owner withholds printing,
/// changing or copying.
[[nodiscard]] std::unique_ptr<pdf::Document> open(const SourceFile &source);

/// Size in points at which `page` is shown: its crop box, width and height swapped when it is turned by 90 or
/// 270 degrees (PDF 1.7, 7.7.3.3 and 14.11.2). Cannot fail.
[[nodiscard]] pdf::Size displaySize(const pdf::SourcePage &page);

/// The display size of the first page of `source`. Throws what `open` throws, and `unreadable` when there is
/// no page.
[[nodiscard]] pdf::Size firstPageSize(const SourceFile &source);

/// The lines of the page with the 0-based index `pageIndex` of a file of `total` pages: legend, Bates number,
/// page number, as far as `settings` and `page` ask for them. None for a page that is not stamped.
[[nodiscard]] std::vector<Line> lines(const PlannedPage &page, const NormalizedSettings &settings,
                                      std::int64_t pageIndex, std::int64_t total);

/// Writes the stamped copy of `file` into a new file at `path`, which must not exist. Throws what `open`
/// throws before it makes any file, `cannotWrite` with the last component of `path` when it cannot be made,
/// `cannotWrite` with the copy's name when it cannot be finished, `cancelled` when `pageDone` says so: the
/// file is then complete up to the page in progress. What was written stays.
void write(const PlannedFile &file, const StampSettings &settings, const std::filesystem::path &path,
           const PageDone &pageDone);

/// The same from `source`, which `open` gave for it, into `sink`, which gets a complete PDF file whether all
/// pages were written or not.
void write(const PlannedFile &file, pdf::Document &source, const StampSettings &settings,
           files::ByteSink &sink, const PageDone &pageDone);

/// The stamped copy's first `pages` pages, as the bytes of a PDF file.
[[nodiscard]] std::vector<char> data(const PlannedFile &file, const StampSettings &settings,
                                     std::int64_t pages);

/// Pixels of height of a picture, `width` pixels wide, of a page of this size: at least 1, cut off and not
/// rounded, and never more than an `int` holds, however narrow the page is. 0 where there is no such picture,
/// as the page has no area or a side that is no number.
[[nodiscard]] int previewHeight(const pdf::Size &page, std::int64_t width);

/// The stamped copy's first `pages` pages as pictures `width` pixels wide, white where the page is empty. A
/// stop that is requested meanwhile, on any thread, ends it soon: after the page that is copied, and at once
/// in the middle of a picture. It then throws `cancelled`, or gives the pictures that are finished.
[[nodiscard]] std::vector<pdf::Bitmap> previewImages(const PlannedFile &file, const StampSettings &settings,
                                                     std::int64_t pages, std::int64_t width,
                                                     const std::stop_token &givenUp = {});

/// Pictures of a copy, and what they are of.
struct Preview {
    std::vector<pdf::Bitmap> images;
    pdf::Size firstPage; ///< Display size of the first page, in points; without area where there is none.
};

/// The same with the size of the first page; the source is read once for both.
[[nodiscard]] Preview preview(const PlannedFile &file, const StampSettings &settings, std::int64_t pages,
                              std::int64_t width, const std::stop_token &givenUp = {});

} // namespace tallyfold::Stamper
