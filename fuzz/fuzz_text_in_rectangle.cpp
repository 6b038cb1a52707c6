// Any bytes as a file whose pages are read, in this very process: what the reader does with them, without the
// limits it has. What crashes, hangs or eats memory inside Poppler is contained in production.

#include "core/EarlierNumber.h"
#include "fuzz/FileInMemory.h"
#include "reader/PopplerReader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace tallyfold;

namespace {

constexpr int mostPages = 3;
constexpr int pictureWidth = 48;
constexpr int pictureHeight = 64;
/// Points. Poppler itself makes room for what a large page has on it, whatever of it is drawn.
constexpr double largestPage = 20'000;

/// Whether Poppler may set text into fields of a form: in some it looks for the end of a line for ever, which
/// ends the reader in production and would end fuzzing here.
bool hasForm(std::string_view bytes)
{
    return bytes.find("AcroForm") != std::string_view::npos;
}

void readPage(pdf::PageReader &reader, int page)
{
    const std::optional<pdf::Rect> crop = reader.cropBox(page);
    const std::optional<pdf::Size> media = reader.mediaSize(page);
    if (crop.has_value() != media.has_value()) {
        std::abort(); // Either there is such a page or there is none.
    }
    if (!crop) {
        return;
    }
    const auto strips = earlierNumberStrips(*crop);
    const auto texts = reader.textIn(page, strips);
    if (texts && texts->size() != strips.size()) {
        std::abort();
    }
    if (reader.quickTextIn(page, strips.front()).has_value() != texts.has_value()) {
        std::abort();
    }
    for (const QString &text : texts.value_or(std::vector<QString>())) {
        (void)earlierNumberIn(text);
    }
    const double width = std::abs(crop->maxX - crop->minX);
    const double height = std::abs(crop->maxY - crop->minY);
    if (!(width <= largestPage && height <= largestPage && width >= 1 && height >= 1)) {
        return;
    }
    const double scale = std::min(pictureWidth / width, pictureHeight / height);
    const std::optional<pdf::Bitmap> bitmap = reader.render(page, pictureWidth, pictureHeight, scale);
    if (bitmap && bitmap->pixels.size() != std::size_t{pictureWidth} * pictureHeight * 4) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (hasForm({reinterpret_cast<const char *>(data), size})) {
        return 0;
    }
    const fuzz::FileInMemory file(data, size);
    if (!file.isSound()) {
        std::abort();
    }
    const std::unique_ptr<pdf::PageReader> reader = reader::openWithPoppler(file.path());
    if (!reader) {
        return 0;
    }
    for (int page = 0; page < std::min(reader->pageCount(), mostPages); ++page) {
        readPage(*reader, page);
    }
    if (reader->cropBox(reader->pageCount()) || reader->cropBox(-1)) {
        std::abort(); // There is no such page.
    }
    return 0;
}
