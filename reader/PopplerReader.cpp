#include "reader/PopplerReader.h"

#include "reader/Log.h"
#include "reader/PageText.h"

#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-image.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>

#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

namespace tallyfold::reader {

using namespace pdf;

namespace {

constexpr std::size_t maxPixels = 100'000'000;

/// The smallest document Poppler opens.
constexpr char emptyDocument[] = "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                                 "2 0 obj<</Type/Pages/Kids[]/Count 0>>endobj\n"
                                 "xref\n0 3\n0000000000 65535 f \n0000000009 00000 n \n0000000053 00000 n \n"
                                 "trailer<</Size 3/Root 1 0 R>>\nstartxref\n96\n%%EOF\n";

/// Keeps one document open: Poppler frees its global tables with the last document, and building them takes
/// longer than reading an ordinary page.
void prepare()
{
    static const std::unique_ptr<poppler::document> keeper = [] {
        poppler::set_debug_error_function([](const std::string &, void *) {}, nullptr);
        return std::unique_ptr<poppler::document>(poppler::document::load_from_raw_data(
            static_cast<const char *>(emptyDocument), static_cast<int>(sizeof emptyDocument - 1)));
    }();
}

Rect fromPoppler(const poppler::rectf &rect)
{
    return {rect.left(), rect.top(), rect.right(), rect.bottom()};
}

/// Converts Poppler's 32-bit pixels (blue first, alpha unused, since the paper is opaque); false when the
/// picture differs from the requested size.
bool put(const poppler::image &image, std::span<std::uint8_t> pixels, int width, int height)
{
    if (!image.is_valid() || image.format() != poppler::image::format_argb32 || image.width() != width ||
        image.height() != height) {
        return false;
    }
    std::uint8_t *out = pixels.data();
    for (int row = 0; row < height; ++row) {
        const char *in = image.const_data() + std::ptrdiff_t{row} * image.bytes_per_row();
        for (int column = 0; column < width; ++column, in += 4, out += 4) {
            out[0] = static_cast<std::uint8_t>(in[2]);
            out[1] = static_cast<std::uint8_t>(in[1]);
            out[2] = static_cast<std::uint8_t>(in[0]);
            out[3] = 0xFF;
        }
    }
    return true;
}

class PopplerReader final : public LocalReader {
public:
    explicit PopplerReader(std::unique_ptr<poppler::document> document) : m_document(std::move(document)) {}

    int pageCount() const override
    {
        return m_document->pages();
    }

    std::optional<Rect> cropBox(int pageIndex) override
    {
        const auto page = pageAt(pageIndex);
        return page ? std::optional(fromPoppler(page->page_rect(poppler::crop_box))) : std::nullopt;
    }

    std::optional<Size> mediaSize(int pageIndex) override
    {
        const auto page = pageAt(pageIndex);
        if (!page) {
            return std::nullopt;
        }
        const poppler::rectf box = page->page_rect(poppler::media_box);
        return Size{box.width(), box.height()};
    }

    std::optional<std::vector<QString>> textIn(int pageIndex, std::span<const Rect> areas) override
    {
        try {
            if (const auto page = pageAt(pageIndex)) {
                return PageText(*page).in(areas);
            }
        } catch (const std::exception &failure) { // Such as a page that takes more memory than there is.
            qCInfo(readerLog) << "text of page" << pageIndex + 1 << "failed:" << failure.what();
        }
        return std::nullopt;
    }

    std::optional<QString> quickTextIn(int pageIndex, const Rect &area) override
    {
        try {
            if (const auto page = pageAt(pageIndex)) {
                return reader::quickTextIn(*page, area);
            }
        } catch (const std::exception &failure) {
            qCInfo(readerLog) << "text of page" << pageIndex + 1 << "failed:" << failure.what();
        }
        return std::nullopt;
    }

    std::optional<Bitmap> render(int pageIndex, int width, int height, double scale) override
    {
        std::optional<Pixels> pixels = Pixels::ofSize(pictureBytes(width, height).value_or(0));
        return pixels && renderInto(pixels->bytes(), pageIndex, width, height, scale)
                   ? std::optional(Bitmap{width, height, std::move(*pixels)})
                   : std::nullopt;
    }

    bool renderInto(std::span<std::uint8_t> pixels, int pageIndex, int width, int height,
                    double scale) override
    {
        if (pixels.size() != pictureBytes(width, height) || !std::isfinite(scale) || scale <= 0) {
            return false;
        }
        try {
            const auto page = pageAt(pageIndex);
            if (!page) {
                return false;
            }
            poppler::page_renderer renderer;
            renderer.set_image_format(poppler::image::format_argb32);
            renderer.set_paper_color(0xFFFFFFFF);
            renderer.set_render_hints(poppler::page_renderer::antialiasing |
                                      poppler::page_renderer::text_antialiasing);
            const poppler::image image =
                renderer.render_page(page.get(), 72 * scale, 72 * scale, 0, 0, width, height);
            const bool isDrawn = put(image, pixels, width, height);
            if (!isDrawn) {
                qCInfo(readerLog) << "Poppler drew no picture of page" << pageIndex + 1;
            }
            return isDrawn;
        } catch (const std::exception &failure) {
            qCInfo(readerLog) << "drawing page" << pageIndex + 1 << "failed:" << failure.what();
            return false;
        }
    }

private:
    std::unique_ptr<poppler::page> pageAt(int pageIndex)
    {
        const bool exists = pageIndex >= 0 && pageIndex < pageCount();
        return std::unique_ptr<poppler::page>(exists ? m_document->create_page(pageIndex) : nullptr);
    }

    std::unique_ptr<poppler::document> m_document;
};

} // namespace

std::optional<std::size_t> pictureBytes(int width, int height)
{
    if (width < 1 || height < 1 ||
        static_cast<std::size_t>(width) > maxPixels / static_cast<std::size_t>(height)) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
}

std::unique_ptr<LocalReader> openWithPoppler(const std::filesystem::path &path)
{
    try {
        prepare();
        std::unique_ptr<poppler::document> document(poppler::document::load_from_file(path.native()));
        if (!document || document->is_locked()) {
            qCInfo(readerLog) << (document ? "a document needs a password"
                                           : "Poppler cannot open a document");
            return nullptr;
        }
        return std::make_unique<PopplerReader>(std::move(document));
    } catch (const std::exception &failure) {
        qCInfo(readerLog) << "opening a document failed:" << failure.what();
        return nullptr;
    }
}

} // namespace tallyfold::reader
