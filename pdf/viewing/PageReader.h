#pragma once

#include "pdf/syntax/Geometry.h"
#include "pdf/viewing/Bitmap.h"

#include <QString>

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace tallyfold::pdf {

/// Text and pictures of the pages of a PDF file. An interface, because files of any origin are read in a
/// process of their own. Nothing here throws.
class PageReader {
public:
    virtual ~PageReader() = default;

    /// A reader of the file at `path`, or of a file in memory; null when it cannot be read or needs a
    /// password. Once a stop is requested, on any thread, calls return at once without a result.
    [[nodiscard]] static std::unique_ptr<PageReader> open(const std::filesystem::path &path,
                                                          const std::stop_token &givenUp = {});
    [[nodiscard]] static std::unique_ptr<PageReader> open(std::vector<char> bytes,
                                                          const std::stop_token &givenUp = {});

    /// Number of pages.
    [[nodiscard]] virtual int pageCount() const = 0;

    /// The crop box of the page as far as its media box reaches, in its own coordinates; nothing when there
    /// is no such page.
    [[nodiscard]] virtual std::optional<Rect> cropBox(int pageIndex) = 0;

    /// The size of the page's media box in points; nothing when there is no such page.
    [[nodiscard]] virtual std::optional<Size> mediaSize(int pageIndex) = 0;

    /// For each of `areas`, in the page's own coordinates whatever its rotation, the text of the glyphs whose
    /// middle lies in it: words separated by spaces, lines by line feeds. Text outside of the crop box is
    /// left out. Nothing where the page cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<QString>> textIn(int pageIndex,
                                                                     std::span<const Rect> areas) = 0;

    /// The text of the glyphs whose boxes lie in `area`, in the page's own coordinates, in the order in which
    /// the page draws them, with or without separators. Several times as fast as `textIn`, for which lines
    /// and words are put in order. Nothing where the page cannot be read.
    [[nodiscard]] virtual std::optional<QString> quickTextIn(int pageIndex, const Rect &area) = 0;

    /// The page on white, `scale` pixels to the point, `width` by `height` pixels from its upper left corner.
    /// Nothing when there is no such page or the picture cannot be made.
    [[nodiscard]] virtual std::optional<Bitmap> render(int pageIndex, int width, int height,
                                                       double scale) = 0;
};

} // namespace tallyfold::pdf
