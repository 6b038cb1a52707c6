#include "pdf/PageReader.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <limits>
#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-image.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>
#include <string_view>
#include <utility>

namespace tallyfold::pdf {

namespace {

constexpr double pointsPerInch = 72;

/// A glyph's box in the coordinates of the page as it is shown, y downward.
struct Glyph {
    Rect box;
    QChar unit; ///< Of its text in UTF-16; a character of two units is two glyphs in one place.
};

/// A word as Poppler found it.
struct Word {
    std::vector<Glyph> glyphs;
};

Rect toRect(const poppler::rectf &rect)
{
    return {rect.left(), rect.top(), rect.right(), rect.bottom()};
}

/// From a page's own coordinates to those it is shown in: turned, the crop box's corner at the upper left.
Rect shown(const Rect &area, const Rect &crop, poppler::page::orientation_enum orientation)
{
    Rect result;
    switch (orientation) {
    case poppler::page::landscape: // Turned by 90 degrees.
        result = {area.minY - crop.minY, area.minX - crop.minX, area.maxY - crop.minY, area.maxX - crop.minX};
        break;
    case poppler::page::upside_down:
        result = {crop.maxX - area.maxX, area.minY - crop.minY, crop.maxX - area.minX, area.maxY - crop.minY};
        break;
    case poppler::page::seascape: // Turned by 270 degrees.
        result = {crop.maxY - area.maxY, crop.maxX - area.maxX, crop.maxY - area.minY, crop.maxX - area.minX};
        break;
    case poppler::page::portrait:
        result = {area.minX - crop.minX, crop.maxY - area.maxY, area.maxX - crop.minX, crop.maxY - area.minY};
        break;
    }
    return result;
}

/// A glyph counts by its middle: boxes reach over the ink by the font's ascent and descent, which differ from
/// one font to the next.
bool liesIn(const Rect &glyph, const Rect &area)
{
    const double x = (glyph.minX + glyph.maxX) / 2;
    const double y = (glyph.minY + glyph.maxY) / 2;
    return x >= area.minX && x <= area.maxX && y >= area.minY && y <= area.maxY;
}

/// Whether two glyphs stand on one line: the middle of each lies beside the other.
bool shareLine(const Rect &left, const Rect &right)
{
    const double leftMiddle = (left.minY + left.maxY) / 2;
    const double rightMiddle = (right.minY + right.maxY) / 2;
    return (leftMiddle > right.minY && leftMiddle < right.maxY) ||
           (rightMiddle > left.minY && rightMiddle < left.maxY);
}

QString textOf(const std::vector<Word> &words, const Rect &area)
{
    QString text;
    const Glyph *last = nullptr;
    bool isWordOpen = false;
    for (const Word &word : words) {
        isWordOpen = false;
        for (const Glyph &glyph : word.glyphs) {
            if (!liesIn(glyph.box, area)) {
                continue;
            }
            if (last != nullptr && !isWordOpen) {
                text.append(shareLine(last->box, glyph.box) ? u' ' : u'\n');
            }
            text.append(glyph.unit);
            last = &glyph;
            isWordOpen = true;
        }
    }
    return text;
}

class PopplerReader final : public PageReader {
public:
    PopplerReader(std::unique_ptr<poppler::document> document, std::vector<char> bytes)
        : m_bytes(std::move(bytes)), m_document(std::move(document))
    {
    }

    [[nodiscard]] int pageCount() const override
    {
        return m_document->pages();
    }

    [[nodiscard]] std::optional<Rect> cropBox(int pageIndex) override
    {
        return box(pageIndex, poppler::crop_box);
    }

    [[nodiscard]] std::optional<Size> mediaSize(int pageIndex) override
    {
        const std::optional<Rect> media = box(pageIndex, poppler::media_box);
        return media ? std::optional(Size{media->width(), media->height()}) : std::nullopt;
    }

    [[nodiscard]] std::vector<QString> textIn(int pageIndex, std::span<const Rect> areas) override
    {
        std::vector<QString> texts(areas.size());
        const std::unique_ptr<poppler::page> page = pageAt(pageIndex);
        const std::optional<Rect> crop = cropBox(pageIndex);
        if (!page || !crop) {
            return texts;
        }
        std::vector<Word> words;
        for (const poppler::text_box &found : page->text_list()) {
            Word word;
            const poppler::ustring text = found.text();
            for (std::size_t index = 0; index < text.size(); ++index) {
                word.glyphs.push_back({toRect(found.char_bbox(index)), QChar(text[index])});
            }
            words.push_back(std::move(word));
        }
        for (std::size_t index = 0; index < areas.size(); ++index) {
            texts[index] = textOf(words, shown(areas[index], *crop, page->orientation()));
        }
        return texts;
    }

    [[nodiscard]] std::optional<Bitmap> render(int pageIndex, int width, int height, double scale) override
    {
        const std::unique_ptr<poppler::page> page = pageAt(pageIndex);
        if (!page || width <= 0 || height <= 0) {
            return std::nullopt;
        }
        poppler::page_renderer renderer;
        renderer.set_render_hint(poppler::page_renderer::antialiasing);
        renderer.set_render_hint(poppler::page_renderer::text_antialiasing);
        renderer.set_paper_color(0xffffffff);
        renderer.set_image_format(poppler::image::format_argb32);
        const double resolution = scale * pointsPerInch;
        const poppler::image image =
            renderer.render_page(page.get(), resolution, resolution, 0, 0, width, height);
        if (!image.is_valid() || image.width() < width || image.height() < height) {
            return std::nullopt;
        }
        Bitmap bitmap{width, height, {}};
        bitmap.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
        for (int row = 0; row < height; ++row) {
            const char *line = image.const_data() + static_cast<std::ptrdiff_t>(row) * image.bytes_per_row();
            for (int column = 0; column < width; ++column) {
                std::uint32_t pixel = 0; // As 0xAARRGGBB in the machine's own byte order.
                std::memcpy(&pixel, line + static_cast<std::ptrdiff_t>(column) * 4, sizeof pixel);
                for (const unsigned shift : {16U, 8U, 0U, 24U}) {
                    bitmap.pixels.push_back(static_cast<std::uint8_t>((pixel >> shift) & 0xffU));
                }
            }
        }
        return bitmap;
    }

private:
    [[nodiscard]] std::unique_ptr<poppler::page> pageAt(int pageIndex) const
    {
        const bool exists = pageIndex >= 0 && pageIndex < m_document->pages();
        return std::unique_ptr<poppler::page>(exists ? m_document->create_page(pageIndex) : nullptr);
    }

    [[nodiscard]] std::optional<Rect> box(int pageIndex, poppler::page_box_enum which) const
    {
        const std::unique_ptr<poppler::page> page = pageAt(pageIndex);
        if (!page) {
            return std::nullopt;
        }
        return toRect(page->page_rect(which));
    }

    std::vector<char> m_bytes; ///< Read by the document for as long as it lives.
    std::unique_ptr<poppler::document> m_document;
};

std::unique_ptr<PageReader> readerOf(std::unique_ptr<poppler::document> document, std::vector<char> bytes)
{
    if (!document || document->is_locked()) {
        return nullptr;
    }
    return std::make_unique<PopplerReader>(std::move(document), std::move(bytes));
}

/// Poppler writes what it finds wrong with a file to the terminal, and sets up large tables for the first
/// document that is open and takes them down with the last: an empty one that stays open saves most of the
/// time a small file takes.
void prepare()
{
    static constexpr std::string_view emptyFile =
        "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj 2 0 obj<</Type/Pages/Kids[]/Count 0>>endobj\n"
        "trailer<</Root 1 0 R/Size 3>>\n%%EOF\n";
    static const std::unique_ptr<poppler::document> keptOpen = [] {
        poppler::set_debug_error_function([](const std::string &, void *) {}, nullptr);
        return std::unique_ptr<poppler::document>(
            poppler::document::load_from_raw_data(emptyFile.data(), static_cast<int>(emptyFile.size())));
    }();
    (void)keptOpen;
}

} // namespace

std::unique_ptr<PageReader> PageReader::open(const std::filesystem::path &path)
{
    prepare();
    return readerOf(std::unique_ptr<poppler::document>(poppler::document::load_from_file(path.native())), {});
}

std::unique_ptr<PageReader> PageReader::open(std::vector<char> bytes)
{
    prepare();
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        return nullptr;
    }
    std::unique_ptr<poppler::document> document(
        poppler::document::load_from_raw_data(bytes.data(), static_cast<int>(bytes.size())));
    return readerOf(std::move(document), std::move(bytes));
}

} // namespace tallyfold::pdf
